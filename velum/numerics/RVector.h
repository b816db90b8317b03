#pragma once

/// \file
/// The vector of the numerical code: any number of doubles.
///
///     vlm::RVector v(3);  // 0 0 0
///     v(1) = 2.5;
///     const double* first = v.Base();
///
/// What is done with vectors stands in Matrices.h and in the headers that it includes.

#include <velum/core/Api.h>

#include <iosfwd>
#include <memory>

namespace vlm {

/// A vector of doubles, of a length that is settled at run time.
///
/// A value: a copy is deep, and no two vectors hold the same array. Elements are counted from 0.
/// No operation checks an index or a length. Any number of threads may read one vector.
///
/// What asks for memory throws `std::bad_alloc` when there is none, and for 2^29 elements or more,
/// whose bytes 32 bits can't count; the vector is then as it was.
class VELUM_API RVector {
 public:
  /// Makes an empty vector.
  RVector() noexcept = default;
  /// Makes a vector of zeros.
  explicit RVector(unsigned length);
  /// Copies the elements.
  RVector(const RVector& v);
  /// Takes the elements of `v`, which becomes empty.
  RVector(RVector&& v) noexcept;
  /// Releases the elements.
  ~RVector() = default;

  /// Copies the elements. The array stays the same one where the length does.
  RVector& operator=(const RVector& v);
  /// Takes the elements of `v`, which becomes empty unless it is this vector.
  RVector& operator=(RVector&& v) noexcept;

  /// Returns the number of elements.
  [[nodiscard]] unsigned Length() const noexcept { return length_; }
  /// Tells whether there are no elements.
  [[nodiscard]] bool empty() const noexcept { return length_ == 0; }
  /// Returns element `i`.
  [[nodiscard]] double operator()(unsigned i) const noexcept { return elements_.get()[i]; }
  /// Returns element `i` for writing. *Lifetime:* until the length changes.
  [[nodiscard]] double& operator()(unsigned i) noexcept { return elements_.get()[i]; }

  /// Returns the array, null if it is empty. *Lifetime:* until the length changes.
  [[nodiscard]] const double* Base() const noexcept { return elements_.get(); }
  /// Returns the array, null if it is empty. *Lifetime:* until the length changes.
  [[nodiscard]] double* Base() noexcept { return elements_.get(); }
  /// Returns the address of element `i`. *Lifetime:* until the length changes.
  [[nodiscard]] const double* Base(unsigned i) const noexcept { return elements_.get() + i; }
  /// Returns the address of element `i`. *Lifetime:* until the length changes.
  [[nodiscard]] double* Base(unsigned i) noexcept { return elements_.get() + i; }
  /// Returns the address of the first element. *Lifetime:* until the length changes.
  [[nodiscard]] const double* begin() const noexcept { return elements_.get(); }
  /// Returns the address of the first element. *Lifetime:* until the length changes.
  [[nodiscard]] double* begin() noexcept { return elements_.get(); }
  /// Returns the address past the last element. *Lifetime:* until the length changes.
  [[nodiscard]] const double* end() const noexcept { return elements_.get() + length_; }
  /// Returns the address past the last element. *Lifetime:* until the length changes.
  [[nodiscard]] double* end() noexcept { return elements_.get() + length_; }

  /// Changes the length. The elements stay where it is the same already; otherwise their values are
  /// undefined.
  void Resize(unsigned length);
  /// Makes the vector empty and releases its array.
  void Clear() noexcept;

 private:
  unsigned length_ = 0;
  std::unique_ptr<double[]> elements_;
};

/// Writes `[3]` and a line end for a vector of 3 elements, then the elements and a line end.
/// Between elements stands a blank; but if the stream has a field width, that is the width of each,
/// without blanks. Numbers have the stream's format.
VELUM_API std::ostream& operator<<(std::ostream& stream, const RVector& v);

}  // namespace vlm
