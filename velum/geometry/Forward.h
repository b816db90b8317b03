#pragma once

/// \file
/// Forward declarations of the geometry value types, enough to name them in a declaration.
///
///     namespace vlm { Vec2d Centroid(Vec2d const* points, unsigned count); }

#include <velum/core/Api.h>

namespace vlm {

template <class T>
class VELUM_API Point2;
template <class T>
class VELUM_API Point3;
template <class T, class WType>
class VELUM_API Point4;

template <class T>
class VELUM_API BasicVec2;
template <class T>
class VELUM_API BasicVec3;
template <class T>
class VELUM_API BasicVec4;

using Vec2i = BasicVec2<int>;     ///< Two `int` components, see Vec2.h.
using Vec2f = BasicVec2<float>;   ///< Two `float` components, see Vec2.h.
using Vec2d = BasicVec2<double>;  ///< Two `double` components, see Vec2.h.
using Vec3i = BasicVec3<int>;     ///< Three `int` components, see Vec3.h.
using Vec3f = BasicVec3<float>;   ///< Three `float` components, see Vec3.h.
using Vec3d = BasicVec3<double>;  ///< Three `double` components, see Vec3.h.
using Vec4f = BasicVec4<float>;   ///< Four `float` components, see Vec4.h.
using Vec4d = BasicVec4<double>;  ///< Four `double` components, see Vec4.h.

template <class T>
class VELUM_API BasicBox2;
template <class T>
class VELUM_API BasicBox3;

using Box2f = BasicBox2<float>;   ///< A rectangle in `float`, see Box2.h.
using Box2d = BasicBox2<double>;  ///< A rectangle in `double`, see Box2.h.
using Box3f = BasicBox3<float>;   ///< A cuboid in `float`, see Box3.h.
using Box3d = BasicBox3<double>;  ///< A cuboid in `double`, see Box3.h.

template <class Vec>
class VELUM_API BasicGLine;

using GLine2 = BasicGLine<Vec2d>;  ///< A line segment in the plane, see GLine.h.
using GLine3 = BasicGLine<Vec3d>;  ///< A line segment in space, see GLine.h.

template <class Vec>
class VELUM_API BasicDashLineGenerator;

using GDashLineGenerator = BasicDashLineGenerator<Vec2d>;   ///< See GDashLineGenerator.h.
using GDashLine3Generator = BasicDashLineGenerator<Vec3d>;  ///< See GDashLineGenerator.h.

template <class T>
class VELUM_API BasicQuat4;

using Quat4f = BasicQuat4<float>;   ///< A quaternion in `float`, see Quat4.h.
using Quat4d = BasicQuat4<double>;  ///< A quaternion in `double`, see Quat4.h.

template <class Mat, class T>
class VELUM_API Mat4Base;

class CLineClip;
class CPolyClip;
class CRectTransformer;
class GLineClipPolygon;
class GPolygon;
class GPolygon2d;
class GPolyline;
class Line3d;
class Mat3d;
class Mat4d;
class Mat4f;
class Plane;
class RPoint;
class RPoints;

}  // namespace vlm
