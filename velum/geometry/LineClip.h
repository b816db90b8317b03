#pragma once

/// \file
/// Clipping of segments and polylines to a rectangle.
///
///     vlm::CLineClip window(vlm::Box2d(0, 0, 10, 10));
///     vlm::Vec2d a(-5, 5), b(5, 5);
///     bool visible = window.ClipLine(a, b);  // true, a is (0, 5)

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>

#include <boost/function/function2.hpp>

#include <vector>

namespace vlm {

/// A rectangle that lines are clipped to. The rectangle is closed: what lies on its edge is inside.
///
/// A value. A clipper without an area to clip to is disabled and lets everything pass unchanged.
///
/// Threads: clipping only reads the object; several threads may do so at once.
///
/// *Cost*: linear in the number of points. *Source*: the method of Cohen and Sutherland, in W. M.
/// Newman and R. F. Sproull, Principles of Interactive Computer Graphics (1973).
class VELUM_API CLineClip {
 public:
  /// Receives one visible run: its points and their number, good for the duration of the call.
  using Sink = boost::function<void(const Vec2d*, unsigned)>;

  /// Makes a disabled clipper over the empty box.
  CLineClip() noexcept {}
  /// Makes a clipper to `box`, as `SetClipRect` sets it.
  explicit CLineClip(const Box2d& box) noexcept { SetClipRect(box); }

  /// Tells whether lines are clipped.
  [[nodiscard]] bool IsClipEnabled() const noexcept { return enabled_; }
  /// Returns the rectangle, whether it is in force or not.
  [[nodiscard]] const Box2d& GetClipRect() const noexcept { return box_; }

  /// Stores a rectangle as it is. It is in force if it has an area: without width or height, or
  /// inverted, the clipper is disabled.
  void SetClipRect(const Box2d& box) noexcept {
    box_ = box;
    enabled_ = box.HasArea();
  }
  /// Reduces the rectangle to what it shares with `box`; a disabled clipper takes `box` as it is.
  ///
  /// - Nothing but an edge is shared, or nothing at all: the clipper is disabled.
  void IntersectClipRect(const Box2d& box) noexcept;
  /// Disables the clipper.
  void Clear() noexcept { enabled_ = false; }
  /// Enables or disables the clipper whatever its rectangle is.
  void SetClipEnabled(bool enabled) noexcept { enabled_ = enabled; }

  /// Clips a segment in place. False if nothing of it remains; its ends may have moved then.
  ///
  /// - Disabled: true, nothing moves.
  bool ClipLine(Vec2d& p0, Vec2d& p1) const noexcept;
  /// Clips a polyline and calls `sink` once for each visible run. A run goes on as long as each
  /// piece begins exactly where the one before it ended.
  ///
  /// - Disabled: one run, the polyline as it is.
  /// - One point: a run of that point if the rectangle contains it.
  /// - No points, or `points` null: no run.
  ///
  /// *Errors*: `boost::bad_function_call` for an empty `sink` when there is a run; `BadAllocError`
  /// when there is no memory for a run.
  void ClipPolyline(const Vec2d* points, unsigned count, Sink sink) const;
  /// Clips a polyline and replaces `outPoints` by the points of all runs, one after the other, and
  /// `outCounts` by their lengths. `points` must not lie in `outPoints`.
  void ClipPolyline(const Vec2d* points, unsigned count, std::vector<Vec2d>& outPoints,
                    std::vector<unsigned>& outCounts) const;

 protected:
  /// Tells which edges a point lies strictly beyond: 1 left of xMin, 2 right of xMax, 4 above
  /// yMax, 8 below yMin, added up; 0 inside and on the edge.
  [[nodiscard]] unsigned Classify(const Vec2d& p) const noexcept {
    return (p.x < box_.xMin() ? 1U : 0U) | (p.x > box_.xMax() ? 2U : 0U) |
           (p.y > box_.yMax() ? 4U : 0U) | (p.y < box_.yMin() ? 8U : 0U);
  }

 private:
  [[gnu::visibility("hidden")]] bool Clip(Vec2d& p0, Vec2d& p1, unsigned c0,
                                          unsigned c1) const noexcept;
  template <class Runs>
  [[gnu::visibility("hidden")]] void CollectRuns(const Vec2d* points, unsigned count,
                                                 Runs& runs) const;

  bool enabled_ = false;
  Box2d box_;
};

}  // namespace vlm
