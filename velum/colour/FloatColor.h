#pragma once

/// \file
/// What the two colour classes of floating-point channels share. Include Color3f.h or Color4f.h;
/// the members told here are members of both.
///
///     vlm::Color3f orange = vlm::Color3f::Red + vlm::Color3f::Green * 0.65f;
///     double h, s, l;
///     orange.GetHSL(h, s, l);

#include <velum/colour/ColorInterpolation.h>
#include <velum/colour/Forward.h>
#include <velum/core/Api.h>
#include <velum/geometry/detail/WrapTo.inl.h>

namespace vlm {

/// Red, green and blue of the colour class `Color`, which names itself here so that results are
/// colours of its kind.
///
/// Channels are nominally 0 to 1, and nothing enforces that. Arithmetic works on the three channels
/// told here; of an alpha, the result has that of the left operand.
template <class Color>
class VELUM_API FloatColor : public ColorInterpolation {
 public:
  static const Color Black;    ///< (0, 0, 0)
  static const Color Blue;     ///< (0, 0, 1)
  static const Color Cyan;     ///< (0, 1, 1)
  static const Color Dkgray;   ///< (0.25, 0.25, 0.25)
  static const Color Gray;     ///< (0.5, 0.5, 0.5)
  static const Color Green;    ///< (0, 1, 0), unlike `Color4b::Green`
  static const Color Ltgray;   ///< (0.75, 0.75, 0.75)
  static const Color Magenta;  ///< (1, 0, 1)
  static const Color Orange;   ///< (1, 0.65, 0)
  static const Color Red;      ///< (1, 0, 0)
  static const Color White;    ///< (1, 1, 1)
  static const Color Yellow;   ///< (1, 1, 0)

  float R = 0;  ///< Red.
  float G = 0;  ///< Green.
  float B = 0;  ///< Blue.

  /// Converts to a pointer to the channels, which lie one after the other in the colour.
  /// *Lifetime:* that of the colour.
  operator float*() noexcept { return reinterpret_cast<float*>(this); }
  /// Converts to a pointer to the channels for reading. *Lifetime:* that of the colour.
  operator const float*() const noexcept { return reinterpret_cast<const float*>(this); }

  /// Returns the word 0x00RRGGBB.
  ///
  /// As in all packed words each channel times 255 is rounded half up. Channels outside 0 to 1 are
  /// not clamped: they keep the low byte of the whole number, and NaN gives 0.
  [[nodiscard]] constexpr unsigned long GetRGB() const noexcept {
    return Byte(R) << 16 | Byte(G) << 8 | Byte(B);
  }
  /// Returns the word 0x00BBGGRR.
  [[nodiscard]] constexpr unsigned long GetCOLORREF() const noexcept {
    return Byte(B) << 16 | Byte(G) << 8 | Byte(R);
  }

  /// Gets hue, saturation and lightness, each 0 to 1. Of a colour without hue, `h` and `s` are 0.
  void GetHSL(double& h, double& s, double& l) const noexcept;
  /// Sets the three channels from hue, saturation and lightness, each 0 to 1; hue 1 is red again.
  void SetHSL(double h, double s, double l) noexcept;

  /// Adds channel by channel.
  constexpr Color& operator+=(const Color& color) noexcept {
    R += color.R;
    G += color.G;
    B += color.B;
    return Self();
  }
  /// Subtracts channel by channel.
  constexpr Color& operator-=(const Color& color) noexcept {
    R -= color.R;
    G -= color.G;
    B -= color.B;
    return Self();
  }
  /// Multiplies each channel by a number.
  constexpr Color& operator*=(float s) noexcept {
    R *= s;
    G *= s;
    B *= s;
    return Self();
  }
  /// Divides each channel by a number, by way of its reciprocal.
  constexpr Color& operator/=(float s) noexcept { return *this *= 1 / s; }

  /// Returns the sums of like channels.
  [[nodiscard]] friend constexpr Color operator+(const Color& a, const Color& b) noexcept {
    return Color(a) += b;
  }
  /// Returns the differences of like channels.
  [[nodiscard]] friend constexpr Color operator-(const Color& a, const Color& b) noexcept {
    return Color(a) -= b;
  }
  /// Returns the colour with each channel multiplied by a number.
  [[nodiscard]] friend constexpr Color operator*(const Color& color, float s) noexcept {
    return Color(color) *= s;
  }
  /// Returns the colour with each channel divided by a number.
  [[nodiscard]] friend constexpr Color operator/(const Color& color, float s) noexcept {
    return Color(color) /= s;
  }

  /// Compares all channels exactly.
  [[nodiscard]] constexpr bool operator==(const FloatColor& color) const noexcept {
    return R == color.R && G == color.G && B == color.B;
  }
  /// Colours have no order; the relations would compare addresses.
  friend auto operator<=>(const Color&, const Color&) = delete;

 protected:
  /// The value of one step of a byte channel.
  static constexpr float kStep = 0.003921568859368563f;

  /// Makes black.
  constexpr FloatColor() noexcept = default;
  /// Makes a colour of three channels.
  constexpr FloatColor(float r, float g, float b) noexcept : R(r), G(g), B(b) {}
  /// Makes a colour of a word 0x00BBGGRR, of which the low 24 bits count.
  explicit constexpr FloatColor(unsigned long colorref) noexcept
      : R(float(colorref & 0xFF) * kStep),
        G(float(colorref >> 8 & 0xFF) * kStep),
        B(float(colorref >> 16 & 0xFF) * kStep) {}

  /// Returns a channel as the byte of a packed word.
  static constexpr unsigned long Byte(float channel) noexcept {
    return detail::WrapTo<unsigned char>(double(channel) * 255 + 0.5);
  }
  /// Returns a channel limited to 0 to 1.
  static constexpr float Clamped(float channel) noexcept {
    return channel < 0 ? 0 : channel > 1 ? 1 : channel;
  }

 private:
  constexpr Color& Self() noexcept { return static_cast<Color&>(*this); }
};

}  // namespace vlm
