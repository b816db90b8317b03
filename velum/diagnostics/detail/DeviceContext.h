#pragma once

/// \file
/// What a handle of a drawing context points to.

#include <velum/diagnostics/DrawingContext.h>
#include <velum/diagnostics/MapMode.h>
#include <velum/platform/Types.h>
#include <velum/platform/detail/Canvas.h>
#include <velum/platform/detail/ReferenceContext.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>

namespace vlm::detail {

/// A drawing context: a mapping, what lines are drawn with, and perhaps something to paint on.
struct DeviceContext final : platform::FontContext {
  DeviceContext();

  GMapMode mapping;                          ///< From logical to device units.
  std::unique_ptr<platform::Canvas> canvas;  ///< What it paints on, or null.
  HBITMAP bitmap = nullptr;                  ///< The bitmap of a context in memory.
  HPEN pen;                                  ///< The pen, never null.
  COLORREF background = 0xFFFFFF;            ///< The colour of gaps.
  int gaps = OPAQUE;                         ///< Whether they are drawn.
  int operation = R2_COPYPEN;                ///< How lines combine.
};

/// The context of a handle, or null.
[[nodiscard]] inline DeviceContext* ContextOf(HDC context) noexcept {
  return static_cast<DeviceContext*>(context);
}

/// Makes a context on a canvas; null for null. *Errors*: `std::bad_alloc`.
[[nodiscard]] HDC MakeDeviceContext(std::unique_ptr<platform::Canvas> canvas);

/// The number itself, or the nearest one that 32 bits hold.
[[nodiscard]] constexpr std::int32_t Saturated(std::int64_t number) noexcept {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, Limits::min(), Limits::max()));
}

/// A rectangle of logical units in device units, with its corners in order.
[[nodiscard]] RECT ToDevice(const GMapMode& mapping, const RECT& box) noexcept;

}  // namespace vlm::detail
