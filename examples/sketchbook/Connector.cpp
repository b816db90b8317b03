#include <examples/sketchbook/Connector.h>

#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

#include <algorithm>

namespace vlm::sketchbook {
namespace {

// A connector at the end of a connector could come to own itself, and never be freed. No sound file
// has one, so what is read of a damaged file is let go at once, and Fault finds the end missing.
void TransferEnd(Archive& archive, std::shared_ptr<Shape>& end) {
  archive.TransferObject(end);
  if (dynamic_cast<const Connector*>(end.get()) != nullptr) end.reset();
}

}  // namespace

const CTypeInfo Connector::kType("SketchConnector", CreateStored<Connector>,
                                 Shape::GetClassTypeId());

GString Connector::Fault() const {
  if (from_ == nullptr || to_ == nullptr) return "a connector needs a shape at either end";
  if (from_ == to_) return "a connector needs two shapes";
  if (from_->Kind() == Kind() || to_->Kind() == Kind()) return "a connector ends at no connector";
  const auto isWithin = [](const Vec2d& point) { return IsWithin(point); };
  if (!std::all_of(via_.begin(), via_.end(), isWithin)) return "a point lies too far out";
  if (!IsArrow(arrow_)) return "a connector has an arrow that there is not";
  return Shape::Fault();
}

void Connector::Draw(Canvas& canvas) const {
  const Vec2d first = via_.empty() ? to_->Center(canvas) : via_.front();
  const Vec2d last = via_.empty() ? from_->Center(canvas) : via_.back();
  std::vector<Vec2d> points = {from_->EdgeTowards(first, canvas)};
  points.insert(points.end(), via_.begin(), via_.end());
  points.push_back(to_->EdgeTowards(last, canvas));
  canvas.DrawLine(points, arrow_, *Style());
}

void Connector::Serialize(Archive& archive) {
  Shape::Serialize(archive);
  TransferEnd(archive, from_);
  TransferEnd(archive, to_);
  TransferList(archive, via_, [&](Vec2d& point) { TransferPoint(archive, point); });
  TransferArrow(archive, arrow_);
}

}  // namespace vlm::sketchbook
