#include <examples/sketchbook/Polyline.h>

#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

#include <algorithm>

namespace vlm::sketchbook {

const CTypeInfo Polyline::kType("SketchPolyline", CreateStored<Polyline>, Shape::GetClassTypeId());

GString Polyline::Fault() const {
  if (points_.size() < 2) return "a line needs two points or more";
  const auto isWithin = [](const Vec2d& point) { return IsWithin(point); };
  if (!std::all_of(points_.begin(), points_.end(), isWithin)) return "a point lies too far out";
  if (!IsArrow(arrow_)) return "a line has an arrow that there is not";
  return Shape::Fault();
}

Box2d Polyline::Extent(const Canvas&) const {
  Box2d box;
  for (const Vec2d& point : points_) box.ExtendBy(point);
  return box;
}

void Polyline::Draw(Canvas& canvas) const {
  std::vector<Vec2d> onPage;
  onPage.reserve(points_.size());
  for (const Vec2d& point : points_) onPage.push_back(point * Placement());
  if (closed_) {
    canvas.DrawPolygon(onPage, *Style());
  } else {
    canvas.DrawLine(onPage, arrow_, *Style());
  }
}

void Polyline::Serialize(Archive& archive) {
  Shape::Serialize(archive);
  TransferList(archive, points_, [&](Vec2d& point) { TransferPoint(archive, point); });
  archive.Transfer(closed_);
  TransferArrow(archive, arrow_);
}

}  // namespace vlm::sketchbook
