#include <velum/geometry/GLineClipPolygon.h>

#include <velum/geometry/GLine.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolyline.h>
#include <velum/geometry/detail/LineClipContour.h>
#include <velum/geometry/detail/MemoryError.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vlm {

namespace {

constexpr char kSource[] = "GLineClipPolygon";

// Squared lengths up to this are none: pieces are dropped, and points are joined.
constexpr double kNoLength = 1e-10;

// Where pieces go. Types of this file's own, so that no compiler exports what they are given to.
struct ToLines {
  std::vector<GLine2>& out;

  void operator()(const Vec2d& begin, const Vec2d& end) const { out.emplace_back(begin, end); }
};

struct ToRuns {
  std::vector<Vec2d>& points;
  std::vector<unsigned>& counts;

  void operator()(const Vec2d& begin, const Vec2d& end) const {
    if (Continue(begin, end)) return;
    counts.push_back(2);
    try {
      points.insert(points.end(), {begin, end});
    } catch (...) {
      counts.pop_back();
      throw;
    }
  }

 private:
  // Appends the piece to the last run if one of its ends is where that run ended, or may have
  // ended: a run of one segment has no direction yet.
  [[nodiscard]] bool Continue(const Vec2d& begin, const Vec2d& end) const {
    if (counts.empty() || points.empty()) return false;
    if (Append(begin, end)) return true;
    const std::size_t size = points.size();
    if (counts.back() != 2 || size < 2) return false;
    std::swap(points[size - 2], points[size - 1]);
    return Append(begin, end);
  }

  [[nodiscard]] bool Append(const Vec2d& begin, const Vec2d& end) const {
    const Vec2d last = points.back();
    const bool isForward = last.DistanceSquared(begin) <= kNoLength;
    if (!isForward && !(last.DistanceSquared(end) <= kNoLength)) return false;
    points.push_back(isForward ? end : begin);
    ++counts.back();
    return true;
  }
};

}  // namespace

GLineClipPolygon::GLineClipPolygon() noexcept {}

GLineClipPolygon::GLineClipPolygon(const GPolygon& polygon) { Construct(polygon); }

GLineClipPolygon::GLineClipPolygon(const Vec2d* points, const unsigned* counts,
                                   unsigned contourCount) {
  Construct(GPolygon(points, counts, contourCount));
}

GLineClipPolygon::GLineClipPolygon(const GLineClipPolygon& other) { *this = other; }

GLineClipPolygon::~GLineClipPolygon() {}

GLineClipPolygon& GLineClipPolygon::operator=(const GLineClipPolygon& other) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    contour_ =
        other.contour_ ? std::make_unique<detail::LineClipContour>(*other.contour_) : nullptr;
  });
  box_ = other.box_;
  return *this;
}

void GLineClipPolygon::Construct(const GPolygon& polygon) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    std::vector<Vec2d> path;
    std::vector<Vec2d> points;
    std::vector<unsigned> counts;
    polygon.GetPolygon(path);
    polygon.GetPolyPolygon(points, counts, false);
    contour_ =
        path.empty() ? nullptr : std::make_unique<detail::LineClipContour>(path, points, counts);
  });
  box_ = polygon.GetBBox();
}

unsigned GLineClipPolygon::GetNumContours() const noexcept { return contour_ ? 1 : 0; }

unsigned GLineClipPolygon::GetContourVertexCount(unsigned i) const noexcept {
  return i == 0 ? GetTotalVertexCount() : 0;
}

unsigned GLineClipPolygon::GetTotalVertexCount() const noexcept {
  return contour_ ? static_cast<unsigned>(contour_->GetPath().size()) : 0;
}

void GLineClipPolygon::GetPolygon(std::vector<Vec2d>& out) const {
  if (!contour_) return;
  const std::vector<Vec2d>& path = contour_->GetPath();
  detail::WithMemoryError(kSource, __LINE__,
                          [&] { out.insert(out.end(), path.begin(), path.end()); });
}

bool GLineClipPolygon::IsRectangle(Box2d* box) const noexcept {
  if (GetTotalVertexCount() != 5) return false;
  const std::vector<Vec2d>& p = contour_->GetPath();
  if (p[0].y != p[1].y || p[2].y != p[3].y || p[1].x != p[2].x || p[0].x != p[3].x) return false;
  if (box) *box = box_;
  return true;
}

bool GLineClipPolygon::PointInside(const Vec2d& p) const {
  if (!box_.Contains(p)) return false;
  for (const Vec2d& from : {Vec2d(box_.xMin() - 1.0, p.y), Vec2d(box_.xMin() + 1.0, p.y)}) {
    std::vector<GLine2> pieces;
    Clip(GLine2(from, p), pieces);
    const bool endsAtPoint = std::any_of(pieces.begin(), pieces.end(), [&](const GLine2& piece) {
      return piece.GetBegin().x == p.x || piece.GetEnd().x == p.x;
    });
    if (endsAtPoint) return true;
  }
  return false;
}

template <class Take>
void GLineClipPolygon::ClipPath(const Vec2d* points, unsigned count, const Take& take) const {
  if (!points) return;
  const auto takeLong = [&](const Vec2d& begin, const Vec2d& end) {
    if (begin.DistanceSquared(end) > kNoLength) take(begin, end);
  };
  detail::WithMemoryError(kSource, __LINE__, [&] {
    detail::LineClipContour::Crossings crossings;
    std::vector<detail::LineClipContour::Piece> pieces;
    for (unsigned i = 1; i < count; ++i) {
      const Vec2d& begin = points[i - 1];
      const Vec2d& end = points[i];
      if (begin.DistanceSquared(end) <= kNoLength) continue;
      if (contour_) {
        contour_->Clip(begin, end, crossings, pieces);
        for (const auto& piece : pieces) takeLong(piece.begin, piece.end);
      } else if (end < begin) {
        takeLong(end, begin);
      } else {
        takeLong(begin, end);
      }
    }
  });
}

void GLineClipPolygon::Clip(const GLine2& line, std::vector<GLine2>& out) const {
  const Vec2d points[] = {line.GetBegin(), line.GetEnd()};
  ClipPath(points, 2, ToLines{out});
}

void GLineClipPolygon::Clip(const GPolyline& line, std::vector<GLine2>& out) const {
  const unsigned count = line.GetNumVertices();
  if (count >= 2) ClipPath(&line[0], count, ToLines{out});
}

void GLineClipPolygon::Clip(const Vec2d* points, unsigned count, std::vector<GLine2>& out) const {
  ClipPath(points, count, ToLines{out});
}

void GLineClipPolygon::Clip(const Vec2d* points, unsigned count, std::vector<Vec2d>& outPoints,
                            std::vector<unsigned>& outCounts) const {
  ClipPath(points, count, ToRuns{outPoints, outCounts});
}

}  // namespace vlm
