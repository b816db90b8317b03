#include <velum/diagnostics/DrawingContext.h>

#include <velum/diagnostics/detail/DeviceContext.h>
#include <velum/platform/detail/Canvas.h>
#include <velum/platform/detail/Painting.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace vlm {

namespace {

using detail::ContextOf;
using detail::DeviceContext;

constexpr int kLargestSide = 32767;
// 96 pixels are an inch exactly.
constexpr int kDisplayMillimetres = 254;
constexpr int kDisplayPixels = 960;

struct Pen : HPEN__ {
  int style;
  int width;
  COLORREF color;
};

struct BitmapObject : HBITMAP__ {
  std::unique_ptr<platform::PixelSurface> surface;
};

// What a new context has.
constinit Pen stockPen{{0}, PS_SOLID, 0, 0};
constinit BitmapObject stockBitmap{};

/// What `call` gives of the mapping of a context; nothing for null.
template <class T>
auto OfMapping(HDC context, T call) noexcept -> decltype(call(std::declval<GMapMode&>())) {
  return context ? call(ContextOf(context)->mapping) : decltype(call(std::declval<GMapMode&>())){};
}

/// Takes a value of a context, and gives the one before.
template <class T>
T Exchange(HDC context, T DeviceContext::*member, T value) noexcept {
  return context ? std::exchange(ContextOf(context)->*member, value) : T{};
}

template <class T>
T Value(HDC context, T DeviceContext::*member) noexcept {
  return context ? ContextOf(context)->*member : T{};
}

/// The result of `call`, or nothing without memory.
template <class T>
auto Quietly(T call) noexcept -> decltype(call()) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    return {};
  }
}

int DeviceWidth(const DeviceContext& context, int width) {
  POINT ends[] = {{0, 0}, {width, 0}};
  context.mapping.LPtoDP(ends, 2);
  const double pixels = std::abs(1. * ends[1].x - ends[0].x);
  return static_cast<int>(std::clamp(pixels, 1., 1. * kLargestSide));
}

}  // namespace

namespace detail {

DeviceContext::DeviceContext() : pen(&stockPen) {}

HDC MakeDeviceContext(std::unique_ptr<platform::Canvas> canvas) {
  if (!canvas) return nullptr;
  auto* const context = new DeviceContext;
  context->canvas = std::move(canvas);
  return context;
}

RECT ToDevice(const GMapMode& mapping, const RECT& box) noexcept {
  POINT corners[] = {{box.left, box.top}, {box.right, box.bottom}};
  mapping.LPtoDP(corners, 2);
  const auto [left, right] = std::minmax(corners[0].x, corners[1].x);
  const auto [top, bottom] = std::minmax(corners[0].y, corners[1].y);
  return {left, top, right, bottom};
}

}  // namespace detail

HDC GetDC(HWND window) noexcept {
  return window ? nullptr : static_cast<HDC>(new (std::nothrow) DeviceContext);
}

int ReleaseDC(HWND, HDC context) noexcept { return DeleteDC(context) ? 1 : 0; }

HDC CreateCompatibleDC(HDC) noexcept {
  auto* const context = new (std::nothrow) DeviceContext;
  if (context) context->bitmap = &stockBitmap;
  return context;
}

bool DeleteDC(HDC context) noexcept {
  delete ContextOf(context);
  return context != nullptr;
}

HBITMAP CreateCompatibleBitmap(HDC context, int cx, int cy) noexcept {
  if (!context || std::min(cx, cy) < 1 || std::max(cx, cy) > kLargestSide) return nullptr;
  return Quietly([&]() -> HBITMAP {
    auto bitmap = std::make_unique<BitmapObject>();
    bitmap->surface = platform::PixelSurface::Make(cx, cy);
    return bitmap->surface ? bitmap.release() : nullptr;
  });
}

HPEN CreatePen(int style, int width, COLORREF color) noexcept {
  if (style != PS_SOLID && style != PS_DOT) return nullptr;
  return new (std::nothrow) Pen{{0}, style, width, color};
}

HBITMAP SelectObject(HDC context, HBITMAP bitmap) noexcept {
  if (!context || !bitmap || !ContextOf(context)->bitmap) return nullptr;
  return Quietly([&]() -> HBITMAP {
    platform::PixelSurface* const surface = static_cast<BitmapObject*>(bitmap)->surface.get();
    ContextOf(context)->canvas = surface ? platform::MakeCanvas(*surface) : nullptr;
    return std::exchange(ContextOf(context)->bitmap, bitmap);
  });
}

HPEN SelectObject(HDC context, HPEN pen) noexcept {
  return pen ? Exchange(context, &DeviceContext::pen, pen) : nullptr;
}

bool DeleteObject(HBITMAP bitmap) noexcept {
  if (bitmap != &stockBitmap) delete static_cast<BitmapObject*>(bitmap);
  return bitmap != nullptr;
}

bool DeleteObject(HPEN pen) noexcept {
  if (pen != &stockPen) delete static_cast<Pen*>(pen);
  return pen != nullptr;
}

