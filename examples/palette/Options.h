#pragma once

/// \file
/// The command line of the program `palette`.
///
///     const auto options = vlm::palette::ParseOptions({"-n", "16", "in.png", "out.bmp"});

#include <string>
#include <vector>

namespace vlm::palette {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;      ///< show the usage and end
  unsigned colors = 256;  ///< of the palette
  bool diffuses = false;  ///< whether errors are spread
  std::string input;
  std::vector<std::string> outputs;
  std::string sheet;  ///< the picture of 256, 16 and 4 colours; empty: none
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::palette
