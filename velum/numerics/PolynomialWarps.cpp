#include <velum/numerics/PolynomialWarps.h>

#include <velum/numerics/LeastSquares.h>
#include <velum/numerics/MatrixParts.h>
#include <velum/numerics/detail/ControlPoints.h>
#include <velum/numerics/detail/DotKernels.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>

namespace vlm {

namespace {

// Sets a row of a design matrix.
void SetRow(RMatrix& design, unsigned row, std::initializer_list<double> values) noexcept {
  std::copy(values.begin(), values.end(), design.Base(row, 0));
}

// Returns the solution of least squares, empty where there is none.
RMatrix Fitted(RMatrix design, RMatrix targets) {
  RMatrix coefficients(design.nCols(), targets.nCols());
  if (!MGSLeastSquares(design, coefficients, targets) ||
      !detail::IsFinite(coefficients.begin(), coefficients.end())) {
    coefficients.Clear();
  }
  return coefficients;
}

RVector Fitted(RMatrix design, RVector targets) {
  RVector coefficients(design.nCols());
  if (!MGSLeastSquares(design, coefficients, targets) ||
      !detail::IsFinite(coefficients.begin(), coefficients.end())) {
    coefficients.Clear();
  }
  return coefficients;
}

// The coordinates of all points one after the other, x and y by turns.
RVector ColumnOf(const RPoints& points) {
  const RMatrix rows = detail::RowsOf(points);
  RVector column(2 * rows.nRows());
  std::copy(rows.begin(), rows.end(), column.begin());
  return column;
}

}  // namespace

CQuadraticPolynomial::CQuadraticPolynomial() = default;
CQuadraticPolynomial::CQuadraticPolynomial(const CQuadraticPolynomial&) = default;
CQuadraticPolynomial::CQuadraticPolynomial(CQuadraticPolynomial&&) noexcept = default;
CQuadraticPolynomial::~CQuadraticPolynomial() = default;
CQuadraticPolynomial& CQuadraticPolynomial::operator=(const CQuadraticPolynomial&) = default;
CQuadraticPolynomial& CQuadraticPolynomial::operator=(CQuadraticPolynomial&&) noexcept = default;

CGeneralLinear::CGeneralLinear() = default;
CGeneralLinear::CGeneralLinear(const CGeneralLinear&) = default;
CGeneralLinear::CGeneralLinear(CGeneralLinear&&) noexcept = default;
CGeneralLinear::~CGeneralLinear() = default;
CGeneralLinear& CGeneralLinear::operator=(const CGeneralLinear&) = default;
CGeneralLinear& CGeneralLinear::operator=(CGeneralLinear&&) noexcept = default;

CLinearConformal::CLinearConformal() = default;
CLinearConformal::CLinearConformal(const CLinearConformal&) = default;
CLinearConformal::CLinearConformal(CLinearConformal&&) noexcept = default;
CLinearConformal::~CLinearConformal() = default;
CLinearConformal& CLinearConformal::operator=(const CLinearConformal&) = default;
CLinearConformal& CLinearConformal::operator=(CLinearConformal&&) noexcept = default;

CMixedScale::CMixedScale() = default;
CMixedScale::CMixedScale(const CMixedScale&) = default;
CMixedScale::CMixedScale(CMixedScale&&) noexcept = default;
CMixedScale::~CMixedScale() = default;
CMixedScale& CMixedScale::operator=(const CMixedScale&) = default;
CMixedScale& CMixedScale::operator=(CMixedScale&&) noexcept = default;

CUniformScale::CUniformScale() = default;
CUniformScale::CUniformScale(const CUniformScale&) = default;
CUniformScale::CUniformScale(CUniformScale&&) noexcept = default;
CUniformScale::~CUniformScale() = default;
CUniformScale& CUniformScale::operator=(const CUniformScale&) = default;
CUniformScale& CUniformScale::operator=(CUniformScale&&) noexcept = default;

CImageWarp* CQuadraticPolynomial::Clone() const { return new CQuadraticPolynomial(*this); }
CImageWarp* CGeneralLinear::Clone() const { return new CGeneralLinear(*this); }
CImageWarp* CLinearConformal::Clone() const { return new CLinearConformal(*this); }
CImageWarp* CMixedScale::Clone() const { return new CMixedScale(*this); }
CImageWarp* CUniformScale::Clone() const { return new CUniformScale(*this); }

bool CQuadraticPolynomial::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 6;
  Coefficients.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  RMatrix design(ScaledX.Length(), 6);
  for (unsigned i = 0; i < design.nRows(); ++i) {
    const double x = ScaledX(i);
    const double y = ScaledY(i);
    SetRow(design, i, {1, x, y, x * y, x * x, y * y});
  }
  Coefficients = Fitted(std::move(design), detail::RowsOf(to));
  ScaledX.Clear();
  ScaledY.Clear();
  return !Coefficients.empty();
}

