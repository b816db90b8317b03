#include <examples/sketchbook/Stored.h>

namespace vlm::sketchbook {

void TransferPoint(Archive& archive, Vec2d& point) {
  archive.Transfer(point.x);
  archive.Transfer(point.y);
}

void TransferPlacement(Archive& archive, Mat3d& placement) {
  for (std::size_t i = 0; i < 3; ++i) {
    Vec3d row = placement.GetRow(i);
    archive.Transfer(row);
    placement.SetRow(i, row);
  }
}

void TransferArrow(Archive& archive, Arrow& arrow) {
  int number = static_cast<int>(arrow);
  archive.Transfer(number);
  arrow = static_cast<Arrow>(number);
}

}  // namespace vlm::sketchbook
