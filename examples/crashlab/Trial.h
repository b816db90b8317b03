#pragma once

/// \file
/// A child process that crashes, and what it leaves.
///
///     const vlm::crashlab::Trial trial = vlm::crashlab::RunTrial(*way);
///     std::cout << trial.end << "\n" << trial.log << trial.resolved;

#include <examples/crashlab/Ways.h>

#include <string>

namespace vlm::crashlab {

/// What is left of a child. A plain value.
struct Trial {
  std::string end;       ///< how it ended, in words
  std::string logPath;   ///< beside the program
  std::string log;       ///< what the log holds
  std::string dumpPath;  ///< beside the program
  std::string dump;      ///< what the dump holds; empty if there is none
  std::string resolved;  ///< what `resolve-dump` makes of it
};

/// Starts this program once more as a child that crashes, waits for it, and has its dump resolved.
/// At a terminal the child asks there whether to save its file.
///
/// *Errors*: `std::runtime_error` if no child can be started, it does not crash in this way, or
/// the dump can't be resolved.
[[nodiscard]] Trial RunTrial(const Way& way);

}  // namespace vlm::crashlab
