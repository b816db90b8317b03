#pragma once

/// \file
/// A file of the operating system, or one in memory, without a buffer in between.
///
///     vlm::CFile file("wells.dat", vlm::CFile::AccessRead, vlm::CFile::ModeOpenExisting,
///                     vlm::CFile::ShareDenyWrite);
///     double depth[100];
///     file.ReadN(depth, sizeof(depth));
///     file.Close();

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/MemoryFile.h>

#include <cstdint>
#include <memory>

namespace vlm {

/// A file that is read and written in pieces that go straight to the system, one call for each; or
/// a `CMemoryFile` behind the same interface.
///
/// An object with identity, closed or open. It owns what it opened: the destructor closes that
/// without a word and deletes no file. A descriptor that it was made over stays the caller's until
/// `Close` or `Abort`. Nothing translates line ends.
///
/// Threads: an object belongs to one thread at a time.
///
/// *Errors*: `Exception` with the code that a function names, the path of the file and the system's
/// text. The file then stays open. `ERR_INTERNAL` for a null pointer.
class VELUM_API CFile {
 public:
  /// What may be done with an open file. Every other value lets it be read.
  enum Access : int {
    AccessRead = 1,       ///< Reading.
    AccessWrite = 2,      ///< Writing.
    AccessReadWrite = 3,  ///< Both.
  };

  /// What becomes of a file that is there, or is not.
  enum Mode : int {
    ModeCreateNew = 1,         ///< Creates it; fails if it is there.
    ModeCreateAlways = 2,      ///< Creates it, or empties it.
    ModeOpenExisting = 3,      ///< Opens it; fails if it is not there.
    ModeOpenAlways = 4,        ///< Opens it, or creates it.
    ModeTruncateExisting = 5,  ///< Empties it; fails if it is not there.
    ModeAppend = 6,            ///< Opens or creates it; each write goes to its end.
  };

  /// What others may do with the file as long as it is open here.
  ///
  /// It binds whoever opens a file through this library, in this process or another: an opener who
  /// wants what another denies, or denies what another does, is refused. Other programs pass.
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
  CFile() noexcept = default;
  /// A file over an open descriptor, which the destructor leaves open and `Close` closes.
  explicit CFile(int handle) noexcept : handle_(handle) {}
  /// Opens a file; see `Open`.
  CFile(const GString& path, Access access, Mode mode, Sharing sharing);
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;
  ~CFile();

  /// True from a successful opening to `Close` or `Abort`.
  [[nodiscard]] bool IsOpen() const noexcept { return handle_ != -1 || memory_; }
  /// True for a file in memory.
  [[nodiscard]] bool IsMemoryFile() const noexcept { return memory_ != nullptr; }
  /// The path as it was given; empty for a file in memory and a closed one.
  [[nodiscard]] const GString& GetFilePath() const noexcept { return path_; }
  /// The system's descriptor, or -1.
  [[nodiscard]] int GetHandle() const noexcept { return handle_; }
  /// The bytes of a file in memory, otherwise null.
  ///
  /// *Lifetime*: until the file grows or is closed.
  [[nodiscard]] unsigned char* GetBuffer() const noexcept {
    return memory_ ? memory_->GetBuffer() : nullptr;
  }
  /// The position; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK` where the file has none, a pipe for example.
  [[nodiscard]] std::int64_t GetPosition() const;
  /// The number of bytes; -1 on a closed file.
  ///
  /// *Errors*: `ERR_SEEK` as above; `ERR_INTERNAL` if the position does not come back.
  [[nodiscard]] std::int64_t GetLength() const;
  /// True if there is nothing left to read, and on a closed file. A file without a length, a pipe
  /// for example, never says so.
  ///
  /// *Errors*: `ERR_CUSTOM` "EOF: Bad file handle" for a descriptor that is not open.
  [[nodiscard]] bool EndOfFile() const;

  /// Opens an empty file in memory that grows. A file in memory that is open is dropped.
  ///
  /// *Errors*: `ERR_INTERNAL` if a file of the system is open.
  void Open();
  /// Opens the `size` bytes at `data` as a file in memory that does not grow; they stay the
  /// caller's. A file in memory that is open is dropped.
  ///
  /// *Errors*: `ERR_INTERNAL` if a file of the system is open.
  void Open(void* data, unsigned int size);
  /// Opens the file at `path`. One that is created may be read and written by its owner alone.
  ///
  /// *Errors*: `ERR_OPEN` if the system or another's sharing refuses: no file is changed then.
  /// `ERR_INTERNAL` for an empty path, or if this file is open already.
  void Open(const GString& path, Access access, Mode mode, Sharing sharing);
  /// The same; false where `Open` throws, whatever it throws.
  bool OpenNoThrow(const GString& path, Access access, Mode mode, Sharing sharing) noexcept;
  /// Closes the file. Nothing happens to a closed one.
  ///
  /// *Errors*: `ERR_CLOSE`; the file is closed all the same.
  void Close();
  /// Closes the file without reporting a failure, and with `removeFile` deletes what stands at its
  /// path.
  void Abort(bool removeFile) noexcept;
  /// Names the file for messages and for `Abort`.
  void SetFilePath(const GString& path) { path_ = path; }

  /// Reads up to `count` bytes and gives their number: fewer at the end of the file only, 0 on a
  /// closed file.
  ///
  /// *Errors*: `ERR_READ`.
  unsigned int Read(void* data, unsigned int count) {
    return memory_ ? memory_->Read(data, count) : ReadFromHandle(data, count);
  }
  /// Reads exactly `count` bytes.
  ///
  /// *Errors*: `ERR_READ`, with "Unexpected end of file." for a file that ends before or is closed.
  void ReadN(void* data, unsigned int count) {
    if (!memory_) {
      ReadAllFromHandle(data, count);
    } else if (memory_->Read(data, count) != count) {
      FailForEarlyEnd();
    }
  }
  /// Writes `count` bytes; nothing on a closed file.
  ///
  /// *Errors*: `ERR_WRITE`. Some of the bytes may be written.
  void Write(const void* data, unsigned int count) {
    memory_ ? memory_->Write(data, count) : WriteToHandle(data, count);
  }
  /// Has the system put what was written on the disk. Nothing to do for a file in memory, a closed
  /// file, or one that lies on no disk.
  ///
  /// *Errors*: `ERR_WRITE`.
  void Flush();

  /// Moves the position and gives it.
  ///
  /// *Errors*: `ERR_SEEK` if the system refuses, and in memory for an offset beyond 32 bits or a
  /// place that does not exist; `ERR_INTERNAL` on a closed file.
  std::int64_t Seek(std::int64_t offset, Origin origin);
  /// Moves to the first byte.
  void SeekToBegin() { Seek(0, OriginBegin); }
  /// Moves behind the last byte and gives the position.
  std::int64_t SeekToEnd() { return Seek(0, OriginEnd); }

 private:
  /// Closes what is open; false if the system reports a failure.
  bool Release() noexcept;
  unsigned int ReadFromHandle(void* data, unsigned int count);
  void ReadAllFromHandle(void* data, unsigned int count);
  void WriteToHandle(const void* data, unsigned int count);
  [[noreturn]] void FailForEarlyEnd() const;

  bool opened_ = false;
  GString path_;
  int handle_ = -1;
  std::unique_ptr<CMemoryFile> memory_;
};

}  // namespace vlm
