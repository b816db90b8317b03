#pragma once

/// \file
/// A resolved dump, read.
///
///     const vlm::crashlab::Trace trace = vlm::crashlab::ReadTrace(trial.dump, trial.resolved);
///     for (const auto& frame : trace.frames) std::cout << frame.function << "\n";

#include <string>
#include <string_view>
#include <vector>

namespace vlm::crashlab {

/// A function on the stack. A plain value.
struct Frame {
  std::string number;    ///< "#0"; empty for a function that was inlined into the next one
  std::string module;    ///< the module's file name; empty where no code was
  std::string function;  ///< its name with its parameters; empty if it is not known
  std::string place;     ///< file and line, or module and offset
  bool isGap = false;    ///< whether it stands for frames that are left out, as `function` says
};

/// What a dump tells. A plain value.
struct Trace {
  std::vector<std::string> crash;     ///< the lines about the exception
  std::vector<Frame> frames;          ///< the innermost first
  std::vector<std::string> logLines;  ///< the last lines of the log
};

/// Reads a dump, and what `resolve-dump` says of it. Lines of other kinds are left out.
[[nodiscard]] Trace ReadTrace(std::string_view dump, std::string_view resolved);

}  // namespace vlm::crashlab
