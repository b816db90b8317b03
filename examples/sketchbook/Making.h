#pragma once

/// \file
/// Shapes and styles made of options.
///
///     options.Set("kind", "circle");  // and "x", "y", "r"
///     std::shared_ptr<vlm::sketchbook::Shape> circle =
///         vlm::sketchbook::MakeShape(options, sketch);

#include <examples/sketchbook/Document.h>
#include <examples/sketchbook/OptionValues.h>

#include <memory>

namespace vlm::sketchbook {

/// Makes a shape, which is not yet in the document. Its "kind" says which options it needs, and may
/// have:
///
/// | kind | needs | may have |
/// |---|---|---|
/// | circle | x y r | |
/// | ellipse | x y rx ry | angle |
/// | rectangle | x y w h | corner angle |
/// | polyline | points | closed arrow |
/// | label | x y text | size align angle |
/// | connector | from to | via arrow |
///
/// All may have a "name" and a "style", and "color", "fill", "width" and "dash", which make a style
/// of its own from that one. Angles are degrees, clockwise on the page.
///
/// *Errors*: `Exception` with a message for the user.
[[nodiscard]] std::shared_ptr<Shape> MakeShape(const OptionValues& options,
                                               const Document& document);

/// Makes a style that shapes share, of "name", which it needs, "color", "fill", "width", "dash",
/// and of another style to begin with, "style".
///
/// *Errors*: as above.
[[nodiscard]] std::shared_ptr<Style> MakeSharedStyle(const OptionValues& options,
                                                     const Document& document);

}  // namespace vlm::sketchbook
