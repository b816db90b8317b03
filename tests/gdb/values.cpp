// Values for a debugger to look at.
#include <velum/velum.h>

namespace {

[[gnu::noinline]] void Look() { asm volatile(""); }

}  // namespace

int main() {
  const vlm::GString text("K\xC3\xB6ln \"1\"");
  const vlm::Vec2d point(1.5, -2);
  const vlm::Vec3f space(1, 2, 3);
  const vlm::Box2d box(0, 0.25, 10, 20);
  const vlm::Mat3d plane(1, 0, 0, 1, 4, 5);
  const vlm::Mat4d solid;
  const vlm::Quat4d turn(0, 0, 1, 2);
  const vlm::Vec4d four(1, 2, 3, 4);
  const vlm::Color4b colour(255, 128, 0, 64);
  const vlm::Color4f light(0.5F, 0.25F, 0, 1);
  const vlm::doubledouble third = vlm::doubledouble(1) / 3;
  vlm::RVector row(3);
  vlm::RMatrix table(2, 2);
  for (unsigned i = 0; i < 3; ++i) row(i) = i * 0.5;
  for (unsigned i = 0; i < 4; ++i) table(i / 2, i % 2) = i;
  Look();
  return text.empty() || point.x != 1.5 || space.z != 3 || four.w != 4 || turn.w != 2 ||
         solid[3][3] != 1 || light.A != 1 || box.IsEmpty() || colour.A != 64 || third.lo == 0 ||
         plane[0][0] != 1;
}
