#pragma once

/// \file
/// The command that moves and turns a shape.
///
///     command->Option("name", "lens");
///     command->Option("dx", "20");
///     command->Option("angle", "45");

#include <examples/sketchbook/SketchCommand.h>

namespace vlm::sketchbook {

/// "Move": moves the shape "name" by "dx" and "dy", after turning it by "angle" degrees about the
/// origin of its coordinates, clockwise on the page. What is connected to it stays connected.
class MoveCommand final : public SketchCommand {
 public:
  MoveCommand();
  [[nodiscard]] std::unique_ptr<Command> Clone() const override;

 private:
  GString KeyImpl() const override { return "Move"; }
  std::shared_ptr<Change> Prepare(const Document& document) const override;
};

}  // namespace vlm::sketchbook
