#include <velum/diagnostics/GdiUtil.h>

#include <velum/diagnostics/DrawingContext.h>
#include <velum/diagnostics/detail/DeviceContext.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace vlm {

namespace {

constexpr COLORREF kRubberBand = 0x800000;

void MoveCorner(HDC dc, RECT* r, int pixels) {
  if (!dc || !r) return;
  const auto moved = [pixels](std::int32_t x) {
    return detail::Saturated(std::int64_t{x} + pixels);
  };
  POINT corner{r->right, r->bottom};
  LPtoDP(dc, &corner, 1);
  corner = {moved(corner.x), moved(corner.y)};
  DPtoLP(dc, &corner, 1);
  r->right = corner.x;
  r->bottom = corner.y;
}

}  // namespace

void RectAccumPoint(const POINT& p, RECT& r) noexcept {
  r = {std::min(r.left, p.x), std::min(r.top, p.y), std::max(r.right, p.x),
       std::max(r.bottom, p.y)};
}

void RectToPoints(const RECT& r, POINT* corners) noexcept {
  corners[0] = {r.left, r.top};
  corners[1] = {r.right, r.top};
  corners[2] = {r.right, r.bottom};
  corners[3] = {r.left, r.bottom};
}

void RectFromPoints(const POINT* points, unsigned count, RECT& r) noexcept {
  using Limits = std::numeric_limits<std::int32_t>;
  r = {Limits::max(), Limits::max(), Limits::min(), Limits::min()};
  for (unsigned i = 0; i < count; ++i) RectAccumPoint(points[i], r);
}

void IncRect(HDC dc, RECT* r) noexcept { MoveCorner(dc, r, 1); }

void DecRect(HDC dc, RECT* r) noexcept { MoveCorner(dc, r, -1); }

void SetDefDC(HDC dc) noexcept {
  SetMapMode(dc, MM_TEXT);
  SetWindowOrgEx(dc, 0, 0, nullptr);
  SetViewportOrgEx(dc, 0, 0, nullptr);
}

void PlotRect(HDC dc, const RECT& r) noexcept {
  POINT outline[5];
  RectToPoints(r, outline);
  outline[4] = outline[0];
  Polyline(dc, outline, static_cast<int>(std::size(outline)));
}

void XorDotRect(HDC dc, const RECT& r) noexcept {
  const HPEN dotted = CreatePen(PS_DOT, 0, kRubberBand);
  if (!dotted) return;
  const HPEN pen = SelectObject(dc, dotted);
  const int gaps = SetBkMode(dc, TRANSPARENT);
  const int operation = SetROP2(dc, R2_NOTXORPEN);
  PlotRect(dc, r);
  SetROP2(dc, operation);
  SetBkMode(dc, gaps);
  SelectObject(dc, pen);
  DeleteObject(dotted);
}

}  // namespace vlm
