#include <velum/numerics/PlainWarps.h>

#include <velum/numerics/detail/ControlPoints.h>

#include <cmath>
#include <cstddef>

namespace vlm {

CTranslate::CTranslate() = default;
CTranslate::CTranslate(const CTranslate&) = default;
CTranslate::CTranslate(CTranslate&&) noexcept = default;
CTranslate::~CTranslate() = default;
CTranslate& CTranslate::operator=(const CTranslate&) = default;
CTranslate& CTranslate::operator=(CTranslate&&) noexcept = default;

CIdentityMap::CIdentityMap() = default;
CIdentityMap::CIdentityMap(const CIdentityMap&) = default;
CIdentityMap::CIdentityMap(CIdentityMap&&) noexcept = default;
CIdentityMap::~CIdentityMap() = default;
CIdentityMap& CIdentityMap::operator=(const CIdentityMap&) = default;
CIdentityMap& CIdentityMap::operator=(CIdentityMap&&) noexcept = default;

CImageWarp* CTranslate::Clone() const { return new CTranslate(*this); }
CImageWarp* CIdentityMap::Clone() const { return new CIdentityMap(*this); }

bool CTranslate::Calibrate(const RPoints& from, const RPoints& to) {
  TranslateX = 0;
  TranslateY = 0;
  if (!detail::AreControlPoints(from, to, 1)) return false;
  const std::size_t count = from.Points().size();
  double sumX = 0;
  double sumY = 0;
  for (std::size_t i = 0; i < count; ++i) {
    sumX += to.Points()[i].X() - from.Points()[i].X();
    sumY += to.Points()[i].Y() - from.Points()[i].Y();
  }
  if (!std::isfinite(sumX) || !std::isfinite(sumY)) return false;
  TranslateX = sumX / static_cast<double>(count);
  TranslateY = sumY / static_cast<double>(count);
  return true;
}

RPoint CTranslate::Transform(const RPoint& p) const {
  return {p.X() + TranslateX, p.Y() + TranslateY};
}

bool CIdentityMap::Calibrate(const RPoints&, const RPoints&) { return true; }

RPoint CIdentityMap::Transform(const RPoint& p) const { return p; }

}  // namespace vlm
