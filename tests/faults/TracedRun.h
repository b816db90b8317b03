#pragma once

/// \file
/// A piece of work in a process of its own, one of whose calls of the system on files is made to
/// fail.
///
///     const TracedRun quiet = RunTraced("/tmp/x", save, {});
///     const TracedRun full = RunTraced("/tmp/x", save, {3, FileFault::kNoSpace});

#include <string>
#include <vector>

namespace vlm::faults {

/// What befalls one call.
enum class FileFault {
  kNoSpace,    ///< It fails with ENOSPC.
  kStaysFull,  ///< So does every later one that takes room: a write, or the making of a file.
  kBroken,     ///< It fails with EIO.
  kShort,      ///< A write takes half of its bytes.
  kKilled,     ///< The process is killed as it makes it.
};

/// Which call fails, counted from 0, and how. None by default.
struct FaultAt {
  int call = -1;
  FileFault fault = FileFault::kNoSpace;
};

/// What came of a run.
struct TracedRun {
  bool canTrace = true;            ///< False where no process may be traced.
  bool isKilled = false;           ///< The process did not end by itself.
  int result = -1;                 ///< What the work gave.
  std::vector<std::string> calls;  ///< The names of those that count, in their order.
};

/// Runs `work` in a forked process. Calls that open, write, cut, sync, close or rename a file under
/// `folder` count.
///
/// The process is traced, which no privilege is needed for. What is opened to be read alone does
/// not count.
[[nodiscard]] TracedRun RunTraced(const std::string& folder, int (*work)(const std::string& folder),
                                  const FaultAt& at);

}  // namespace vlm::faults
