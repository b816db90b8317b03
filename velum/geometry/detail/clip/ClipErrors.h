#pragma once

/// \file
/// The clipper's own errors.

namespace vlm::detail {

/// Raises `ERR_POLYGON_CLIPPING`: an invariant of the sweep is broken.
[[noreturn]] void ThrowBrokenSweep(int line);
/// Raises `ERR_INTERNAL`: null pointers and vertices that are not finite.
[[noreturn]] void ThrowBadInput(int line);

}  // namespace vlm::detail
