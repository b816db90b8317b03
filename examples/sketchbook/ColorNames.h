#pragma once

/// \file
/// Colours as users write them.
///
///     vlm::sketchbook::ReadColor("SteelBlue");  // vlm::Color4b::SteelBlue
///     vlm::sketchbook::ReadColor("#4682b480");  // the same, half transparent

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>

#include <optional>

namespace vlm::sketchbook {

/// Reads a colour: one of the library's names in any case, "none" for a transparent one, "#rrggbb",
/// or "#rrggbbaa" with the opacity. Nothing for any other text.
[[nodiscard]] std::optional<Color4b> ReadColor(const GString& text);

}  // namespace vlm::sketchbook
