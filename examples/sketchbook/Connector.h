#pragma once

/// \file
/// A line between two shapes, which goes where they go.
///
///     auto arrow = std::make_shared<vlm::sketchbook::Connector>(detector, amplifier, via,
///                                                               Arrow::End);

#include <examples/sketchbook/Arrow.h>
#include <examples/sketchbook/Shape.h>

#include <memory>
#include <vector>

namespace vlm::sketchbook {

/// A line from the edge of one shape to the edge of another. It owns a share in both, and they know
/// it; see Shape. A connector ends at no connector, and is not placed itself.
class Connector final : public Shape {
 public:
  Connector() = default;
  /// Makes a line from shape to shape by way of points of the page.
  Connector(std::shared_ptr<Shape> from, std::shared_ptr<Shape> to, std::vector<Vec2d> via,
            Arrow arrow)
      : from_(std::move(from)), to_(std::move(to)), via_(std::move(via)), arrow_(arrow) {}

  /// Where it begins.
  [[nodiscard]] const std::shared_ptr<Shape>& From() const { return from_; }
  /// Where it ends.
  [[nodiscard]] const std::shared_ptr<Shape>& To() const { return to_; }
  [[nodiscard]] GString Kind() const override { return "connector"; }
  [[nodiscard]] bool IsPlaced() const override { return false; }
  [[nodiscard]] GString Fault() const override;
  void Draw(Canvas& canvas) const override;

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override;

 private:
  Box2d Extent(const Canvas&) const override { return {}; }

  static const CTypeInfo kType;

  std::shared_ptr<Shape> from_;
  std::shared_ptr<Shape> to_;
  std::vector<Vec2d> via_;
  Arrow arrow_ = Arrow::None;
};

}  // namespace vlm::sketchbook
