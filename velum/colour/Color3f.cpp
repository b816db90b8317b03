#include <velum/colour/Color3f.h>

#include <velum/colour/detail/Hsl.h>
#include <velum/colour/detail/Interpolate.h>

namespace vlm {
namespace {

struct Channels3f {
  static Color3f Blend(const Color3f& a, double weightA, const Color3f& b,
                       double weightB) noexcept {
    return Color3f(static_cast<float>(a.R * weightA + b.R * weightB),
                   static_cast<float>(a.G * weightA + b.G * weightB),
                   static_cast<float>(a.B * weightA + b.B * weightB));
  }
  static Color3f Mean(const Color3f& a, const Color3f& b) noexcept { return (a + b) * 0.5f; }
  static void SetHsl(Color3f& color, const detail::Hsl& hsl) noexcept {
    color.SetHSL(hsl.h, hsl.s, hsl.l);
  }
};

}  // namespace

Color3f Color3f::Interp(const Color3f& a, const Color3f& b, double t,
                        InterpMethod method) noexcept {
  return detail::Interpolate<Channels3f>(a, b, t, method);
}

}  // namespace vlm
