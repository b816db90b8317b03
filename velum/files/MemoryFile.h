#pragma once

/// \file
/// A file that is a growing buffer of bytes in memory.
///
///     vlm::CMemoryFile file;
///     file.Write("depth", 5);
///     file.Seek(0, vlm::CMemoryFile::OriginBegin);
///     char text[8];
///     const unsigned int count = file.Read(text, sizeof(text));  // 5

#include <velum/core/Api.h>

#include <cstring>

namespace vlm {

/// Bytes in memory behind the interface of a file.
///
/// An object with identity. It owns its buffer, which `malloc` and `realloc` give, and makes it
/// larger as it is written; or it works on a caller's bytes, which it neither enlarges nor frees
/// and which must live as long as it uses them.
///
/// The position may stand beyond the length, where every read meets the end. Bytes that come to lie
/// between the old length and a write behind it, or a larger length, are 0.
///
/// Threads: an object belongs to one thread at a time.
///
/// *Errors*: an operation that needs more room than there can be leaves the object as it was. It
/// throws `BadAllocError` "bad allocation" beyond a capacity of 0x80000000 or of the memory there
/// is, and an `Exception` with `ERR_WRITE` where the bytes are a caller's. A null pointer is
/// `ERR_INTERNAL`, but for a file over no bytes.
class VELUM_API CMemoryFile {
 public:
  /// What an offset counts from.
  enum Origin : int {
    OriginBegin = 0,    ///< The first byte.
    OriginCurrent = 1,  ///< The present position.
    OriginEnd = 2,      ///< Behind the last byte.
  };

  /// An empty file that grows.
  CMemoryFile() noexcept = default;
  /// A file over the `size` bytes at `data`, which stay the caller's.
  CMemoryFile(unsigned char* data, unsigned int size) { Attach(data, size); }
  CMemoryFile(const CMemoryFile&) = delete;
  CMemoryFile& operator=(const CMemoryFile&) = delete;
  ~CMemoryFile() { Close(); }

  /// True if a read would give nothing.
  [[nodiscard]] bool EndOfFile() const noexcept { return position_ >= length_; }
  /// The bytes; null if the file has had none since it was made, closed or detached.
  ///
  /// *Lifetime*: until the file grows or gives its buffer up.
  [[nodiscard]] unsigned char* GetBuffer() const noexcept { return buffer_; }
  /// The number of bytes.
  [[nodiscard]] unsigned int GetLength() const noexcept { return length_; }
  /// Where the next byte is read or written.
  [[nodiscard]] unsigned int GetPosition() const noexcept { return position_; }

  /// Works on the `size` bytes at `data` from now on, which stay the caller's. The buffer held
  /// before is not freed.
  void Attach(unsigned char* data, unsigned int size);
  /// Gives the buffer up and is an empty file. A buffer of the file's own is the caller's now, who
  /// returns it to `free`; the file grows a new one when it is written.
  [[nodiscard]] unsigned char* Detach() noexcept;
  /// Drops the bytes: an empty file, its own buffer freed. One that worked on a caller's bytes does
  /// not grow afterwards either.
  void Close() noexcept;

  /// Cuts the file, or fills it up with zeros. A position beyond the new length comes back to it.
  void SetLength(unsigned int length);
  /// Moves the position, which may go beyond the length, and gives it. An unknown `origin` leaves
  /// it.
  ///
  /// *Errors*: `ERR_SEEK` for a place before the first byte or beyond 0xFFFFFFFF.
  unsigned int Seek(int offset, Origin origin);

  /// Copies up to `count` bytes to `data` and steps over them; gives their number.
  unsigned int Read(void* data, unsigned int count) {
    if (!data) FailForNull();
    if (EndOfFile()) return 0;
    const unsigned int left = length_ - position_;
    const unsigned char* const from = buffer_ + position_;
    if (count <= left) {
      std::memcpy(data, from, count);  // of a size that the compiler often knows
      position_ += count;
      return count;
    }
    std::memcpy(data, from, left);
    position_ = length_;
    return left;
  }

  /// Writes `count` bytes over what stands at the position and behind the end.
  void Write(const void* data, unsigned int count) {
    if (!data) FailForNull();
    if (count == 0) return;
    if (position_ > length_ || count > capacity_ - position_) MakeRoom(count);
    std::memcpy(buffer_ + position_, data, count);
    position_ += count;
    if (length_ < position_) length_ = position_;
  }

  /// The byte at the position, which is stepped over; -1 at the end.
  int Getc() noexcept { return EndOfFile() ? -1 : buffer_[position_++]; }

  /// Writes the byte `c` and gives it, as a number from 0.
  int Putc(int c) {
    const auto byte = static_cast<unsigned char>(c);
    if (position_ > length_ || position_ == capacity_) MakeRoom(1);
    buffer_[position_++] = byte;
    if (length_ < position_) length_ = position_;
    return byte;
  }

  /// Steps back, puts the byte `c` there and gives it.
  ///
  /// - At position 0, beyond the length, or for a `c` of -1: -1, and nothing changes.
  int UnGetc(int c) noexcept;

  /// Reads up to the next line feed, which is kept, but at most `size` - 1 bytes, and puts a
  /// terminator behind them; gives `buffer`.
  ///
  /// - At the end, for a null `buffer` or a `size` of 0: null.
  /// - A `size` of 1: an empty text, and nothing is read.
  char* ReadString(char* buffer, unsigned int size) noexcept;

 protected:
  /// Makes the capacity at least `need`: twice the old one, or 1024, doubled until it suffices.
  void GrowFile(unsigned int need);

 private:
  [[noreturn]] static void FailForNull();
  /// Lets `count` bytes, at least one, be written at the position: room for them, and zeros up to
  /// it.
  void MakeRoom(unsigned int count);

  unsigned int position_ = 0;
  unsigned int capacity_ = 0;
  unsigned int length_ = 0;
  unsigned char* buffer_ = nullptr;
  bool owned_ = true;
};

}  // namespace vlm
