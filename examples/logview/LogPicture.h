#pragma once

/// \file
/// Draws what came in while the program listened.
///
///     vlm::logview::DrawSheet(sheet, "logview.png");

#include <examples/logview/Sheet.h>

#include <string>

namespace vlm::logview {

/// Draws when the lines of each program arrived, along one axis of time, and below the last of the
/// lines themselves, in the colours of their programs.
///
/// *Errors*: `std::runtime_error` if the picture can't be written.
void DrawSheet(const Sheet& sheet, const std::string& path);

}  // namespace vlm::logview
