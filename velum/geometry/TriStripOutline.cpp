#include <velum/geometry/TriStripOutline.h>

namespace vlm {

namespace {

// Vertices with the parity of `frontParity` fill `out` from the start, the others from the end.
void Outline(const Vec2d* strip, unsigned count, Vec2d* out, unsigned frontParity) noexcept {
  if (!strip || !out) return;
  unsigned front = 0;
  unsigned back = count;
  for (unsigned i = 0; i < count; ++i) {
    out[i % 2 == frontParity ? front++ : --back] = strip[i];
  }
}

}  // namespace

void GTriStripToCWPolygon(const Vec2d* strip, unsigned count, Vec2d* out) noexcept {
  Outline(strip, count, out, 1);
}

void GTriStripToCCWPolygon(const Vec2d* strip, unsigned count, Vec2d* out) noexcept {
  Outline(strip, count, out, 0);
}

}  // namespace vlm
