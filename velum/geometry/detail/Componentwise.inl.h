#pragma once

/// \file
/// Comparisons of two vectors axis by axis, from which the boxes are made. No branch is taken on a
/// single axis: all of them are compared and the answers combined.

namespace vlm::detail {

/// Tells whether every component of `a` is less than that of `b`.
template <class Vec>
[[nodiscard]] constexpr bool AllLess(const Vec& a, const Vec& b) noexcept {
  bool all = (a.x < b.x) & (a.y < b.y);
  if constexpr (Vec::kDimension > 2) {
    all &= a.z < b.z;
  }
  return all;
}

/// Tells whether every component of `a` is at most that of `b`.
template <class Vec>
[[nodiscard]] constexpr bool AllLessEqual(const Vec& a, const Vec& b) noexcept {
  bool all = (a.x <= b.x) & (a.y <= b.y);
  if constexpr (Vec::kDimension > 2) {
    all &= a.z <= b.z;
  }
  return all;
}

/// Tells whether some component of `a` is less than that of `b`.
template <class Vec>
[[nodiscard]] constexpr bool AnyLess(const Vec& a, const Vec& b) noexcept {
  bool any = (a.x < b.x) | (a.y < b.y);
  if constexpr (Vec::kDimension > 2) {
    any |= a.z < b.z;
  }
  return any;
}

/// Tells whether some component of `a` is at most that of `b`.
template <class Vec>
[[nodiscard]] constexpr bool AnyLessEqual(const Vec& a, const Vec& b) noexcept {
  bool any = (a.x <= b.x) | (a.y <= b.y);
  if constexpr (Vec::kDimension > 2) {
    any |= a.z <= b.z;
  }
  return any;
}

/// Returns the smaller of like components; that of `a` where they are equal or not comparable.
template <class Vec>
[[nodiscard]] constexpr Vec Lower(Vec a, const Vec& b) noexcept {
  a.x = b.x < a.x ? b.x : a.x;
  a.y = b.y < a.y ? b.y : a.y;
  if constexpr (Vec::kDimension > 2) {
    a.z = b.z < a.z ? b.z : a.z;
  }
  return a;
}

/// Returns the larger of like components; that of `a` where they are equal or not comparable.
template <class Vec>
[[nodiscard]] constexpr Vec Higher(Vec a, const Vec& b) noexcept {
  a.x = b.x > a.x ? b.x : a.x;
  a.y = b.y > a.y ? b.y : a.y;
  if constexpr (Vec::kDimension > 2) {
    a.z = b.z > a.z ? b.z : a.z;
  }
  return a;
}

}  // namespace vlm::detail
