#include <velum/geometry/GPolygon.h>

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/PolygonRings.h>
#include <velum/geometry/detail/EvenOdd.h>
#include <velum/geometry/detail/GpcAlloc.h>
#include <velum/geometry/detail/MemoryError.h>
#include <velum/geometry/detail/RoundedPoint.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace vlm {

namespace {

constexpr char kSource[] = "GPolygon";

[[noreturn]] void ThrowOutOfMemory(int line) { ThrowErrorImpl(kSource, line, ERR_OUT_OF_MEMORY); }

void RequireArray(const void* array, unsigned int count) {
  if (!array && count > 0) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
}

std::int32_t CheckedCount(std::size_t count) {
  if (count > std::numeric_limits<std::int32_t>::max()) ThrowOutOfMemory(__LINE__);
  return static_cast<std::int32_t>(count);
}

template <class T>
T* Allocate(std::size_t count) {
  if (count == 0) return nullptr;
  void* const block = detail::gpcMalloc(count * sizeof(T));
  if (!block) ThrowOutOfMemory(__LINE__);
  return static_cast<T*>(block);
}

Vec2d ToVec(const gpc_vertex& v) noexcept { return Vec2d(v.x, v.y); }

std::size_t SizeOf(const gpc_vertex_list& contour) noexcept {
  return static_cast<std::size_t>(contour.num_vertices);
}

std::size_t SizeOf(const gpc_polygon& polygon) noexcept {
  return static_cast<std::size_t>(polygon.num_contours);
}

// Contours under construction, which are freed unless they are handed over.
class Contours {
 public:
  explicit Contours(std::size_t count) {
    const std::int32_t checked = CheckedCount(count);
    polygon_.hole = Allocate<std::int32_t>(count);
    try {
      polygon_.contour = Allocate<gpc_vertex_list>(count);
    } catch (...) {
      std::free(polygon_.hole);
      throw;
    }
    std::fill_n(polygon_.hole, count, 0);
    std::fill_n(polygon_.contour, count, gpc_vertex_list{});
    polygon_.num_contours = checked;
  }
  Contours(const Contours&) = delete;
  Contours& operator=(const Contours&) = delete;
  ~Contours() { gpc_free_polygon(&polygon_); }

  // Fills the next contour with what `point(0)` to `point(count - 1)` give.
  template <class PointAt>
  void Add(std::size_t count, std::int32_t hole, PointAt point) {
    gpc_vertex_list& contour = polygon_.contour[filled_];
    polygon_.hole[filled_++] = hole;
    const std::int32_t checked = CheckedCount(count);
    contour.vertex = Allocate<gpc_vertex>(count);
    contour.num_vertices = checked;
    for (std::size_t i = 0; i < count; ++i) contour.vertex[i] = point(i);
  }

  // Takes over the contours of a list, which is left empty.
  void TakeFrom(gpc_polygon& polygon) noexcept {
    std::copy_n(polygon.hole, SizeOf(polygon), polygon_.hole + filled_);
    std::copy_n(polygon.contour, SizeOf(polygon), polygon_.contour + filled_);
    filled_ += SizeOf(polygon);
    polygon.num_contours = 0;
    gpc_free_polygon(&polygon);
  }

  // Hands the list over.
  gpc_polygon Take() noexcept { return std::exchange(polygon_, gpc_polygon{}); }

 private:
  gpc_polygon polygon_{};
  std::size_t filled_ = 0;
};

gpc_polygon* Mutable(const gpc_polygon& polygon) noexcept {
  return const_cast<gpc_polygon*>(&polygon);
}

template <class Point>
gpc_polygon MakeContours(const Point* points, const unsigned int* counts,
                         unsigned int contourCount) {
  RequireArray(counts, contourCount);
  Contours contours(contourCount);
  for (unsigned int i = 0; i < contourCount; ++i) {
    RequireArray(points, counts[i]);
    const std::size_t count = counts[i];
    const bool isClosed =
        count > 1 && points[0].x == points[count - 1].x && points[0].y == points[count - 1].y;
    contours.Add(count - isClosed, 0, [&](std::size_t k) {
      return gpc_vertex{static_cast<double>(points[k].x), static_cast<double>(points[k].y)};
    });
    points += count;
  }
  return contours.Take();
}

template <class Conversion>
gpc_polygon CopyContours(const gpc_polygon& polygon, Conversion convert) {
  Contours contours(SizeOf(polygon));
  for (std::size_t i = 0; i < SizeOf(polygon); ++i) {
    const gpc_vertex_list& contour = polygon.contour[i];
    contours.Add(SizeOf(contour), polygon.hole[i],
                 [&](std::size_t k) { return convert(contour.vertex[k]); });
  }
  return contours.Take();
}

template <class Point>
unsigned int PutContours(const gpc_polygon& polygon, Point* points, unsigned int* counts,
                         bool close) {
  unsigned int total = 0;
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) {
    const gpc_vertex_list& contour = polygon.contour[i];
    const std::size_t size = SizeOf(contour);
    const std::size_t count = size + (close && size > 0);
    if (points) {
      for (std::size_t k = 0; k < size; ++k) {
        detail::PutPoint(ToVec(contour.vertex[k]), points[total + k]);
      }
      if (count > size) points[total + size] = points[total];
    }
    if (counts) counts[i] = static_cast<unsigned int>(count);
    total += static_cast<unsigned int>(count);
  }
  return total;
}

