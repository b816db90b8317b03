#pragma once

/// \file
/// What a sample of bytes tells about being UTF-16, one test at a time.
///
///     const bool isText = vlm::detail::UnicodeTests(bytes, vlm::detail::kStatistics) != 0;
///
/// velum/files/TextEncoding.h states the rule of each test. An odd byte at the end is in no unit.

#include <string_view>

namespace vlm::detail {

/// The bits of the tests.
enum UnicodeTest : unsigned int {
  kAscii16 = 0x0001,               ///< Zero-extended ASCII only.
  kReverseAscii16 = 0x0010,        ///< The same, the high byte first.
  kStatistics = 0x0002,            ///< Spread as UTF-16 is.
  kReverseStatistics = 0x0020,     ///< The same, the high byte first.
  kControls = 0x0004,              ///< Has blanks or line ends.
  kReverseControls = 0x0040,       ///< The same, the high byte first.
  kSignature = 0x0008,             ///< Begins with a mark.
  kReverseSignature = 0x0080,      ///< The same, the high byte first.
  kIllegalChars = 0x0100,          ///< Has units that no text has.
  kReverseIllegalChars = 0x10000,  ///< The same, the high byte first; this bit is our own.
  kOddLength = 0x0200,             ///< Is not of whole units.
  kNullBytes = 0x1000,             ///< Has bytes of 0.
};

/// Those of the `asked` tests that `bytes` pass.
[[nodiscard]] unsigned int UnicodeTests(std::string_view bytes, unsigned int asked) noexcept;

}  // namespace vlm::detail
