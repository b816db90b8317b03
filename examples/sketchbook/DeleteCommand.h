#pragma once

/// \file
/// The command that takes a shape or a style out of a sketch.
///
///     command->Option("name", "lens");

#include <examples/sketchbook/SketchCommand.h>

namespace vlm::sketchbook {

/// "Delete": takes out the shape "name" and the connectors that end at it, or a style that no shape
/// has.
class DeleteCommand final : public SketchCommand {
 public:
  DeleteCommand();
  [[nodiscard]] std::unique_ptr<Command> Clone() const override;

 private:
  GString KeyImpl() const override { return "Delete"; }
  std::shared_ptr<Change> Prepare(const Document& document) const override;
};

}  // namespace vlm::sketchbook
