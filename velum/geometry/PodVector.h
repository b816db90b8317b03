#pragma once

/// \file
/// A growing array of plain data whose first elements stand inside the object.
///
///     vlm::CPodVector<vlm::Vec2d, 32> corners;  // no allocation for up to 32 of them
///     corners.push_back(vlm::Vec2d(3, 4));
///     double x = corners.back().x;  // 3

#include <velum/core/Api.h>
#include <velum/core/StandardErrors.h>
#include <velum/geometry/Vec2.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vlm {

/// An array that grows, with room for `N` elements of the plain type `T` in the object itself.
///
/// A value: copies have elements of their own. Elements are moved as bytes. What is new after
/// resize() is not initialised where `T` has a constructor of its own; assign it.
///
/// Threads: an object belongs to one thread at a time.
///
/// *Errors*: what needs memory that there is not throws `BadAllocError` "bad allocation" and
/// changes nothing.
///
/// *Lifetime*: pointers and references to elements are good until the array grows or is assigned.
template <class T, std::size_t N>
class VELUM_API CPodVector {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
  static_assert(N > 0 && alignof(T) <= alignof(std::max_align_t));

 public:
  /// The type of an element.
  using value_type = T;
  /// The type of sizes and indices.
  using size_type = std::size_t;

  /// Makes an empty array.
  CPodVector() noexcept : data_(Inline()), size_(0), capacity_(N) {}
  /// Copies the elements.
  CPodVector(const CPodVector& other) : CPodVector() { append(other.data_, other.size_); }
  ~CPodVector() {
    if (!IsInline()) std::free(data_);
  }

  /// Returns the number of elements.
  [[nodiscard]] size_type size() const noexcept { return size_; }
  /// Returns the number of elements for which there is room.
  [[nodiscard]] size_type capacity() const noexcept { return capacity_; }
  /// Tells whether there is no element.
  [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
  /// Points to the first element.
  [[nodiscard]] const T* data() const noexcept { return data_; }
  /// Points to the first element, to be changed.
  [[nodiscard]] T* data() noexcept { return data_; }
  /// Points to the first element.
  [[nodiscard]] const T* begin() const noexcept { return data_; }
  /// Points to the first element, to be changed.
  [[nodiscard]] T* begin() noexcept { return data_; }
  /// Points to the place behind the last element.
  [[nodiscard]] const T* end() const noexcept { return data_ + size_; }
  /// Points to the place behind the last element, to be changed.
  [[nodiscard]] T* end() noexcept { return data_ + size_; }
  /// Returns an element; `index` is not checked.
  [[nodiscard]] const T& operator[](size_type index) const noexcept { return data_[index]; }
  /// Gives access to an element; `index` is not checked.
  [[nodiscard]] T& operator[](size_type index) noexcept { return data_[index]; }
  /// Returns the last element, of which there must be one.
  [[nodiscard]] const T& back() const noexcept { return data_[size_ - 1]; }
  /// Gives access to the last element, of which there must be one.
  [[nodiscard]] T& back() noexcept { return data_[size_ - 1]; }

  /// Makes room for `count` elements in all.
  void reserve(size_type count) {
    if (count > capacity_) Grow(count);
  }
  /// Drops elements at the end, or adds some that are not initialised.
  void resize(size_type count) {
    reserve(count);
    size_ = count;
  }
  /// Drops all elements and keeps the room.
  void clear() noexcept { size_ = 0; }
  /// Appends an element, which may be one of the array's own.
  void push_back(const T& element) {
    const T copy = element;
    if (size_ == capacity_) Grow(size_ + 1);
    std::memcpy(static_cast<void*>(data_ + size_), &copy, sizeof(T));
    ++size_;
  }
  /// Appends `count` elements, which must not be the array's own.
  void append(const T* elements, size_type count) {
    if (count == 0) return;
    if (count > kLargest - size_) throw BadAllocError();
    reserve(size_ + count);
    std::memcpy(static_cast<void*>(data_ + size_), elements, count * sizeof(T));
    size_ += count;
  }

  /// Copies the elements.
  CPodVector& operator=(const CPodVector& other) {
    if (this != &other) {
      reserve(other.size_);
      clear();
      append(other.data_, other.size_);
    }
    return *this;
  }

 private:
  static constexpr size_type kLargest = std::numeric_limits<size_type>::max() / sizeof(T) / 2;

  T* Inline() noexcept { return reinterpret_cast<T*>(inline_); }
  bool IsInline() noexcept { return data_ == Inline(); }

  void Grow(size_type count) {
    if (count > kLargest) throw BadAllocError();
    size_type capacity = std::max<size_type>(2, capacity_);
    while (capacity < count) capacity *= 2;
    void* const old = IsInline() ? nullptr : data_;
    void* const data = std::realloc(old, capacity * sizeof(T));
    if (!data) throw BadAllocError();
    if (!old) std::memcpy(data, inline_, size_ * sizeof(T));
    data_ = static_cast<T*>(data);
    capacity_ = capacity;
  }

  T* data_;
  size_type size_;
  size_type capacity_;
  alignas(T) unsigned char inline_[N * sizeof(T)];
};

extern template class CPodVector<Vec2d, 32>;

}  // namespace vlm
