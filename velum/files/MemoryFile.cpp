#include <velum/files/MemoryFile.h>

#include <velum/core/Exception.h>
#include <velum/core/StandardErrors.h>

#include <cstdint>
#include <cstdlib>

namespace vlm {

namespace {

constexpr std::uint64_t kFirstCapacity = 1024;
constexpr std::uint64_t kLargestCapacity = 0x80000000;
constexpr char kName[] = "memory file";
constexpr char kOutOfRange[] = "out of range";

}  // namespace

void CMemoryFile::FailForNull() { ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL); }

void CMemoryFile::Attach(unsigned char* data, unsigned int size) {
  if (!data && size > 0) FailForNull();
  position_ = 0;
  capacity_ = size;
  length_ = size;
  buffer_ = data;
  owned_ = false;
}

unsigned char* CMemoryFile::Detach() noexcept {
  unsigned char* const buffer = buffer_;
  position_ = 0;
  capacity_ = 0;
  length_ = 0;
  buffer_ = nullptr;
  return buffer;
}

void CMemoryFile::Close() noexcept {
  unsigned char* const buffer = Detach();
  if (owned_) std::free(buffer);
}

void CMemoryFile::SetLength(unsigned int length) {
  if (length > capacity_) GrowFile(length);
  if (length > length_) std::memset(buffer_ + length_, 0, length - length_);
  length_ = length;
  if (position_ > length_) position_ = length_;
}

unsigned int CMemoryFile::Seek(int offset, Origin origin) {
  std::int64_t target = offset;
  switch (origin) {
    case OriginBegin:
      break;
    case OriginCurrent:
      target += position_;
      break;
    case OriginEnd:
      target += length_;
      break;
    default:
      return position_;
  }
  if (target < 0 || target > UINT32_MAX) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_SEEK, kName, kOutOfRange);
  }
  position_ = static_cast<unsigned int>(target);
  return position_;
}

int CMemoryFile::UnGetc(int c) noexcept {
  if (position_ == 0 || position_ > length_ || c == -1) return -1;
  const auto byte = static_cast<unsigned char>(c);
  buffer_[--position_] = byte;
  return byte;
}

char* CMemoryFile::ReadString(char* buffer, unsigned int size) noexcept {
  if (!buffer || size == 0) return nullptr;
  unsigned int count = size - 1;
  if (count > 0) {
    if (EndOfFile()) return nullptr;
    const unsigned char* const from = buffer_ + position_;
    if (count > length_ - position_) count = length_ - position_;
    if (const void* const end = std::memchr(from, '\n', count)) {
      count = static_cast<unsigned int>(static_cast<const unsigned char*>(end) - from) + 1;
    }
    std::memcpy(buffer, from, count);
    position_ += count;
  }
  buffer[count] = '\0';
  return buffer;
}

void CMemoryFile::GrowFile(unsigned int need) {
  if (need <= capacity_) return;
  if (!owned_) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_WRITE, kName, kOutOfRange);
  std::uint64_t capacity = capacity_ ? std::uint64_t{2} * capacity_ : kFirstCapacity;
  while (capacity < need) capacity *= 2;
  if (capacity > kLargestCapacity) throw BadAllocError();
  void* const buffer = std::realloc(buffer_, static_cast<std::size_t>(capacity));
  if (!buffer) throw BadAllocError();
  buffer_ = static_cast<unsigned char*>(buffer);
  capacity_ = static_cast<unsigned int>(capacity);
}

void CMemoryFile::MakeRoom(unsigned int count) {
  const std::uint64_t need = std::uint64_t{position_} + count;
  if (need > UINT32_MAX) {
    if (owned_) throw BadAllocError();
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_WRITE, kName, kOutOfRange);
  }
  GrowFile(static_cast<unsigned int>(need));
  if (position_ > length_) std::memset(buffer_ + length_, 0, position_ - length_);
}

}  // namespace vlm
