#pragma once

/// \file
/// Text files in any encoding, read and written as wide text.
///
///     vlm::CEncodedBufferedFile file("wells.txt", "r", vlm::CEncodedBufferedFile::ShareDenyWrite,
///                                    vlm::EncodingANSI, 1252, false, false);
///     std::wstring line;
///     while (file.ReadString(line)) Plot(line);
///
/// Wide text holds UTF-16 units, one to an element; see WideText.h. Nothing in a file is an error:
/// a malformed sequence is read as U+FFFD, one for each longest part of a character that could
/// still have gone on; so is half of a pair, and an odd byte at the end of UTF-16. A NUL is a
/// character like others.

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/TextEncoding.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace vlm {

namespace detail {
class TextStream;
}

/// A text file in a code page, in UTF-8 or in UTF-16, whose encoding is looked for in its first 512
/// bytes when it is opened for reading, unless the caller knows better.
///
/// An object with identity, closed or open. Copies share the stream and its position, and each has
/// what it has read ahead; as soon as one of them closes the file, or dies with it open, it is
/// closed for all. The destructor of an open file closes it without a word, and deletes it if the
/// opener asked for that.
///
/// *Lines*. A line ends with a line feed, a carriage return or both, in any mixture; a read line
/// has no line end, and a written text gets none. Reading goes by lines: `Getc` takes from the line
/// that was read ahead, and the stream's position stands behind that line. In a code page lines end
/// at the bytes 0A and 0D before they are converted. EBCDIC has its line ends elsewhere and other
/// characters at 0D, so that such pages are not for this class.
///
/// *Marks*. The mode "w", and "a" on an empty file, begins with the byte order mark of the
/// encoding, other than `EncodingANSI`; no other mode writes one. Reading begins behind a mark.
///
/// *Pairs*. A character above U+FFFF is two elements in both directions. Half a pair at the end of
/// what is written waits for the other half to be written next.
///
/// *Memory*: a line, and two blocks.
///
/// Threads: an object belongs to one thread at a time. Copies in several threads may read lines at
/// once: `Getc`, `ReadString`, `FillInputBuffer` and `ReadText` hold the stream's lock over the
/// line or chunk that they read. For all else the copies belong to one thread together.
///
/// *Errors*: `Exception` with the code that a function names, the path of the file and the system's
/// text. The file then stays open; what was read of a line before is lost. What is written waits in
/// a block, so that a full disk may show as late as in `Flush` or `Close`. `ERR_INTERNAL` for a
/// null pointer. `std::bad_alloc` for a line that memory does not hold; the next line is read next.
class VELUM_API CEncodedBufferedFile {
 public:
  /// What others may do with the file as long as it is open here; see `CFile::Sharing`.
  enum Sharing : int {
    ShareDenyAll = 0,    ///< Neither read nor write.
    ShareDenyWrite = 1,  ///< Read.
    ShareDenyRead = 2,   ///< Write.
    ShareDenyNone = 3,   ///< Both.
  };

  /// A closed file of unknown encoding.
  CEncodedBufferedFile() noexcept;
  /// Opens a file; see `Open`.
  CEncodedBufferedFile(const GString& path, const GString& mode, Sharing sharing,
                       TextEncoding encoding, unsigned int codePage, bool trustEncoding,
                       bool removeOnAbort);
  /// A copy that shares the stream.
  CEncodedBufferedFile(const CEncodedBufferedFile& other);
  /// Becomes a copy that shares the stream; a stream that nobody else shares is aborted first.
  CEncodedBufferedFile& operator=(const CEncodedBufferedFile& other);
  ~CEncodedBufferedFile();

  /// True from a successful opening to `Close` or `Abort`.
  [[nodiscard]] bool IsOpen() const noexcept;
  /// The path as it was given to the last opening; empty after `Close` and `Abort`.
  [[nodiscard]] const GString& GetFilePath() const noexcept { return path_; }
  /// The encoding in force; that of the last file on a closed one.
  [[nodiscard]] TextEncoding GetEncoding() const noexcept { return encoding_; }
  /// The code page of `EncodingANSI`; 0 is UTF-8.
  [[nodiscard]] unsigned int GetCodePage() const noexcept { return codePage_; }
  /// The stream's position in bytes, behind the line that was read ahead; -1 on a closed file.
  [[nodiscard]] std::int64_t GetPosition() const noexcept;
  /// The number of bytes; -1 on a closed file. Moves the position to the start of the text.
  ///
  /// *Errors*: `ERR_SEEK` where the file has no positions.
  [[nodiscard]] std::int64_t GetLength() const;
  /// True once the stream has met its end, when a line may still be left to `Getc` and
  /// `ReadString`, and on a closed file.
  [[nodiscard]] bool EndOfFile() const noexcept;

  /// Opens the file at `path`. With `removeOnAbort` it is deleted unless it is closed properly.
  ///
  /// `mode` is a mode of C's `fopen`, as `CBufferedFile` takes it. If it is "r", "r+", "rt", "rt+",
  /// "rb" or "rb+", the file's mark and its first 512 bytes decide on the encoding; with
  /// `trustEncoding` the one that is named is kept, and only the mark's size is looked up. Every
  /// other mode takes the encoding as it is named, and the size of that encoding's mark as the
  /// start of text.
  ///
  /// - A pipe, a device or a file without a size that has bytes all the same: the named encoding is
  ///   kept, and its mark read past.
  ///
  /// *Errors*: `ERR_OPEN` if the system, another's sharing or the mode's letters refuse: no file is
  /// changed then. `ERR_INTERNAL` for an empty path or mode, a `sharing` that is none, or if this
  /// file is open already; `ERR_INVALID_PARAMETER` for an encoding that is none.
  void Open(const GString& path, const GString& mode, Sharing sharing, TextEncoding encoding,
            unsigned int codePage, bool trustEncoding, bool removeOnAbort);
  /// The same; false where `Open` throws `ERR_OPEN`. Misuse throws here as well.
  bool OpenNoThrow(const GString& path, const GString& mode, Sharing sharing, TextEncoding encoding,
                   unsigned int codePage, bool trustEncoding, bool removeOnAbort);
  /// Writes what is in the block and closes the file. Nothing happens to a closed one.
  ///
  /// *Errors*: `ERR_CLOSE`; the file is closed all the same.
  void Close();
  /// Closes the file without reporting a failure, and with `removeFile` deletes what stands at its
  /// path.
  void Abort(bool removeFile) noexcept;
  /// Hands what was written to the system. Nothing to do on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`.
  void Flush();
  /// Sets the code page of what is read and written from here; numbers above 65535 become 65535.
  ///
  /// - A number that names no page: the text is empty, so that `ReadString` reads to the end and
  ///   gives false.
  void SetCodePage(unsigned int codePage) noexcept;

  /// Reads an element of the text; 0xFFFF at the end, which U+FFFF in the text looks like as well,
  /// and on a closed file. A line end of any kind is one line feed.
  ///
  /// *Errors*: `ERR_READ`.
  wchar_t Getc();
  /// Puts any element back to be read next, any number of times, and gives it; on a closed file,
  /// too. `Open` and `Close` forget it. 0xFFFF if there is nothing to put it back to: the line that
  /// was to be read ahead is missing.
  ///
  /// *Errors*: `ERR_READ`, since a line may be read ahead.
  wchar_t UnGetc(wchar_t c);
  /// Reads the rest of the line, of any length, without its line end; false at the end and on a
  /// closed file.
  ///
  /// *Errors*: `ERR_READ`.
  bool ReadString(std::wstring& line);
  /// Writes an element and gives it; 0xFFFF on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`.
  unsigned short Putc(unsigned short c);
  /// Writes a text at the stream's position, or at the end in a mode that appends; nothing on a
  /// closed file.
  ///
  /// *Errors*: `ERR_WRITE`. Some of it may be written.
  void WriteString(const std::wstring& text);

  /// Moves behind the mark and gives the position; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK`.
  std::int64_t SeekToBegin();
  /// Moves to the end and gives the position; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK`.
  std::int64_t SeekToEnd();

 protected:
  /// Moves the stream's position, forgets the line that was read ahead and gives the position; -1
  /// on a closed file. `origin` is 0 for the begin, 1 for the position, 2 for the end.
  ///
  /// *Errors*: `ERR_SEEK`.
  std::int64_t Seek(std::int64_t offset, int origin);
  /// Reads the next line ahead and gives the number of its elements, the line feed among them; 0 at
  /// the end.
  ///
  /// *Errors*: `ERR_READ`.
  std::size_t FillInputBuffer();
  /// Reads a line from the stream, up to `size` - 1 elements, and puts a terminator behind it. The
  /// line keeps a line feed. Gives `buffer`; null at the end.
  ///
  /// - A `size` of 0: null. A `size` of 1: the empty text, and nothing is read.
  ///
  /// *Errors*: `ERR_READ`.
  wchar_t* ReadText(wchar_t* buffer, unsigned int size);
  /// The same for bytes, whatever the encoding: a line feed is the byte 0A.
  char* ReadText(char* buffer, unsigned int size);
  /// Reads a byte from the stream; -1 at the end.
  ///
  /// *Errors*: `ERR_READ`.
  int GetNextChar();
  /// Reads an element from the stream, a byte for `EncodingANSI`; -1 at the end.
  ///
  /// *Errors*: `ERR_READ`.
  int GetNextWideChar();
  /// Decides on the encoding, the start of text and the suffix of the mode for who asked for a code
  /// page; the first two arguments are what `GetBOMInfo` found.
  void VerifyANSI(unsigned int markSize, TextEncoding markEncoding, GString& modeSuffix);
  /// The same for who asked for UTF-8.
  void VerifyUTF8(unsigned int markSize, TextEncoding markEncoding, GString& modeSuffix);
  /// The same for who asked for UTF-16 with the low byte first.
  void VerifyUTF16LE(unsigned int markSize, TextEncoding markEncoding, GString& modeSuffix);
  /// The same for who asked for UTF-16 with the high byte first.
  void VerifyUTF16BE(unsigned int markSize, TextEncoding markEncoding, GString& modeSuffix);

 private:
  [[gnu::visibility("hidden")]] void Settle(TextEncoding encoding, unsigned int startOfText,
                                            GString& modeSuffix);
  [[gnu::visibility("hidden")]] void VerifyUTF16(TextEncoding first, TextEncoding second,
                                                 unsigned int markSize, TextEncoding markEncoding,
                                                 GString& modeSuffix);
  /// Chooses the encoding, by what was asked for and, if the file is examined, what is there.
  [[gnu::visibility("hidden")]] void Choose(bool examines, TextEncoding encoding,
                                            bool trustEncoding, GString& modeSuffix);
  [[gnu::visibility("hidden")]] void ClearInput() const noexcept;
  [[gnu::visibility("hidden")]] bool SeesLineFeed(bool asByte);
  [[gnu::visibility("hidden")]] void FillFromPage();
  /// Throws `code` with the system's text unless `succeeded`.
  [[gnu::visibility("hidden")]] void Require(bool succeeded, int line, int code) const;

  bool opened_ = false;
  bool removeOnAbort_ = false;
  GString path_;
  std::shared_ptr<detail::TextStream> stream_;
  TextEncoding encoding_ = EncodingUnknown;
  unsigned int codePage_ = 0;
  unsigned int startOfText_ = 0;
  // `GetLength` moves the position, and what was read ahead goes with it.
  mutable std::wstring input_;
  mutable std::size_t readAt_ = 0;
};

}  // namespace vlm
