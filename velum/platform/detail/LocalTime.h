#pragma once

/// \file
/// The present local time, broken down.
///
///     const std::tm now = vlm::platform::PresentLocalTime();

#include <ctime>

namespace vlm::platform {

/// Gives the present time in the process's time zone; any thread may call it.
///
/// - The clock or the time zone can't be read: the first second of 1970.
[[nodiscard]] std::tm PresentLocalTime();

}  // namespace vlm::platform
