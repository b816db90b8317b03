#pragma once

/// \file
/// The command line of the program `convert`.
///
///     const auto options = vlm::convert::ParseOptions({"--to", "utf-16le", "in.txt", "out.txt"});

#include <examples/convert/Conversion.h>

#include <optional>
#include <string>
#include <vector>

namespace vlm::convert {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;             ///< show the usage and end
  std::optional<Encoding> from;  ///< none: to be found out
  Target target;
  std::string input;
  std::string output;   ///< empty: nothing is written
  std::string picture;  ///< empty: none is drawn
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::convert
