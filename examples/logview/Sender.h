#pragma once

/// \file
/// The lines of a file, logged to another machine.
///
///     const vlm::logview::Sent sent = vlm::logview::SendLines(options);

#include <examples/logview/Options.h>

#include <cstddef>

namespace vlm::logview {

/// How many lines went where. A plain value.
struct Sent {
  std::size_t taken = 0;    ///< by the system, to be sent; they may be lost on their way
  std::size_t refused = 0;  ///< by the system: too long, without a way to the host, or without room
};

/// Sends each line of the options' file to their host. Lines without a time are sent in small
/// groups with pauses between them, so that a listener on the same machine has time to read them.
///
/// *Errors*: `Exception` if the file can't be read; `std::runtime_error` for a host that can't be
/// found, and for a line without its time where there should be one.
Sent SendLines(const Options& options);

}  // namespace vlm::logview
