#include <velum/numerics/InverseDistanceSquared.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/LeastSquares.h>
#include <velum/numerics/detail/ControlPoints.h>

#include <cstddef>
#include <utility>

namespace vlm {

namespace {

RPoint AffineImage(const RMatrix& affine, double x, double y) noexcept {
  return {affine(0, 0) + affine(1, 0) * x + affine(2, 0) * y,
          affine(0, 1) + affine(1, 1) * x + affine(2, 1) * y};
}

}  // namespace

CInverseDistanceSquared::CInverseDistanceSquared() = default;
CInverseDistanceSquared::CInverseDistanceSquared(const CInverseDistanceSquared&) = default;
CInverseDistanceSquared::CInverseDistanceSquared(CInverseDistanceSquared&&) noexcept = default;
CInverseDistanceSquared::~CInverseDistanceSquared() = default;
CInverseDistanceSquared& CInverseDistanceSquared::operator=(const CInverseDistanceSquared&) =
    default;
CInverseDistanceSquared& CInverseDistanceSquared::operator=(CInverseDistanceSquared&&) noexcept =
    default;

CImageWarp* CInverseDistanceSquared::Clone() const { return new CInverseDistanceSquared(*this); }

bool CInverseDistanceSquared::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 4;
  Affine.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  const unsigned n = ScaledX.Length();
  RMatrix design(n, 3);
  for (unsigned i = 0; i < n; ++i) {
    design(i, 0) = 1;
    design(i, 1) = ScaledX(i);
    design(i, 2) = ScaledY(i);
  }
  RMatrix targets = detail::RowsOf(to);
  RMatrix affine(3, 2);
  if (!MGSLeastSquares(design, affine, targets)) return false;
  ResidualX.Resize(n);
  ResidualY.Resize(n);
  for (unsigned i = 0; i < n; ++i) {
    const RPoint image = AffineImage(affine, ScaledX(i), ScaledY(i));
    ResidualX(i) = to.Points()[i].X() - image.X();
    ResidualY(i) = to.Points()[i].Y() - image.Y();
  }
  if (!detail::IsFinite(affine.begin(), affine.end()) ||
      !detail::IsFinite(ResidualX.begin(), ResidualX.end()) ||
      !detail::IsFinite(ResidualY.begin(), ResidualY.end())) {
    return false;
  }
  Affine = std::move(affine);
  return true;
}

RPoint CInverseDistanceSquared::Transform(const RPoint& p) const {
  if (Affine.empty()) return detail::NoPoint();
  const double x = (p.X() - CenterX) / Scale;
  const double y = (p.Y() - CenterY) / Scale;
  double sum = 0;
  double sumX = 0;
  double sumY = 0;
  for (unsigned i = 0; i < ResidualX.Length(); ++i) {
    const double dx = x - ScaledX(i);
    const double dy = y - ScaledY(i);
    const double square = dx * dx + dy * dy;
    const double weight = 1 / (square > SUKOSHI ? square : SUKOSHI);
    sum += weight;
    sumX += weight * ResidualX(i);
    sumY += weight * ResidualY(i);
  }
  const RPoint image = AffineImage(Affine, x, y);
  return {image.X() + sumX / sum, image.Y() + sumY / sum};
}

}  // namespace vlm
