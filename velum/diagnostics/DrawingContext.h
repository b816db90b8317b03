#pragma once

/// \file
/// Drawing contexts: lines and copies in logical coordinates, on the surface of a painting or on a
/// bitmap in memory.
///
///     vlm::Gdiplus::Bitmap picture(320, 200);
///     vlm::Gdiplus::Graphics graphics(&picture);
///     const vlm::HDC context = graphics.GetHDC();
///     const vlm::POINT line[] = {{10, 10}, {300, 10}};
///     vlm::Polyline(context, line, 2);
///     graphics.ReleaseHDC(context);
///
/// Names, numbers and answers are those of a published interface, of which this is the part that
/// the helpers of GdiUtil.h and the classes on contexts need: for a null handle and what can't be
/// done they give false, 0 or null, and nothing throws. A new context has the mode `MM_TEXT`, a
/// solid black pen of one pixel, a white background that shows in the gaps of lines, and the
/// operation `R2_COPYPEN`.
///
/// Device units are the pixels of the surface, whatever matrix a Cairo context and whatever scale
/// its surface has; on a surface of vectors they are its units. 96 of them are an inch. Logical
/// units become device units as `GMapMode` says. Nothing is painted out of the clip that a Cairo
/// context has. Lines have no smooth edges and leave out their last pixel. Coordinates beyond
/// 1,000,000 are taken as that.
///
/// One thread uses a context and its surface at a time. What a context is made on it holds on to,
/// so that handles may be given back in any order.

#include <velum/core/Api.h>
#include <velum/diagnostics/MapMode.h>  // IWYU pragma: export
#include <velum/platform/Types.h>

#include <cstdint>

