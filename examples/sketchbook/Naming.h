#pragma once

/// \file
/// Shapes and styles that a command names.
///
///     const auto lens = vlm::sketchbook::RequireShape(sketch, options.Text("name"));

#include <velum/core/GString.h>
#include <examples/sketchbook/Document.h>

#include <memory>

namespace vlm::sketchbook {

/// The shape with this name.
///
/// *Errors*: `Exception` with a message for the user if there is none, or `name` is empty.
[[nodiscard]] std::shared_ptr<Shape> RequireShape(const Document& document, const GString& name);

/// The style with this name; errors as above.
[[nodiscard]] std::shared_ptr<Style> RequireStyle(const Document& document, const GString& name);

}  // namespace vlm::sketchbook
