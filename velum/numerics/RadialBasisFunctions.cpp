#include <velum/numerics/RadialBasisFunctions.h>

#include <velum/numerics/ConjugateGradients.h>
#include <velum/numerics/Eigenvectors.h>
#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/MatrixParts.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/ControlPoints.h>
#include <velum/numerics/detail/RadialKernels.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <typeinfo>
#include <utility>

namespace vlm {

using detail::RadialForm;
using detail::RadialKernels;

namespace {

constexpr std::size_t kRun = 64;  // points at once, on the stack; a multiple of 4

// The splines of this file, and not what may be derived from them: that has a Phi of its own.
// Another type record of the same type only costs time.
std::optional<RadialForm> FormOf(const CRadialBasisFunction& spline) noexcept {
  const std::type_info* const type = &typeid(spline);
  if (type == &typeid(CThinPlateSpline)) return RadialForm::kThinPlate;
  if (type == &typeid(CNaturalCubicSpline)) return RadialForm::kNaturalCubic;
  if (type == &typeid(CMarcovSpline)) return RadialForm::kMarcov;
  if (type == &typeid(CExponentialSpline)) return RadialForm::kExponential;
  if (type == &typeid(CRationalQuadraticSpline)) return RadialForm::kRationalQuadratic;
  return std::nullopt;
}

detail::RadialSpline SplineOf(const CRadialBasisFunction& spline, RadialForm form) noexcept {
  return {form,
          spline.Weights.nRows(),
          spline.ScaledX.Base(),
          spline.ScaledY.Base(),
          spline.Weights.Base(),
          spline.Affine.Base()};
}

double PhiAt(RadialForm form, double dx, double dy) noexcept {
  constexpr double kOrigin = 0;
  double phi;
  RadialKernels().row(form, dx, dy, &kOrigin, &kOrigin, 1, &phi);
  return phi;
}

}  // namespace

CRadialBasisFunction::CRadialBasisFunction() = default;
CRadialBasisFunction::CRadialBasisFunction(const CRadialBasisFunction&) = default;
CRadialBasisFunction::CRadialBasisFunction(CRadialBasisFunction&&) noexcept = default;
CRadialBasisFunction::~CRadialBasisFunction() = default;
CRadialBasisFunction& CRadialBasisFunction::operator=(const CRadialBasisFunction&) = default;
CRadialBasisFunction& CRadialBasisFunction::operator=(CRadialBasisFunction&&) noexcept = default;

CThinPlateSpline::CThinPlateSpline() = default;
CThinPlateSpline::CThinPlateSpline(const CThinPlateSpline&) = default;
CThinPlateSpline::CThinPlateSpline(CThinPlateSpline&&) noexcept = default;
CThinPlateSpline::~CThinPlateSpline() = default;
CThinPlateSpline& CThinPlateSpline::operator=(const CThinPlateSpline&) = default;
CThinPlateSpline& CThinPlateSpline::operator=(CThinPlateSpline&&) noexcept = default;

CNaturalCubicSpline::CNaturalCubicSpline() = default;
CNaturalCubicSpline::CNaturalCubicSpline(const CNaturalCubicSpline&) = default;
CNaturalCubicSpline::CNaturalCubicSpline(CNaturalCubicSpline&&) noexcept = default;
CNaturalCubicSpline::~CNaturalCubicSpline() = default;
CNaturalCubicSpline& CNaturalCubicSpline::operator=(const CNaturalCubicSpline&) = default;
CNaturalCubicSpline& CNaturalCubicSpline::operator=(CNaturalCubicSpline&&) noexcept = default;

CMarcovSpline::CMarcovSpline() = default;
CMarcovSpline::CMarcovSpline(const CMarcovSpline&) = default;
CMarcovSpline::CMarcovSpline(CMarcovSpline&&) noexcept = default;
CMarcovSpline::~CMarcovSpline() = default;
CMarcovSpline& CMarcovSpline::operator=(const CMarcovSpline&) = default;
CMarcovSpline& CMarcovSpline::operator=(CMarcovSpline&&) noexcept = default;

CExponentialSpline::CExponentialSpline() = default;
CExponentialSpline::CExponentialSpline(const CExponentialSpline&) = default;
CExponentialSpline::CExponentialSpline(CExponentialSpline&&) noexcept = default;
CExponentialSpline::~CExponentialSpline() = default;
CExponentialSpline& CExponentialSpline::operator=(const CExponentialSpline&) = default;
CExponentialSpline& CExponentialSpline::operator=(CExponentialSpline&&) noexcept = default;

CRationalQuadraticSpline::CRationalQuadraticSpline() = default;
CRationalQuadraticSpline::CRationalQuadraticSpline(const CRationalQuadraticSpline&) = default;
CRationalQuadraticSpline::CRationalQuadraticSpline(CRationalQuadraticSpline&&) noexcept = default;
CRationalQuadraticSpline::~CRationalQuadraticSpline() = default;
CRationalQuadraticSpline& CRationalQuadraticSpline::operator=(const CRationalQuadraticSpline&) =
    default;
CRationalQuadraticSpline& CRationalQuadraticSpline::operator=(CRationalQuadraticSpline&&) noexcept =
    default;

CImageWarp* CThinPlateSpline::Clone() const { return new CThinPlateSpline(*this); }
CImageWarp* CNaturalCubicSpline::Clone() const { return new CNaturalCubicSpline(*this); }
CImageWarp* CMarcovSpline::Clone() const { return new CMarcovSpline(*this); }
CImageWarp* CExponentialSpline::Clone() const { return new CExponentialSpline(*this); }
CImageWarp* CRationalQuadraticSpline::Clone() const { return new CRationalQuadraticSpline(*this); }

double CThinPlateSpline::Phi(double dx, double dy) const {
  return PhiAt(RadialForm::kThinPlate, dx, dy);
}
double CNaturalCubicSpline::Phi(double dx, double dy) const {
  return PhiAt(RadialForm::kNaturalCubic, dx, dy);
}
double CMarcovSpline::Phi(double dx, double dy) const { return PhiAt(RadialForm::kMarcov, dx, dy); }
double CExponentialSpline::Phi(double dx, double dy) const {
  return PhiAt(RadialForm::kExponential, dx, dy);
}
double CRationalQuadraticSpline::Phi(double dx, double dy) const {
  return PhiAt(RadialForm::kRationalQuadratic, dx, dy);
}

bool CRadialBasisFunction::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 4;
  Weights.Clear();
  Affine.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  if (!std::isfinite(Scale)) return false;
  RMatrix weights;
  RMatrix affine;
  if (!SolveForWeights(to, weights, affine)) return false;
  Weights = std::move(weights);
  Affine = std::move(affine);
  return true;
}

