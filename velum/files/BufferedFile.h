#pragma once

/// \file
/// A file that is read and written through a buffer, in lines and characters as well.
///
///     vlm::CBufferedFile file("wells.txt", "r", vlm::CBufferedFile::ShareDenyWrite, false);
///     std::string line;
///     while (file.ReadString(line)) puts(line.c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/MemoryFile.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace vlm {

/// A file behind a stream of the C library, or a `CMemoryFile` behind the same interface.
///
/// An object with identity, closed or open. It owns what it opened; the destructor of an open file
/// closes it without a word, and deletes it if the opener asked for that: such a file stays only
/// once it was closed properly. A stream that it was made over stays the caller's until `Close` or
/// `Abort`.
///
/// Between writing and reading the same stream call `Seek` or `Flush`, as the C library wants it.
///
/// Threads: an object and its stream belong to one thread at a time.
///
/// *Errors*: `Exception` with the code that a function names, the path of the file and the system's
/// text. The file then stays open. What is written waits in the buffer, so that a full disk may
/// show as late as in `Flush` or `Close`. `ERR_INTERNAL` for a null pointer.
class VELUM_API CBufferedFile {
 public:
  /// What others may do with the file as long as it is open here; see `CFile::Sharing`.
  enum Sharing : int {
    ShareDenyAll = 0,    ///< Neither read nor write.
    ShareDenyWrite = 1,  ///< Read.
    ShareDenyRead = 2,   ///< Write.
    ShareDenyNone = 3,   ///< Both.
  };

  /// What an offset counts from.
  enum Origin : int {
    OriginBegin = 0,    ///< The first byte.
    OriginCurrent = 1,  ///< The present position.
    OriginEnd = 2,      ///< Behind the last byte.
  };

  /// A closed file.
  CBufferedFile() noexcept = default;
  /// A file over an open stream, which the destructor leaves open and `Close` closes; null gives a
  /// closed file.
  explicit CBufferedFile(std::FILE* stream) noexcept : stream_(stream) {}
  /// Opens a file; see `Open`.
  CBufferedFile(const GString& path, const GString& mode, Sharing sharing, bool removeOnAbort);
  CBufferedFile(const CBufferedFile&) = delete;
  CBufferedFile& operator=(const CBufferedFile&) = delete;
  ~CBufferedFile();

  /// True from a successful opening to `Close` or `Abort`.
  [[nodiscard]] bool IsOpen() const noexcept { return stream_ || memory_; }
  /// True for a file in memory.
  [[nodiscard]] bool IsMemoryFile() const noexcept { return memory_ != nullptr; }
  /// The path as it was given; empty for a file in memory and a closed one.
  [[nodiscard]] const GString& GetFilePath() const noexcept { return path_; }
  /// The stream, or null.
  [[nodiscard]] std::FILE* GetHandle() const noexcept { return stream_; }
  /// The bytes of a file in memory, otherwise null.
  ///
  /// *Lifetime*: until the file grows or is closed.
  [[nodiscard]] unsigned char* GetBuffer() const noexcept {
    return memory_ ? memory_->GetBuffer() : nullptr;
  }
  /// The position; -1 on a closed file and where there is none, as in a pipe.
  [[nodiscard]] std::int64_t GetPosition() const;
  /// The number of bytes; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK` where the file has no positions; `ERR_INTERNAL` if the position does not
  /// come back.
  [[nodiscard]] std::int64_t GetLength() const;
  /// True if a read has met the end of the stream, if nothing is left to read in memory, and on a
  /// closed file.
  [[nodiscard]] bool EndOfFile() const;

