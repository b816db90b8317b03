#pragma once

/// \file
/// Natural orders of file names: "file9" stands before "file10".
///
///     std::vector<vlm::GString> names = {"file10", "File9", "file2"};
///     std::sort(names.begin(), names.end(), vlm::CFilenameCompare());  // file2 File9 file10
///
/// There are two. `CFilenameCompare` is a strict order of all names and is what containers and
/// sorts take. `FilenameCompare` compares two names and is no order of three: it has 1 < 010 < 0a <
/// 1, since it passes digits that agree one by one and takes for a number only what follows them.
///
/// | names | `FilenameCompare` | `CFilenameCompare` |
/// |---|---|---|
/// | `a1`, `a01` | same | `a01` before `a1`, as their bytes |
/// | `A`, `a` | same | `A` before `a`, as their bytes |
/// | `010`, `0a` | `010` before `0a` | `0a` before `010`: the number 0 before 10 |
/// | numbers beyond 2147483647 | same | by their value, of any length |
/// | bytes behind a byte 0 | not seen | bytes as others |

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <string>

namespace vlm {

/// True if `a` sorts before `b`.
///
/// Bytes are compared with ASCII letters folded, those above 127 behind all others. Where two
/// digits differ, the numbers that begin there decide; if they are the same, as 007 and 7, their
/// digits are passed over. A number above 2147483647 counts as that.
[[nodiscard]] VELUM_API bool FilenameCompare(const GString& a, const GString& b) noexcept;

/// The strict order of file names for containers and sorts, of `GString` and `std::string` alike.
///
/// Each whole run of digits counts as one number of any length, in the place of a digit; other
/// bytes compare with ASCII letters folded, those above 127 behind all others; a name stands before
/// its continuations. Names that are the same so far compare as their bytes, so that only equal
/// names are equivalent.
struct VELUM_API CFilenameCompare {
  /// True if `a` stands before `b`.
  [[nodiscard]] bool operator()(const std::string& a, const std::string& b) const noexcept;
};

}  // namespace vlm
