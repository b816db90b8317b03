#pragma once

/// \file
/// What the runtime's present locale says, asked for in nanoseconds: each is one call of the
/// system's.
///
///     const bool plain = vlm::platform::DecimalPoint() == std::string_view(".");

#include <langinfo.h>
#include <strings.h>

namespace vlm::platform {

/// The decimal point that the runtime's readers and writers of numbers use on the calling thread.
///
/// *Lifetime*: until the locale is next set.
[[nodiscard]] inline const char* DecimalPoint() noexcept { return ::nl_langinfo(RADIXCHAR); }

/// The order of two terminated texts, each byte folded to its small letter and taken as unsigned:
/// below, at or above 0.
[[nodiscard]] inline int CompareFolded(const char* a, const char* b) noexcept {
  return ::strcasecmp(a, b);
}

}  // namespace vlm::platform
