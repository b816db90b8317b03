#include <velum/numerics/RVector.h>

#include <velum/numerics/detail/NewDoubles.h>

#include <algorithm>
#include <utility>

namespace vlm {

RVector::RVector(unsigned length) : RVector() {
  Resize(length);
  std::fill(begin(), end(), 0.0);
}

RVector::RVector(const RVector& v) : RVector() { *this = v; }

RVector::RVector(RVector&& v) noexcept
    : length_(std::exchange(v.length_, 0)), elements_(std::move(v.elements_)) {}

RVector& RVector::operator=(const RVector& v) {
  if (this != &v) {
    Resize(v.length_);
    std::copy(v.begin(), v.end(), begin());
  }
  return *this;
}

RVector& RVector::operator=(RVector&& v) noexcept {
  if (this != &v) {
    length_ = std::exchange(v.length_, 0);
    elements_ = std::move(v.elements_);
  }
  return *this;
}

void RVector::Resize(unsigned length) {
  if (length == length_) return;
  elements_ = detail::NewDoubles(length);
  length_ = length;
}

void RVector::Clear() noexcept { *this = RVector(); }

}  // namespace vlm