RPoint CQuadraticPolynomial::Transform(const RPoint& p) const {
  if (Coefficients.empty()) return detail::NoPoint();
  const double x = (p.X() - CenterX) / Scale;
  const double y = (p.Y() - CenterY) / Scale;
  const double terms[] = {1, x, y, x * y, x * x, y * y};
  return {detail::Dot(6, terms, Coefficients.Base(0, 0), 2),
          detail::Dot(6, terms, Coefficients.Base(0, 1), 2)};
}

bool CGeneralLinear::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 4;
  Coefficients.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  RMatrix design(ScaledX.Length(), 3);
  for (unsigned i = 0; i < design.nRows(); ++i) SetRow(design, i, {1, ScaledX(i), ScaledY(i)});
  Coefficients = Fitted(std::move(design), detail::RowsOf(to));
  ScaledX.Clear();
  ScaledY.Clear();
  return !Coefficients.empty();
}

RPoint CGeneralLinear::Transform(const RPoint& p) const {
  if (Coefficients.empty()) return detail::NoPoint();
  const double terms[] = {1, (p.X() - CenterX) / Scale, (p.Y() - CenterY) / Scale};
  return {detail::Dot(3, terms, Coefficients.Base(0, 0), 2),
          detail::Dot(3, terms, Coefficients.Base(0, 1), 2)};
}

bool CLinearConformal::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 2;
  Coefficients.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  RMatrix design(2 * ScaledX.Length(), 4);
  for (unsigned i = 0; i < ScaledX.Length(); ++i) {
    const double x = ScaledX(i);
    const double y = ScaledY(i);
    SetRow(design, 2 * i, {1, 0, x, y});
    SetRow(design, 2 * i + 1, {0, 1, y, -x});
  }
  Coefficients = Fitted(std::move(design), ColumnOf(to));
  ScaledX.Clear();
  ScaledY.Clear();
  return !Coefficients.empty();
}

RPoint CLinearConformal::Transform(const RPoint& p) const {
  if (Coefficients.empty()) return detail::NoPoint();
  const double x = (p.X() - CenterX) / Scale;
  const double y = (p.Y() - CenterY) / Scale;
  const RVector& c = Coefficients;
  return {c(0) + c(2) * x + c(3) * y, c(1) + c(2) * y - c(3) * x};
}

bool CMixedScale::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 2;
  Coefficients.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  const RMatrix targets = detail::RowsOf(to);
  RMatrix coefficients(2, 2);
  bool isFitted = true;
  for (unsigned k = 0; k < 2 && isFitted; ++k) {
    const RVector& scaled = k == 0 ? ScaledX : ScaledY;
    RMatrix design(scaled.Length(), 2);
    for (unsigned i = 0; i < design.nRows(); ++i) SetRow(design, i, {1, scaled(i)});
    RVector target;
    ExtractCol(targets, k, target);
    const RVector axis = Fitted(std::move(design), std::move(target));
    isFitted = !axis.empty();
    if (isFitted) AssignCol(axis, k, coefficients);
  }
  ScaledX.Clear();
  ScaledY.Clear();
  if (isFitted) Coefficients = std::move(coefficients);
  return isFitted;
}

RPoint CMixedScale::Transform(const RPoint& p) const {
  if (Coefficients.empty()) return detail::NoPoint();
  const double x = (p.X() - CenterX) / Scale;
  const double y = (p.Y() - CenterY) / Scale;
  const RMatrix& c = Coefficients;
  return {c(1, 0) * x + c(0, 0), c(1, 1) * y + c(0, 1)};
}

bool CUniformScale::Calibrate(const RPoints& from, const RPoints& to) {
  constexpr std::size_t kLeastPoints = 2;
  Coefficients.Clear();
  if (!detail::AreControlPoints(from, to, kLeastPoints)) return false;
  ScaleControlPoints(from);
  RMatrix design(2 * ScaledX.Length(), 3);
  for (unsigned i = 0; i < ScaledX.Length(); ++i) {
    SetRow(design, 2 * i, {1, 0, ScaledX(i)});
    SetRow(design, 2 * i + 1, {0, 1, ScaledY(i)});
  }
  Coefficients = Fitted(std::move(design), ColumnOf(to));
  ScaledX.Clear();
  ScaledY.Clear();
  return !Coefficients.empty();
}

RPoint CUniformScale::Transform(const RPoint& p) const {
  if (Coefficients.empty()) return detail::NoPoint();
  const double x = (p.X() - CenterX) / Scale;
  const double y = (p.Y() - CenterY) / Scale;
  return {Coefficients(0) + Coefficients(2) * x, Coefficients(1) + Coefficients(2) * y};
}

}  // namespace vlm
