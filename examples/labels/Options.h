#pragma once

/// \file
/// The command line of the program `labels`.
///
///     const auto options = vlm::examples::ParseOptions({"--text", "x\\up35 2", "-o", "x.png"});
///     // options.text is set, options.output is "x.png"

#include <optional>
#include <string>
#include <vector>

namespace vlm::examples {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;                ///< show the usage and end
  std::optional<std::string> text;  ///< one label to draw; without it the sheet is drawn
  std::string labels;               ///< the sheet's file of labels; empty for the one at hand
  std::string face;                 ///< a stroked face to draw labels with; empty for none
  std::string output;               ///< a file for one label, a folder for the sheet
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::examples
