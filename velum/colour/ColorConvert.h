#pragma once

/// \file
/// Colour functions on words and on arrays of palette entries.
///
///     unsigned long red = vlm::HSLtoRGB(0, 1, 0.5);                    // 0x000000FF
///     unsigned long dark = vlm::InterpColor(red, 0, 0.5, vlm::Color4b::Linear);  // 0x00000080

#include <velum/colour/Color4b.h>
#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Returns the word 0x00BBGGRR of hue, saturation and lightness, each 0 to 1. Each channel is
/// rounded half away from zero; outside 0 to 1 the low byte of the whole number remains.
///
/// *Source*: G. H. Joblove and D. Greenberg, Color Spaces for Computer Graphics (1978).
[[nodiscard]] VELUM_API unsigned long HSLtoRGB(double h, double s, double l) noexcept;

/// Gets hue, saturation and lightness, each 0 to 1, of a word 0x00BBGGRR. Of a colour without hue,
/// `h` and `s` are 0.
VELUM_API void RGBtoHSL(unsigned long colorref, double& h, double& s, double& l) noexcept;

/// Returns the word between two words 0x00BBGGRR, as `Color4b::Interp` gives it on their three
/// bytes. `method` is a number of `ColorInterpolation::InterpMethod`; the hue methods act as
/// `First`.
[[nodiscard]] VELUM_API unsigned long InterpColor(unsigned long a, unsigned long b, double t,
                                                  unsigned int method) noexcept;

/// Copies `count` palette entries or pixels to colours. Alpha becomes the reserved byte with
/// `useAlpha`, otherwise 255. A `count` below 1 copies nothing.
///
/// *Errors*: `Exception` with `ERR_INTERNAL` from "Color4b" for a null pointer, before anything is
/// written.
VELUM_API void CopyRGBQUADToColor4b(Color4b* dst, const RGBQUAD* src, int count, bool useAlpha);

/// Copies `count` colours to palette entries or pixels. The reserved byte becomes alpha with
/// `useAlpha`, otherwise 0. A `count` below 1 copies nothing.
///
/// *Errors*: `Exception` with `ERR_INTERNAL` from "Color4b" for a null pointer, before anything is
/// written.
VELUM_API void CopyColor4bToRGBQUAD(RGBQUAD* dst, const Color4b* src, int count, bool useAlpha);

}  // namespace vlm
