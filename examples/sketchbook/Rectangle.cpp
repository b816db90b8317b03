#include <examples/sketchbook/Rectangle.h>

#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

#include <algorithm>

namespace vlm::sketchbook {

const CTypeInfo Rectangle::kType("SketchRectangle", CreateStored<Rectangle>,
                                 Shape::GetClassTypeId());

GString Rectangle::Fault() const {
  if (!IsSize(size_.x) || !IsSize(size_.y)) {
    return "a width and a height are above 0 and at most 10000";
  }
  if (!(corner_ >= 0.0 && corner_ <= 0.5 * std::min(size_.x, size_.y))) {
    return "a corner has a radius from 0 to half the shorter side";
  }
  return Shape::Fault();
}

void Rectangle::Draw(Canvas& canvas) const {
  canvas.DrawRectangle(Placement(), size_, corner_, *Style());
}

void Rectangle::Serialize(Archive& archive) {
  Shape::Serialize(archive);
  TransferPoint(archive, size_);
  archive.Transfer(corner_);
}

}  // namespace vlm::sketchbook
