#pragma once

/// \file
/// Draws a crash: the stack, in the colours of its modules, and the last lines of the log.
///
///     vlm::crashlab::DrawCrash(way, trace, "crash.png");

#include <examples/crashlab/Trace.h>
#include <examples/crashlab/Ways.h>

#include <string>

namespace vlm::crashlab {

/// Draws what is left of a crash; a long stack and a long log are cut.
///
/// *Errors*: `std::runtime_error` if the picture can't be written.
void DrawCrash(const Way& way, const Trace& trace, const std::string& path);

}  // namespace vlm::crashlab
