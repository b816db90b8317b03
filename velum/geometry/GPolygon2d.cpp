#include <velum/geometry/GPolygon2d.h>

#include <velum/core/Exception.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/detail/MemoryError.h>
#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/RingOverlay.h>

#include <algorithm>
#include <utility>

namespace vlm {

namespace {

using detail::Overlay;
using detail::RingOperation;

constexpr char kSource[] = "GPolygon2d";

Box2d BoundsOf(const MultiPolygon2d& polygons) {
  Box2d bounds;
  for (const RingPolygon2d& polygon : polygons) {
    for (const Vec2d& p : polygon.outer()) bounds.ExtendBy(p);
  }
  return bounds;
}

template <class Point>
MultiPolygon2d FromContours(const Point* points, const unsigned int* counts,
                            unsigned int contourCount) {
  MultiPolygon2d polygons;
  InitMultiPolygon(points, counts, contourCount, polygons);
  return polygons;
}

MultiPolygon2d FromBox(const Box2d& box) {
  MultiPolygon2d polygons;
  polygons.resize(1);
  polygons[0].outer() = {Vec2d(box.xMin(), box.yMin()), Vec2d(box.xMin(), box.yMax()),
                         Vec2d(box.xMax(), box.yMax()), Vec2d(box.xMax(), box.yMin()),
                         Vec2d(box.xMin(), box.yMin())};
  return polygons;
}

MultiPolygon2d FromGPolygon(const GPolygon& polygon) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, false);
  return FromContours(points.data(), counts.data(), static_cast<unsigned int>(counts.size()));
}

enum class Position { kOutside, kBoundary, kInside };

// The position in a ring by the winding number, with every test exact.
Position Locate(const Vec2d& point, const Ring2d& ring) {
  if (ring.size() < 4) return Position::kOutside;
  int winding = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const Vec2d& from = ring[i - 1];
    const Vec2d& to = ring[i];
    if (from.y == point.y && to.y == point.y) {
      if (std::min(from.x, to.x) <= point.x && point.x <= std::max(from.x, to.x)) {
        return Position::kBoundary;
      }
      continue;
    }
    if (std::min(from.y, to.y) > point.y || std::max(from.y, to.y) < point.y) continue;
    const int side = detail::Orientation(from, to, point);
    if (side == 0) return Position::kBoundary;
    const bool fromAbove = from.y > point.y;
    const bool toAbove = to.y > point.y;
    if (fromAbove != toAbove && (side > 0) == toAbove) winding += toAbove ? 1 : -1;
  }
  return winding == 0 ? Position::kOutside : Position::kInside;
}

Position Locate(const Vec2d& point, const RingPolygon2d& polygon) {
  const Position outer = Locate(point, polygon.outer());
  if (outer != Position::kInside) return outer;
  for (const Ring2d& ring : polygon.inners()) {
    const Position inner = Locate(point, ring);
    if (inner == Position::kInside) return Position::kOutside;
    if (inner == Position::kBoundary) return Position::kBoundary;
  }
  return Position::kInside;
}

template <class Point>
unsigned int PutRings(const MultiPolygon2d& polygons, Point* points, unsigned int* counts,
                      bool close) {
  if (points) GetLegacyMultiPolygonCounts(counts, polygons, close);
  return GetLegacyMultiPolygonPoints(points, polygons, close);
}

template <class Point>
void FillVectors(const MultiPolygon2d& polygons, std::vector<Point>& points,
                 std::vector<unsigned int>& counts, bool close) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    const unsigned int total = GetLegacyMultiPolygonPoints(nullptr, polygons, close);
    const unsigned int rings = GetLegacyMultiPolygonCounts(nullptr, polygons, close);
    // Both get room before either changes.
    points.reserve(total);
    counts.reserve(rings);
    points.resize(total);
    counts.resize(rings);
    GetLegacyMultiPolygonPoints(points.data(), polygons, close);
    GetLegacyMultiPolygonCounts(counts.data(), polygons, close);
  });
}

template <class Point>
void FillVector(const MultiPolygon2d& polygons, std::vector<Point>& points) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    points.resize(GetLegacyMultiPolygonAsSinglePolygon(nullptr, polygons));
    GetLegacyMultiPolygonAsSinglePolygon(points.data(), polygons);
  });
}

}  // namespace

GPolygon2d::GPolygon2d() = default;

GPolygon2d::GPolygon2d(const Vec2d* points, unsigned int count) : GPolygon2d(points, &count, 1) {}

