#pragma once

/// \file
/// A stream of text in an encoding: wide characters in and out, bytes on disk.
///
///     vlm::platform::OpenWish wish;
///     wish.sharing.reads = true;
///     const auto stream = vlm::detail::TextStream::Open("\\tmp\\a.txt", wish,
///                                                       vlm::EncodingUTF8);
///     std::wstring line;
///     while (stream && stream->AppendLine(line) && !line.empty()) line.clear();
///
/// What fails gives false or null and leaves the reason in errno.

#include <velum/files/TextEncoding.h>
#include <velum/platform/detail/FileAccess.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace vlm::detail {

/// A file as text. Has identity and owns its descriptor. One thread uses it at a time: who reads a
/// line or a chunk of one holds `Lock` meanwhile, so that others may do so, too.
///
/// Bytes are read in blocks and decoded as lines are asked for, so that `Position` is always where
/// the next character begins. What is malformed is read as velum/platform/detail/Utf8.h and
/// Utf16.h say, wherever a block cuts it; an odd byte at the end of UTF-16 is U+FFFD. A line ends
/// with a line feed, a carriage return or both, and comes with one line feed. Writing translates no
/// line ends.
///
/// Reading and writing may follow each other without ceremony.
class TextStream {
 public:
  /// A character that is none.
  static constexpr int kNone = -1;
  /// How many bytes are read or written at once.
  static constexpr std::size_t kBlock = 65536;
  /// A block that holds the longest character and one unit more.
  static constexpr std::size_t kSmallestBlock = 6;

  /// Opens a file. A file that it makes or empties, or appends to and finds empty, begins with the
  /// encoding's mark; a mark that is there is read past.
  ///
  /// For `EncodingANSI` there is no mark. `blockSize` is `kSmallestBlock` at least.
  [[nodiscard]] static std::shared_ptr<TextStream> Open(const char* path,
                                                        const platform::OpenWish& wish,
                                                        TextEncoding encoding,
                                                        std::size_t blockSize = kBlock);
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;
  /// Closes the file without a word.
  ~TextStream();

  /// Waits until no other thread reads a line, and keeps others from it.
  [[nodiscard]] std::unique_lock<std::mutex> Lock() { return std::unique_lock(mutex_); }
  [[nodiscard]] bool IsOpen() const noexcept { return file_ != -1; }
  /// The position in bytes.
  [[nodiscard]] std::int64_t Position() const noexcept;
  /// True once a read has met the end, until the position moves or the file has grown.
  [[nodiscard]] bool AtEnd() const noexcept { return metEnd_; }

  /// Appends the next line in UTF-8 or UTF-16 with a line feed; the last one may have none. At the
  /// end nothing is appended. If there is no memory for it, the position is behind the line.
  ///
  /// *Errors*: `std::bad_alloc`.
  [[nodiscard]] bool AppendLine(std::wstring& line);
  /// The same for the bytes of a line.
  [[nodiscard]] bool AppendLine(std::string& line);
  /// Reads a unit of UTF-8 or UTF-16; the next byte for `EncodingANSI`; `kNone` at the end.
  [[nodiscard]] bool ReadUnit(int& unit);
  /// Reads a byte; `kNone` at the end.
  [[nodiscard]] bool ReadByte(int& byte);
  /// Tells whether a line feed comes next, in the encoding or as a byte.
  [[nodiscard]] bool SeesLineFeed(bool& sees, bool asByte = false);

  /// Writes text. The first half of a pair at its end waits for the second one.
  ///
  /// For `EncodingANSI` the code page says how.
  [[nodiscard]] bool Write(std::wstring_view text, unsigned int codePage);
  /// Hands what was written to the system.
  [[nodiscard]] bool Flush();
  /// Moves the position; `origin` is 0 for the begin, 1 for the position, 2 for the end.
  [[nodiscard]] bool Seek(std::int64_t offset, int origin);
  /// Closes the file in any case; false if what was written is lost.
  bool Close() noexcept;

 private:
  TextStream(int file, const platform::OpenWish& wish, TextEncoding encoding,
             std::size_t blockSize);

  [[nodiscard]] bool IsUtf16() const noexcept;
  [[nodiscard]] std::size_t UnitSize() const noexcept { return IsUtf16() ? 2 : 1; }
  [[nodiscard]] std::size_t Held() const noexcept { return end_ - at_; }
  [[nodiscard]] const char* FindEnd(const char* at, const char* end) const noexcept;
  /// How many bytes at the end of a piece may belong to a character that goes on.
  [[nodiscard]] std::size_t CutBytes(const char* at, const char* end) const noexcept;
  void Decode(const char* at, const char* end, std::wstring& line);
  [[nodiscard]] bool TakeLine(std::wstring& line);
  [[nodiscard]] bool TakeLine(std::string& line);
  /// Calls `TakeLine`, and steps over the line if there is no memory for it.
  template <class Line>
  [[nodiscard]] bool TakeWholeLine(Line& line);
  /// Steps over the rest of a line, as far as it can be read. `isInBytes`, whatever the encoding.
  void SkipLine(bool isInBytes);

  /// Puts mark and position in place after opening.
  bool Begin(const platform::OpenWish& wish);
  bool BeginReading();
  bool BeginWriting();
  /// Reads a block behind what is held; nothing comes at the end.
  bool Fill();
  /// Reads until `count` bytes are held, or the file ends.
  bool Hold(std::size_t count);
  /// Holds the bytes of the next character, of which the first ones are held, and none beyond.
  bool HoldCharacter();
  /// Steps over a line feed, a carriage return or both.
  bool TakeLineEnd(bool isInBytes);
  void Encode(std::wstring_view text, unsigned int codePage);
  /// Gives up waiting for the second half of a pair.
  void EndPair();

  std::mutex mutex_;
  int file_;
  const TextEncoding encoding_;
  const bool reads_;
  const bool writes_;
  const bool appends_;
  const std::size_t blockSize_;
  std::unique_ptr<char[]> block_;     ///< what was read; none before the first read
  std::size_t at_ = 0;                ///< of the next byte in the block
  std::size_t end_ = 0;               ///< of what the block holds
  std::int64_t offset_ = 0;           ///< where the block begins, or what waits to be written
  std::string written_;               ///< what waits to be written; empty while reading
  std::unique_ptr<wchar_t[]> piece_;  ///< where lines are decoded
  wchar_t half_ = 0;                  ///< the second half of a pair whose first one was read
  wchar_t waiting_ = 0;               ///< the first half of a pair to be written
  unsigned int waitingPage_ = 0;      ///< and its code page
  bool metEnd_ = false;
};

}  // namespace vlm::detail
