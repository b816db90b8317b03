#pragma once

/// \file
/// What the locale says that the environment names for the user, whatever the process has set.
///
///     const bool comma = vlm::platform::UserDecimalPoint() == ",";

#include <string>

namespace vlm::platform {

/// The decimal point of the user's locale; empty if that is not installed.
[[nodiscard]] std::string UserDecimalPoint();

}  // namespace vlm::platform
