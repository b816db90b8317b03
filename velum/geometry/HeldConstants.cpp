#include <velum/geometry/Box.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/Vec.h>

namespace vlm::detail {

// The constants are defined in headers, so that they serve in constant expressions. Naming each one
// here makes the library hold and export all of them, and not those that a compiler happens to
// need.
extern const void* const kHeldConstants[];

const void* const kHeldConstants[] = {
    &Mat3d::IDENTITY, &Mat3d::ZERO,      &Mat4d::IDENTITY, &Mat4d::ZERO,      &Mat4f::IDENTITY,
    &Mat4f::ZERO,     &Quat4d::IDENTITY, &Quat4d::ZERO,    &Quat4f::IDENTITY, &Quat4f::ZERO,
    &Box2d::UNIVERSE, &Box2f::UNIVERSE,  &Box3d::UNIVERSE, &Box3f::UNIVERSE,  &Vec2d::ZERO,
    &Vec2d::ONE,      &Vec2d::UNIT_X,    &Vec2d::UNIT_Y,   &Vec2f::ZERO,      &Vec2f::ONE,
    &Vec2f::UNIT_X,   &Vec2f::UNIT_Y,    &Vec2i::ZERO,     &Vec2i::ONE,       &Vec2i::UNIT_X,
    &Vec2i::UNIT_Y,   &Vec3d::ZERO,      &Vec3d::ONE,      &Vec3d::UNIT_X,    &Vec3d::UNIT_Y,
    &Vec3d::UNIT_Z,   &Vec3f::ZERO,      &Vec3f::ONE,      &Vec3f::UNIT_X,    &Vec3f::UNIT_Y,
    &Vec3f::UNIT_Z,   &Vec3i::ZERO,      &Vec3i::ONE,      &Vec3i::UNIT_X,    &Vec3i::UNIT_Y,
    &Vec3i::UNIT_Z,   &Vec4d::ZERO,      &Vec4f::ZERO};

}  // namespace vlm::detail
