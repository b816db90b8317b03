#pragma once

/// \file
/// Clipping of segments and open paths to any polygon.
///
///     vlm::Vec2d const corners[] = {{0, 0}, {10, 0}, {5, 8}};
///     unsigned const count = 3;
///     vlm::GLineClipPolygon triangle(corners, &count, 1);
///     std::vector<vlm::GLine2> inside;
///     triangle.Clip(vlm::GLine2(vlm::Vec2d(-5, 4), vlm::Vec2d(15, 4)), inside);  // 2.5 to 7.5

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec2.h>

#include <memory>
#include <vector>

namespace vlm {

namespace detail {
class LineClipContour;
}

/// A polygon that lines are clipped to. Inside is what an odd number of its contours hold, so that
/// contours may cross themselves and each other.
///
/// A value, but one to derive from: its destructor is virtual. It keeps what it needs of the
/// polygon that it is made of.
///
/// The contours are kept as one path that goes through all of them and back along lines of no
/// width, as `GPolygon::GetPolygon` gives it, without points between two others on one line. This
/// is what the queries tell of. Lines are clipped to the contours alone: the ways between them
/// don't count, and neither do vertices that are not finite.
///
/// Pieces go from the end that comes first by x, then by y; they come in that order. A piece ends
/// where it meets an edge, and also where an edge begins that lies along it and whose neighbours
/// lie on both sides. What lies along the boundary counts as what comes before it, and as outside
/// at the beginning. Pieces whose length squared is at most 1e-10 are dropped. Coordinates whose
/// products leave the range of `double`, beyond 1e150 or below 1e-150, lose crossings.
///
/// Threads: clipping only reads the object; several threads may do so at once.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` where there is no memory; what was appended before stays.
///
/// *Cost*: making one is linear. A segment costs little more than the edges that it meets.
class VELUM_API GLineClipPolygon {
 public:
  /// Makes a clipper without contours, which lets everything pass.
  GLineClipPolygon() noexcept;
  /// Makes a clipper to a polygon. An empty polygon gives none, as above.
  explicit GLineClipPolygon(const GPolygon& polygon);
  /// Makes a clipper to several contours, `counts[i]` points each, one after the other in `points`.
  ///
  /// *Errors*: those of `GPolygon`.
  GLineClipPolygon(const Vec2d* points, const unsigned* counts, unsigned contourCount);
  /// Copies the polygon.
  GLineClipPolygon(const GLineClipPolygon& other);
  virtual ~GLineClipPolygon();

  /// Returns 1, the path through all contours; 0 if there is none.
  [[nodiscard]] unsigned GetNumContours() const noexcept;
  /// Returns the number of points of the path, the first repeated at its end; 0 unless `i` is 0.
  [[nodiscard]] unsigned GetContourVertexCount(unsigned i) const noexcept;
  /// Returns the number of points of the path.
  [[nodiscard]] unsigned GetTotalVertexCount() const noexcept;
  /// Returns the polygon's box.
  [[nodiscard]] const Box2d& GetBBox() const noexcept { return box_; }
  /// Appends the path to `out`.
  void GetPolygon(std::vector<Vec2d>& out) const;
  /// Tells whether the path is a rectangle with axis-parallel sides, of which the first is level.
  /// `box`, unless it is null, gets the polygon's box then.
  bool IsRectangle(Box2d* box) const noexcept;
  /// Tells whether a point is inside: whether the level line that comes to it from the left ends in
  /// a piece there, or one from it to the right of the left side does.
  ///
  /// - On the boundary, or so close to it that the piece would be dropped: either.
  [[nodiscard]] bool PointInside(const Vec2d& p) const;

  /// Appends the pieces of a segment that are inside.
  void Clip(const GLine2& line, std::vector<GLine2>& out) const;
  /// Appends the pieces of a path that are inside, segment by segment.
  void Clip(const GPolyline& line, std::vector<GLine2>& out) const;
  /// Appends the pieces of a path that are inside, segment by segment.
  ///
  /// - Fewer than 2 points, or a null array: nothing.
  void Clip(const Vec2d* points, unsigned count, std::vector<GLine2>& out) const;
  /// Appends the pieces of a path that are inside, joined to runs. A piece goes on where the last
  /// run ended, if one of its ends is there (within 1e-5). A last run of one segment is turned
  /// round in search of such an end and stays so. Runs that the vectors hold already go on as well.
  /// `points` must not lie in `outPoints`.
  ///
  /// - Fewer than 2 points, or a null array: nothing.
  void Clip(const Vec2d* points, unsigned count, std::vector<Vec2d>& outPoints,
            std::vector<unsigned>& outCounts) const;

  /// Copies the polygon.
  GLineClipPolygon& operator=(const GLineClipPolygon& other);

 protected:
  /// Replaces the polygon. If it fails it changes nothing.
  void Construct(const GPolygon& polygon);

 private:
  template <class Take>
  [[gnu::visibility("hidden")]] void ClipPath(const Vec2d* points, unsigned count,
                                              const Take& take) const;

  std::unique_ptr<detail::LineClipContour const> contour_;
  Box2d box_;
};

}  // namespace vlm
