#include <velum/colour/Color4f.h>

#include <velum/colour/detail/Hsl.h>
#include <velum/colour/detail/Interpolate.h>

namespace vlm {
namespace {

struct Channels4f {
  static Color4f Blend(const Color4f& a, double weightA, const Color4f& b,
                       double weightB) noexcept {
    return Color4f(static_cast<float>(a.R * weightA + b.R * weightB),
                   static_cast<float>(a.G * weightA + b.G * weightB),
                   static_cast<float>(a.B * weightA + b.B * weightB),
                   static_cast<float>(a.A * weightA + b.A * weightB));
  }
  static Color4f Mean(const Color4f& a, const Color4f& b) noexcept {
    Color4f mean = (a + b) * 0.5f;
    mean.A = (a.A + b.A) * 0.5f;
    return mean;
  }
  static void SetHsl(Color4f& color, const detail::Hsl& hsl) noexcept {
    color.SetHSL(hsl.h, hsl.s, hsl.l);
  }
};

}  // namespace

Color4f Color4f::Interp(const Color4f& a, const Color4f& b, double t,
                        InterpMethod method) noexcept {
  return detail::Interpolate<Channels4f>(a, b, t, method);
}

}  // namespace vlm
