#pragma once

/// \file
/// A colour for each program, on a terminal and on paper.
///
///     const vlm::Color4b color = vlm::logview::LaneColor(0);
///     const std::string shown = vlm::logview::OnTerminal("Loaded 12 wells", 0);

#include <velum/colour/Color4b.h>

#include <cstddef>
#include <string>

namespace vlm::logview {

/// The colour of the program that appeared as number `lane`, from 0; they come again after eight.
[[nodiscard]] Color4b LaneColor(std::size_t lane);

/// A text with the codes by which a terminal shows it in that colour.
[[nodiscard]] std::string OnTerminal(const std::string& text, std::size_t lane);

}  // namespace vlm::logview
