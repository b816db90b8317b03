#pragma once

/// \file
/// The clipper's own errors.

namespace vlm::detail {

/// Raises `ERR_POLYGON_CLIPPING`: an invariant of the sweep is broken.
[[noreturn]] void ThrowBrokenSweep(int line);
/// Raises `ERR_INTERNAL`: a null pointer, a number that is no operation, or a vertex that is not
/// finite.
[[noreturn]] void ThrowBadInput(int line);

}  // namespace vlm::detail
