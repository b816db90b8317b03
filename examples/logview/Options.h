#pragma once

/// \file
/// The command line of the program `logview`.
///
///     const auto options = vlm::logview::ParseOptions({"listen", "--port", "5514"});

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vlm::logview {

/// What the program does.
enum class Task { Help, Listen, Send };

/// What the command line asks for. A plain value.
struct Options {
  Task task = Task::Help;            ///< what to do
  std::string address;               ///< where to listen, or the host to send to
  int port = 0;                      ///< to listen at, 0 for any that is free; or to send to
  std::optional<std::size_t> lines;  ///< listening ends after so many
  std::optional<double> seconds;     ///< listening ends after so long
  std::string output;                ///< the picture of what came; empty for none
  std::string prefix;                ///< in front of each line that is sent
  bool timed = false;                ///< each line to send begins with its time
  std::string file;                  ///< the lines to send, "-" for the standard input
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::logview
