#pragma once

/// \file
/// A rectangle, with or without rounded corners.
///
///     auto box = std::make_shared<vlm::sketchbook::Rectangle>(vlm::Vec2d(80, 40), 4.0);

#include <examples/sketchbook/Shape.h>

namespace vlm::sketchbook {

/// A rectangle about the origin of its coordinates, with its sides along their axes.
class Rectangle final : public Shape {
 public:
  Rectangle() = default;
  /// Makes a rectangle of width and height and the radius of its corners.
  Rectangle(const Vec2d& size, double corner) : size_(size), corner_(corner) {}

  [[nodiscard]] GString Kind() const override { return "rectangle"; }
  [[nodiscard]] GString Fault() const override;
  void Draw(Canvas& canvas) const override;

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override;

 private:
  Box2d Extent(const Canvas&) const override { return Box2d(size_ * -0.5, size_ * 0.5); }

  static const CTypeInfo kType;

  Vec2d size_;
  double corner_ = 0.0;
};

}  // namespace vlm::sketchbook
