#include <velum/geometry/PodVector.h>

namespace vlm {

template class CPodVector<Vec2d, 32>;

}  // namespace vlm
