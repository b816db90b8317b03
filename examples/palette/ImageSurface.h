#pragma once

/// \file
/// A picture as Cairo draws it.
///
///     const vlm::examples::SurfacePtr surface = vlm::palette::SurfaceOf(image);

#include <examples/common/Handles.h>
#include <examples/palette/Image.h>

namespace vlm::palette {

/// Makes a surface of a picture's pixels.
///
/// *Errors*: `std::runtime_error` for a picture that Cairo can't hold.
[[nodiscard]] examples::SurfacePtr SurfaceOf(const Image& image);

}  // namespace vlm::palette
