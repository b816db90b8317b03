#pragma once

/// \file
/// The ways in which two colours are interpolated, told once for Color3f, Color4f and Color4b.
///
///     vlm::Color4b middle = vlm::Color4b::Interp(vlm::Color4b::Red, vlm::Color4b::Blue, 0.5,
///                                                vlm::Color4b::HueShort);

#include <velum/core/Api.h>

namespace vlm {

/// The base that gives every colour class its `InterpMethod`. It holds nothing.
///
/// A method tells the result for `t` between 0 and 1, both excluded; a number that is no method
/// acts as `First`. For the rest all methods agree: equal colours give that colour; `t` at most 0
/// gives the first colour and `t` at least 1 the second, or the other way round for
/// `LinearReversed`.
///
/// The hue methods blend hue, saturation and lightness, and differ in the way round the circle of
/// hues. Alpha is always blended linearly, but for `First`, `Mean` and `Last`.
/// Between equal hues the longer way is the whole circle.
class VELUM_API ColorInterpolation {
 public:
  /// How the colours between two colours are found. The numbers are part of the interface.
  enum InterpMethod : unsigned int {
    Linear = 0,          ///< The first fades into the second, channel by channel.
    LinearReversed = 1,  ///< The second fades into the first.
    Cosine = 2,          ///< As `Linear`, slow at both ends.
    First = 3,           ///< The first colour.
    Mean = 4,            ///< The mean of both, whatever `t`.
    Last = 5,            ///< The second colour.
    HueDown = 6,         ///< By falling hues.
    HueUp = 7,           ///< By rising hues.
    HueShort = 8,        ///< By the shorter way between the hues.
    HueLong = 9,         ///< By the longer way between the hues.
  };
};

}  // namespace vlm