template <class Point>
unsigned int PutSinglePath(const gpc_polygon& polygon, Point* points) {
  unsigned int total = PutContours(polygon, points, nullptr, true);
  bool isLast = true;
  for (std::int32_t i = polygon.num_contours; i-- > 0;) {
    const gpc_vertex_list& contour = polygon.contour[i];
    if (SizeOf(contour) == 0) continue;
    if (!isLast) {
      if (points) detail::PutPoint(ToVec(contour.vertex[0]), points[total]);
      ++total;
    }
    isLast = false;
  }
  return total;
}

template <class Point>
void FillVectors(const GPolygon& polygon, std::vector<Point>& points,
                 std::vector<unsigned int>& counts, bool close) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    const unsigned int total = polygon.GetPolyPolygon(nullptr, nullptr, close);
    // Both get room before either changes.
    points.reserve(total);
    counts.reserve(polygon.GetNumContours());
    points.resize(total);
    counts.resize(polygon.GetNumContours());
    polygon.GetPolyPolygon(points.data(), counts.data(), close);
  });
}

template <class Point>
void FillVector(const GPolygon& polygon, std::vector<Point>& points) {
  detail::WithMemoryError(kSource, __LINE__, [&] {
    points.resize(polygon.GetPolygon(nullptr));
    polygon.GetPolygon(points.data());
  });
}

}  // namespace

GPolygon::GPolygon(const Vec2d* points, unsigned int count) { Construct(points, count); }

GPolygon::GPolygon(const POINT* points, unsigned int count) { Construct(points, count); }

GPolygon::GPolygon(const Vec2d* points, const unsigned int* counts, unsigned int contourCount) {
  Construct(points, counts, contourCount);
}

GPolygon::GPolygon(const POINT* points, const unsigned int* counts, unsigned int contourCount) {
  Construct(points, counts, contourCount);
}

GPolygon::GPolygon(double x0, double y0, double x1, double y1) { Construct(x0, y0, x1, y1); }

GPolygon::GPolygon(const RECT& rectangle)
    : GPolygon(rectangle.left, rectangle.top, rectangle.right, rectangle.bottom) {}

GPolygon::GPolygon(const GPolygon2d& polygon) { Construct(polygon); }

GPolygon::GPolygon(const GPolygon& polygon) { Construct(polygon); }

GPolygon::GPolygon(GPolygon&& polygon) noexcept { polygon.MoveTo(*this); }

GPolygon& GPolygon::operator=(const GPolygon& polygon) {
  Construct(polygon);
  return *this;
}

GPolygon& GPolygon::operator=(GPolygon&& polygon) noexcept {
  polygon.MoveTo(*this);
  return *this;
}

GPolygon::~GPolygon() { gpc_free_polygon(&contours_); }

unsigned int GPolygon::GetContourVertexCount(unsigned int i) const {
  if (i >= GetNumContours()) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  return static_cast<unsigned int>(contours_.contour[i].num_vertices);
}

unsigned int GPolygon::GetTotalVertexCount() const noexcept {
  return PutContours<Vec2d>(contours_, nullptr, nullptr, false);
}

unsigned int GPolygon::GetPolyPolygon(Vec2d* points, unsigned int* counts,
                                      bool close) const noexcept {
  return PutContours(contours_, points, counts, close);
}

unsigned int GPolygon::GetPolyPolygon(POINT* points, unsigned int* counts,
                                      bool close) const noexcept {
  return PutContours(contours_, points, counts, close);
}

