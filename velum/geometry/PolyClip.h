#pragma once

/// \file
/// Clipping of a closed path to a rectangle.
///
///     vlm::CPolyClip window(vlm::Box2d(0, 0, 10, 10));
///     vlm::Vec2d const triangle[] = {{-5, 5}, {5, 0}, {5, 10}};
///     vlm::CPodVector<vlm::Vec2d, 32> clipped;
///     unsigned count = window.Clip(triangle, 3, clipped);  // 4

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/PodVector.h>

namespace vlm {

/// A rectangle that areas are clipped to: the path is cut at one edge after the other.
///
/// A value. A path that the rectangle splits stays one path, joined along the rectangle's edges.
///
/// Threads: clipping only reads the object; several threads may do so at once.
///
/// *Source*: Sutherland and Hodgman, "Reentrant polygon clipping", 1974.
class VELUM_API CPolyClip {
 public:
  /// Makes a clipper to the empty box, which leaves nothing.
  CPolyClip() noexcept : CPolyClip(Box2d()) {}
  /// Makes a clipper to `box`, as `SetClipRect` sets it.
  explicit CPolyClip(const Box2d& box) noexcept { SetClipRect(box); }

  /// Sets the rectangle. An inverted one leaves nothing.
  void SetClipRect(const Box2d& box) noexcept {
    right_ = box.xMax();
    bottom_ = box.yMin();
    left_ = box.xMin();
    top_ = box.yMax();
  }
  /// Sets the rectangle of a box whose `yMin` is its top: the smaller y is `yMax`.
  void SetClipRectBLT(const Box2d& box) noexcept {
    right_ = box.xMax();
    bottom_ = box.yMax();
    left_ = box.xMin();
    top_ = box.yMin();
  }

  /// Appends the clipped path to `out` and returns the number of points that it has. Neither path
  /// repeats its first point at the end. What lies on an edge of the rectangle is inside. `points`
  /// must not lie in `out`.
  ///
  /// - No points, or `points` null: 0.
  ///
  /// *Errors*: `BadAllocError` when `out` can't grow; it holds some of the points then.
  unsigned Clip(const Vec2d* points, unsigned count, CPodVector<Vec2d, 32>& out) const;

 private:
  double right_;
  double bottom_;
  double left_;
  double top_;
};

}  // namespace vlm
