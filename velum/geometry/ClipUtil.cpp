#include <velum/geometry/ClipUtil.h>

#include <velum/core/Exception.h>
#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/GLineClipPolygon.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/LineClip.h>

namespace vlm {

namespace {

void CheckArguments(const Vec2d* points, const unsigned* counts, unsigned n) {
  if (!points || !counts || n == 0) ThrowErrorImpl("ClipUtil", __LINE__, ERR_INTERNAL);
}

// Appends runs in the form of points and counts.
class Output {
 public:
  Output(std::vector<Vec2d>& points, std::vector<unsigned>& counts)
      : points_(points), counts_(counts) {}

  void Clip(const CLineClip& clipper, const Vec2d* points, unsigned count) {
    clipper.ClipPolyline(points, count, runPoints_, runCounts_);
    // Room for the counts first, so that nothing can fail between both.
    if (counts_.capacity() - counts_.size() < runCounts_.size()) {
      counts_.reserve(2 * (counts_.size() + runCounts_.size()));
    }
    points_.insert(points_.end(), runPoints_.begin(), runPoints_.end());
    counts_.insert(counts_.end(), runCounts_.begin(), runCounts_.end());
  }

  void Clip(const GLineClipPolygon& clipper, const Vec2d* points, unsigned count) {
    clipper.Clip(points, count, points_, counts_);
  }

 private:
  std::vector<Vec2d>& points_;
  std::vector<unsigned>& counts_;
  std::vector<Vec2d> runPoints_;
  std::vector<unsigned> runCounts_;
};

template <class Clipper>
void ClipEach(const Vec2d* points, const unsigned* counts, unsigned n, const Clipper& clipper,
              std::vector<Vec2d>& outPoints, std::vector<unsigned>& outCounts) {
  CheckArguments(points, counts, n);
  Output output(outPoints, outCounts);
  for (unsigned i = 0; i < n; ++i) {
    output.Clip(clipper, points, counts[i]);
    points += counts[i];
  }
}

template <class Clipper>
void ClipEachDash(const Vec2d* points, const unsigned* counts, unsigned n,
                  GDashLineGenerator& generator, const Clipper& clipper,
                  std::vector<Vec2d>& outPoints, std::vector<unsigned>& outCounts) {
  Output output(outPoints, outCounts);
  std::vector<GLine2> dashes;
  for (unsigned i = 0; i < n; ++i) {
    dashes.clear();
    generator.Decompose(points, counts[i], dashes);
    for (const GLine2& dash : dashes) {
      const Vec2d ends[] = {dash.GetBegin(), dash.GetEnd()};
      output.Clip(clipper, ends, 2);
    }
    points += counts[i];
  }
}

CLineClip RectangleClipper(Box2d box) {
  box.Normalize();
  return CLineClip(box);
}

}  // namespace

void GClipPolylinesToRect(const Vec2d* points, const unsigned* counts, unsigned n, const Box2d& box,
                          std::vector<Vec2d>& outPoints, std::vector<unsigned>& outCounts) {
  ClipEach(points, counts, n, RectangleClipper(box), outPoints, outCounts);
}

void GClipPolylinesToPolygon(const Vec2d* points, const unsigned* counts, unsigned n,
                             const GLineClipPolygon& polygon, std::vector<Vec2d>& outPoints,
                             std::vector<unsigned>& outCounts) {
  Box2d box;
  if (polygon.IsRectangle(&box)) {
    GClipPolylinesToRect(points, counts, n, box, outPoints, outCounts);
  } else {
    ClipEach(points, counts, n, polygon, outPoints, outCounts);
  }
}

void GClipPolylinesToPolygon(const Vec2d* points, const unsigned* counts, unsigned n,
                             const GPolygon& polygon, std::vector<Vec2d>& outPoints,
                             std::vector<unsigned>& outCounts) {
  CheckArguments(points, counts, n);
  Box2d box;
  if (polygon.IsRectangle(&box)) {
    GClipPolylinesToRect(points, counts, n, box, outPoints, outCounts);
  } else {
    GClipPolylinesToPolygon(points, counts, n, GLineClipPolygon(polygon), outPoints, outCounts);
  }
}

// The clipper is made once for all dashes.
void GClipDashedPolylinesToPolygon(const Vec2d* points, const unsigned* counts, unsigned n,
                                   GDashLineGenerator& generator, const GPolygon& polygon,
                                   std::vector<Vec2d>& outPoints,
                                   std::vector<unsigned>& outCounts) {
  CheckArguments(points, counts, n);
  Box2d box;
  bool isRectangle = polygon.IsRectangle(&box);
  GLineClipPolygon clipper;
  if (!isRectangle) {
    clipper = GLineClipPolygon(polygon);
    isRectangle = clipper.IsRectangle(&box);
  }
  if (isRectangle) {
    ClipEachDash(points, counts, n, generator, RectangleClipper(box), outPoints, outCounts);
  } else {
    ClipEachDash(points, counts, n, generator, clipper, outPoints, outCounts);
  }
}

}  // namespace vlm
