#pragma once

/// \file
/// The lines of a file, logged to another machine.
///
///     const std::size_t count = vlm::logview::SendLines(options);

#include <examples/logview/Options.h>

#include <cstddef>

namespace vlm::logview {

/// Logs each line of the options' file through a logger whose remote host is that of the options;
/// gives their number.
///
/// *Errors*: `Exception` if the file can't be read; `std::runtime_error` for a host that can't be
/// found, and for a line without its time where there should be one.
std::size_t SendLines(const Options& options);

}  // namespace vlm::logview
