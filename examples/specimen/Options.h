#pragma once

/// \file
/// The command line of the program `specimen`.
///
///     const auto options = vlm::specimen::ParseOptions({"match", "Arial", "--weight", "700"});
///     // options.command is Command::Match, options.description.weight is 700

#include <examples/specimen/FaceFacts.h>
#include <examples/specimen/MatchReport.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vlm::specimen {

/// What the program does.
enum class Command { Help, List, Match, Sheet, Sets, Text };

/// What the command line asks for. A plain value.
struct Options {
  Command command = Command::Help;
  FaceFilter filter;        ///< of `list`
  Description description;  ///< of `match`
  std::size_t best = 5;     ///< how many faces `match` shows
  std::string face;         ///< of `sheet`, and of `text`; empty for the default face
  std::string text;         ///< of `text`
  std::string output;       ///< the picture
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::specimen