RPoint CRadialBasisFunction::Transform(const RPoint& p) const {
  if (Affine.empty()) return detail::NoPoint();
  double x = (p.X() - CenterX) / Scale;
  double y = (p.Y() - CenterY) / Scale;
  if (const std::optional<RadialForm> form = FormOf(*this)) {
    RadialKernels().sum(SplineOf(*this, *form), x, y);
    return {x, y};
  }
  double sumX = Affine(0, 0) + Affine(1, 0) * x + Affine(2, 0) * y;
  double sumY = Affine(0, 1) + Affine(1, 1) * x + Affine(2, 1) * y;
  for (unsigned i = 0; i < Weights.nRows(); ++i) {
    const double phi = Phi(x - ScaledX(i), y - ScaledY(i));
    sumX += phi * Weights(i, 0);
    sumY += phi * Weights(i, 1);
  }
  return {sumX, sumY};
}

// Fills in the functions of the distances from (x, y) to the first `count` control points.
void CRadialBasisFunction::FillPhi(double x, double y, unsigned count, double* phi) const {
  if (const std::optional<RadialForm> form = FormOf(*this)) {
    return RadialKernels().row(*form, x, y, ScaledX.Base(), ScaledY.Base(), count, phi);
  }
  for (unsigned i = 0; i < count; ++i) phi[i] = Phi(x - ScaledX(i), y - ScaledY(i));
}

void CRadialBasisFunction::TransformRun(const RPoint* source, RPoint* target,
                                        std::size_t count) const {
  const std::optional<RadialForm> form = FormOf(*this);
  if (!form || Affine.empty()) {
    for (std::size_t i = 0; i < count; ++i) target[i] = Transform(source[i]);
    return;
  }
  const detail::RadialSpline spline = SplineOf(*this, *form);
  double x[kRun] = {};
  double y[kRun] = {};
  for (std::size_t first = 0; first < count; first += kRun) {
    const std::size_t some = std::min(count - first, kRun);
    for (std::size_t i = 0; i < some; ++i) {
      x[i] = (source[first + i].X() - CenterX) / Scale;
      y[i] = (source[first + i].Y() - CenterY) / Scale;
    }
    RadialKernels().sums(spline, x, y, (some + 3) / 4 * 4);
    for (std::size_t i = 0; i < some; ++i) target[first + i] = RPoint(x[i], y[i]);
  }
}

// Solves for what is in `Weights` and `Affine` of a calibrated spline. The control points have been
// scaled.
bool CRadialBasisFunction::SolveForWeights(const RPoints& to, RMatrix& weights,
                                           RMatrix& affine) const {
  const unsigned n = ScaledX.Length();
  RMatrix distances(n, n);
  for (unsigned i = 0; i < n; ++i) {
    FillPhi(ScaledX(i), ScaledY(i), i + 1, distances.Base(i, 0));
    for (unsigned j = 0; j < i; ++j) distances(j, i) = distances(i, j);
  }
  RMatrix constraints(3, n);
  std::fill_n(constraints.Base(0, 0), n, 1.0);
  std::copy(ScaledX.begin(), ScaledX.end(), constraints.Base(1, 0));
  std::copy(ScaledY.begin(), ScaledY.end(), constraints.Base(2, 0));
  const RMatrix targets = detail::RowsOf(to);
  weights.Resize(n, 2);
  affine.Resize(3, 2);
  RVector column;
  RVector w;
  RVector c(3);
  bool isSolved = true;
  for (unsigned k = 0; k < 2 && isSolved; ++k) {
    ExtractCol(targets, k, column);
    Zeros(w, n);
    isSolved = CPDSolve(distances, constraints, column, w, c);
    AssignCol(w, k, weights);
    AssignCol(c, k, affine);
  }
  if (!isSolved) isSolved = AlternateSolve(distances, constraints, targets, weights, affine);
  return isSolved && detail::IsFinite(weights.begin(), weights.end()) &&
         detail::IsFinite(affine.begin(), affine.end());
}

}  // namespace vlm