unsigned int GPolygon::GetPolyPolygon(std::nullptr_t, unsigned int* counts,
                                      bool close) const noexcept {
  return PutContours<Vec2d>(contours_, nullptr, counts, close);
}

void GPolygon::GetPolyPolygon(std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                              bool close) const {
  FillVectors(*this, points, counts, close);
}

void GPolygon::GetPolyPolygon(std::vector<POINT>& points, std::vector<unsigned int>& counts,
                              bool close) const {
  FillVectors(*this, points, counts, close);
}

unsigned int GPolygon::GetPolygon(Vec2d* points) const noexcept {
  return PutSinglePath(contours_, points);
}

unsigned int GPolygon::GetPolygon(POINT* points) const noexcept {
  return PutSinglePath(contours_, points);
}

unsigned int GPolygon::GetPolygon(std::nullptr_t) const noexcept {
  return PutSinglePath<Vec2d>(contours_, nullptr);
}

void GPolygon::GetPolygon(std::vector<Vec2d>& points) const { FillVector(*this, points); }

void GPolygon::GetPolygon(std::vector<POINT>& points) const { FillVector(*this, points); }

bool GPolygon::PointInside(const Vec2d& point) const noexcept {
  if (!box_.Contains(point)) return false;
  Box2d rectangle;
  if (IsRectangle(&rectangle)) {
    rectangle.Normalize();
    return rectangle.Contains(point);
  }
  bool inside = false;
  for (std::int32_t i = 0; i < contours_.num_contours; ++i) {
    inside ^= detail::IsInContour(contours_.contour[i], point);
  }
  return inside;
}

bool GPolygon::IsRectangle(Box2d* box) const noexcept {
  if (contours_.num_contours != 1 || contours_.contour[0].num_vertices != 4) return false;
  const gpc_vertex* const p = contours_.contour[0].vertex;
  if (p[0].y != p[1].y || p[2].y != p[3].y || p[1].x != p[2].x || p[0].x != p[3].x) return false;
  if (box) box->Set(ToVec(p[3]), ToVec(p[1]));
  return true;
}

bool GPolygon::Decompose(DecomposeCallback callback, void* userData) const {
  if (!callback) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  struct Strips : gpc_tristrip {
    ~Strips() { gpc_free_tristrip(this); }
  } strips{};
  gpc_polygon_to_tristrip(Mutable(contours_), &strips);
  std::vector<Vec2d> points;
  for (std::int32_t i = 0; i < strips.num_strips; ++i) {
    const gpc_vertex_list& strip = strips.strip[i];
    detail::WithMemoryError(kSource, __LINE__, [&] { points.resize(SizeOf(strip)); });
    std::transform(strip.vertex, strip.vertex + strip.num_vertices, points.begin(), ToVec);
    if (!callback(points.data(), static_cast<unsigned int>(points.size()), userData)) return false;
  }
  return true;
}

void GPolygon::AddContours(const Vec2d* points, const unsigned int* counts,
                           unsigned int contourCount) {
  Append(GPolygon(points, counts, contourCount));
}

void GPolygon::AddContours(const POINT* points, const unsigned int* counts,
                           unsigned int contourCount) {
  Append(GPolygon(points, counts, contourCount));
}

void GPolygon::AddContours(const GPolygon& other) { Append(GPolygon(other)); }

void GPolygon::Intersection(const GPolygon& other) { Combine(other, SET_INTERSECTION); }

void GPolygon::Union(const GPolygon& other) { Combine(other, SET_UNION); }

void GPolygon::Difference(const GPolygon& other) { Combine(other, SET_DIFFERENCE); }

void GPolygon::XOR(const GPolygon& other) { Combine(other, SET_XOR); }

void GPolygon::RemoveZeroWidthReturnPaths() {
  if (contours_.num_contours == 0) return;
  Intersection(GPolygon(box_.xMin(), box_.yMin(), box_.xMax(), box_.yMax()));
}

void GPolygon::FreeAll() noexcept {
  gpc_free_polygon(&contours_);
  box_.MakeEmpty();
}

void GPolygon::DumpToTextFile(CBufferedFile& file) const { Dump(file, gpc_write_polygon); }

void GPolygon::LoadFromTextFile(CBufferedFile& file) { Load(file, gpc_read_polygon); }

void GPolygon::DumpToBinaryFile(CBufferedFile& file) const { Dump(file, gpc_write_polygon_binary); }

void GPolygon::LoadFromBinaryFile(CBufferedFile& file) { Load(file, gpc_read_polygon_binary); }

void GPolygon::Construct(const Vec2d* points, unsigned int count) { Construct(points, &count, 1); }

