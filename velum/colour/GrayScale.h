#pragma once

/// \file
/// Colour tables of gray scales, and tables that widen a gray.
///
///     vlm::CDib ramp(256, 1, 8, 256);
///     ramp.SetColorTable(0, 256, vlm::GRAYSCALE_8_RGBQUADTable);

#include <velum/colour/Color4b.h>
#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

// Names tell the bits of a gray. Colours are opaque; the reserved byte of entries is 0.

extern VELUM_API const Color4b GRAYSCALE_1_Color4bTable[2];    ///< Black and white.
extern VELUM_API const RGBQUAD GRAYSCALE_1_RGBQUADTable[2];    ///< Black and white.
extern VELUM_API const Color4b GRAYSCALE_4_Color4bTable[16];   ///< Grays in steps of 17.
extern VELUM_API const RGBQUAD GRAYSCALE_4_RGBQUADTable[16];   ///< Grays in steps of 17.
extern VELUM_API const Color4b GRAYSCALE_8_Color4bTable[256];  ///< All grays.
extern VELUM_API const RGBQUAD GRAYSCALE_8_RGBQUADTable[256];  ///< All grays.

extern VELUM_API const unsigned char GRAYSCALE_4_To_GRAYSCALE_8_Table[16];     ///< From 0 to 255.
extern VELUM_API const unsigned short GRAYSCALE_4_To_GRAYSCALE_16_Table[16];   ///< From 0 to 65535.
extern VELUM_API const unsigned long GRAYSCALE_4_To_GRAYSCALE_32_Table[16];    ///< To 0xFFFFFFFF.
extern VELUM_API const unsigned short GRAYSCALE_8_To_GRAYSCALE_16_Table[256];  ///< From 0 to 65535.
extern VELUM_API const unsigned long GRAYSCALE_8_To_GRAYSCALE_32_Table[256];   ///< To 0xFFFFFFFF.

}  // namespace vlm
