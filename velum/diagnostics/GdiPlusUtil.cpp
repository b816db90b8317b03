#include <velum/diagnostics/GdiPlusUtil.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Vec2.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace vlm {

namespace {

struct Encoder {
  const wchar_t* mimeType;
  GUID clsid;
};

constexpr Encoder kEncoders[] = {
    {L"image/png", {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}}}};

/// The first two columns of three rows, as floats.
Gdiplus::Matrix& SetRows(Gdiplus::Matrix& out, const double* x, const double* y,
                         const double* offset) {
  const auto real = [](double element) { return static_cast<Gdiplus::REAL>(element); };
  out.SetElements(real(x[0]), real(x[1]), real(y[0]), real(y[1]), real(offset[0]), real(offset[1]));
  return out;
}

}  // namespace

void FromGdiPointFArray(const Gdiplus::PointF* from, Vec2d* to, unsigned count) noexcept {
  for (unsigned i = 0; i < count; ++i) to[i].Set(from[i].X, from[i].Y);
}

Gdiplus::Matrix& ToGdiMatrix(const Mat3d& m, Gdiplus::Matrix& out) noexcept {
  return SetRows(out, m[0], m[1], m[2]);
}

Gdiplus::Matrix& ToGdiMatrix(const Mat4d& m, Gdiplus::Matrix& out) noexcept {
  return SetRows(out, m[0], m[1], m[3]);
}

Mat3d& FromGdiMatrix(const Gdiplus::Matrix& m, Mat3d& out) noexcept {
  Gdiplus::REAL e[6];
  m.GetElements(e);
  out = Mat3d(e[0], e[1], e[2], e[3], e[4], e[5]);
  return out;
}

void CopyGdiBitmapData(Gdiplus::BitmapData& to, const Gdiplus::BitmapData& from) {
  // The least stride has no positive counterpart of its own type.
  const std::int64_t rowBytes = std::abs(std::int64_t{from.Stride});
  if (std::abs(std::int64_t{to.Stride}) < rowBytes || !to.Scan0 || !from.Scan0) {
    ThrowErrorImpl("GdiplusUtil", __LINE__, ERR_INVALID_PARAMETER);
  }
  auto* target = static_cast<char*>(to.Scan0);
  const auto* source = static_cast<const char*>(from.Scan0);
  for (Gdiplus::UINT y = 0; y < from.Height; ++y) {
    std::memmove(target + y * std::ptrdiff_t{to.Stride}, source + y * std::ptrdiff_t{from.Stride},
                 static_cast<std::size_t>(rowBytes));
  }
}

int GetEncoderClsid(const wchar_t* mimeType, GUID* clsid) noexcept {
  if (!mimeType || !clsid) return -1;
  int index = 0;
  for (const Encoder& encoder : kEncoders) {
    if (std::wcscmp(mimeType, encoder.mimeType) == 0) {
      *clsid = encoder.clsid;
      return index;
    }
    ++index;
  }
  return -1;
}

}  // namespace vlm
