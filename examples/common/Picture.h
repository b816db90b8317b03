#pragma once

/// \file
/// Writes a drawing to a file as PNG, SVG or PDF, all three through the same drawing code.
///
///     vlm::examples::WritePicture("axis.svg", 200.0, 80.0, [](cairo_t* context) {
///       cairo_move_to(context, 10.0, 40.0);
///       cairo_line_to(context, 190.0, 40.0);
///       cairo_stroke(context);
///     });

#include <functional>
#include <optional>
#include <string>
#include <string_view>

struct _cairo;

namespace vlm::examples {

/// The kinds of files that WritePicture makes.
enum class PictureFormat { Png, Svg, Pdf };

/// Tells the format from a file name's extension, in any case; nothing for another extension or
/// none.
[[nodiscard]] std::optional<PictureFormat> PictureFormatOf(std::string_view path);

/// Draws on a white page and writes it to a file, whose extension decides the format.
///
/// The page is `width` by `height` points, its origin is the top left corner and y grows downwards.
/// A PNG has two pixels to the point. Nothing is written when drawing fails.
///
/// *Errors*: `std::invalid_argument` for an extension that is none of the three;
/// `std::runtime_error` with the path and the reason if the file can't be written or the page can't
/// be drawn; what `draw` throws.
void WritePicture(const std::string& path, double width, double height,
                  const std::function<void(struct _cairo*)>& draw);

}  // namespace vlm::examples
