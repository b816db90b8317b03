#pragma once

/// \file
/// How pixels are stored: the fourteen formats, tables of their properties, and a copier of pixels
/// that works at any bit.
///
///     const unsigned char from[] = {0x12, 0x34};
///     unsigned char to[] = {0xFF, 0xFF};
///     vlm::CopyPixels(to, 0, from, 1, 2, vlm::ColorFormatIndexed4);  // to[0] is 0x23

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// The format of a pixel. Of less than a byte, the leftmost pixel has the highest bits.
enum ColorFormat : int {
  ColorFormatNone = 0,      ///< No pixels.
  ColorFormatGray1 = 1,     ///< A gray of 1 bit.
  ColorFormatGray4 = 2,     ///< A gray of 4 bits.
  ColorFormatGray8 = 3,     ///< A gray of 8 bits.
  ColorFormatGray16 = 4,    ///< A gray of 16 bits.
  ColorFormatGray32 = 5,    ///< A gray of 32 bits.
  ColorFormatIndexed1 = 6,  ///< An index of 1 bit.
  ColorFormatIndexed4 = 7,  ///< An index of 4 bits.
  ColorFormatIndexed8 = 8,  ///< An index of 8 bits.
  ColorFormatBGR24 = 9,     ///< Blue, green, red.
  ColorFormatBGRA32 = 10,   ///< Blue, green, red, opacity.
  ColorFormatRGBA32 = 11,   ///< Red, green, blue, opacity.
  ColorFormatBGRX32 = 12,   ///< Blue, green, red, a byte that means nothing.
  ColorFormatPBGRA32 = 13,  ///< Blue, green, red, each times the opacity, then the opacity.
};

// Tables of the formats' properties, by the number of the format.

extern VELUM_API const int ColorFmtToBPP[14];             ///< The bits of a pixel.
extern VELUM_API const int ColorFmtToDibBPP[14];          ///< The bits of a pixel in a `CDib`.
extern VELUM_API const int ColorFmtToBPS[14];             ///< The bits of a sample.
extern VELUM_API const int ColorFmtToSampleCount[14];     ///< The samples of a pixel.
extern VELUM_API const int ColorFmtToTblSize[14];         ///< The entries of a full colour table.
extern VELUM_API const bool ColorFmtHasAlphaChannel[14];  ///< True if a pixel has an opacity.

/// Returns the format nearest to a bitmap's, by its bits: `ColorFormatIndexed1`, `Indexed4` and
/// `Indexed8` for 1, 4 and 8, `ColorFormatBGR24` for 16 and 24, `ColorFormatBGRA32` for 32,
/// otherwise `ColorFormatNone`.
[[nodiscard]] VELUM_API ColorFormat
ColorFormatClosestToDIB(const BITMAPINFOHEADER& header) noexcept;

/// Copies `count` pixels from the pixel `srcPixel` of a row to the pixel `dstPixel` of another,
/// both counted from 0 at `src` and `dst`; negative ones lie before these. The two do not overlap.
///
/// Of pixels smaller than a byte only those copied change; their neighbours in the first and the
/// last byte stay. No byte without a pixel that is copied is read or written.
/// - A `count` below 1, a format outside 1 to 13: nothing.
///
/// *Cost*: that of `std::memcpy` where pixels are whole bytes or lie alike in theirs, otherwise 64
/// bits at a time.
VELUM_API void CopyPixels(unsigned char* dst, int dstPixel, const unsigned char* src, int srcPixel,
                          int count, ColorFormat format) noexcept;

}  // namespace vlm
