#pragma once

/// \file
/// The mapping of one rectangle onto another, of data onto a page for example.
///
///     vlm::CRectTransformer toPage(vlm::Box2d(0, 0, 1, 1), vlm::Box2d(0, 0, 200, 100), true);
///     vlm::Vec2d p = toPage.Transform(vlm::Vec2d(1, 1));  // (150, 100): both scales are 100

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Maps a source rectangle onto a destination, centre on centre, and back. A plain value; it may be
/// used by any number of threads.
class VELUM_API CRectTransformer {
 public:
  /// Makes the mapping of `source` onto `destination`.
  ///
  /// - A source side shorter than 2.220446049250313e-16 in magnitude has no scale of its own: it
  ///   takes that of the other side, and both scales are 1 when both sides are so short.
  /// - `isotropic`: both scales take the smaller magnitude of the two, each with its own sign, so
  ///   that shapes keep their proportions.
  CRectTransformer(const Box2d& source, const Box2d& destination, bool isotropic) noexcept;

  /// Maps a point: (p - source centre) * scale + destination centre.
  [[nodiscard]] Vec2d Transform(const Vec2d& p) const noexcept;
  /// Maps both corners of a box. A scale below 0 inverts it.
  [[nodiscard]] Box2d Transform(const Box2d& box) const noexcept;
  /// Maps a point and rounds it half away from zero. A result beyond 32 bits wraps; one that is not
  /// finite, or beyond 64 bits, is 0.
  [[nodiscard]] POINT Transform(POINT const& p) const noexcept;
  /// Maps two opposite corners of a rectangle and rounds them as points.
  [[nodiscard]] RECT Transform(RECT const& rect) const noexcept;

  /// Maps a point back: (p - destination centre) / scale + source centre.
  [[nodiscard]] Vec2d ReverseTransform(const Vec2d& p) const noexcept;
  /// Maps both corners of a box back.
  [[nodiscard]] Box2d ReverseTransform(const Box2d& box) const noexcept;
  /// Maps a point back and rounds it as `Transform` does.
  [[nodiscard]] POINT ReverseTransform(POINT const& p) const noexcept;
  /// Maps two opposite corners of a rectangle back and rounds them as points.
  [[nodiscard]] RECT ReverseTransform(RECT const& rect) const noexcept;

  /// Returns the mapping as a matrix: `p * Mat3d(transformer)` is `Transform(p)` but for rounding.
  [[nodiscard]] operator Mat3d() const noexcept;

 private:
  Vec2d sourceCenter_;
  Vec2d destinationCenter_;
  Vec2d scale_;
};

}  // namespace vlm
