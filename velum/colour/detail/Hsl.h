#pragma once

/// \file
/// The conversion between red, green and blue and hue, saturation and lightness, in `double` and on
/// 0 to 1, which all colour classes go through.

namespace vlm::detail {

/// Red, green and blue, each 0 to 1.
struct Rgb {
  double r = 0;  ///< Red.
  double g = 0;  ///< Green.
  double b = 0;  ///< Blue.
};

/// Hue, saturation and lightness, each 0 to 1.
struct Hsl {
  double h = 0;  ///< The hue; 0 and 1 are red.
  double s = 0;  ///< The saturation.
  double l = 0;  ///< The lightness.
};

/// Converts to hue, saturation and lightness. Channels that differ by less than `threshold` have no
/// hue: hue and saturation are then 0.
[[nodiscard]] Hsl ToHsl(const Rgb& rgb, double threshold) noexcept;

/// Converts to red, green and blue.
[[nodiscard]] Rgb ToRgb(const Hsl& hsl) noexcept;

/// Blends two colours, `weightA` of the first and `weightB` of the second; `method` is one of the
/// numbers of `ColorInterpolation` from `HueDown` to `HueLong` and tells the way round.
[[nodiscard]] Hsl BlendHsl(Hsl a, double weightA, Hsl b, double weightB,
                           unsigned int method) noexcept;

}  // namespace vlm::detail
