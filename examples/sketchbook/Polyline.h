#pragma once

/// \file
/// A line through points, open or closed.
///
///     const std::vector<vlm::Vec2d> points = {{0, 0}, {100, 0}, {100, 50}};
///     auto beam = std::make_shared<vlm::sketchbook::Polyline>(points, false, Arrow::End);

#include <examples/sketchbook/Arrow.h>
#include <examples/sketchbook/Shape.h>

#include <vector>

namespace vlm::sketchbook {

/// A line through two points or more, in its coordinates. A closed one has an inside and no
/// arrowheads.
class Polyline final : public Shape {
 public:
  Polyline() = default;
  /// Makes a line through `points`.
  Polyline(std::vector<Vec2d> points, bool closed, Arrow arrow)
      : points_(std::move(points)), closed_(closed), arrow_(arrow) {}

  [[nodiscard]] GString Kind() const override { return "polyline"; }
  [[nodiscard]] GString Fault() const override;
  void Draw(Canvas& canvas) const override;

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override;

 private:
  Box2d Extent(const Canvas&) const override;

  static const CTypeInfo kType;

  std::vector<Vec2d> points_;
  bool closed_ = false;
  Arrow arrow_ = Arrow::None;
};

}  // namespace vlm::sketchbook
