#pragma once

/// \file
/// Matrix products and transforms of points as plain loops, one number at a time, in the order that
/// the library promises. The library's own code is held against them bit for bit.

#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Vec.h>
#include <velum/platform/Types.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace vlm::reference {

/// The product with every sum in the order of its four terms.
template <class Mat>
Mat Product(const Mat& a, const Mat& b) {
  Mat product;
  for (std::size_t r = 0; r < 4; ++r) {
    for (std::size_t c = 0; c < 4; ++c) {
      auto sum = a[r][0] * b[0][c];
      for (std::size_t k = 1; k < 4; ++k) {
        sum += a[r][k] * b[k][c];
      }
      product[r][c] = sum;
    }
  }
  return product;
}

/// Rounds half away from zero and limits to 32 bits; NaN gives 0.
inline std::int32_t Saturated(double v) {
  if (std::isnan(v)) {
    return 0;
  }
  if (v < -2147483648.0) {
    return INT32_MIN;
  }
  return v > 2147483647.0 ? INT32_MAX : static_cast<std::int32_t>(std::round(v));
}

/// One coordinate of a transformed point, before any division.
template <class Mat, class Source>
typename Mat::Scalar Coordinate(const Mat& m, const Source& p, std::size_t column) {
  using T = typename Mat::Scalar;
  T sum = T(p.x) * m[0][column] + T(p.y) * m[1][column];
  if constexpr (requires { p.z; }) {
    sum += p.z * m[2][column];
  }
  return sum + m[3][column];
}

/// Transforms one point; `divides` says whether the homogeneous coordinate is divided by.
template <class Target, class Mat, class Source>
Target Transformed(const Mat& m, const Source& p, bool divides) {
  using T = typename Mat::Scalar;
  using Component = decltype(Target::x);
  T const w = divides ? Coordinate(m, p, 3) : T(1);
  const auto component = [&](std::size_t column) {
    T const v = Coordinate(m, p, column) / w;
    if constexpr (std::is_integral_v<Component>) {
      return Saturated(v);
    } else {
      return static_cast<Component>(v);
    }
  };
  Target target;
  target.x = component(0);
  target.y = component(1);
  if constexpr (requires { target.z; }) {
    target.z = component(2);
  }
  return target;
}

}  // namespace vlm::reference
