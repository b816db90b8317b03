#pragma once

/// \file
/// Text put together where nothing may be allocated, such as the handler of a signal.
///
///     char room[80];
///     vlm::platform::SafeText line(room);
///     line.Put("signal ").Decimal(11).Put(" at ").Pointer(address);
///     WriteSafely(2, line.View());

#include <velum/platform/detail/Ascii.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vlm::platform {

/// Appends to a room that somebody else owns; what does not fit is left out. Safe in the handler of
/// a signal.
class SafeText {
 public:
  /// An empty text in an array.
  template <std::size_t size>
  explicit constexpr SafeText(char (&room)[size]) noexcept : SafeText(room, size) {}
  /// An empty text in `size` bytes.
  constexpr SafeText(char* room, std::size_t size) noexcept : room_(room), size_(size) {}

  /// What was appended.
  [[nodiscard]] constexpr std::string_view View() const noexcept { return {room_, used_}; }

  /// Appends text.
  constexpr SafeText& Put(std::string_view text) noexcept {
    for (const char c : text) {
      if (used_ < size_) room_[used_++] = c;
    }
    return *this;
  }
  /// Appends text with every byte that could end or garble a line as '?'.
  constexpr SafeText& PutPrintable(std::string_view text) noexcept {
    for (const char c : text) {
      Put(std::string_view(IsControl(c) ? "?" : &c, 1));
    }
    return *this;
  }
  /// Appends a number with at least so many digits.
  constexpr SafeText& Decimal(std::int64_t value, int digits = 1) noexcept {
    if (value < 0) Put("-");
    const auto bits = static_cast<std::uint64_t>(value);
    return Digits(value < 0 ? 0 - bits : bits, 10, digits);
  }
  /// Appends a number in base 16, with at least so many digits.
  constexpr SafeText& Hex(std::uint64_t value, int digits = 1) noexcept {
    return Digits(value, 16, digits);
  }
  /// Appends an address as `%p` formats it.
  constexpr SafeText& Pointer(std::uint64_t address) noexcept {
    return address == 0 ? Put("(nil)") : Put("0x").Hex(address);
  }

 private:
  constexpr SafeText& Digits(std::uint64_t value, unsigned int base, int digits) noexcept {
    char text[20] = {};
    std::size_t at = sizeof(text);
    for (; value != 0 || digits > 0; value /= base, --digits) {
      if (at == 0) break;
      text[--at] = "0123456789abcdef"[value % base];
    }
    return Put({text + at, sizeof(text) - at});
  }

  char* room_;
  std::size_t size_;
  std::size_t used_ = 0;
};

}  // namespace vlm::platform