namespace vlm {

inline constexpr int PS_SOLID = 0;  ///< A pen without gaps.
inline constexpr int PS_DOT = 2;    ///< A pen of dots, three pixels long with gaps as long.

inline constexpr int TRANSPARENT = 1;  ///< Gaps of lines stay as they are.
inline constexpr int OPAQUE = 2;       ///< Gaps of lines show the background colour.

inline constexpr int R2_NOTXORPEN = 10;  ///< Lines that are gone when they are drawn twice.
inline constexpr int R2_COPYPEN = 13;    ///< Lines in the colour of the pen.

inline constexpr std::uint32_t SRCCOPY = 0x00CC0020;  ///< Pixels are copied as they are.

inline constexpr int NULLREGION = 1;    ///< There is nothing to paint on.
inline constexpr int SIMPLEREGION = 2;  ///< A rectangle can be painted on.

/// A context of the screen's stand-in, for null, which has a mapping and faces but nothing to paint
/// on; null for a window, of which there are none. *Lifetime*: until `ReleaseDC`.
[[nodiscard]] VELUM_API HDC GetDC(HWND window) noexcept;
/// Gives back a context of `GetDC`. 1 if it did, 0 for null.
VELUM_API int ReleaseDC(HWND window, HDC context) noexcept;
/// A context in memory, where nothing can be painted before a bitmap is selected. `context` may be
/// null. *Lifetime*: until `DeleteDC`.
[[nodiscard]] VELUM_API HDC CreateCompatibleDC(HDC context) noexcept;
/// Gives back a context of `CreateCompatibleDC`; what is selected in it stays.
VELUM_API bool DeleteDC(HDC context) noexcept;

/// A bitmap of 32 bits a pixel, transparent at first. Null for a size below 1 or above 32767.
/// *Lifetime*: until `DeleteObject`.
[[nodiscard]] VELUM_API HBITMAP CreateCompatibleBitmap(HDC context, int cx, int cy) noexcept;
/// A pen of the style `PS_SOLID` or `PS_DOT`, null for another; `width` is in logical units, 0
/// stands for one pixel. *Lifetime*: until `DeleteObject`, which it must not meet while selected.
[[nodiscard]] VELUM_API HPEN CreatePen(int style, int width, COLORREF color) noexcept;
/// Lets a context in memory paint on a bitmap, and gives the one before; null for other contexts.
VELUM_API HBITMAP SelectObject(HDC context, HBITMAP bitmap) noexcept;
/// Takes a pen and gives the one before.
VELUM_API HPEN SelectObject(HDC context, HPEN pen) noexcept;
/// Destroys a bitmap; that of a new context stays.
VELUM_API bool DeleteObject(HBITMAP bitmap) noexcept;
/// Destroys a pen; that of a new context stays.
VELUM_API bool DeleteObject(HPEN pen) noexcept;

/// The mapping mode.
[[nodiscard]] VELUM_API int GetMapMode(HDC context) noexcept;
/// Takes a mapping mode of 1 to 8 and gives the one before; 0 for another number.
VELUM_API int SetMapMode(HDC context, int mode) noexcept;
/// As `GMapMode::GetWindowOrgEx`.
VELUM_API bool GetWindowOrgEx(HDC context, POINT* origin) noexcept;
/// As `GMapMode::GetViewportOrgEx`.
VELUM_API bool GetViewportOrgEx(HDC context, POINT* origin) noexcept;
/// As `GMapMode::GetWindowExtEx`.
VELUM_API bool GetWindowExtEx(HDC context, SIZE* extent) noexcept;
/// As `GMapMode::GetViewportExtEx`.
VELUM_API bool GetViewportExtEx(HDC context, SIZE* extent) noexcept;
/// As `GMapMode::SetWindowOrgEx`.
VELUM_API bool SetWindowOrgEx(HDC context, int x, int y, POINT* old) noexcept;
/// As `GMapMode::SetViewportOrgEx`.
VELUM_API bool SetViewportOrgEx(HDC context, int x, int y, POINT* old) noexcept;
/// As `GMapMode::SetWindowExtEx`.
VELUM_API bool SetWindowExtEx(HDC context, int cx, int cy, SIZE* old) noexcept;
/// As `GMapMode::SetViewportExtEx`.
VELUM_API bool SetViewportExtEx(HDC context, int cx, int cy, SIZE* old) noexcept;
/// As `GMapMode::LPtoDP`; false for null.
VELUM_API bool LPtoDP(HDC context, POINT* points, int count) noexcept;
/// As `GMapMode::DPtoLP`; false for null.
VELUM_API bool DPtoLP(HDC context, POINT* points, int count) noexcept;

/// Writes the box of what can be painted, in logical units, and gives `NULLREGION` or
/// `SIMPLEREGION`; 0 for null.
VELUM_API int GetClipBox(HDC context, RECT* box) noexcept;
/// The background colour.
[[nodiscard]] VELUM_API COLORREF GetBkColor(HDC context) noexcept;
/// Takes the background colour and gives the one before.
VELUM_API COLORREF SetBkColor(HDC context, COLORREF color) noexcept;
/// What the gaps of lines show, `TRANSPARENT` or `OPAQUE`.
[[nodiscard]] VELUM_API int GetBkMode(HDC context) noexcept;
/// Takes what the gaps of lines show and gives the one before; 0 for another number.
VELUM_API int SetBkMode(HDC context, int mode) noexcept;
/// How lines combine with what is there.
[[nodiscard]] VELUM_API int GetROP2(HDC context) noexcept;
/// Takes how lines combine with what is there, one of the sixteen operations from 1 on that two
/// bits have, and gives the one before; 0 for another number.
VELUM_API int SetROP2(HDC context, int operation) noexcept;

/// Draws lines from each point to the next. One call changes each pixel once. False below two
/// points, and where it can't be done: on a surface of vectors with another operation than
/// `R2_COPYPEN`, on one of alpha or of other pixels than 8 bits a colour, in a clip that is not
/// made of whole pixels.
VELUM_API bool Polyline(HDC context, const POINT* points, int count) noexcept;
/// Copies pixels from a context to another one, with their alpha. The size is that of the target
/// in its device units; it stays where the source has no pixels. False for an operation other than
/// `SRCCOPY`, and for one surface.
VELUM_API bool BitBlt(HDC target, int x, int y, int cx, int cy, HDC source, int sourceX,
                      int sourceY, std::uint32_t operation) noexcept;

}  // namespace vlm
