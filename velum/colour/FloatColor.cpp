#include <velum/colour/FloatColor.h>

#include <velum/colour/Color3f.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/detail/Hsl.h>
#include <velum/geometry/Constants.h>

namespace vlm {

template <class Color>
void FloatColor<Color>::GetHSL(double& h, double& s, double& l) const noexcept {
  const detail::Hsl hsl = detail::ToHsl(detail::Rgb{R, G, B}, EPSILON);
  h = hsl.h;
  s = hsl.s;
  l = hsl.l;
}

template <class Color>
void FloatColor<Color>::SetHSL(double h, double s, double l) noexcept {
  const detail::Rgb rgb = detail::ToRgb(detail::Hsl{h, s, l});
  R = static_cast<float>(rgb.r);
  G = static_cast<float>(rgb.g);
  B = static_cast<float>(rgb.b);
}

template void FloatColor<Color3f>::GetHSL(double& h, double& s, double& l) const noexcept;
template void FloatColor<Color4f>::GetHSL(double& h, double& s, double& l) const noexcept;
template void FloatColor<Color3f>::SetHSL(double h, double s, double l) noexcept;
template void FloatColor<Color4f>::SetHSL(double h, double s, double l) noexcept;

}  // namespace vlm
