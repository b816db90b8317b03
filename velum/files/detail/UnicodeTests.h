#pragma once

/// \file
/// What a sample of bytes tells about being UTF-16, one test at a time.
///
///     const bool isText = vlm::detail::UnicodeTests(bytes, vlm::detail::kStatistics) != 0;
///
/// The tests have their published names and bits; their rules are our own:
///
/// - ASCII16: there are units, and each is from 0001 to 007F.
/// - STATISTICS: the bytes are spread as those of UTF-16 are; see below.
/// - CONTROLS: a unit is a tab, line feed, carriage return, blank or ideographic blank (3000).
/// - SIGNATURE: the first unit is FEFF.
/// - ILLEGAL_CHARS: a unit is 0000, FFFE or FFFF, or one of two that no script has and that line
///   ends elsewhere look like: 0A00, a line feed in the other byte order, and 0A0D, CR LF in narrow
///   text.
/// - ODD_LENGTH: the number of bytes is odd.
/// - NULL_BYTES: a byte is 0.
///
/// Units are read with the low byte first, in the reversed tests with the high byte first; an odd
/// byte at the end belongs to none. A pair that the sample's end cuts is as good as a whole one.
///
/// The statistics rest on three things that hold in every script.
///
/// 1. Narrow text has no control bytes but tab, line ends, form feed and those that switch
///    character sets (0E, 0F, 1A, 1B), while UTF-16 has others everywhere: zeros above Latin
///    letters, the numbers of the small scripts' rows, low bytes of any value. At least one unit in
///    64 must have one.
/// 2. Neighbouring characters are of one script, so that the high bytes vary less than the low
///    ones: the sum of their differences must be below two thirds of the low bytes' sum. ASCII and
///    a mark are passed over and add 1 to the latter; a pair has the high byte of its first and the
///    low byte of its second half.
/// 3. Text has few characters that nobody assigns: at most one unit in 16 may be a surrogate
///    without partner, for private use or no character at all.

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
