#pragma once

/// \file
/// A growing array of plain values in the clipper's memory, with the label that its failing
/// allocation gives.

#include <velum/geometry/detail/GpcAlloc.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace vlm::detail {

/// The number of an edge, vertex, contour or scan line. Whoever counts beyond 32 bits has run out
/// of memory before.
using Index = std::uint32_t;
/// No edge, no contour, never.
inline constexpr Index kNone = 0xFFFFFFFF;

/// Values of a plain type, uninitialised until they are written. It owns its block; one thread at a
/// time.
///
/// *Errors*: growing raises what GPCAlloc raises, and leaves the array as it was.
template <class T>
class ClipArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  /// An empty array; `label` says in errors what the memory was for.
  explicit ClipArray(const char* label) noexcept : label_(label) {}
  ClipArray(const ClipArray&) = delete;
  ClipArray& operator=(const ClipArray&) = delete;
  ~ClipArray() { std::free(block_); }

  [[nodiscard]] std::size_t size() const noexcept { return size_; }
  [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
  /// How many values there is room for.
  [[nodiscard]] std::size_t Capacity() const noexcept { return capacity_; }
  [[nodiscard]] T* data() noexcept { return data_; }
  [[nodiscard]] T* begin() noexcept { return data_; }
  [[nodiscard]] T* end() noexcept { return data_ + size_; }
  [[nodiscard]] const T* begin() const noexcept { return data_; }
  [[nodiscard]] const T* end() const noexcept { return data_ + size_; }
  [[nodiscard]] T& operator[](std::size_t i) noexcept { return data_[i]; }
  [[nodiscard]] const T& operator[](std::size_t i) const noexcept { return data_[i]; }
  [[nodiscard]] T& back() noexcept { return data_[size_ - 1]; }

  /// Adds a value, which may be one of the array's own.
  void Push(const T& value) {
    if (size_ == capacity_) {
      const T copy = value;
      Reserve(capacity_ < 16 ? 16 : 2 * capacity_);
      data_[size_++] = copy;
    } else {
      data_[size_++] = value;
    }
  }
  void Pop() noexcept { --size_; }
  void Clear() noexcept { size_ = 0; }

  /// Makes room for `count` values in all.
  void Reserve(std::size_t count) {
    if (count <= capacity_) return;
    // What asks for more than malloc's alignment begins somewhat behind the start of its block.
    constexpr std::size_t kSpare = alignof(T) > alignof(std::max_align_t) ? 1 : 0;
    void* const block = GPCAllocArray<T>(__LINE__, label_, count + kSpare);
    void* start = block;
    std::size_t space = (count + kSpare) * sizeof(T);
    T* const data = static_cast<T*>(std::align(alignof(T), count * sizeof(T), start, space));
    if (size_ > 0) std::memcpy(static_cast<void*>(data), data_, size_ * sizeof(T));
    std::free(block_);
    block_ = block;
    data_ = data;
    capacity_ = count;
  }
  /// Changes the size; new values are left as the memory is.
  void Resize(std::size_t count) {
    Reserve(count);
    size_ = count;
  }
  /// Changes the size and sets every value.
  void Fill(std::size_t count, const T& value) {
    Resize(count);
    for (std::size_t i = 0; i < count; ++i) data_[i] = value;
  }
  /// Gives the memory back.
  void Free() noexcept {
    std::free(block_);
    block_ = nullptr;
    data_ = nullptr;
    size_ = capacity_ = 0;
  }
  void Swap(ClipArray& other) noexcept {
    std::swap(block_, other.block_);
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  void* block_ = nullptr;
  T* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
  const char* label_;
};

}  // namespace vlm::detail
