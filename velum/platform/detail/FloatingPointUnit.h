#pragma once

/// \file
/// How the calling thread's floating point unit is set.
///
///     const auto word = vlm::platform::FloatingPointControlWord();  // 0x037F as it starts

#include <cstdint>
#include <optional>

namespace vlm::platform {

/// The control word of the x87 unit: masks of exceptions, precision, rounding. Nothing on a
/// processor without one.
[[nodiscard]] inline std::optional<std::uint16_t> FloatingPointControlWord() noexcept {
#if defined(__x86_64__) || defined(__i386__)
  std::uint16_t word = 0;
  __asm__ volatile("fnstcw %0" : "=m"(word));
  return word;
#else
  return std::nullopt;
#endif
}

}  // namespace vlm::platform
