#pragma once

/// \file
/// A text in the drawing.
///
///     auto label = std::make_shared<vlm::sketchbook::Label>("{\\i λ} = 633 nm", 12.0, 1);

#include <examples/sketchbook/Shape.h>

namespace vlm::sketchbook {

/// A math text. The origin of its coordinates is half way down the left side of its box, the middle
/// of the box, or half way down its right side, as it is aligned.
class Label final : public Shape {
 public:
  Label() = default;
  /// Makes a label of a math text, the height of its letters, and 1, 2 or 3 for left, center and
  /// right.
  Label(const GString& text, double height, unsigned int alignment)
      : text_(text), height_(height), alignment_(alignment) {}

  [[nodiscard]] GString Kind() const override { return "label"; }
  [[nodiscard]] GString Fault() const override;
  void Draw(Canvas& canvas) const override;

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  void Serialize(Archive& archive) override;

 private:
  Box2d Extent(const Canvas& canvas) const override;

  static const CTypeInfo kType;

  GString text_;
  double height_ = 0.0;
  unsigned int alignment_ = 1;
};

}  // namespace vlm::sketchbook
