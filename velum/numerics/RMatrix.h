#pragma once

/// \file
/// The matrix of the numerical code: doubles in any number of rows and columns.
///
///     vlm::RMatrix m(2, 3);  // all 0
///     m(1, 2) = 2.5;
///     const double* secondRow = m.Base(1, 0);
///
/// What is done with matrices stands in Matrices.h and in the headers that it includes.

#include <velum/core/Api.h>

#include <cstddef>
#include <iosfwd>
#include <memory>

namespace vlm {

/// A matrix of doubles, of a size that is settled at run time, stored row by row: element (i, j)
/// stands at `i * nCols() + j`.
///
/// A value: a copy is deep, and no two matrices hold the same array. Rows and columns are counted
/// from 0, and either there are both or there is neither: a size with a 0 in it is 0 by 0. No
/// operation checks an index or a size. Any number of threads may read one matrix.
///
/// What asks for memory throws `std::bad_alloc` when there is none, and for 2^29 elements or more,
/// whose bytes 32 bits can't count; the matrix is then as it was.
class VELUM_API RMatrix {
 public:
  /// Makes an empty matrix.
  RMatrix() noexcept = default;
  /// Makes a matrix of zeros, an empty one if `rows` or `cols` is 0.
  RMatrix(unsigned rows, unsigned cols);
  /// Copies the elements.
  RMatrix(const RMatrix& m);
  /// Takes the elements of `m`, which becomes empty.
  RMatrix(RMatrix&& m) noexcept;
  /// Releases the elements.
  ~RMatrix() = default;

  /// Copies the elements. The array stays the same one where the size does.
  RMatrix& operator=(const RMatrix& m);
  /// Takes the elements of `m`, which becomes empty unless it is this matrix.
  RMatrix& operator=(RMatrix&& m) noexcept;

  /// Returns the number of rows.
  [[nodiscard]] unsigned nRows() const noexcept { return rows_; }
  /// Returns the number of columns.
  [[nodiscard]] unsigned nCols() const noexcept { return cols_; }
  /// Tells whether there are no elements.
  [[nodiscard]] bool empty() const noexcept { return rows_ == 0; }
  /// Returns the element in row `i` and column `j`.
  [[nodiscard]] double operator()(unsigned i, unsigned j) const noexcept { return *Base(i, j); }
  /// Returns the element in row `i` and column `j` for writing. *Lifetime:* until the size changes.
  [[nodiscard]] double& operator()(unsigned i, unsigned j) noexcept { return *Base(i, j); }

  /// Returns the array, null if it is empty. *Lifetime:* until the size changes.
  [[nodiscard]] const double* Base() const noexcept { return elements_.get(); }
  /// Returns the array, null if it is empty. *Lifetime:* until the size changes.
  [[nodiscard]] double* Base() noexcept { return elements_.get(); }
  /// Returns the address of the element in row `i` and column `j`. *Lifetime:* until the size
  /// changes.
  [[nodiscard]] const double* Base(unsigned i, unsigned j) const noexcept {
    return elements_.get() + (std::size_t{i} * cols_ + j);
  }
  /// Returns the address of the element in row `i` and column `j`. *Lifetime:* until the size
  /// changes.
  [[nodiscard]] double* Base(unsigned i, unsigned j) noexcept {
    return elements_.get() + (std::size_t{i} * cols_ + j);
  }
  /// Returns the address of the first element. *Lifetime:* until the size changes.
  [[nodiscard]] const double* begin() const noexcept { return elements_.get(); }
  /// Returns the address of the first element. *Lifetime:* until the size changes.
  [[nodiscard]] double* begin() noexcept { return elements_.get(); }
  /// Returns the address past the last element. *Lifetime:* until the size changes.
  [[nodiscard]] const double* end() const noexcept { return Base(rows_, 0); }
  /// Returns the address past the last element. *Lifetime:* until the size changes.
  [[nodiscard]] double* end() noexcept { return Base(rows_, 0); }

  /// Changes the size; a 0 makes the matrix empty. The elements stay where both numbers are the
  /// same already; otherwise their values are undefined.
  void Resize(unsigned rows, unsigned cols);
  /// Makes the matrix empty and releases its array.
  void Clear() noexcept;

 private:
  unsigned rows_ = 0;
  unsigned cols_ = 0;
  std::unique_ptr<double[]> elements_;
};

/// Writes `[2,3]` and a line end for a matrix of 2 rows and 3 columns, then each row and a line
/// end. Between the elements of a row stands a blank; but if the stream has a field width, that is
/// the width of each, without blanks. Numbers have the stream's format.
VELUM_API std::ostream& operator<<(std::ostream& stream, const RMatrix& m);

}  // namespace vlm
