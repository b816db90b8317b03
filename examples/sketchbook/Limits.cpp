#include <examples/sketchbook/Limits.h>

#include <algorithm>
#include <cmath>

namespace vlm::sketchbook {

bool IsSize(double size) { return size > 0.0 && size <= kLargest; }

bool IsWithin(const Vec2d& point) {
  return std::abs(point.x) <= kLargest && std::abs(point.y) <= kLargest;
}

bool IsWithin(const Mat3d& placement) {
  if (placement.GetCol(2) != Vec3d(0.0, 0.0, 1.0)) return false;
  for (std::size_t i = 0; i < 3; ++i) {
    if (!IsWithin(Vec2d(placement[i][0], placement[i][1]))) return false;
  }
  Mat3d inverse;
  return placement.Inverse(inverse);
}

bool IsName(const GString& text) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 127; };
  return !text.empty() && text.size() <= kLongestName &&
         std::none_of(text.begin(), text.end(), isControl);
}

}  // namespace vlm::sketchbook
