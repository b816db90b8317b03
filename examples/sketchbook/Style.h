#pragma once

/// \file
/// How a shape looks.
///
///     auto beam = std::make_shared<vlm::sketchbook::Style>();
///     beam->name = "beam";
///     beam->line = vlm::Color4b::Crimson;
///     beam->width = 2.5;

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/core/TypedObject.h>

namespace vlm::sketchbook {

/// Colours and line of a shape. Has identity: shapes share a style that has a name, and change
/// their looks with it. One without a name belongs to one shape. Lengths are points.
class Style final : public CTypedObject {
 public:
  GString name;                              ///< Empty for a style of one shape alone.
  Color4b line = Color4b::Black;             ///< Of strokes and text.
  Color4b fill = Color4b::TransparentWhite;  ///< Of the inside; none if its alpha is 0.
  double width = 1.0;                        ///< Of strokes; none if 0.
  double dash = 0.0;                         ///< The length of a dash and of a gap; solid if 0.

  /// The record of this class.
  [[nodiscard]] const CTypeInfo* GetTypeId() const override { return &kType; }
  /// Transfers all members.
  void Serialize(Archive& archive) override;

  /// What is wrong with the values, in words; empty if nothing is.
  [[nodiscard]] GString Fault() const;

 private:
  static const CTypeInfo kType;
};

}  // namespace vlm::sketchbook
