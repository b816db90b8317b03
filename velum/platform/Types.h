#pragma once

/// \file
/// Records of a published platform interface, as plain structures: points, rectangles, sizes and
/// palette entries. Field names, order and widths are those of that interface, so that stored
/// structures can be read as they are.
///
///     vlm::RECT page{0, 0, 210, 297};
///     vlm::POINT centre{page.right / 2, page.bottom / 2};

#include <cstdint>

namespace vlm {

/// A point in integer coordinates. Plain data: a `POINT p;` is not initialised.
struct POINT {
  std::int32_t x;  ///< The horizontal coordinate.
  std::int32_t y;  ///< The vertical coordinate.
};

/// A rectangle by its edges, in integer coordinates. Nothing keeps `left` at or below `right`.
struct RECT {
  std::int32_t left;    ///< x of the left edge.
  std::int32_t top;     ///< y of the upper edge.
  std::int32_t right;   ///< x of the right edge.
  std::int32_t bottom;  ///< y of the lower edge.
};

/// A width and a height in integer units.
struct SIZE {
  std::int32_t cx;  ///< The width.
  std::int32_t cy;  ///< The height.
};

/// A palette entry or pixel of a bitmap: four bytes, blue first.
struct RGBQUAD {
  std::uint8_t rgbBlue;      ///< Blue, 0 to 255.
  std::uint8_t rgbGreen;     ///< Green, 0 to 255.
  std::uint8_t rgbRed;       ///< Red, 0 to 255.
  std::uint8_t rgbReserved;  ///< 0, or the opacity where a function says so.
};

using tagPOINT = POINT;      ///< `POINT` under its tag name.
using tagRECT = RECT;        ///< `RECT` under its tag name.
using tagSIZE = SIZE;        ///< `SIZE` under its tag name.
using tagRGBQUAD = RGBQUAD;  ///< `RGBQUAD` under its tag name.

static_assert(sizeof(POINT) == 8 && sizeof(RECT) == 16 && sizeof(SIZE) == 8);
static_assert(sizeof(RGBQUAD) == 4);

}  // namespace vlm
