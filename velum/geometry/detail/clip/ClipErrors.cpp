#include <velum/geometry/detail/clip/ClipErrors.h>

#include <velum/core/Exception.h>
#include <velum/geometry/detail/GpcAlloc.h>

namespace vlm::detail {

void ThrowBrokenSweep(int line) { ThrowErrorImpl(kGpcSource, line, ERR_POLYGON_CLIPPING); }

void ThrowBadInput(int line) { ThrowErrorImpl(kGpcSource, line, ERR_INTERNAL); }

}  // namespace vlm::detail
