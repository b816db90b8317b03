#pragma once

/// \file
/// The command that gives a shape or a style other colours.
///
///     command->Option("name", "beam");
///     command->Option("color", "crimson");

#include <examples/sketchbook/SketchCommand.h>

namespace vlm::sketchbook {

/// "Recolor": sets the "color" of lines and text and the "fill" of the shape or the style "name". A
/// style takes all its shapes along; a shape leaves the style that it shared.
class RecolorCommand final : public SketchCommand {
 public:
  RecolorCommand();
  [[nodiscard]] std::unique_ptr<Command> Clone() const override;

 private:
  GString KeyImpl() const override { return "Recolor"; }
  std::shared_ptr<Change> Prepare(const Document& document) const override;
  Style Recolored(const Style& style) const;
};

}  // namespace vlm::sketchbook
