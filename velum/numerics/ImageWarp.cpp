#include <velum/numerics/ImageWarp.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/RadialBasisFunctions.h>
#include <velum/numerics/detail/ControlPoints.h>

#include <algorithm>
#include <limits>

namespace vlm {

CImageWarp::CImageWarp() = default;
CImageWarp::CImageWarp(const CImageWarp&) = default;
CImageWarp::CImageWarp(CImageWarp&&) noexcept = default;
CImageWarp::~CImageWarp() = default;
CImageWarp& CImageWarp::operator=(const CImageWarp&) = default;
CImageWarp& CImageWarp::operator=(CImageWarp&&) noexcept = default;

// Not virtual: the virtual operations and their order are settled.
void CImageWarp::TransformPoints(const RPoint* source, RPoint* target, std::size_t count) const {
  if (const auto* const spline = dynamic_cast<const CRadialBasisFunction*>(this)) {
    return spline->TransformRun(source, target, count);
  }
  for (std::size_t i = 0; i < count; ++i) target[i] = Transform(source[i]);
}

void CImageWarp::ScaleControlPoints(const RPoints& points) {
  constexpr double kLargest = std::numeric_limits<double>::max();
  CenterX = 0;
  CenterY = 0;
  Scale = 1;
  const unsigned count = detail::CountOf(points);
  if (count < 2) return;
  double minX = kLargest;
  double minY = kLargest;
  double maxX = -kLargest;
  double maxY = -kLargest;
  for (const RPoint& p : points.Points()) {
    minX = std::min(minX, p.X());
    minY = std::min(minY, p.Y());
    maxX = std::max(maxX, p.X());
    maxY = std::max(maxY, p.Y());
  }
  CenterX = (maxX + minX) * 0.5;
  CenterY = (maxY + minY) * 0.5;
  Scale = std::max(maxX - minX, maxY - minY) * 0.5;
  if (Scale < SUKOSHI) Scale = 1;
  ScaledX.Resize(count);
  ScaledY.Resize(count);
  for (unsigned i = 0; i < count; ++i) {
    ScaledX(i) = (points.Points()[i].X() - CenterX) / Scale;
    ScaledY(i) = (points.Points()[i].Y() - CenterY) / Scale;
  }
}

}  // namespace vlm
