#include <velum/files/detail/UnicodeTests.h>

#include <velum/platform/detail/Utf16.h>

#include <cstddef>
#include <cstdlib>

namespace vlm::detail {

namespace {

using platform::IsHighSurrogate;
using platform::IsLowSurrogate;

constexpr wchar_t kMark = 0xFEFF;

/// The units of a sample in one byte order.
class Units {
 public:
  Units(std::string_view bytes, bool highFirst) noexcept : bytes_(bytes), highFirst_(highFirst) {}

  [[nodiscard]] std::size_t size() const noexcept { return bytes_.size() / 2; }
  [[nodiscard]] int Low(std::size_t i) const noexcept { return Byte(2 * i + (highFirst_ ? 1 : 0)); }
  [[nodiscard]] int High(std::size_t i) const noexcept {
    return Byte(2 * i + (highFirst_ ? 0 : 1));
  }
  [[nodiscard]] wchar_t operator[](std::size_t i) const noexcept {
    return platform::UnitAt(bytes_.data() + 2 * i, highFirst_);
  }

  /// True if the last byte is 0, and so may have ended a narrow text in memory.
  [[nodiscard]] bool EndInZero() const noexcept {
    return size() > 0 && bytes_.size() % 2 == 0 && bytes_.back() == '\0';
  }

  /// True if some unit is what `is` asks for.
  template <class Is>
  [[nodiscard]] bool Any(Is is) const noexcept {
    for (std::size_t i = 0; i < size(); ++i) {
      if (is((*this)[i])) return true;
    }
    return false;
  }

 private:
  [[nodiscard]] int Byte(std::size_t i) const noexcept {
    return static_cast<unsigned char>(bytes_[i]);
  }

  std::string_view bytes_;
  bool highFirst_;
};

bool IsAscii16(const Units& units) noexcept {
  return units.size() > 0 && !units.Any([](wchar_t unit) { return unit == 0 || unit > 0x7F; });
}

bool HasControls(const Units& units) noexcept {
  return units.Any([](wchar_t unit) {
    return unit == '\t' || unit == '\n' || unit == '\r' || unit == ' ' || unit == 0x3000;
  });
}

bool HasIllegalChars(const Units& units) noexcept {
  return units.Any([](wchar_t unit) {
    return unit == 0 || unit == 0x0A00 || unit == 0x0A0D || unit == 0xFFFE || unit == 0xFFFF;
  });
}

bool IsControlByte(int byte) noexcept {
  const bool isOfNarrowText = (byte >= '\t' && byte <= '\r' && byte != '\v') || byte == 0x0E ||
                              byte == 0x0F || byte == 0x1A || byte == 0x1B;
  return byte < 0x20 && !isOfNarrowText;
}

/// True for a unit that text hardly has.
bool IsOdd(const Units& units, std::size_t i) noexcept {
  const wchar_t unit = units[i];
  if (IsHighSurrogate(unit)) return i + 1 < units.size() && !IsLowSurrogate(units[i + 1]);
  if (IsLowSurrogate(unit)) return i == 0 || !IsHighSurrogate(units[i - 1]);
  return (unit >= 0xE000 && unit <= 0xF8FF) || (unit >= 0xFDD0 && unit <= 0xFDEF) || unit >= 0xFFFE;
}

/// The sums of the differences between a character and the one before.
struct Variation {
  int low = 0;
  int high = 0;
};

Variation VariationOf(const Units& units) noexcept {
  constexpr int kNone = -1;
  Variation sum;
  int lastLow = kNone;
  int lastHigh = kNone;
  for (std::size_t i = 0; i < units.size(); ++i) {
    // Blanks and digits stand between the letters of every script.
    if (units[i] < 0x80 || units[i] == kMark) {
      ++sum.low;
      continue;
    }
    const bool isPair = IsHighSurrogate(units[i]) && i + 1 < units.size();
    const int high = units.High(i);
    const int low = units.Low(isPair ? ++i : i);
    if (lastLow != kNone) {
      sum.low += std::abs(low - lastLow);
      sum.high += std::abs(high - lastHigh);
    }
    lastLow = low;
    lastHigh = high;
  }
  return sum;
}

bool HasStatistics(const Units& units) noexcept {
  constexpr std::size_t kUnitsToAControl = 64;
  constexpr std::size_t kUnitsToAnOddOne = 16;
  std::size_t controls = 0;
  std::size_t odd = 0;
  for (std::size_t i = 0; i < units.size(); ++i) {
    controls += (IsControlByte(units.Low(i)) ? 1u : 0u) + (IsControlByte(units.High(i)) ? 1u : 0u);
    odd += IsOdd(units, i) ? 1 : 0;
  }
  if (units.EndInZero()) --controls;
  if (controls == 0 || controls * kUnitsToAControl < units.size()) return false;
  const Variation variation = VariationOf(units);
  return odd * kUnitsToAnOddOne <= units.size() && 3 * variation.high < 2 * variation.low;
}

}  // namespace

unsigned int UnicodeTests(std::string_view bytes, unsigned int asked) noexcept {
  const Units plain(bytes, false);
  const Units reversed(bytes, true);
  const auto passes = [&](unsigned int test) noexcept {
    switch (test) {
      case kAscii16:
        return IsAscii16(plain);
      case kReverseAscii16:
        return IsAscii16(reversed);
      case kStatistics:
        return HasStatistics(plain);
      case kReverseStatistics:
        return HasStatistics(reversed);
      case kControls:
        return HasControls(plain);
      case kReverseControls:
        return HasControls(reversed);
      case kSignature:
        return plain.size() > 0 && plain[0] == kMark;
      case kReverseSignature:
        return reversed.size() > 0 && reversed[0] == kMark;
      case kIllegalChars:
        return HasIllegalChars(plain);
      case kReverseIllegalChars:
        return HasIllegalChars(reversed);
      case kOddLength:
        return bytes.size() % 2 != 0;
      case kNullBytes:
        return bytes.find('\0') != std::string_view::npos;
      default:
        return false;
    }
  };
  unsigned int passed = 0;
  for (unsigned int test = 1; test != 0 && test <= asked; test <<= 1) {
    if ((asked & test) != 0 && passes(test)) passed |= test;
  }
  return passed;
}

}  // namespace vlm::detail
