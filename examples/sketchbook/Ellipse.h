#pragma once

/// \file
/// A circle or an ellipse.
///
///     auto lens = std::make_shared<vlm::sketchbook::Ellipse>(vlm::Vec2d(6, 40));

#include <examples/sketchbook/Shape.h>

namespace vlm::sketchbook {

/// An ellipse about the origin of its coordinates, with its axes along theirs.
class Ellipse final : public Shape {
 public:
  Ellipse() = default;
  /// Makes an ellipse of its two radii.
  explicit Ellipse(const Vec2d& radii) : radii_(radii) {}

  [[nodiscard]] GString Kind() const override {
    return radii_.x == radii_.y ? "circle" : "ellipse";
  }
  [[nodiscard]] GString Fault() const override;
  void Draw(Canvas& canvas) const override;

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override;

 private:
  Box2d Extent(const Canvas&) const override { return Box2d(-radii_, radii_); }
  Vec2d Edge(const Vec2d& halfSize, const Vec2d& direction) const override;

  static const CTypeInfo kType;

  Vec2d radii_;
};

}  // namespace vlm::sketchbook
