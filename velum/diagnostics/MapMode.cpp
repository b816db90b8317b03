#include <velum/diagnostics/MapMode.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

namespace vlm {

namespace {

double Rounded(double x) { return std::trunc(x >= 0 ? x + 0.5 : x - 0.5); }

// Without a branch, so that loops over points become vector code.
std::int32_t ToInt(double x) {
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
  const double near = x + (x >= 0 ? 0.5 : -0.5);
  const double number = near == near ? near : 0;
  const double above = number > kLeast ? number : kLeast;
  return static_cast<std::int32_t>(above < kMost ? above : kMost);
}

bool Put(double x, double y, POINT* out) {
  if (out) *out = {ToInt(x), ToInt(y)};
  return out != nullptr;
}

bool Put(double x, double y, SIZE* out) {
  if (out) *out = {ToInt(x), ToInt(y)};
  return out != nullptr;
}

/// The units of a mode in a millimetre, as a product and a quotient; 0 for a mode without a unit.
struct Unit {
  double factor;
  double divisor;
};

Unit UnitOf(int mode) {
  switch (mode) {
    case MM_LOMETRIC:
    case MM_ISOTROPIC:
      return {10, 1};
    case MM_HIMETRIC:
      return {100, 1};
    case MM_LOENGLISH:
      return {100, 25.4};
    case MM_HIENGLISH:
      return {1000, 25.4};
    case MM_TWIPS:
      return {1440, 25.4};
    default:
      return {0, 1};
  }
}

}  // namespace

bool GMapMode::GetWindowOrgEx(POINT* origin) const noexcept {
  return Put(windowOrgX_, windowOrgY_, origin);
}

bool GMapMode::GetViewportOrgEx(POINT* origin) const noexcept {
  return Put(viewportOrgX_, viewportOrgY_, origin);
}

bool GMapMode::GetWindowExtEx(SIZE* extent) const noexcept {
  return Put(windowExtX_, windowExtY_, extent);
}

bool GMapMode::GetViewportExtEx(SIZE* extent) const noexcept {
  return Put(viewportExtX_, viewportExtY_, extent);
}

bool GMapMode::LPtoDP(POINT* points, int count) const noexcept {
  const double ratioX = viewportExtX_ / windowExtX_;
  const double ratioY = viewportExtY_ / windowExtY_;
  for (int i = 0; i < count; ++i) {
    points[i].x = ToInt((points[i].x - windowOrgX_) * ratioX + viewportOrgX_);
    points[i].y = ToInt((points[i].y - windowOrgY_) * ratioY + viewportOrgY_);
  }
  return true;
}

bool GMapMode::DPtoLP(POINT* points, int count) const noexcept {
  const double ratioX = windowExtX_ / viewportExtX_;
  const double ratioY = windowExtY_ / viewportExtY_;
  for (int i = 0; i < count; ++i) {
    points[i].x = ToInt((points[i].x - viewportOrgX_) * ratioX + windowOrgX_);
    points[i].y = ToInt((points[i].y - viewportOrgY_) * ratioY + windowOrgY_);
  }
  return true;
}

int GMapMode::SetMapMode(int mode, int widthMM, int heightMM, int widthPixels,
                         int heightPixels) noexcept {
  const int before = mapMode_;
  const Unit unit = UnitOf(mode);
  if (mode == MM_TEXT) {
    windowExtX_ = windowExtY_ = viewportExtX_ = viewportExtY_ = 1;
  } else if (unit.factor != 0) {
    windowExtX_ = widthMM * unit.factor / unit.divisor;
    windowExtY_ = heightMM * unit.factor / unit.divisor;
    viewportExtX_ = widthPixels;
    viewportExtY_ = -static_cast<double>(heightPixels);
  }
  if (mode == MM_ISOTROPIC) AdjustViewportExt();
  if (roundExtents_) {
    for (double* extent : {&windowExtX_, &windowExtY_, &viewportExtX_, &viewportExtY_}) {
      *extent = Rounded(*extent);
    }
  }
  mapMode_ = mode;
  return before;
}

bool GMapMode::SetWindowOrgEx(int x, int y, POINT* old) noexcept {
  GetWindowOrgEx(old);
  windowOrgX_ = x;
  windowOrgY_ = y;
  return true;
}

bool GMapMode::SetViewportOrgEx(int x, int y, POINT* old) noexcept {
  GetViewportOrgEx(old);
  viewportOrgX_ = x;
  viewportOrgY_ = y;
  return true;
}

bool GMapMode::SetWindowExtEx(int cx, int cy, SIZE* old) noexcept {
  GetWindowExtEx(old);
  TakeExtent(windowExtX_, windowExtY_, cx, cy);
  return true;
}

bool GMapMode::SetViewportExtEx(int cx, int cy, SIZE* old) noexcept {
  GetViewportExtEx(old);
  TakeExtent(viewportExtX_, viewportExtY_, cx, cy);
  return true;
}

void GMapMode::AdjustViewportExt() noexcept {
  const double windowX = std::abs(windowExtX_);
  const double windowY = std::abs(windowExtY_);
  const double ratioX = std::abs(viewportExtX_ / windowExtX_);
  const double ratioY = std::abs(viewportExtY_ / windowExtY_);
  const auto shrink = [this](double& extent, double size) {
    extent = extent < 0 ? -size : size;
    if (roundExtents_) extent = Rounded(extent);
  };
  if (ratioY <= ratioX) {
    shrink(viewportExtX_, ratioY * windowX);
  } else {
    shrink(viewportExtY_, ratioX * windowY);
  }
}

void GMapMode::MoveOrigins(const POINT& window, int left, int top) noexcept {
  viewportOrgX_ += (window.x - windowOrgX_) * (viewportExtX_ / windowExtX_) - left;
  viewportOrgY_ += (window.y - windowOrgY_) * (viewportExtY_ / windowExtY_) - top;
  windowOrgX_ = window.x;
  windowOrgY_ = window.y;
}

void GMapMode::TakeExtent(double& x, double& y, int cx, int cy) noexcept {
  if (mapMode_ != MM_ISOTROPIC && mapMode_ != MM_ANISOTROPIC) return;
  x = cx;
  y = cy;
  if (mapMode_ == MM_ISOTROPIC) AdjustViewportExt();
}

}  // namespace vlm
