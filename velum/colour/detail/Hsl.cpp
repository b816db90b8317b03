#include <velum/colour/detail/Hsl.h>

#include <velum/colour/ColorInterpolation.h>

#include <algorithm>
#include <cmath>

namespace vlm::detail {
namespace {

// One channel by its place on the circle of hues, between the lowest and highest channel.
double Channel(double low, double high, double place) noexcept {
  if (place < 0) {
    place += 1;
  } else if (place > 1) {
    place -= 1;
  }
  if (6 * place < 1) {
    return low + 6 * place * (high - low);
  }
  if (2 * place < 1) {
    return high;
  }
  if (3 * place < 2) {
    return low + 6 * (2.0 / 3.0 - place) * (high - low);
  }
  return low;
}

// Carries one of two hues past the whole circle, so that a plain blend takes the wanted way. Of
// equal hues it is the second, which makes the long way between them the whole circle.
void Unwind(double& hueA, double& hueB, unsigned int method) noexcept {
  const double difference = std::abs(hueA - hueB);
  double& smaller = hueA < hueB ? hueA : hueB;
  bool carry = false;
  switch (method) {
    case ColorInterpolation::HueDown:
      carry = hueA < hueB;
      break;
    case ColorInterpolation::HueUp:
      carry = hueB < hueA;
      break;
    case ColorInterpolation::HueShort:
      carry = difference > 0.5;
      break;
    case ColorInterpolation::HueLong:
      carry = difference < 0.5;
      break;
    default:
      break;
  }
  if (carry) {
    smaller += 1;
  }
}

}  // namespace

Hsl ToHsl(const Rgb& rgb, double threshold) noexcept {
  const double high = std::max({rgb.r, rgb.g, rgb.b});
  const double low = std::min({rgb.r, rgb.g, rgb.b});
  const double delta = high - low;
  if (delta < threshold) {
    return Hsl{0, 0, low};
  }
  Hsl hsl;
  hsl.l = (high + low) * 0.5;
  hsl.s = hsl.l < 0.5 ? delta / (high + low) : delta / (2 - high - low);
  if (high == rgb.r) {
    hsl.h = (rgb.g - rgb.b) / delta;
  } else if (high == rgb.g) {
    hsl.h = 2 + (rgb.b - rgb.r) / delta;
  } else {
    hsl.h = 4 + (rgb.r - rgb.g) / delta;
  }
  hsl.h /= 6;
  if (hsl.h < 0) {
    hsl.h += 1;
  }
  return hsl;
}

Rgb ToRgb(const Hsl& hsl) noexcept {
  const auto [h, s, l] = hsl;
  if (s == 0) {
    return Rgb{l, l, l};
  }
  const double high = l <= 0.5 ? (1 + s) * l : s + l - s * l;
  const double low = 2 * l - high;
  return Rgb{Channel(low, high, h + 1.0 / 3.0), Channel(low, high, h),
             Channel(low, high, h - 1.0 / 3.0)};
}

Hsl BlendHsl(Hsl a, double weightA, Hsl b, double weightB, unsigned int method) noexcept {
  Unwind(a.h, b.h, method);
  Hsl blend{a.h * weightA + b.h * weightB, a.s * weightA + b.s * weightB,
            a.l * weightA + b.l * weightB};
  // Ends at once: neither hue is above 1, and at most one was carried round.
  while (blend.h >= 1) {
    blend.h -= 1;
  }
  return blend;
}

}  // namespace vlm::detail
