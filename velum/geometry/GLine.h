#pragma once

/// \file
/// Line segments of the plane and of space: GLine2 and GLine3.
///
///     vlm::GLine2 edge(vlm::Vec2d(0, 0), vlm::Vec2d(3, 4));
///     double length = edge.GetBegin().Distance(edge.GetEnd());  // 5

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>

namespace vlm {

/// A directed line segment; use it as GLine2 or GLine3. It is a value, but one to derive from: its
/// destructor is virtual.
template <class Vec>
class VELUM_API BasicGLine {
 public:
  /// Makes a segment from the origin to the origin.
  BasicGLine() noexcept {}
  /// Makes a segment between two points.
  BasicGLine(const Vec& begin, const Vec& end) noexcept : begin_(begin), end_(end) {}
  /// Copies both points.
  BasicGLine(const BasicGLine& line) noexcept : begin_(line.begin_), end_(line.end_) {}
  virtual ~BasicGLine() {}

  /// Returns the point where the segment begins.
  [[nodiscard]] const Vec& GetBegin() const noexcept { return begin_; }
  /// Returns the point where the segment ends.
  [[nodiscard]] const Vec& GetEnd() const noexcept { return end_; }
  /// Sets both points, which may be the segment's own: `Set(GetEnd(), GetBegin())` turns it round.
  void Set(const Vec& begin, const Vec& end) noexcept {
    const Vec newEnd = end;
    begin_ = begin;
    end_ = newEnd;
  }

  /// Copies both points.
  BasicGLine& operator=(const BasicGLine& line) noexcept {
    Set(line.begin_, line.end_);
    return *this;
  }

 private:
  Vec begin_;
  Vec end_;
};

extern template class BasicGLine<Vec2d>;
extern template class BasicGLine<Vec3d>;

}  // namespace vlm
