#include <velum/colour/ColorConvert.h>

#include <velum/colour/detail/Hsl.h>
#include <velum/core/Exception.h>
#include <velum/geometry/Rounding.h>
#include <velum/geometry/detail/WrapTo.inl.h>

namespace vlm {
namespace {

unsigned char RoundedByte(double channel) noexcept {
  return detail::WrapTo<unsigned char>(ToNearest(channel * 255));
}

void CheckArrays(const void* dst, const void* src) {
  if (dst == nullptr || src == nullptr) {
    ThrowErrorImpl("Color4b", __LINE__, ERR_INTERNAL);
  }
}

}  // namespace

unsigned long HSLtoRGB(double h, double s, double l) noexcept {
  const detail::Rgb rgb = detail::ToRgb(detail::Hsl{h, s, l});
  return Color4b(RoundedByte(rgb.r), RoundedByte(rgb.g), RoundedByte(rgb.b), ALPHA_MAX)
      .GetCOLORREF();
}

void RGBtoHSL(unsigned long colorref, double& h, double& s, double& l) noexcept {
  Color4b(colorref, ALPHA_MAX).GetHSL(h, s, l);
}

unsigned long InterpColor(unsigned long a, unsigned long b, double t,
                          unsigned int method) noexcept {
  const auto known = method > Color4b::Last ? Color4b::First : Color4b::InterpMethod(method);
  return Color4b::Interp(Color4b(a, ALPHA_MAX), Color4b(b, ALPHA_MAX), t, known).GetCOLORREF();
}

void CopyRGBQUADToColor4b(Color4b* dst, const RGBQUAD* src, int count, bool useAlpha) {
  CheckArrays(dst, src);
  for (int i = 0; i < count; ++i) {
    dst[i] = Color4b(src[i], useAlpha ? src[i].rgbReserved : ALPHA_MAX);
  }
}

void CopyColor4bToRGBQUAD(RGBQUAD* dst, const Color4b* src, int count, bool useAlpha) {
  CheckArrays(dst, src);
  for (int i = 0; i < count; ++i) {
    const Color4b& color = src[i];
    dst[i] = RGBQUAD{color.B, color.G, color.R, useAlpha ? color.A : ALPHA_MIN};
  }
}

}  // namespace vlm
