#pragma once

/// \file
/// The modes of streams, as C's `fopen` takes them.
///
///     vlm::platform::OpenWish wish;
///     if (!vlm::detail::ReadStreamMode("r+b", wish)) errno = EINVAL;

#include <velum/platform/detail/FileAccess.h>

#include <string_view>

namespace vlm::detail {

/// Reads a mode, which is not empty, into a wish without denials; false for letters that make none.
[[nodiscard]] bool ReadStreamMode(std::string_view mode, platform::OpenWish& wish);

}  // namespace vlm::detail
