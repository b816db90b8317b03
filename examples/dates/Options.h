#pragma once

/// \file
/// The command line of the program `dates`.
///
///     const auto options = vlm::dates::ParseOptions({"12/25/2010 3:45 PM"});

#include <examples/dates/ColumnSurvey.h>

#include <string>
#include <vector>

namespace vlm::dates {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;               ///< show the usage and end
  std::vector<std::string> texts;  ///< dates to be converted
  std::string file;                ///< the table; "-" is the standard input
  ColumnRequest request;           ///< what to read of it
  KQDateTextOptions reading;       ///< how dates are read
  std::string output;              ///< the picture; empty for none
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::dates
