#pragma once

/// \file
/// Clipping of several polylines at once, plain or dashed, to a rectangle or a polygon.
///
///     std::vector<vlm::Vec2d> points;
///     std::vector<unsigned> counts;
///     vlm::GPolylineVectorToPolyPolyline(contourLines, points, counts);
///     std::vector<vlm::Vec2d> visible;
///     std::vector<unsigned> visibleCounts;
///     vlm::GClipPolylinesToPolygon(points.data(), counts.data(), unsigned(counts.size()), map,
///                                  visible, visibleCounts);
///
/// `points` holds the polylines one after the other, `counts` their lengths, `n` is their number.
/// The results are appended to the outputs in the same form; `points` must not lie in them.
///
/// *Errors* of all functions: `ERR_INTERNAL` for a null array or `n` = 0, and what the clippers
/// throw. What was appended before an error stays.

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec2.h>

#include <vector>

namespace vlm {

/// Clips to a rectangle, whose corners may stand either way round. One without width or height lets
/// everything pass, see CLineClip.
VELUM_API void GClipPolylinesToRect(const Vec2d* points, const unsigned* counts, unsigned n,
                                    const Box2d& box, std::vector<Vec2d>& outPoints,
                                    std::vector<unsigned>& outCounts);

/// Clips to a polygon; one that is a rectangle as `GClipPolylinesToRect` does.
VELUM_API void GClipPolylinesToPolygon(const Vec2d* points, const unsigned* counts, unsigned n,
                                       const GLineClipPolygon& polygon,
                                       std::vector<Vec2d>& outPoints,
                                       std::vector<unsigned>& outCounts);
/// Clips to a polygon; one that is a rectangle as `GClipPolylinesToRect` does.
VELUM_API void GClipPolylinesToPolygon(const Vec2d* points, const unsigned* counts, unsigned n,
                                       const GPolygon& polygon, std::vector<Vec2d>& outPoints,
                                       std::vector<unsigned>& outCounts);

/// Dashes the polylines, each as `GDashLineGenerator::Decompose` does, and clips every piece to a
/// polygon.
VELUM_API void GClipDashedPolylinesToPolygon(const Vec2d* points, const unsigned* counts,
                                             unsigned n, GDashLineGenerator& generator,
                                             const GPolygon& polygon, std::vector<Vec2d>& outPoints,
                                             std::vector<unsigned>& outCounts);

}  // namespace vlm
