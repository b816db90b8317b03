#pragma once

/// \file
/// A text file written in another encoding.
///
///     vlm::convert::Target target;
///     target.encoding = vlm::convert::FindEncoding("utf-16le");
///     const auto done = vlm::convert::ConvertFile("in.txt", {vlm::EncodingUTF8, 0}, "out.txt",
///     target);

#include <examples/convert/Survey.h>

#include <cstdint>
#include <map>
#include <string>

namespace vlm::convert {

/// How lines are to end.
enum class LineEnds { Keep, Feed, ReturnFeed };

/// What is to be written. A plain value.
struct Target {
  Encoding encoding;
  bool mark = false;
  LineEnds lineEnds = LineEnds::Keep;
};

/// What was done. A plain value.
struct Conversion {
  Survey survey;                           ///< of the text that was read
  std::map<char32_t, std::uint64_t> lost;  ///< characters that the target lacks, with their number
};

/// Converts the file `from` to the file `to`, which may be the same. Whatever happens on the way,
/// `to` is what it was or the whole new text; a replaced file keeps its permissions and a link
/// stays a link.
///
/// *Errors*: `Exception`; `std::runtime_error` with the path if `to` can't be made.
Conversion ConvertFile(const std::string& from, const Encoding& encoding, const std::string& to,
                       const Target& target);

}  // namespace vlm::convert
