#include <velum/colour/Color4b.h>

#include <velum/colour/detail/Hsl.h>
#include <velum/colour/detail/Interpolate.h>

namespace vlm {
namespace {

// Byte channels that differ at all differ by more than this.
constexpr double kLeastDifference = 1.1920928955078125e-7;

struct Channels4b {
  static unsigned char Blend(unsigned char a, double weightA, unsigned char b,
                             double weightB) noexcept {
    return detail::WrapTo<unsigned char>(a * weightA + b * weightB + 0.5);
  }
  static Color4b Blend(const Color4b& a, double weightA, const Color4b& b,
                       double weightB) noexcept {
    return Color4b(Blend(a.R, weightA, b.R, weightB), Blend(a.G, weightA, b.G, weightB),
                   Blend(a.B, weightA, b.B, weightB), Blend(a.A, weightA, b.A, weightB));
  }
  static unsigned char Mean(unsigned char a, unsigned char b) noexcept {
    return static_cast<unsigned char>((a + b + 1) / 2);
  }
  static Color4b Mean(const Color4b& a, const Color4b& b) noexcept {
    return Color4b(Mean(a.R, b.R), Mean(a.G, b.G), Mean(a.B, b.B), Mean(a.A, b.A));
  }
  static void SetHsl(Color4b& color, const detail::Hsl& hsl) noexcept {
    const detail::Rgb rgb = detail::ToRgb(hsl);
    color.R = Color4b::ToBYTE(rgb.r);
    color.G = Color4b::ToBYTE(rgb.g);
    color.B = Color4b::ToBYTE(rgb.b);
  }
};

}  // namespace

Color4b Color4b::Interp(const Color4b& a, const Color4b& b, double t,
                        InterpMethod method) noexcept {
  return detail::Interpolate<Channels4b>(a, b, t, method);
}

void Color4b::GetHSL(double& h, double& s, double& l) const noexcept {
  const detail::Hsl hsl =
      detail::ToHsl(detail::Rgb{R / 255.0, G / 255.0, B / 255.0}, kLeastDifference);
  h = hsl.h;
  s = hsl.s;
  l = hsl.l;
}

void Color4b::SetHSL(double h, double s, double l, double a) noexcept {
  Channels4b::SetHsl(*this, detail::Hsl{h, s, l});
  A = ToBYTE(a);
}

}  // namespace vlm
