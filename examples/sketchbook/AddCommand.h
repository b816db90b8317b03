#pragma once

/// \file
/// The command that puts a shape or a style into a sketch.
///
///     command->Option("kind", "circle");
///     command->Option("x", "100");
///     command->Option("y", "80");
///     command->Option("r", "20");

#include <examples/sketchbook/SketchCommand.h>

namespace vlm::sketchbook {

/// "Add": makes what the option "kind" says of the other options; see Making.h. Without a "name"
/// the command finds one.
class AddCommand final : public SketchCommand {
 public:
  AddCommand();
  [[nodiscard]] std::unique_ptr<Command> Clone() const override;

 private:
  GString KeyImpl() const override { return "Add"; }
  std::shared_ptr<Change> Prepare(const Document& document) const override;
};

}  // namespace vlm::sketchbook
