#pragma once

/// \file
/// Texts of files as messages and pages show them.
///
///     vlm::examples::Shown("a\n");  // "a\\n", four characters

#include <cstddef>
#include <string>
#include <string_view>

namespace vlm::examples {

/// A text of a file as a message shows it: at most `length` bytes, control characters as `\n` or
/// `\x00`.
[[nodiscard]] std::string Shown(std::string_view text, std::size_t length = 40);

}  // namespace vlm::examples
