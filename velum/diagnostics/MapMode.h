#pragma once

/// \file
/// The arithmetic of mapping modes: logical coordinates made device coordinates and back, without a
/// device.
///
///     vlm::GMapMode mapping;
///     mapping.SetMapMode(vlm::MM_LOMETRIC, 320, 240, 1024, 768);
///     vlm::POINT corner{3200, 2400};
///     mapping.LPtoDP(&corner, 1);  // (1024, -768)

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Mapping modes, with the numbers of the published interface.
enum MapMode : int {
  MM_TEXT = 1,        ///< A unit is a pixel, y grows downward.
  MM_LOMETRIC = 2,    ///< A unit is 0.1 mm; in this mode and the next ones y grows upward.
  MM_HIMETRIC = 3,    ///< A unit is 0.01 mm.
  MM_LOENGLISH = 4,   ///< A unit is 0.01 inch.
  MM_HIENGLISH = 5,   ///< A unit is 0.001 inch.
  MM_TWIPS = 6,       ///< A unit is 1/1440 inch.
  MM_ISOTROPIC = 7,   ///< The application sets the extents; a unit is the same in x and y.
  MM_ANISOTROPIC = 8  ///< The application sets the extents.
};

/// A mapping between logical (window) and device (viewport) coordinates.
///
/// A point of the window's origin lies at the viewport's, and distances go as the viewport's extent
/// to the window's. A value of doubles. What leaves it as an integer is rounded half away from
/// zero; what 32 bits can't hold becomes the nearest that they hold, and NaN, which a window or
/// viewport extent of 0 can give, becomes 0. Nothing throws.
class VELUM_API GMapMode {
 public:
  /// `MM_TEXT`, where device and logical coordinates are the same. With `roundExtents`, extents are
  /// kept whole.
  explicit GMapMode(bool roundExtents = false) noexcept : roundExtents_(roundExtents) {}

  /// The mode.
  [[nodiscard]] int GetMapMode() const noexcept { return mapMode_; }
  /// Writes the window's origin; false for null.
  bool GetWindowOrgEx(POINT* origin) const noexcept;
  /// Writes the viewport's origin; false for null.
  bool GetViewportOrgEx(POINT* origin) const noexcept;
  /// Writes the window's extent; false for null.
  bool GetWindowExtEx(SIZE* extent) const noexcept;
  /// Writes the viewport's extent; false for null.
  bool GetViewportExtEx(SIZE* extent) const noexcept;
  /// Converts points from logical to device coordinates, in place. Gives true; a count below 1
  /// converts none.
  bool LPtoDP(POINT* points, int count) const noexcept;
  /// Converts points from device to logical coordinates, in place. Gives true; a count below 1
  /// converts none.
  bool DPtoLP(POINT* points, int count) const noexcept;

  /// Takes a mode for a display of this size in millimetres and in pixels, and gives the one
  /// before. Origins stay.
  ///
  /// - `MM_TEXT`: all extents are 1.
  /// - The modes with a unit of length, and `MM_ISOTROPIC`, at first of 0.1 mm: the window's extent
  ///   is the display in that unit, the viewport's its pixels, with a negative y.
  /// - `MM_ANISOTROPIC` and numbers that are no mode: extents stay.
  int SetMapMode(int mode, int widthMM, int heightMM, int widthPixels, int heightPixels) noexcept;
  /// Takes the window's origin, in any mode; `old`, unless null, gets the one before. Gives true.
  bool SetWindowOrgEx(int x, int y, POINT* old) noexcept;
  /// Takes the viewport's origin, in any mode; `old`, unless null, gets the one before. Gives true.
  bool SetViewportOrgEx(int x, int y, POINT* old) noexcept;
  /// Takes the window's extent in `MM_ISOTROPIC` and `MM_ANISOTROPIC`; another mode keeps its own.
  /// `old`, unless null, gets the one before. Gives true.
  bool SetWindowExtEx(int cx, int cy, SIZE* old) noexcept;
  /// Takes the viewport's extent, as `SetWindowExtEx` does the window's.
  bool SetViewportExtEx(int cx, int cy, SIZE* old) noexcept;

 protected:
  /// Makes the viewport's extent smaller in one direction, so that a unit is the same in both. It
  /// keeps its sign; 0 counts as positive.
  void AdjustViewportExt() noexcept;

 private:
  friend class CMemDC;

  [[gnu::visibility("hidden")]] void TakeExtent(double& x, double& y, int cx, int cy) noexcept;
  /// Takes the window's origin, and the viewport's so that each point comes to lie `left` and `top`
  /// before where it was.
  [[gnu::visibility("hidden")]] void MoveOrigins(const POINT& window, int left, int top) noexcept;

  bool roundExtents_;
  int mapMode_ = MM_TEXT;
  double viewportOrgX_ = 0;
  double viewportOrgY_ = 0;
  double viewportExtX_ = 1;
  double viewportExtY_ = 1;
  double windowOrgX_ = 0;
  double windowOrgY_ = 0;
  double windowExtX_ = 1;
  double windowExtY_ = 1;
};

}  // namespace vlm
