#pragma once

/// \file
/// What the commands of the sketchbook have in common.
///
///     vlm::sketchbook::RegisterCommands();
///     const auto move = vlm::CommandFactory::Construct("Move");
///     move->Option("document", boost::any(&sketch));
///     move->Option("name", "lens");
///     move->Option("dx", "20");
///     move->Do();

#include <velum/commands/Command.h>
#include <velum/core/GString.h>
#include <examples/sketchbook/Document.h>
#include <examples/sketchbook/OptionValues.h>

#include <list>
#include <memory>
#include <utility>

namespace vlm::sketchbook {

/// A change of a document. A derived class says which options it takes, prepares a memento that
/// holds all that the change needs, and applies or reverts that.
///
/// Options: "document", a `Document*` that outlives the command, and those of the class, as text. A
/// command is done once, and then undone and redone.
class SketchCommand : public Command {
 public:
  /// What the command did, or its key before it was done.
  [[nodiscard]] GString Label() const override;

 protected:
  /// Makes a command that takes `options`, besides the document.
  explicit SketchCommand(const OptionTable& options) : options_(options) {}
  SketchCommand(const SketchCommand&) = default;

  /// What the command needs in order to be undone and redone.
  class Change : public vlm::Memento {
   public:
    /// Makes the change; nothing of it if it throws.
    virtual void Apply(Document& document) = 0;
    /// Takes it back: the document is then as it was, to the last byte when it is stored.
    virtual void Revert(Document& document) = 0;
    /// What it does, for the user: "Move 'lens'".
    [[nodiscard]] virtual GString Label() const = 0;
  };

  /// The options that were set.
  [[nodiscard]] const OptionValues& Options() const { return options_; }

 private:
  // Finds what the options name. *Errors*: `Exception` if there is no such change.
  virtual std::shared_ptr<Change> Prepare(const Document& document) const = 0;

  StatusCode DoImpl() override;
  StatusCode UndoImpl() override;
  StatusCode RedoImpl() override;
  bool UndoRedoableImpl() const override { return Memento() != nullptr; }
  bool OptionImpl(const GString& key, const boost::any& value) override;
  bool OptionImpl(const GString& key, const GString& value) override;
  void EnumerateOptionsImpl(std::list<std::pair<GString, GString>>& options) const override;

  Document* document_ = nullptr;
  OptionValues options_;
};

/// Enters the factories of "Add", "Move", "Recolor" and "Delete". It may be called again.
void RegisterCommands();

}  // namespace vlm::sketchbook
