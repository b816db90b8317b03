#pragma once

/// \file
/// Text put together in a small array, and then copied to a caller's buffer as far as it goes.
///
///     detail::TextOut out;
///     out.Number(3);
///     out.Put('/');
///     out.TwoDigits(5);
///     detail::CopyText(out.begin(), out.end(), buffer, size);  // 3/05

#include <cstring>
#include <string_view>

namespace vlm::detail {

/// Copies a text into a buffer of `size` bytes, cut to what has room, and terminates it; does
/// nothing for a size below 1.
inline void CopyText(const char* begin, const char* end, char* buffer, int size) noexcept {
  if (size < 1) return;
  auto length = static_cast<std::size_t>(end - begin);
  const auto room = static_cast<std::size_t>(size - 1);
  if (length > room) length = room;
  std::memcpy(buffer, begin, length);
  buffer[length] = '\0';
}

/// A text of fewer than 64 bytes, which is what every date and time has. Has no bounds.
class TextOut {
 public:
  /// The text so far.
  [[nodiscard]] const char* begin() const noexcept { return text_; }
  [[nodiscard]] const char* end() const noexcept { return end_; }

  void Put(char character) noexcept { *end_++ = character; }
  void Put(std::string_view text) noexcept {
    std::memcpy(end_, text.data(), text.size());
    end_ += text.size();
  }
  /// Two digits of a number below 100.
  void TwoDigits(unsigned int number) noexcept {
    end_[0] = static_cast<char>('0' + number / 10);
    end_[1] = static_cast<char>('0' + number % 10);
    end_ += 2;
  }
  /// A number without leading zeros.
  void Number(unsigned int number) noexcept {
    if (number >= 100) {
      Number(number / 100);
      TwoDigits(number % 100);
    } else if (number >= 10) {
      TwoDigits(number);
    } else {
      Put(static_cast<char>('0' + number));
    }
  }

 private:
  char text_[64];
  char* end_ = text_;
};

}  // namespace vlm::detail
