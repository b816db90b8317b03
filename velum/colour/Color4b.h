#pragma once

/// \file
/// The colour of four bytes, red, green, blue and alpha, and its words.
///
///     vlm::Color4b blue(0x00FF0000, 255);               // a COLORREF word and an alpha
///     bool same = blue == vlm::Color4b::Blue;           // true
///     unsigned long word = blue.GetRGBA();              // 0x0000FFFF

#include <velum/colour/ColorInterpolation.h>
#include <velum/colour/Forward.h>
#include <velum/colour/NamedColors.h>
#include <velum/core/Api.h>
#include <velum/geometry/PointerTo.h>
#include <velum/geometry/detail/WrapTo.inl.h>
#include <velum/platform/Types.h>

#include <concepts>

namespace vlm {

inline constexpr unsigned char ALPHA_MIN = 0;    ///< The alpha of what can't be seen.
inline constexpr unsigned char ALPHA_MAX = 255;  ///< The alpha of what is opaque.

/// Red, green, blue and alpha, the opacity, as bytes. A plain value of four bytes in a row. The
/// named colours, such as `Color4b::CornflowerBlue`, stand in NamedColors.h.
///
/// Words are 32-bit values, whatever type carries them; higher bits are ignored.
class VELUM_API Color4b : public NamedColors, public ColorInterpolation {
 public:
  unsigned char R = 0;          ///< Red.
  unsigned char G = 0;          ///< Green.
  unsigned char B = 0;          ///< Blue.
  unsigned char A = ALPHA_MAX;  ///< The opacity.

  /// Makes opaque black.
  constexpr Color4b() noexcept = default;
  /// Makes a colour of four channels.
  constexpr Color4b(unsigned char r, unsigned char g, unsigned char b, unsigned char a) noexcept
      : R(r), G(g), B(b), A(a) {}
  /// Makes a gray with an alpha. The gray must be an `unsigned char`: any other integer, a literal
  /// such as 128 too, is a word.
  constexpr Color4b(unsigned char gray, unsigned char a) noexcept : Color4b(gray, gray, gray, a) {}
  /// Makes a colour of a word 0x00BBGGRR, of which the low 24 bits count, and an alpha.
  template <std::integral Word>
  requires(!std::same_as<Word, unsigned char>) constexpr Color4b(Word colorref,
                                                                 unsigned char a) noexcept
      : R(static_cast<unsigned char>(colorref)),
        G(static_cast<unsigned char>(static_cast<unsigned long>(colorref) >> 8)),
        B(static_cast<unsigned char>(static_cast<unsigned long>(colorref) >> 16)),
        A(a) {}
  /// Makes a colour of an array of four channels.
  explicit constexpr Color4b(PointerTo<unsigned char> auto rgba) noexcept
      : Color4b(rgba[0], rgba[1], rgba[2], rgba[3]) {}
  /// Makes a colour of a palette entry and an alpha; the entry's reserved byte is ignored.
  constexpr Color4b(const RGBQUAD& quad, unsigned char a) noexcept
      : Color4b(quad.rgbRed, quad.rgbGreen, quad.rgbBlue, a) {}
  /// Makes a colour of floating-point channels, each one by `ToBYTE`. Include Color4f.h to use it.
  explicit constexpr Color4b(const Color4f& color) noexcept;

  /// Converts to a pointer to the channels. *Lifetime:* that of the colour.
  operator unsigned char*() noexcept { return reinterpret_cast<unsigned char*>(this); }
  /// Converts to a pointer to the channels for reading. *Lifetime:* that of the colour.
  operator const unsigned char*() const noexcept {
    return reinterpret_cast<const unsigned char*>(this);
  }

