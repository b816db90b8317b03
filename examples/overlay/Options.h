#pragma once

/// \file
/// The command line of the program `overlay`.
///
///     const auto options = vlm::overlay::ParseOptions({"-o", "map.svg"});

#include <string>
#include <vector>

namespace vlm::overlay {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;                   ///< show the usage and end
  std::string outlines;                ///< the file of outlines; empty for the one at hand
  std::string output = "overlay.png";  ///< the picture
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::overlay
