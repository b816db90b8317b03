#include <velum/geometry/Point.h>

namespace vlm {

// The members have bodies of their own, none is defaulted: so all compilers emit the same ones
// here.
template class Point2<int>;
template class Point2<float>;
template class Point2<double>;
template class Point3<int>;
template class Point3<float>;
template class Point3<double>;
template class Point4<float, float>;
template class Point4<double, double>;
template class Point4<float, unsigned int>;
template class Point4<double, unsigned int>;

}  // namespace vlm