void GPolygon::Construct(const POINT* points, unsigned int count) { Construct(points, &count, 1); }

void GPolygon::Construct(const Vec2d* points, const unsigned int* counts,
                         unsigned int contourCount) {
  Replace(MakeContours(points, counts, contourCount));
}

void GPolygon::Construct(const POINT* points, const unsigned int* counts,
                         unsigned int contourCount) {
  Replace(MakeContours(points, counts, contourCount));
}

void GPolygon::Construct(double x0, double y0, double x1, double y1) {
  const gpc_vertex corners[] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  Contours contours(1);
  contours.Add(4, 0, [&](std::size_t i) { return corners[i]; });
  Replace(contours.Take());
}

void GPolygon::Construct(const GPolygon& polygon) {
  if (&polygon != this) Replace(CopyContours(polygon.contours_, [](gpc_vertex v) { return v; }));
}

void GPolygon::Construct(const GPolygon2d& polygon) {
  MultiPolygon2d rings;
  polygon.GetMultiPolygon(rings);
  Contours contours(rings.size());
  for (const RingPolygon2d& ring : rings) {
    const Ring2d& outer = ring.outer();
    contours.Add(outer.empty() ? 0 : outer.size() - 1, 0, [&](std::size_t i) {
      return gpc_vertex{outer[i].x, outer[i].y};
    });
  }
  Replace(contours.Take());
}

void GPolygon::Construct(const tagGCONTOURLIST& contours) {
  const gpc_polygon polygon{contours.num_contours, contours.hole, contours.contour};
  Replace(CopyContours(polygon, [](gpc_vertex v) { return v; }));
}

void GPolygon::ConstructFromFloats(const GPolygon& polygon) {
  Replace(CopyContours(polygon.contours_, [](gpc_vertex v) {
    // g++ 12 at -O2 drops the way there and back where it works on two numbers at a time.
    const volatile float x = static_cast<float>(v.x);
    const volatile float y = static_cast<float>(v.y);
    return gpc_vertex{x, y};
  }));
}

void GPolygon::Combine(const GPolygon& other, SET_OPERATION operation) {
  static constexpr gpc_op kOperations[] = {GPC_INT, GPC_UNION, GPC_DIFF, GPC_XOR};
  if (operation < SET_INTERSECTION || operation > SET_XOR) {
    ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  }
  if (&other == this) {
    if (operation == SET_DIFFERENCE || operation == SET_XOR) FreeAll();
    return;
  }
  GPolygon result;
  gpc_polygon_clip(kOperations[operation], &contours_, Mutable(other.contours_), &result.contours_);
  result.CalcBBox();
  result.MoveTo(*this);
}

void GPolygon::MoveTo(GPolygon& destination) noexcept {
  if (&destination == this) return;
  gpc_free_polygon(&destination.contours_);
  destination.contours_ = std::exchange(contours_, gpc_polygon{});
  destination.box_ = std::exchange(box_, Box2d());
}

void GPolygon::CalcBBox() noexcept {
  box_.MakeEmpty();
  for (std::int32_t i = 0; i < contours_.num_contours; ++i) {
    const gpc_vertex_list& contour = contours_.contour[i];
    for (std::size_t k = 0; k < SizeOf(contour); ++k) box_.ExtendBy(ToVec(contour.vertex[k]));
  }
}

void GPolygon::Replace(gpc_polygon contours) noexcept {
  gpc_free_polygon(&contours_);
  contours_ = contours;
  CalcBBox();
}

void GPolygon::Append(GPolygon&& tail) {
  Contours merged(SizeOf(contours_) + SizeOf(tail.contours_));
  merged.TakeFrom(contours_);
  merged.TakeFrom(tail.contours_);
  contours_ = merged.Take();
  box_.ExtendBy(tail.box_);
}

void GPolygon::Dump(CBufferedFile& file, Writer write) const {
  if (write(file.GetHandle(), 1, Mutable(contours_))) return;
  ThrowErrorImpl(kSource, __LINE__, ERR_WRITE, file.GetFilePath().c_str(), "");
}

void GPolygon::Load(CBufferedFile& file, Reader read) {
  FreeAll();
  GPolygon loaded;
  if (!read(file.GetHandle(), 1, &loaded.contours_)) {
    ThrowErrorImpl(kSource, __LINE__, ERR_READ, file.GetFilePath().c_str(), "");
  }
  loaded.CalcBBox();
  loaded.MoveTo(*this);
}

}  // namespace vlm
