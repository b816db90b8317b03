#pragma once

/// \file
/// The command line of the program `sketchbook`.
///
///     const auto options = vlm::sketchbook::ParseOptions({"--undo-limit", "20", "bench.txt"});
///     // options.undoLimit is 20, options.script is "bench.txt"

#include <string>
#include <vector>

namespace vlm::sketchbook {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;             ///< show the usage and end
  unsigned int undoLimit = 100;  ///< how many commands the history keeps
  std::string script;            ///< the file to run; empty for the standard input
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::sketchbook
