#pragma once

/// \file
/// Helpers for rectangles and drawing contexts.
///
///     vlm::RECT box;
///     const vlm::POINT corners[] = {{30, 5}, {10, 20}};
///     vlm::RectFromPoints(corners, 2, box);  // 10, 5, 30, 20
///     vlm::XorDotRect(context, box);         // a rubber band
///     vlm::XorDotRect(context, box);         // it is gone
///
/// With a null context nothing happens. Nothing throws.

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Widens `r` so that it holds `p`, edges included.
VELUM_API void RectAccumPoint(const POINT& p, RECT& r) noexcept;
/// Writes four corners: left top, right top, right bottom, left bottom.
VELUM_API void RectToPoints(const RECT& r, POINT* corners) noexcept;
/// Gives `r` the bounds of points; without points, left and top are the greatest 32-bit number,
/// right and bottom the least.
VELUM_API void RectFromPoints(const POINT* points, unsigned count, RECT& r) noexcept;
/// Moves the right bottom corner of a logical rectangle by one device pixel right and down.
VELUM_API void IncRect(HDC dc, RECT* r) noexcept;
/// Moves the right bottom corner of a logical rectangle by one device pixel left and up.
VELUM_API void DecRect(HDC dc, RECT* r) noexcept;
/// Lets logical units be device units: `MM_TEXT`, origins of 0, extents of 1.
VELUM_API void SetDefDC(HDC dc) noexcept;
/// Draws the outline of a rectangle with the pen of the context, from left top to the right first.
VELUM_API void PlotRect(HDC dc, const RECT& r) noexcept;
/// Draws the outline with a dotted pen so that drawing it again brings back every pixel. What the
/// context is set to stays.
///
/// - On a surface of vectors, where nothing can be taken back: nothing.
VELUM_API void XorDotRect(HDC dc, const RECT& r) noexcept;

}  // namespace vlm
