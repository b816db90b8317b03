#include <velum/numerics/detail/GramSchmidt.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/detail/DotKernels.h>
#include <velum/numerics/detail/Singular.h>

#include <algorithm>
#include <cmath>

namespace vlm::detail {

// The triangle has room for a whole strip beyond its last column.
GramSchmidt::GramSchmidt(RMatrix& a)
    : kernels_(&SolverKernels()),
      rows_(a.nRows()),
      cols_(a.nCols()),
      done_(0),
      columns_(rows_ * cols_),
      triangle_(cols_ * (cols_ + kStripCols)),
      strip_(rows_ * kStripCols) {
  for (std::size_t left = 0; left < cols_; left += kStripCols) {
    const std::size_t count = std::min(kStripCols, cols_ - left);
    double* const first = a.Base() + left;
    Take(first, cols_, count);
    Subtract(done_, triangle_.data() + left, cols_ + kStripCols);
    if (isWhole_) isWhole_ = Orthogonalize(left, count);
    Give(first, cols_, count);
  }
}

void GramSchmidt::Take(const double* from, std::size_t stride, std::size_t count) noexcept {
  for (std::size_t i = 0; i < rows_; ++i) {
    double* const run = strip_.data() + i * kStripCols;
    std::fill(std::copy_n(from + i * stride, count, run), run + kStripCols, 0.0);
  }
}

void GramSchmidt::Give(double* to, std::size_t stride, std::size_t count) const noexcept {
  for (std::size_t i = 0; i < rows_; ++i) {
    std::copy_n(strip_.data() + i * kStripCols, count, to + i * stride);
  }
}

// Takes the first orthonormal columns out of the strip. The dot products with one of them are
// written side by side, `stride` from those with the next one.
void GramSchmidt::Subtract(std::size_t count, double* products, std::size_t stride) noexcept {
  StripStep step;
  for (std::size_t k = 0; k <= count; ++k) {
    step.nextColumn = k < count ? columns_.data() + k * rows_ : nullptr;
    step.products = products + k * stride;
    kernels_->stepStrip(rows_, strip_.data(), step);
    step.column = step.nextColumn;
    step.factors = step.products;
  }
}

// Makes the columns of the strip orthonormal, from the left. What a step does to those that are
// done does not matter: they are put back at the end.
bool GramSchmidt::Orthogonalize(std::size_t left, std::size_t count) noexcept {
  double squares[kStripCols] = {SumOfSquares(rows_, strip_.data(), kStripCols)};
  std::size_t c = 0;
  for (; c < count && !(squares[c] < EPSILON); ++c) {
    const double length = std::sqrt(squares[c]);
    double* const column = columns_.data() + (left + c) * rows_;
    for (std::size_t i = 0; i < rows_; ++i) column[i] = strip_[i * kStripCols + c];
    for (std::size_t i = 0; i < rows_; ++i) column[i] /= length;
    double* const products = triangle_.data() + (left + c) * (cols_ + kStripCols) + left;
    kernels_->stepStrip(rows_, strip_.data(), {.nextColumn = column, .products = products});
    kernels_->stepStrip(rows_, strip_.data(),
                        {.column = column, .factors = products, .squares = squares});
    products[c] = length;
  }
  done_ += c;
  for (std::size_t i = 0; i < rows_; ++i) {
    for (std::size_t j = 0; j < c; ++j) {
      strip_[i * kStripCols + j] = columns_[(left + j) * rows_ + i];
    }
  }
  return c == count;
}

bool GramSchmidt::Solve(const Columns& x, const Columns& b) {
  std::vector<double> products(done_ * kStripCols);
  for (std::size_t left = 0; left < b.count; left += kStripCols) {
    const std::size_t count = std::min<std::size_t>(kStripCols, b.count - left);
    Take(b.first + left, b.stride, count);
    Subtract(done_, products.data(), kStripCols);
    Give(b.first + left, b.stride, count);
    for (std::size_t k = 0; k < done_; ++k) {
      std::copy_n(products.data() + k * kStripCols, count, x.first + k * x.stride + left);
    }
  }
  return isWhole_ && Substitute(x);
}

bool GramSchmidt::Substitute(const Columns& x) const noexcept {
  const std::size_t stride = cols_ + kStripCols;
  for (std::size_t i = cols_; i-- > 0;) {
    const double* const row = triangle_.data() + i * stride;
    if (IsSingular(row[i])) return false;
    for (unsigned j = 0; j < x.count; ++j) {
      double* const column = x.first + j;
      const double sum = Dot(cols_ - i - 1, row + i + 1, column + (i + 1) * x.stride, x.stride);
      column[i * x.stride] = (column[i * x.stride] - sum) / row[i];
    }
  }
  return true;
}

}  // namespace vlm::detail
