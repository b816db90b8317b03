#include <examples/sketchbook/Ellipse.h>

#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

namespace vlm::sketchbook {

const CTypeInfo Ellipse::kType("SketchEllipse", CreateStored<Ellipse>, Shape::GetClassTypeId());

GString Ellipse::Fault() const {
  if (!IsSize(radii_.x) || !IsSize(radii_.y)) {
    return "a radius is above 0 and at most 10000";
  }
  return Shape::Fault();
}

void Ellipse::Draw(Canvas& canvas) const { canvas.DrawEllipse(Placement(), radii_, *Style()); }

Vec2d Ellipse::Edge(const Vec2d& halfSize, const Vec2d& direction) const {
  const Vec2d onUnitCircle(direction.x / halfSize.x, direction.y / halfSize.y);
  return direction / onUnitCircle.Length();
}

void Ellipse::Serialize(Archive& archive) {
  Shape::Serialize(archive);
  TransferPoint(archive, radii_);
}

}  // namespace vlm::sketchbook
