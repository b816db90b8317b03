#pragma once

/// \file
/// The command line of the program `worksheet`.
///
///     const auto options = vlm::worksheet::ParseOptions({"-o", "wells.html", "wells.csv"});

#include <string>
#include <vector>

namespace vlm::worksheet {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;      ///< show the usage and end
  std::string file;       ///< the table
  std::string settings;   ///< the file of settings; empty for none
  std::string output;     ///< the report
  bool progress = false;  ///< show the progress wherever the messages go
  unsigned sample = 0;    ///< so many rows are made up and written to `file`; 0 for none
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::worksheet
