#pragma once

/// \file
/// The colour of three floating-point channels, red, green and blue.
///
///     vlm::Color3f red(0x000000FF);                  // a COLORREF word
///     vlm::Color3f pink = (red + vlm::Color3f::White) / 2;
///     unsigned long word = pink.GetRGB();            // 0x00FF8080

#include <velum/colour/FloatColor.h>
#include <velum/core/Api.h>
#include <velum/geometry/PointerTo.h>

#include <concepts>

namespace vlm {

/// Red, green and blue as `float`s, nominally 0 to 1. A plain value of three `float`s in a row.
/// FloatColor.h tells the members that it shares with Color4f.
class VELUM_API Color3f : public FloatColor<Color3f> {
 public:
  /// Makes black.
  constexpr Color3f() noexcept = default;
  /// Makes a colour of three channels.
  constexpr Color3f(float r, float g, float b) noexcept : FloatColor(r, g, b) {}
  /// Makes a colour of an array of three channels.
  explicit constexpr Color3f(PointerTo<float> auto rgb) noexcept
      : FloatColor(rgb[0], rgb[1], rgb[2]) {}
  /// Makes a colour of a word 0x00BBGGRR, of which the low 24 bits count.
  explicit constexpr Color3f(std::integral auto colorref) noexcept
      : FloatColor(static_cast<unsigned long>(colorref)) {}

  /// Returns the brightness: 0.3 R + 0.59 G + 0.11 B.
  [[nodiscard]] constexpr double Intensity() const noexcept {
    return 0.3 * R + 0.59 * G + 0.11 * B;
  }

  /// Returns a colour between two; see ColorInterpolation.
  [[nodiscard]] static Color3f Interp(const Color3f& a, const Color3f& b, double t,
                                      InterpMethod method) noexcept;

  /// Sets the three channels.
  constexpr void Set(float r, float g, float b) noexcept { *this = Color3f(r, g, b); }
  /// Sets the three channels from an array.
  constexpr void Set(PointerTo<float> auto rgb) noexcept { *this = Color3f(rgb); }
  /// Sets the three channels from a word 0x00BBGGRR.
  constexpr void Set(std::integral auto colorref) noexcept { *this = Color3f(colorref); }
  /// Limits each channel to 0 to 1.
  constexpr void Clamp() noexcept { *this = Color3f(Clamped(R), Clamped(G), Clamped(B)); }
  /// Sets this colour to one between two, as `Interp` gives it.
  void Interpolate(const Color3f& a, const Color3f& b, double t, InterpMethod method) noexcept {
    *this = Interp(a, b, t, method);
  }
};

/// \cond definitions of the constants, told in FloatColor.h
template <>
inline constexpr Color3f FloatColor<Color3f>::Black{0, 0, 0};
template <>
inline constexpr Color3f FloatColor<Color3f>::Blue{0, 0, 1};
template <>
inline constexpr Color3f FloatColor<Color3f>::Cyan{0, 1, 1};
template <>
inline constexpr Color3f FloatColor<Color3f>::Dkgray{0.25f, 0.25f, 0.25f};
template <>
inline constexpr Color3f FloatColor<Color3f>::Gray{0.5f, 0.5f, 0.5f};
template <>
inline constexpr Color3f FloatColor<Color3f>::Green{0, 1, 0};
template <>
inline constexpr Color3f FloatColor<Color3f>::Ltgray{0.75f, 0.75f, 0.75f};
template <>
inline constexpr Color3f FloatColor<Color3f>::Magenta{1, 0, 1};
template <>
inline constexpr Color3f FloatColor<Color3f>::Orange{1, 0.65f, 0};
template <>
inline constexpr Color3f FloatColor<Color3f>::Red{1, 0, 0};
template <>
inline constexpr Color3f FloatColor<Color3f>::White{1, 1, 1};
template <>
inline constexpr Color3f FloatColor<Color3f>::Yellow{1, 1, 0};
/// \endcond

static_assert(sizeof(Color3f) == 3 * sizeof(float));

}  // namespace vlm
