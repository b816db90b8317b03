// Takes any bytes for two small polygons and an operation, and holds the sweep against the plain
// one of the tests, vertex for vertex, contours and strips; on a grid of whole numbers the area
// must be exact too. Coordinates that may overflow need only an answer or a documented error.
#include <velum/core/Exception.h>
#include <velum/geometry/test/GpcPolygons.h>
#include <velum/geometry/test/reference/EvenOddArea.h>
#include <velum/geometry/test/reference/PlainClipper.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using namespace vlm::test;
using namespace vlm::reference;

constexpr std::size_t kMostVertices = 48;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

// Numbers from bytes; 0 behind the last one.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  bool IsEmpty() const { return size_ == 0; }
  std::uint8_t Byte() {
    if (IsEmpty()) return 0;
    --size_;
    return *data_++;
  }
  double Bits() {
    std::uint64_t bits = 0;
    for (int i = 0; i < 8; ++i) bits = bits << 8 | Byte();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

enum Coordinates { kGrid, kThirds, kNearGrid, kAny };

double NextCoordinate(Bytes& bytes, Coordinates kind) {
  if (kind == kAny) return bytes.Bits();
  const std::uint8_t byte = bytes.Byte();
  if (kind == kThirds) return byte / 3.0;
  if (kind == kNearGrid) return (byte & 0xf) + (byte >> 4) * 0x1p-50;
  return byte & 0xf;
}

// A length of 0 ends a polygon.
PlainPolygon NextPolygon(Bytes& bytes, Coordinates kind, std::size_t& left) {
  PlainPolygon polygon;
  for (std::size_t count; left > 0 && (count = bytes.Byte() & 0xf) > 0;) {
    count = std::min(count, left);
    left -= count;
    polygon.emplace_back();
    for (; count > 0; --count) {
      const double x = NextCoordinate(bytes, kind);
      polygon.back().vertices.push_back({x, NextCoordinate(bytes, kind)});
    }
  }
  return polygon;
}

bool IsDocumented(int code) {
  return code == 0 || code == vlm::ERR_INTERNAL || code == vlm::ERR_POLYGON_CLIPPING;
}

void CheckArea(double area, double expected) {
  Require(std::fabs(area - expected) <= 1e-10 * (1 + expected), "the area is exact");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const std::uint8_t head = bytes.Byte();
  const auto operation = static_cast<PlainOperation>(head & 3);
  const auto kind = static_cast<Coordinates>(head >> 2 & 3);
  std::size_t left = kMostVertices;
  const PlainPolygon subject = NextPolygon(bytes, kind, left);
  const PlainPolygon clip = NextPolygon(bytes, kind, left);

  const Outcome<PlainPolygon> contours = Clip(operation, subject, clip);
  const Outcome<PlainStrips> strips = StripClip(operation, subject, clip);
  if (kind == kAny) {
    Require(IsDocumented(contours.code) && IsDocumented(strips.code), "errors are documented");
    return 0;
  }
  Require(contours == PlainOutcome([&] { return PlainClip(operation, subject, clip); }),
          "contours are those of the plain sweep");
  Require(strips == PlainOutcome([&] { return PlainStripClip(operation, subject, clip); }),
          "strips are those of the plain sweep");
  if (kind == kGrid) {
    const double area = EvenOddArea(operation, subject, clip);
    CheckArea(AreaOfContours(contours.result), area);
    CheckArea(AreaOfStrips(strips.result), area);
  }
  return 0;
}
