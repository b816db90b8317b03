#pragma once

/// \file
/// The command line of the program `describe`.
///
///     const auto options = vlm::describe::ParseOptions({"-c", "depth", "wells.csv"});

#include <examples/describe/Table.h>

#include <map>
#include <string>
#include <vector>

namespace vlm::describe {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;                          ///< show the usage and end
  std::string file;                           ///< the table; "-" is the standard input
  TableRequest request;                       ///< what to read of it
  std::string output;                         ///< the picture; empty for none
  std::string page;                           ///< a page of HTML; empty for none
  std::map<std::string, std::string> labels;  ///< math texts of columns, by name
  bool progress = false;                      ///< show the progress wherever the messages go
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::describe
