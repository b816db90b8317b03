#pragma once

/// \file
/// The ten ways of interpolation, told once for all colour classes.

#include <velum/colour/ColorInterpolation.h>
#include <velum/colour/detail/Hsl.h>
#include <velum/geometry/Constants.h>

#include <cmath>

namespace vlm::detail {

/// Returns the colour that `method` gives at `t` between two colours. `Channels` says how the class
/// works on its channels:
///
///     Color Blend(const Color& a, double weightA, const Color& b, double weightB);
///     Color Mean(const Color& a, const Color& b);
///     void SetHsl(Color& color, const Hsl& hsl);  // leaves alpha alone
template <class Channels, class Color>
Color Interpolate(const Color& a, const Color& b, double t, unsigned int method) noexcept {
  if (a == b) {
    return a;
  }
  const bool reversed = method == ColorInterpolation::LinearReversed;
  if (t <= 0) {
    return reversed ? b : a;
  }
  if (t >= 1) {
    return reversed ? a : b;
  }
  switch (method) {
    case ColorInterpolation::Linear:
      return Channels::Blend(a, 1 - t, b, t);
    case ColorInterpolation::LinearReversed:
      return Channels::Blend(a, t, b, 1 - t);
    case ColorInterpolation::Cosine: {
      const double eased = (1 - std::cos(t * PI)) * 0.5;
      return Channels::Blend(a, 1 - eased, b, eased);
    }
    case ColorInterpolation::Mean:
      return Channels::Mean(a, b);
    case ColorInterpolation::Last:
      return b;
    case ColorInterpolation::HueDown:
    case ColorInterpolation::HueUp:
    case ColorInterpolation::HueShort:
    case ColorInterpolation::HueLong: {
      Hsl hslA;
      Hsl hslB;
      a.GetHSL(hslA.h, hslA.s, hslA.l);
      b.GetHSL(hslB.h, hslB.s, hslB.l);
      Color blend = Channels::Blend(a, 1 - t, b, t);
      Channels::SetHsl(blend, BlendHsl(hslA, 1 - t, hslB, t, method));
      return blend;
    }
    default:
      return a;
  }
}

}  // namespace vlm::detail
