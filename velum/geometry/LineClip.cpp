#include <velum/geometry/LineClip.h>

#include <velum/geometry/PodVector.h>

#include <cstddef>

namespace vlm {

namespace {

constexpr unsigned kLeft = 1;
constexpr unsigned kRight = 2;
constexpr unsigned kAbove = 4;
constexpr unsigned kBelow = 8;

// Where runs go. Types of this file's own, so that no compiler exports what they are given to.

// Gathers a run and hands it over at its end.
class ToSink {
 public:
  ToSink(const CLineClip::Sink& sink, unsigned count) : sink_(sink) {
    run_.reserve(count);  // a run has at most one point more than it has segments
  }

  [[nodiscard]] bool Continues(const Vec2d& p) const { return !run_.empty() && run_.back() == p; }
  void Append(const Vec2d& p) { run_.push_back(p); }
  void EndRun() {
    if (!run_.empty()) sink_(run_.data(), static_cast<unsigned>(run_.size()));
    run_.clear();
  }

 private:
  const CLineClip::Sink& sink_;
  CPodVector<Vec2d, 32> run_;
};

// Writes runs where they belong, one behind the other.
class ToVectors {
 public:
  ToVectors(std::vector<Vec2d>& points, std::vector<unsigned>& counts, unsigned count)
      : points_(points), counts_(counts) {
    points_.reserve(count);
  }

  [[nodiscard]] bool Continues(const Vec2d& p) const {
    return points_.size() != begin_ && points_.back() == p;
  }
  void Append(const Vec2d& p) { points_.push_back(p); }
  void EndRun() {
    if (points_.size() == begin_) return;
    counts_.push_back(static_cast<unsigned>(points_.size() - begin_));
    begin_ = points_.size();
  }

 private:
  std::vector<Vec2d>& points_;
  std::vector<unsigned>& counts_;
  std::size_t begin_ = 0;
};

}  // namespace

void CLineClip::IntersectClipRect(const Box2d& box) noexcept {
  Box2d shared = box;
  if (enabled_) {
    shared = box_;
    shared.Intersect(box);
  }
  SetClipRect(shared);
}

bool CLineClip::ClipLine(Vec2d& p0, Vec2d& p1) const noexcept {
  return !enabled_ || Clip(p0, p1, Classify(p0), Classify(p1));
}

// Cohen and Sutherland, with each end moved at most once along x and once along y. The slope is
// that of the whole segment all along.
bool CLineClip::Clip(Vec2d& p0, Vec2d& p1, unsigned c0, unsigned c1) const noexcept {
  if ((c0 & c1) != 0) return false;
  if ((c0 | c1) == 0) return true;
  const double dx = p1.x - p0.x;
  const double dy = p1.y - p0.y;
  if ((c0 & (kLeft | kRight)) != 0) {
    const double edge = (c0 & kLeft) != 0 ? box_.xMin() : box_.xMax();
    p0.y = (edge - p0.x) * dy / dx + p0.y;
    p0.x = edge;
    const unsigned beyond = p0.y < box_.yMin() ? kBelow : p0.y > box_.yMax() ? kAbove : 0;
    if ((beyond & c1) != 0) return false;
    c0 = beyond;
    if ((c0 | c1) == 0) return true;
  }
  if ((c0 & (kAbove | kBelow)) != 0) {
    const double edge = (c0 & kBelow) != 0 ? box_.yMin() : box_.yMax();
    p0.x = p0.x + (edge - p0.y) * dx / dy;
    p0.y = edge;
    if (p0.x < box_.xMin() || p0.x > box_.xMax()) return false;
    if (c1 == 0) return true;
  }
  if ((c1 & (kLeft | kRight)) != 0) {
    const double edge = (c1 & kLeft) != 0 ? box_.xMin() : box_.xMax();
    p1.y = p1.y + (edge - p1.x) * dy / dx;
    p1.x = edge;
    if (p1.y >= box_.yMin() && p1.y <= box_.yMax()) return true;
    c1 = p1.y > box_.yMax() ? kAbove : kBelow;
  }
  if ((c1 & (kAbove | kBelow)) != 0) {
    const double edge = (c1 & kBelow) != 0 ? box_.yMin() : box_.yMax();
    p1.x = dx * (edge - p1.y) / dy + p1.x;
    p1.y = edge;
  }
  return true;
}

// Gives each run of a polyline to `runs`.
template <class Runs>
void CLineClip::CollectRuns(const Vec2d* points, unsigned count, Runs& runs) const {
  if (!enabled_ || count == 1) {
    if (enabled_ && !box_.Contains(points[0])) return;
    for (unsigned i = 0; i < count; ++i) runs.Append(points[i]);
  } else {
    unsigned c0 = Classify(points[0]);
    for (unsigned i = 1; i < count; ++i) {
      const unsigned c1 = Classify(points[i]);
      Vec2d p0 = points[i - 1];
      Vec2d p1 = points[i];
      if ((c0 & c1) == 0 && ((c0 | c1) == 0 || Clip(p0, p1, c0, c1))) {
        if (!runs.Continues(p0)) {
          runs.EndRun();
          runs.Append(p0);
        }
        runs.Append(p1);
      } else {
        runs.EndRun();
      }
      c0 = c1;
    }
  }
  runs.EndRun();
}

void CLineClip::ClipPolyline(const Vec2d* points, unsigned count, Sink sink) const {
  if (count == 0 || !points) return;
  if (!enabled_) {
    sink(points, count);
    return;
  }
  ToSink runs(sink, count);
  CollectRuns(points, count, runs);
}

void CLineClip::ClipPolyline(const Vec2d* points, unsigned count, std::vector<Vec2d>& outPoints,
                             std::vector<unsigned>& outCounts) const {
  outPoints.clear();
  outCounts.clear();
  if (count == 0 || !points) return;
  ToVectors runs(outPoints, outCounts, count);
  CollectRuns(points, count, runs);
}

}  // namespace vlm
