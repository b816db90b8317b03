#include <velum/numerics/ImageRegistration.h>

#include <velum/numerics/ImageWarp.h>
#include <velum/numerics/InverseDistanceSquared.h>
#include <velum/numerics/PlainWarps.h>
#include <velum/numerics/PolynomialWarps.h>
#include <velum/numerics/RadialBasisFunctions.h>

#include <utility>

namespace vlm {

namespace {

template <class Warp>
std::unique_ptr<CImageWarp> Make() {
  return std::make_unique<Warp>();
}

struct Method {
  std::unique_ptr<CImageWarp> (*make)();
  WarpingMethod next;  // where there is no fit
};

constexpr Method kMethods[] = {
    {Make<CThinPlateSpline>, InverseDistanceSquared},
    {Make<CNaturalCubicSpline>, InverseDistanceSquared},
    {Make<CMarcovSpline>, InverseDistanceSquared},
    {Make<CExponentialSpline>, InverseDistanceSquared},
    {Make<CRationalQuadraticSpline>, InverseDistanceSquared},
    {Make<CInverseDistanceSquared>, LinearConformal},
    {Make<CQuadraticPolynomial>, GeneralLinear},
    {Make<CGeneralLinear>, LinearConformal},
    {Make<CLinearConformal>, UniformScale},
    {Make<CMixedScale>, UniformScale},
    {Make<CUniformScale>, Translate},
    {Make<CTranslate>, IdentityMap},
    {Make<CIdentityMap>, IdentityMap},
};

}  // namespace

CImageRegistration::CImageRegistration() : warp_(Make<CIdentityMap>()) {}

CImageRegistration::CImageRegistration(const CImageRegistration& other)
    : warp_(other.warp_->Clone()) {}

CImageRegistration::~CImageRegistration() = default;

RPoint CImageRegistration::Transform(const RPoint& p) const { return warp_->Transform(p); }

void CImageRegistration::TransformPoints(const RPoint* source, RPoint* target,
                                         std::size_t count) const {
  warp_->TransformPoints(source, target, count);
}

WarpingMethod CImageRegistration::Calibrate(const RPoints& from, const RPoints& to,
                                            WarpingMethod method) {
  if (from.Points().empty()) method = IdentityMap;
  if (from.Points().size() == 1 && method != IdentityMap) method = Translate;
  if (method < ThinPlateSpline || method > IdentityMap) return method;
  for (;; method = kMethods[method].next) {
    std::unique_ptr<CImageWarp> warp = kMethods[method].make();
    if (!warp->Calibrate(from, to)) continue;  // the identity always has a fit
    warp_ = std::move(warp);
    return method;
  }
}

CImageRegistration& CImageRegistration::operator=(const CImageRegistration& other) {
  if (this != &other) warp_.reset(other.warp_->Clone());
  return *this;
}

}  // namespace vlm
