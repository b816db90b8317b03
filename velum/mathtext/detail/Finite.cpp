#include <velum/mathtext/detail/Finite.h>

#include <velum/core/Exception.h>

namespace vlm::detail {

void ThrowNumberOutOfRange() {
  ThrowErrorImpl("MTParser", __LINE__, ERR_CUSTOM, "MathText number out of range");
}

}  // namespace vlm::detail