  /// Opens an empty file in memory that grows. A file in memory that is open is dropped.
  ///
  /// *Errors*: `ERR_INTERNAL` if a stream is open.
  void Open();
  /// Opens the `size` bytes at `data` as a file in memory that does not grow; they stay the
  /// caller's. A file in memory that is open is dropped.
  ///
  /// *Errors*: `ERR_INTERNAL` if a stream is open.
  void Open(void* data, unsigned int size);
  /// Opens the file at `path`. With `removeOnAbort` it is deleted unless it is closed properly.
  ///
  /// `mode` is a mode of C's `fopen`: "r", "w" or "a", then in any order "+" and "x", which with
  /// "w" or "a" refuses a file that is there; the letters "b", "t", "c", "e" and "n" are allowed
  /// and change nothing. No line end is translated, and no other program inherits the stream.
  ///
  /// *Errors*: `ERR_OPEN` if the system, another's sharing or the mode's letters refuse: no file is
  /// changed then. `ERR_INTERNAL` for an empty path or mode, a `sharing` that is none, or if this
  /// file is open already.
  void Open(const GString& path, const GString& mode, Sharing sharing, bool removeOnAbort);
  /// The same; false where `Open` throws `ERR_OPEN`. Misuse throws here as well.
  bool OpenNoThrow(const GString& path, const GString& mode, Sharing sharing, bool removeOnAbort);
  /// Writes what is in the buffer and closes the file. Nothing happens to a closed one.
  ///
  /// *Errors*: `ERR_CLOSE`; the file is closed all the same.
  void Close();
  /// Closes the file without reporting a failure, and with `removeFile` deletes what stands at its
  /// path.
  void Abort(bool removeFile) noexcept;
  /// Names the file for messages and for `Abort`; null gives it no name.
  void SetFilePath(const char* path) { path_ = path ? path : ""; }

  /// Reads up to `count` bytes and gives their number: fewer at the end of the file or before an
  /// error, 0 on a closed file.
  ///
  /// *Errors*: `ERR_READ` if an error comes before the first byte.
  unsigned int Read(void* data, unsigned int count);
  /// Reads exactly `count` bytes.
  ///
  /// *Errors*: `ERR_END_OF_FILE` for fewer, so on a closed file; `ERR_READ`.
  void ReadN(void* data, unsigned int count);
  /// Reads a byte; -1 at the end, and on a closed file.
  ///
  /// *Errors*: `ERR_READ`.
  int Getc();
  /// Puts the byte `c` back to be read next, and gives it; -1 where that can't be done, and on a
  /// closed file. In memory the byte replaces the one that stands there.
  int UnGetc(int c);
  /// Reads a line, up to `size` - 1 bytes, and puts a terminator behind it. The line keeps its line
  /// feed. Gives `buffer`; null at the end and on a closed file.
  ///
  /// *Errors*: `ERR_READ`.
  char* ReadString(char* buffer, unsigned int size);
  /// Reads a line of any length, without its line feed and a carriage return right before that;
  /// false at the end and on a closed file. A byte 0 is part of the line.
  ///
  /// *Errors*: `ERR_READ`.
  bool ReadString(std::string& line);

  /// Writes `count` bytes; nothing on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`. Some of the bytes may be written.
  void Write(const void* data, unsigned int count);
  /// Writes a byte and gives it; -1 on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`.
  int Putc(int c);
  /// Writes a terminated text; no line end is added.
  ///
  /// *Errors*: `ERR_WRITE`.
  void WriteString(const char* text);
  /// Writes a formatted text and gives the number of its bytes; -1 on a closed file. In memory, and
  /// for the directives that it adds to C's, `FormatString` makes the text; on a stream all else is
  /// C's `printf`, of any length.
  ///
  /// *Errors*: `ERR_WRITE`, also for a text that can't be formatted.
  int Printf(const char* format, ...);
  /// Hands what is in the buffer to the system. Nothing to do in memory and on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`.
  void Flush();

  /// Moves the position and gives it; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK` if the system refuses, for an offset beyond 32 bits, and for a place that
  /// does not exist.
  std::int64_t Seek(std::int64_t offset, Origin origin);
  /// Moves to the first byte.
  void SeekToBegin() { Seek(0, OriginBegin); }
  /// Moves behind the last byte and gives the position.
  std::int64_t SeekToEnd() { return Seek(0, OriginEnd); }
  /// Moves to the first byte and forgets the stream's past errors. Nothing happens to a closed
  /// file.
  void Rewind();

 private:
  /// Closes what is open; false if the system reports a failure.
  bool Release() noexcept;
  /// Appends the line at the position, with its line feed.
  void ReadLineFromMemory(std::string& line);
  /// Clears the stream's flags and throws `code` with the system's text.
  [[noreturn]] void Fail(int line, int code) const;

  bool opened_ = false;
  bool removeOnAbort_ = false;
  GString path_;
  std::FILE* stream_ = nullptr;
  std::unique_ptr<CMemoryFile> memory_;
};

}  // namespace vlm
