#pragma once

/// \file
/// What the first bytes of a text file tell about its encoding.
///
///     unsigned int size;
///     vlm::TextEncoding encoding;
///     vlm::GetBOMInfo("wells.txt", size, encoding);
///     if (size == 0 && vlm::IsFileUTF16LE("wells.txt", 512) == vlm::ConfidenceLikely)
///       encoding = vlm::EncodingUTF16LE;
///
/// A sample is read from the begin of the file, mark and all. Its tests, and the rule of each,
/// stand in velum/files/detail/UnicodeTests.h.
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
/// - A byte 0, but for one at the end of a file that is shorter than the sample: No.
/// - A mark of UTF-16, or bytes that are spread as those of UTF-16: Doubtful.
/// - One byte: No for 0, Doubtful below 32, otherwise Likely.
/// - All else: Likely.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileANSI(const GString& path, unsigned int sampleSize);

/// Tells whether a file is UTF-16 with the low byte first.
///
/// - One byte, an odd number of them, or units that no text has: No.
/// - Nothing but ASCII: Certain.
/// - Bytes that are spread as those of UTF-16, with a mark, a blank or a line end among them:
///   Likely.
/// - All else: Doubtful.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileUTF16LE(const GString& path, unsigned int sampleSize);

/// The same as `IsFileUTF16LE` with the high byte first.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileUTF16BE(const GString& path, unsigned int sampleSize);

/// Tells whether a file is no text, from what the three other functions say.
[[nodiscard]] VELUM_API ConfidenceLevel IsFileBinary(const GString& path, unsigned int sampleSize);

}  // namespace vlm
