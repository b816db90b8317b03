#pragma once

/// \file
/// The colour of four floating-point channels, red, green, blue and alpha.
///
///     vlm::Color4f glass(0.0f, 0.5f, 1.0f, 0.25f);
///     unsigned long word = glass.GetARGB();              // 0x400080FF
///     vlm::Color4f solid = vlm::Color4b::CornflowerBlue;

#include <velum/colour/Color4b.h>
#include <velum/colour/FloatColor.h>
#include <velum/core/Api.h>
#include <velum/geometry/PointerTo.h>

#include <concepts>

namespace vlm {

/// Red, green, blue and alpha, the opacity, as `float`s, nominally 0 to 1. A plain value of four
/// `float`s in a row. FloatColor.h tells the members that it shares with Color3f; of the constants,
/// alpha is 1.
class VELUM_API Color4f : public FloatColor<Color4f> {
 public:
  float A = 1;  ///< The opacity.

  /// Makes opaque black.
  constexpr Color4f() noexcept = default;
  /// Makes a colour of four channels.
  constexpr Color4f(float r, float g, float b, float a) noexcept : FloatColor(r, g, b), A(a) {}
  /// Makes a colour of an array of four channels.
  explicit constexpr Color4f(PointerTo<float> auto rgba) noexcept
      : FloatColor(rgba[0], rgba[1], rgba[2]), A(rgba[3]) {}
  /// Makes a colour of a word 0x00BBGGRR, of which the low 24 bits count, and an alpha.
  constexpr Color4f(std::integral auto colorref, float alpha) noexcept
      : FloatColor(static_cast<unsigned long>(colorref)), A(alpha) {}
  /// Makes a colour of bytes: each one divided by 255.
  constexpr Color4f(const Color4b& color) noexcept
      : Color4f(float(color.R) / 255, float(color.G) / 255, float(color.B) / 255,
                float(color.A) / 255) {}

  /// Returns the word 0xAARRGGBB.
  [[nodiscard]] constexpr unsigned long GetARGB() const noexcept {
    return Byte(A) << 24 | GetRGB();
  }
  /// Returns the word 0xRRGGBBAA.
  [[nodiscard]] constexpr unsigned long GetRGBA() const noexcept { return GetRGB() << 8 | Byte(A); }
  /// Returns the word 0xAABBGGRR.
  [[nodiscard]] constexpr unsigned long GetABGR() const noexcept {
    return Byte(A) << 24 | GetCOLORREF();
  }
  /// Returns the brightness times the opacity: (0.3 R + 0.59 G + 0.11 B) A.
  [[nodiscard]] constexpr double Intensity() const noexcept {
    return (0.3 * R + 0.59 * G + 0.11 * B) * A;
  }

  /// Returns a colour between two; see ColorInterpolation.
  [[nodiscard]] static Color4f Interp(const Color4f& a, const Color4f& b, double t,
                                      InterpMethod method) noexcept;

  /// Sets the four channels.
  constexpr void Set(float r, float g, float b, float a) noexcept { *this = Color4f(r, g, b, a); }
  /// Sets the four channels from an array.
  constexpr void Set(PointerTo<float> auto rgba) noexcept { *this = Color4f(rgba); }
  /// Sets the four channels from a word 0x00BBGGRR and an alpha.
  constexpr void Set(std::integral auto colorref, float alpha) noexcept {
    *this = Color4f(colorref, alpha);
  }
  /// Sets the four channels from bytes: each one divided by 255.
  constexpr void Set(const Color4b& color) noexcept { *this = Color4f(color); }
  using FloatColor::SetHSL;
  /// Sets all channels from hue, saturation, lightness and alpha, each 0 to 1.
  void SetHSL(double h, double s, double l, double a) noexcept {
    SetHSL(h, s, l);
    A = static_cast<float>(a);
  }
  /// Limits each channel, alpha too, to 0 to 1.
  constexpr void Clamp() noexcept {
    *this = Color4f(Clamped(R), Clamped(G), Clamped(B), Clamped(A));
  }
  /// Sets this colour to one between two, as `Interp` gives it.
  void Interpolate(const Color4f& a, const Color4f& b, double t, InterpMethod method) noexcept {
    *this = Interp(a, b, t, method);
  }

  /// Compares all channels exactly.
  [[nodiscard]] constexpr bool operator==(const Color4f& color) const noexcept = default;
};

/// \cond definitions of the constants, told in FloatColor.h
template <>
inline constexpr Color4f FloatColor<Color4f>::Black{0, 0, 0, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Blue{0, 0, 1, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Cyan{0, 1, 1, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Dkgray{0.25f, 0.25f, 0.25f, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Gray{0.5f, 0.5f, 0.5f, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Green{0, 1, 0, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Ltgray{0.75f, 0.75f, 0.75f, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Magenta{1, 0, 1, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Orange{1, 0.65f, 0, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Red{1, 0, 0, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::White{1, 1, 1, 1};
template <>
inline constexpr Color4f FloatColor<Color4f>::Yellow{1, 1, 0, 1};

// Here, where both classes are complete.
constexpr Color4b::Color4b(const Color4f& color) noexcept
    : R(ToBYTE(color.R)), G(ToBYTE(color.G)), B(ToBYTE(color.B)), A(ToBYTE(color.A)) {}
/// \endcond

static_assert(sizeof(Color4f) == 4 * sizeof(float));

}  // namespace vlm
