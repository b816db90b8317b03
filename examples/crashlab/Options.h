#pragma once

/// \file
/// The command line of the program `crashlab`.
///
///     const auto options = vlm::crashlab::ParseOptions({"null-write", "-o", "crash.png"});

#include <examples/crashlab/Ways.h>

#include <string>
#include <vector>

namespace vlm::crashlab {

/// What the program does.
enum class Task { Help, Trial };

/// What the command line asks for. A plain value.
struct Options {
  Task task = Task::Help;    ///< what to do
  const Way* way = nullptr;  ///< how to crash
  std::string output;        ///< the picture; empty for none
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] std::string UsageText();

}  // namespace vlm::crashlab
