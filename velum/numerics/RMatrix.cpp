#include <velum/numerics/RMatrix.h>

#include <velum/numerics/detail/NewDoubles.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vlm {

RMatrix::RMatrix(unsigned rows, unsigned cols) : RMatrix() {
  Resize(rows, cols);
  std::fill(begin(), end(), 0.0);
}

RMatrix::RMatrix(const RMatrix& m) : RMatrix() { *this = m; }

RMatrix::RMatrix(RMatrix&& m) noexcept
    : rows_(std::exchange(m.rows_, 0)),
      cols_(std::exchange(m.cols_, 0)),
      elements_(std::move(m.elements_)) {}

RMatrix& RMatrix::operator=(const RMatrix& m) {
  if (this != &m) {
    Resize(m.rows_, m.cols_);
    std::copy(m.begin(), m.end(), begin());
  }
  return *this;
}

RMatrix& RMatrix::operator=(RMatrix&& m) noexcept {
  if (this != &m) {
    rows_ = std::exchange(m.rows_, 0);
    cols_ = std::exchange(m.cols_, 0);
    elements_ = std::move(m.elements_);
  }
  return *this;
}

void RMatrix::Resize(unsigned rows, unsigned cols) {
  if (rows == 0 || cols == 0) rows = cols = 0;
  if (rows == rows_ && cols == cols_) return;
  elements_ = detail::NewDoubles(std::uint64_t{rows} * cols);
  rows_ = rows;
  cols_ = cols;
}

void RMatrix::Clear() noexcept { *this = RMatrix(); }

}  // namespace vlm
