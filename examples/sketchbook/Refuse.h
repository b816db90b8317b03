#pragma once

/// \file
/// How the sketchbook says no.
///
///     if (radius <= 0) vlm::sketchbook::Refuse("a circle needs a radius above 0");

#include <velum/core/GString.h>

namespace vlm::sketchbook {

/// Throws an `Exception` of the module "Sketchbook" with this message, which is shown to the user,
/// and the place of the call.
[[noreturn]] void Refuse(const GString& message, const char* file = __builtin_FILE(),
                         int line = __builtin_LINE());

}  // namespace vlm::sketchbook
