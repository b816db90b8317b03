#include <velum/geometry/GPolyline.h>

#include <velum/geometry/Segments.h>
#include <velum/geometry/Thinning.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vlm {

namespace {

constexpr int kDeepestDivision = 20;

// Rounds half away from zero; what 32 bits can't hold gives the nearest integer, NaN gives 0. The
// sum is rounded itself, as it is part of the interface: the `double` below 0.5 gives 1.
std::int32_t Round(double value) noexcept {
  using Limits = std::numeric_limits<std::int32_t>;
  const double shifted = value < 0 ? value - 0.5 : value + 0.5;
  if (!(shifted == shifted)) return 0;
  if (shifted <= Limits::min()) return Limits::min();
  if (shifted >= Limits::max()) return Limits::max();
  return static_cast<std::int32_t>(shifted);
}

tagPOINT Round(const Vec2d& p) noexcept { return {Round(p.x), Round(p.y)}; }

Vec2d Mean(const Vec2d& u, const Vec2d& v) noexcept { return (u + v) * 0.5; }

}  // namespace

GPolyline::~GPolyline() {}

unsigned GPolyline::GetVertices(Vec2d* out) const noexcept {
  if (out) std::copy(vertices_.begin(), vertices_.end(), out);
  return GetNumVertices();
}

unsigned GPolyline::GetVertices(tagPOINT* out) const noexcept {
  if (out) {
    std::transform(vertices_.begin(), vertices_.end(), out,
                   [](const Vec2d& p) { return Round(p); });
  }
  return GetNumVertices();
}

unsigned GPolyline::GetVertices(std::vector<Vec2d>& out) const {
  out = vertices_;
  return GetNumVertices();
}

unsigned GPolyline::GetVertices(std::vector<tagPOINT>& out) const {
  out.resize(vertices_.size());
  return GetVertices(out.data());
}

void GPolyline::Empty() noexcept {
  vertices_.clear();
  box_.MakeEmpty();
}

void GPolyline::AppendPoint(const Vec2d& p) {
  const std::size_t n = vertices_.size();
  if (n == 1 && vertices_[0] == p) return;
  if (n >= 2 && GAreCollinear(vertices_[n - 2], vertices_[n - 1], p)) {
    vertices_[n - 1] = p;
  } else {
    vertices_.push_back(p);
  }
  box_.ExtendBy(p);
}

void GPolyline::Append(const Vec2d* points, unsigned count) {
  if (!points) return;
  for (unsigned i = 0; i < count; ++i) AppendPoint(points[i]);
}

void GPolyline::Append(const tagPOINT* points, unsigned count) {
  if (!points) return;
  for (unsigned i = 0; i < count; ++i) AppendPoint(Vec2d(points[i]));
}

void GPolyline::Append(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d, int depth) {
  // Copies, since the points may be the path's own.
  const Vec2d curve[] = {a, b, c, d};
  AppendPoint(curve[0]);
  Divide(curve[0], curve[1], curve[2], curve[3], std::clamp(depth, 1, kDeepestDivision));
}

void GPolyline::SubDivideGBez(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d,
                              int depth) {
  Divide(a, b, c, d, std::clamp(depth, 1, kDeepestDivision));
}

// De Casteljau's construction at the middle of the curve. Points come by value, so that they may
// be the path's own.
void GPolyline::Divide(Vec2d a, Vec2d b, Vec2d c, Vec2d d, int depth) {
  const Vec2d ab = Mean(a, b);
  const Vec2d bc = Mean(b, c);
  const Vec2d cd = Mean(c, d);
  const Vec2d abc = Mean(ab, bc);
  const Vec2d bcd = Mean(bc, cd);
  const Vec2d middle = Mean(abc, bcd);
  if (depth == 1) {
    AppendPoint(middle);
    AppendPoint(d);
  } else {
    Divide(a, ab, abc, middle, depth - 1);
    Divide(middle, bcd, cd, d, depth - 1);
  }
}

// Takes the points in place of the vertices. They are no more than these, so that the memory kept
// serves.
void GPolyline::Replace(const std::vector<Vec2d>& points) {
  Empty();
  Append(points.data(), static_cast<unsigned>(points.size()));
}

void GPolyline::ThinByAngularDeviation(double radians) {
  if (vertices_.empty()) return;
  std::vector<Vec2d> thin;
  GThinByAngularDeviation(vertices_.data(), GetNumVertices(), radians, thin);
  Replace(thin);
}

void GPolyline::ThinToMinimalDetail() {
  if (vertices_.empty()) return;
  std::vector<Vec2d> thin;
  GThinToMinimalDetail(vertices_.data(), GetNumVertices(), thin);
  Replace(thin);
}

GPolyline& GPolyline::operator=(const GPolyline& other) {
  vertices_ = other.vertices_;
  box_ = other.box_;
  return *this;
}

void GPolylineVectorToPolyPolyline(const std::vector<GPolyline>& polylines,
                                   std::vector<Vec2d>& points, std::vector<unsigned>& counts) {
  std::size_t total = points.size();
  for (const GPolyline& line : polylines) total += line.GetNumVertices();
  points.reserve(total);
  counts.reserve(counts.size() + polylines.size());
  for (const GPolyline& line : polylines) {
    const std::size_t size = points.size();
    points.resize(size + line.GetNumVertices());
    counts.push_back(line.GetVertices(points.data() + size));
  }
}

}  // namespace vlm
