#pragma once

/// \file
/// A colour and how many pixels have it.
///
///     vlm::ColorCount sky(0x00EBCE87, 1);
///     sky.IncrementCount();
///     unsigned char red = sky.GetRed();  // 0x87

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

#include <cstdint>

namespace vlm {

/// An entry of a histogram of colours: a word 0x00BBGGRR and a number of pixels. A plain value of
/// 8 bytes.
class VELUM_API ColorCount {
 public:
  /// Black, and no pixel.
  constexpr ColorCount() noexcept : color_(0), count_(0) {}
  /// A word 0x00BBGGRR, of which the low 32 bits are kept, and its number of pixels.
  constexpr ColorCount(unsigned long color, unsigned int count) noexcept
      : color_(static_cast<std::uint32_t>(color)), count_(count) {}
  /// Copies the entry.
  constexpr ColorCount(const ColorCount&) noexcept = default;
  ~ColorCount() = default;

  /// The word 0x00BBGGRR.
  [[nodiscard]] constexpr unsigned long GetColor() const noexcept { return color_; }
  /// Gives the colour as a palette entry with the reserved byte 0.
  constexpr void GetColor(RGBQUAD& quad) const noexcept {
    quad = RGBQUAD{GetBlue(), GetGreen(), GetRed(), 0};
  }
  /// Red, the lowest byte of the word.
  [[nodiscard]] constexpr unsigned char GetRed() const noexcept { return ByteAt(kRed); }
  /// Green.
  [[nodiscard]] constexpr unsigned char GetGreen() const noexcept { return ByteAt(kGreen); }
  /// Blue.
  [[nodiscard]] constexpr unsigned char GetBlue() const noexcept { return ByteAt(kBlue); }
  /// The number of pixels.
  [[nodiscard]] constexpr unsigned int GetCount() const noexcept { return count_; }

  /// Sets the colour from a word 0x00BBGGRR, of which the low 32 bits are kept.
  constexpr void SetColor(unsigned long color) noexcept {
    color_ = static_cast<std::uint32_t>(color);
  }
  /// Sets the colour from its channels.
  constexpr void SetColor(unsigned char r, unsigned char g, unsigned char b) noexcept {
    color_ = std::uint32_t{b} << kBlue | std::uint32_t{g} << kGreen | r;
  }
  /// Sets the colour from a palette entry, whose reserved byte is ignored.
  constexpr void SetColor(const RGBQUAD& quad) noexcept {
    SetColor(quad.rgbRed, quad.rgbGreen, quad.rgbBlue);
  }
  /// Sets red alone.
  constexpr void SetRed(unsigned char r) noexcept { SetByteAt(kRed, r); }
  /// Sets green alone.
  constexpr void SetGreen(unsigned char g) noexcept { SetByteAt(kGreen, g); }
  /// Sets blue alone.
  constexpr void SetBlue(unsigned char b) noexcept { SetByteAt(kBlue, b); }
  /// Sets the number of pixels.
  constexpr void SetCount(unsigned int count) noexcept { count_ = count; }
  /// Counts one more pixel.
  constexpr void IncrementCount() noexcept { ++count_; }
  /// Counts one pixel less; 0 goes round to 4294967295.
  constexpr void DecrementCount() noexcept { --count_; }

  /// Copies the entry.
  constexpr ColorCount& operator=(const ColorCount&) noexcept = default;

 protected:
  /// Copies the other's colour and number.
  constexpr void Copy(const ColorCount& other) noexcept { *this = other; }

 private:
  static constexpr int kRed = 0;
  static constexpr int kGreen = 8;
  static constexpr int kBlue = 16;

  [[nodiscard]] constexpr unsigned char ByteAt(int shift) const noexcept {
    return static_cast<unsigned char>(color_ >> shift);
  }
  constexpr void SetByteAt(int shift, unsigned char value) noexcept {
    color_ = (color_ & ~(std::uint32_t{0xFF} << shift)) | std::uint32_t{value} << shift;
  }

  std::uint32_t color_;
  std::uint32_t count_;
};

static_assert(sizeof(ColorCount) == 8);

}  // namespace vlm
