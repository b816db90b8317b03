#pragma once

/// \file
/// The command line of the program `sketchbook`.
///
///     const auto options = vlm::sketchbook::ParseOptions({"--undo-limit", "20", "bench.txt"});
///     // options.undoLimit is 20, options.script is "bench.txt"

#include <stdexcept>
#include <string>
#include <vector>

namespace vlm::sketchbook {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;             ///< show the usage and end
  unsigned int undoLimit = 100;  ///< how many commands the history keeps
  std::string script;            ///< the file to run; empty for the standard input
};

/// A command line that makes no sense; the message says why.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::sketchbook
