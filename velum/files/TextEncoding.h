#pragma once

/// \file
/// What the first bytes of a text file tell about its encoding.
///
///     unsigned int size;
///     vlm::TextEncoding encoding;
///     vlm::GetBOMInfo("wells.txt", size, encoding);
///     const vlm::ConfidenceLevel low = vlm::IsFileUTF16LE("wells.txt", 512);
///     if (size == 0 && (low == vlm::ConfidenceCertain || low == vlm::ConfidenceLikely))
///       encoding = vlm::EncodingUTF16LE;
///
/// A sample is read from the begin of the file, mark and all. The functions put tests of published
/// names to it, whose rules are our own:
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
///    64 must have one; a 0 as the last byte is none, since it may have ended a text in memory.
/// 2. Neighbouring characters are of one script, so that the high bytes vary less than the low
///    ones: the sum of their differences must be below two thirds of the low bytes' sum. ASCII and
///    a mark are passed over and add 1 to the latter; a pair has the high byte of its first and the
///    low byte of its second half.
/// 3. Text has few characters that nobody assigns: at most one unit in 16 may be a surrogate
///    without partner, for private use or no character at all.
///
/// *Errors*: `ERR_INVALID_PARAMETER` for a sample size below 2 or odd, which is looked at first;
/// `ERR_OPEN` and `ERR_READ` as `CFile` raises them.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// How a text file stores its characters.
enum TextEncoding : int {
  EncodingANSI = 0,     ///< Bytes in a code page.
  EncodingUTF8 = 1,     ///< UTF-8.
  EncodingUTF16LE = 2,  ///< UTF-16, the low byte first.
  EncodingUTF16BE = 3,  ///< UTF-16, the high byte first.
  EncodingUnknown = 4,  ///< Nobody has said; opens as `EncodingANSI` does.
};

/// How far a file's bytes bear out that it is what was asked for.
enum ConfidenceLevel : int {
  ConfidenceCertain = 0,   ///< Yes; also for a file that is empty or is not there.
  ConfidenceNo = 1,        ///< No.
  ConfidenceLikely = 2,    ///< Probably.
  ConfidenceDoubtful = 3,  ///< It can't be told.
};

/// Looks for a byte order mark: its size in bytes and the encoding that it stands for, both 0 where
/// there is none. False for an empty path, true otherwise.
///
/// - FF FE: 2, `EncodingUTF16LE`.
/// - FE FF: 2, `EncodingUTF16BE`.
/// - EF BB BF: 3, `EncodingUTF8`.
///
/// *Errors*: `ERR_OPEN` for a file that is not there as well.
VELUM_API bool GetBOMInfo(const GString& path, unsigned int& size, TextEncoding& encoding);

/// Tells whether a file is text in a code page or UTF-8 without a mark.
///
/// - NULL_BYTES, but for a 0 at the end of a file that is shorter than the sample: No.
/// - SIGNATURE or STATISTICS, in either byte order: Doubtful.
/// - One byte: No for 0, Doubtful below 32, otherwise Likely.
/// - All else: Likely.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileANSI(const GString& path, unsigned int sampleSize);

/// Tells whether a file is UTF-16 with the low byte first.
///
/// - One byte, ODD_LENGTH or ILLEGAL_CHARS: No.
/// - ASCII16: Certain.
/// - STATISTICS, and CONTROLS or SIGNATURE: Likely.
/// - All else: Doubtful.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileUTF16LE(const GString& path, unsigned int sampleSize);

/// The same as `IsFileUTF16LE` with the high byte first.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileUTF16BE(const GString& path, unsigned int sampleSize);

/// Tells whether a file is no text, from what the three other functions say. The first line that
/// fits counts:
///
/// - UTF-16 with the low byte first is Certain: No.
/// - Both byte orders are No: Certain if ANSI is No, No if that is Certain, otherwise Doubtful.
/// - UTF-16 with the high byte first or ANSI is Certain: No.
/// - All three are Doubtful: Likely.
/// - All else: Doubtful.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileBinary(const GString& path, unsigned int sampleSize);

}  // namespace vlm
