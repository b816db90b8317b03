#pragma once

/// \file
/// BMP files, read.
///
///     const vlm::CDib dib = vlm::palette::ReadBmp(bytes);

#include <velum/colour/Dib.h>

#include <string_view>

namespace vlm::palette {

/// Makes a bitmap of the bytes of a BMP file of 1, 4, 8, 16, 24 or 32 bits without compression.
/// Rows from top to bottom are turned round.
///
/// *Errors*: `std::runtime_error` with the reason. No memory is asked for that the bytes do not
/// fill.
[[nodiscard]] CDib ReadBmp(std::string_view bytes);

}  // namespace vlm::palette
