#pragma once

/// \file
/// Text put together in an array that is known to be long enough, and then copied to a caller's
/// buffer as far as it goes. Each Put gives the end of what it has written.
///
///     char text[detail::kLongestText];
///     char* end = detail::PutTwo(detail::Put(detail::PutNumber(text, 3), '/'), 5);
///     detail::CopyText(text, end, buffer, size);  // 3/05

#include <cstddef>
#include <cstring>
#include <string_view>

namespace vlm::detail {

/// Room for every date with a time.
inline constexpr std::size_t kLongestText = 64;

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

inline char* Put(char* out, char character) noexcept {
  *out = character;
  return out + 1;
}

inline char* Put(char* out, std::string_view text) noexcept {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

/// Two digits of a number below 100.
inline char* PutTwo(char* out, unsigned int number) noexcept {
  out[0] = static_cast<char>('0' + number / 10);
  out[1] = static_cast<char>('0' + number % 10);
  return out + 2;
}

/// A number below 100 without a leading zero.
inline char* PutShort(char* out, unsigned int number) noexcept {
  if (number >= 10) return PutTwo(out, number);
  return Put(out, static_cast<char>('0' + number));
}

/// A number without leading zeros.
inline char* PutNumber(char* out, unsigned int number) noexcept {
  if (number < 100) return PutShort(out, number);
  return PutTwo(PutNumber(out, number / 100), number % 100);
}

}  // namespace vlm::detail
