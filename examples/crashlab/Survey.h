#pragma once

/// \file
/// An application in small that crashes in the middle of its work.
///
///     vlm::crashlab::RunChild(*vlm::crashlab::FindWay("null-write"), "crash.log");

#include <examples/crashlab/Ways.h>

#include <string>

namespace vlm::crashlab {

/// What the child process does: it logs to a file, installs the handler under the name "crashlab-"
/// and that of the way, and crashes deep inside a command that sorts wells.
void RunChild(const Way& way, const std::string& logPath);

}  // namespace vlm::crashlab