  /// Returns `x` times 255 as a byte, truncated: 0.999 is 254. Outside 0 to 1 the low byte of the
  /// whole number remains, and NaN gives 0.
  [[nodiscard]] static constexpr unsigned char ToBYTE(double x) noexcept {
    return detail::WrapTo<unsigned char>(x * 255);
  }
  /// Returns a colour between two; see ColorInterpolation. Blended channels are rounded half up.
  [[nodiscard]] static Color4b Interp(const Color4b& a, const Color4b& b, double t,
                                      InterpMethod method) noexcept;

  /// Returns the word 0xAARRGGBB.
  [[nodiscard]] constexpr unsigned long GetARGB() const noexcept { return Packed(A, R, G, B); }
  /// Returns the word 0xRRGGBBAA.
  [[nodiscard]] constexpr unsigned long GetRGBA() const noexcept { return Packed(R, G, B, A); }
  /// Returns the word 0x00BBGGRR.
  [[nodiscard]] constexpr unsigned long GetCOLORREF() const noexcept { return Packed(0, B, G, R); }
  /// Gets hue, saturation and lightness, each 0 to 1. Of a colour without hue, `h` and `s` are 0.
  void GetHSL(double& h, double& s, double& l) const noexcept;
  /// Returns the brightness times the opacity, from 0 to 1: 0.3 R + 0.59 G + 0.11 B of the unit.
  [[nodiscard]] constexpr double Intensity() const noexcept {
    return (0.3 * R + 0.59 * G + 0.11 * B) * A / 65025.0;
  }

  /// Sets the four channels.
  constexpr void Set(unsigned char r, unsigned char g, unsigned char b, unsigned char a) noexcept {
    *this = Color4b(r, g, b, a);
  }
  /// Sets a gray, which must be an `unsigned char`, and an alpha.
  constexpr void Set(unsigned char gray, unsigned char a) noexcept { *this = Color4b(gray, a); }
  /// Sets the colour from a word 0x00BBGGRR and an alpha.
  template <std::integral Word>
  requires(!std::same_as<Word, unsigned char>) constexpr void Set(Word colorref,
                                                                  unsigned char a) noexcept {
    *this = Color4b(colorref, a);
  }
  /// Sets the four channels from an array.
  constexpr void Set(PointerTo<unsigned char> auto rgba) noexcept { *this = Color4b(rgba); }
  /// Sets the four channels from a word 0xAARRGGBB.
  constexpr void SetARGB(unsigned long word) noexcept {
    *this = Color4b(ByteOf(word, 2), ByteOf(word, 1), ByteOf(word, 0), ByteOf(word, 3));
  }
  /// Sets the four channels from a word 0xRRGGBBAA.
  constexpr void SetRGBA(unsigned long word) noexcept {
    *this = Color4b(ByteOf(word, 3), ByteOf(word, 2), ByteOf(word, 1), ByteOf(word, 0));
  }
  /// Sets all channels from hue, saturation, lightness and alpha, each 0 to 1, by `ToBYTE`.
  void SetHSL(double h, double s, double l, double a) noexcept;
  /// Sets this colour to one between two, as `Interp` gives it.
  void Interpolate(const Color4b& a, const Color4b& b, double t, InterpMethod method) noexcept {
    *this = Interp(a, b, t, method);
  }

  /// Compares all four bytes.
  [[nodiscard]] constexpr bool operator==(const Color4b& color) const noexcept {
    return R == color.R && G == color.G && B == color.B && A == color.A;
  }
  /// Colours have no order; the relations would compare addresses.
  friend auto operator<=>(const Color4b&, const Color4b&) = delete;

 private:
  static constexpr unsigned long Packed(unsigned long b3, unsigned long b2, unsigned long b1,
                                        unsigned long b0) noexcept {
    return b3 << 24 | b2 << 16 | b1 << 8 | b0;
  }
  static constexpr unsigned char ByteOf(unsigned long word, int index) noexcept {
    return static_cast<unsigned char>(word >> (8 * index));
  }
};

static_assert(sizeof(Color4b) == 4);

}  // namespace vlm

#include <velum/colour/detail/NamedColors.inl.h>
