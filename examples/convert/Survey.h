#pragma once

/// \file
/// A text file gone through line by line, and what there is in it.
///
///     const auto survey = vlm::convert::TakeSurvey("wells.txt", {vlm::EncodingUTF8, 0});
///     if (survey.malformed == 0) puts("well formed");

#include <examples/convert/Encodings.h>

#include <cstdint>
#include <functional>
#include <string>

namespace vlm::convert {

/// How a line ends.
enum class LineEnd { None, Feed, ReturnFeed, Return };

/// What there is in a text. A plain value.
struct Survey {
  std::uint64_t bytes = 0;
  std::uint64_t lines = 0;
  std::uint64_t feeds = 0;        ///< lines that end in a line feed
  std::uint64_t returnFeeds = 0;  ///< in a carriage return and a line feed
  std::uint64_t returns = 0;      ///< in a carriage return
  std::uint64_t characters = 0;   ///< without line ends
  std::uint64_t ascii = 0;        ///< those of them that are ASCII
  std::uint64_t pairs = 0;        ///< those above U+FFFF
  std::uint64_t zeros = 0;        ///< those that are NUL
  std::uint64_t malformed = 0;    ///< U+FFFD in place of what can't be read
};

/// Told each line without its end.
using LineUser = std::function<void(const std::wstring& line, LineEnd end)>;

/// Reads a file in an encoding, behind its mark.
///
/// *Errors*: `Exception`.
Survey TakeSurvey(const std::string& path, const Encoding& encoding, const LineUser& use = {});

}  // namespace vlm::convert
