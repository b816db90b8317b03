#pragma once

/// \file
/// Keeps lines where a signal handler can read them; see <velum/diagnostics/RecentLines.h>.
///
///     vlm::detail::KeepRecentLine("Loaded 12 wells");  // under the lock of the log

#include <string_view>

namespace vlm::detail {

/// Keeps a line in the place of the oldest one. One thread calls it at a time.
void KeepRecentLine(std::string_view line) noexcept;

}  // namespace vlm::detail
