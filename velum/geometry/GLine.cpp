#include <velum/geometry/GLine.h>

namespace vlm {

// The members have bodies of their own, none is defaulted: so all compilers emit the same ones
// here.
template class BasicGLine<Vec2d>;
template class BasicGLine<Vec3d>;

}  // namespace vlm
