#pragma once

/// \file
/// The command line of the program `charts`.
///
///     const auto options = vlm::charts::ParseOptions({"-c", "depth", "wells.csv"});

#include <string>
#include <vector>

namespace vlm::charts {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;                  ///< show the usage and end
  std::string file;                   ///< the table; "-" is the standard input
  char delimiter = ',';               ///< between its fields
  std::string column;                 ///< by name or number; empty for the first of numbers
  std::string title;                  ///< of the data axis; empty for the column's name
  std::string output = "charts.png";  ///< the sheet
  std::string folder;                 ///< for every chart at every size; empty for none
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::charts