int GetMapMode(HDC context) noexcept {
  return OfMapping(context, [](const GMapMode& mapping) { return mapping.GetMapMode(); });
}

int SetMapMode(HDC context, int mode) noexcept {
  if (mode < MM_TEXT || mode > MM_ANISOTROPIC) return 0;
  return OfMapping(context, [mode](GMapMode& mapping) {
    return mapping.SetMapMode(mode, kDisplayMillimetres, kDisplayMillimetres, kDisplayPixels,
                              kDisplayPixels);
  });
}

bool GetWindowOrgEx(HDC context, POINT* origin) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.GetWindowOrgEx(origin); });
}

bool GetViewportOrgEx(HDC context, POINT* origin) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.GetViewportOrgEx(origin); });
}

bool GetWindowExtEx(HDC context, SIZE* extent) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.GetWindowExtEx(extent); });
}

bool GetViewportExtEx(HDC context, SIZE* extent) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.GetViewportExtEx(extent); });
}

bool SetWindowOrgEx(HDC context, int x, int y, POINT* old) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.SetWindowOrgEx(x, y, old); });
}

bool SetViewportOrgEx(HDC context, int x, int y, POINT* old) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.SetViewportOrgEx(x, y, old); });
}

bool SetWindowExtEx(HDC context, int cx, int cy, SIZE* old) noexcept {
  return OfMapping(context, [=](GMapMode& mapping) { return mapping.SetWindowExtEx(cx, cy, old); });
}

bool SetViewportExtEx(HDC context, int cx, int cy, SIZE* old) noexcept {
  return OfMapping(context,
                   [=](GMapMode& mapping) { return mapping.SetViewportExtEx(cx, cy, old); });
}

bool LPtoDP(HDC context, POINT* points, int count) noexcept {
  return points &&
         OfMapping(context, [=](GMapMode& mapping) { return mapping.LPtoDP(points, count); });
}

bool DPtoLP(HDC context, POINT* points, int count) noexcept {
  return points &&
         OfMapping(context, [=](GMapMode& mapping) { return mapping.DPtoLP(points, count); });
}

int GetClipBox(HDC context, RECT* box) noexcept {
  if (!context || !box) return 0;
  const platform::Canvas* const canvas = ContextOf(context)->canvas.get();
  const RECT pixels = canvas ? canvas->ClipBox() : RECT{0, 0, 0, 0};
  POINT corners[] = {{pixels.left, pixels.top}, {pixels.right, pixels.bottom}};
  DPtoLP(context, corners, 2);
  *box = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
  return pixels.left < pixels.right && pixels.top < pixels.bottom ? SIMPLEREGION : NULLREGION;
}

COLORREF GetBkColor(HDC context) noexcept { return Value(context, &DeviceContext::background); }

COLORREF SetBkColor(HDC context, COLORREF color) noexcept {
  return Exchange(context, &DeviceContext::background, color);
}

int GetBkMode(HDC context) noexcept { return Value(context, &DeviceContext::gaps); }

int SetBkMode(HDC context, int mode) noexcept {
  if (mode != TRANSPARENT && mode != OPAQUE) return 0;
  return Exchange(context, &DeviceContext::gaps, mode);
}

int GetROP2(HDC context) noexcept { return Value(context, &DeviceContext::operation); }

int SetROP2(HDC context, int operation) noexcept {
  if (operation < 1 || operation > 16) return 0;
  return Exchange(context, &DeviceContext::operation, operation);
}

bool Polyline(HDC context, const POINT* points, int count) noexcept {
  if (!context || !points || count < 2 || !ContextOf(context)->canvas) return false;
  const DeviceContext& from = *ContextOf(context);
  return Quietly([&] {
    std::vector<POINT> device(points, points + count);
    from.mapping.LPtoDP(device.data(), count);
    const Pen& pen = *static_cast<const Pen*>(from.pen);
    const platform::CanvasPen canvasPen{pen.color,           DeviceWidth(from, pen.width),
                                        pen.style == PS_DOT, from.gaps == OPAQUE,
                                        from.background,     from.operation};
    return from.canvas->Lines(canvasPen, device.data(), device.size());
  });
}

bool BitBlt(HDC target, int x, int y, int cx, int cy, HDC source, int sourceX, int sourceY,
            std::uint32_t operation) noexcept {
  if (!target || !source || operation != SRCCOPY) return false;
  const DeviceContext& to = *ContextOf(target);
  const DeviceContext& from = *ContextOf(source);
  if (!to.canvas || !from.canvas) return false;
  const auto sum = [](int a, int b) { return detail::Saturated(std::int64_t{a} + b); };
  const RECT box = detail::ToDevice(to.mapping, {x, y, sum(x, cx), sum(y, cy)});
  const RECT at =
      detail::ToDevice(from.mapping, {sourceX, sourceY, sum(sourceX, cx), sum(sourceY, cy)});
  return Quietly([&] { return to.canvas->Copy(box, *from.canvas, {at.left, at.top}); });
}

}  // namespace vlm