GPolygon2d::GPolygon2d(const POINT* points, unsigned int count) : GPolygon2d(points, &count, 1) {}

GPolygon2d::GPolygon2d(const Vec2d* points, const unsigned int* counts, unsigned int contourCount)
    : GPolygon2d() {
  Replace(FromContours(points, counts, contourCount));
}

GPolygon2d::GPolygon2d(const POINT* points, const unsigned int* counts, unsigned int contourCount)
    : GPolygon2d() {
  Replace(FromContours(points, counts, contourCount));
}

GPolygon2d::GPolygon2d(double x0, double y0, double x1, double y1) : GPolygon2d() {
  const Vec2d corners[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  const unsigned int count = 4;
  Replace(FromContours(corners, &count, 1));
}

GPolygon2d::GPolygon2d(const RECT& rectangle)
    : GPolygon2d(rectangle.left, rectangle.top, rectangle.right, rectangle.bottom) {}

GPolygon2d::GPolygon2d(const MultiPolygon2d& multiPolygon) : GPolygon2d() {
  Construct(multiPolygon);
}

GPolygon2d::GPolygon2d(const GPolygon& polygon) : GPolygon2d() { Replace(FromGPolygon(polygon)); }

GPolygon2d::GPolygon2d(const GPolygon2d& polygon)
    : polygons_(polygon.polygons_), box_(polygon.box_) {}

GPolygon2d::GPolygon2d(GPolygon2d&& polygon) noexcept { *this = std::move(polygon); }

GPolygon2d& GPolygon2d::operator=(const GPolygon2d& polygon) {
  if (&polygon != this) *this = GPolygon2d(polygon);
  return *this;
}

GPolygon2d& GPolygon2d::operator=(GPolygon2d&& polygon) noexcept {
  if (&polygon != this) {
    polygons_.swap(polygon.polygons_);
    box_ = polygon.box_;
    polygon.MakeEmpty();
  }
  return *this;
}

GPolygon2d::~GPolygon2d() = default;

unsigned int GPolygon2d::GetNumContours() const noexcept {
  return GetLegacyMultiPolygonCounts(nullptr, polygons_, false);
}

unsigned int GPolygon2d::GetContourVertexCount(unsigned int i) const {
  for (const RingPolygon2d& polygon : polygons_) {
    if (i == 0) return GetLegacyRingPoints(nullptr, polygon.outer(), false);
    if (--i < polygon.inners().size()) {
      return GetLegacyRingPoints(nullptr, polygon.inners()[i], false);
    }
    i -= static_cast<unsigned int>(polygon.inners().size());
  }
  ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
}

unsigned int GPolygon2d::GetTotalVertexCount() const noexcept {
  return GetLegacyMultiPolygonPoints(nullptr, polygons_, false);
}

void GPolygon2d::GetMultiPolygon(MultiPolygon2d& multiPolygon) const { multiPolygon = polygons_; }

unsigned int GPolygon2d::GetPolyPolygon(Vec2d* points, unsigned int* counts, bool close) const {
  return PutRings(polygons_, points, counts, close);
}

unsigned int GPolygon2d::GetPolyPolygon(POINT* points, unsigned int* counts, bool close) const {
  return PutRings(polygons_, points, counts, close);
}

unsigned int GPolygon2d::GetPolyPolygon(std::nullptr_t, unsigned int*, bool close) const {
  return GetLegacyMultiPolygonPoints(nullptr, polygons_, close);
}

void GPolygon2d::GetPolyPolygon(std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                                bool close) const {
  FillVectors(polygons_, points, counts, close);
}

void GPolygon2d::GetPolyPolygon(std::vector<POINT>& points, std::vector<unsigned int>& counts,
                                bool close) const {
  FillVectors(polygons_, points, counts, close);
}

unsigned int GPolygon2d::GetPolygon(Vec2d* points) const {
  return GetLegacyMultiPolygonAsSinglePolygon(points, polygons_);
}

unsigned int GPolygon2d::GetPolygon(POINT* points) const {
  return GetLegacyMultiPolygonAsSinglePolygon(points, polygons_);
}

unsigned int GPolygon2d::GetPolygon(std::nullptr_t) const {
  return GetLegacyMultiPolygonAsSinglePolygon(nullptr, polygons_);
}

void GPolygon2d::GetPolygon(std::vector<Vec2d>& points) const { FillVector(polygons_, points); }

void GPolygon2d::GetPolygon(std::vector<POINT>& points) const { FillVector(polygons_, points); }

bool GPolygon2d::PointInside(const Vec2d& point) const noexcept {
  for (const RingPolygon2d& polygon : polygons_) {
    const Position position = Locate(point, polygon);
    if (position != Position::kOutside) return position == Position::kInside;
  }
  return false;
}

bool GPolygon2d::IsRectangle(Box2d* box) const {
  if (polygons_.size() != 1) return false;
  const RingPolygon2d& polygon = polygons_.front();
  if (!polygon.inners().empty() || polygon.outer().size() != 5) return false;
  if (!detail::EqualsBox(polygon.outer(), box_)) return false;
  if (box) *box = box_;
  return true;
}

bool GPolygon2d::Decompose(DecomposeCallback callback, void* userData) const {
  return GPolygon(*this).Decompose(callback, userData);
}

void GPolygon2d::Construct(const MultiPolygon2d& multiPolygon) {
  Replace(MultiPolygon2d(multiPolygon));
}

void GPolygon2d::AddContours(const Vec2d* points, const unsigned int* counts,
                             unsigned int contourCount) {
  AddContours(GPolygon2d(points, counts, contourCount));
}

void GPolygon2d::AddContours(const POINT* points, const unsigned int* counts,
                             unsigned int contourCount) {
  AddContours(GPolygon2d(points, counts, contourCount));
}

void GPolygon2d::AddContours(const GPolygon2d& other) {
  MultiPolygon2d tail(other.polygons_);
  const std::size_t size = polygons_.size() + tail.size();
  if (polygons_.capacity() < size) polygons_.reserve(std::max(size, 2 * polygons_.capacity()));
  for (RingPolygon2d& polygon : tail) polygons_.push_back(std::move(polygon));
  box_.ExtendBy(Box2d(other.box_));
}

void GPolygon2d::MakeEmpty() noexcept {
  polygons_.clear();
  box_.MakeEmpty();
}

void GPolygon2d::Intersection(const GPolygon2d& other) {
  Replace(Overlay(RingOperation::kIntersection, polygons_, other.polygons_));
}

void GPolygon2d::Intersection(const Box2d& box) {
  Replace(Overlay(RingOperation::kIntersection, polygons_, FromBox(box)));
}

void GPolygon2d::Union(const GPolygon2d& other) {
  Replace(Overlay(RingOperation::kUnion, polygons_, other.polygons_));
}

void GPolygon2d::Difference(const GPolygon2d& other) {
  Replace(Overlay(RingOperation::kDifference, polygons_, other.polygons_));
}

void GPolygon2d::XOR(const GPolygon2d& other) {
  Replace(Overlay(RingOperation::kXor, polygons_, other.polygons_));
}

void GPolygon2d::Intersection(const GPolygon2d& other, GPolygon2d& result) const {
  if (&result != this && &result != &other) result.MakeEmpty();
  result.Replace(Overlay(RingOperation::kIntersection, polygons_, other.polygons_));
}

void GPolygon2d::Intersection(const Box2d& box, GPolygon2d& result) const {
  // A box of the result's own would not outlive the next step.
  const Box2d window = box;
  if (&result != this) result.MakeEmpty();
  result.Replace(Overlay(RingOperation::kIntersection, polygons_, FromBox(window)));
}

void GPolygon2d::Union(const GPolygon2d& other, GPolygon2d& result) const {
  if (&result != this && &result != &other) result.MakeEmpty();
  result.Replace(Overlay(RingOperation::kUnion, polygons_, other.polygons_));
}

void GPolygon2d::Difference(const GPolygon2d& other, GPolygon2d& result) const {
  if (&result != this && &result != &other) result.MakeEmpty();
  result.Replace(Overlay(RingOperation::kDifference, polygons_, other.polygons_));
}

void GPolygon2d::XOR(const GPolygon2d& other, GPolygon2d& result) const {
  if (&result != this && &result != &other) result.MakeEmpty();
  result.Replace(Overlay(RingOperation::kXor, polygons_, other.polygons_));
}

void GPolygon2d::RemoveZeroWidthReturnPaths() {
  if (!polygons_.empty()) Intersection(Box2d(box_));
}

void GPolygon2d::Replace(MultiPolygon2d&& polygons) {
  box_ = BoundsOf(polygons);
  polygons_ = std::move(polygons);
}

}  // namespace vlm
