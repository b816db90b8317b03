#include <examples/sketchbook/Shape.h>

#include <examples/sketchbook/Connector.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

#include <algorithm>
#include <cmath>

namespace vlm::sketchbook {

const CTypeInfo Shape::kType("SketchShape", nullptr, CTypedObject::GetClassTypeId());

Vec2d Shape::Center(const Canvas& canvas) const { return Extent(canvas).Center() * placement_; }

Vec2d Shape::EdgeTowards(const Vec2d& target, const Canvas& canvas) const {
  Mat3d toShape;
  if (!placement_.Inverse(toShape)) return Center(canvas);
  const Box2d extent = Extent(canvas);
  const Vec2d middle = extent.Center();
  const Vec2d direction = target * toShape - middle;
  if (direction == Vec2d::ZERO || !extent.HasArea()) return middle * placement_;
  return (middle + Edge(extent.Size() * 0.5, direction)) * placement_;
}

// Of a rectangle.
Vec2d Shape::Edge(const Vec2d& halfSize, const Vec2d& direction) const {
  return direction /
         std::max(std::abs(direction.x) / halfSize.x, std::abs(direction.y) / halfSize.y);
}

GString Shape::Fault() const {
  if (!IsName(name_)) return "a name has 1 to 100 bytes and no control characters";
  if (style_ == nullptr) return "'" + name_ + "' has no style";
  if (!IsWithin(placement_)) return "'" + name_ + "' lies too far out or is turned inside out";
  return style_->Fault();
}

void Shape::Serialize(Archive& archive) {
  archive.Transfer(name_);
  archive.TransferObject(style_);
  TransferPlacement(archive, placement_);
  TransferList(archive, connectors_,
               [&](std::weak_ptr<Connector>& connector) { TransferWeak(archive, connector); });
}

}  // namespace vlm::sketchbook
