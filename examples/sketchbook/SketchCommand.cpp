#include <examples/sketchbook/SketchCommand.h>

#include <velum/commands/CommandFactory.h>
#include <examples/sketchbook/AddCommand.h>
#include <examples/sketchbook/DeleteCommand.h>
#include <examples/sketchbook/MoveCommand.h>
#include <examples/sketchbook/RecolorCommand.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

// The factory of one class of commands.
template <class Product>
class SketchCommandFactory final : public CommandFactory {
 public:
  explicit SketchCommandFactory(const GString& key) : CommandFactory(key, *this) {}

  std::unique_ptr<Command> ConstructProduct() const override { return std::make_unique<Product>(); }
};

}  // namespace

GString SketchCommand::Label() const {
  const auto change = std::static_pointer_cast<const Change>(Memento());
  return change == nullptr ? Key() : change->Label();
}

StatusCode SketchCommand::DoImpl() {
  if (document_ == nullptr) Refuse("the command has no document");
  if (Memento() != nullptr) Refuse("the command was done before");
  const std::shared_ptr<Change> change = Prepare(*document_);
  change->Apply(*document_);
  Memento(change);
  return STATUS_SUCCESS;
}

StatusCode SketchCommand::UndoImpl() {
  std::static_pointer_cast<Change>(Memento())->Revert(*document_);
  return STATUS_SUCCESS;
}

StatusCode SketchCommand::RedoImpl() {
  std::static_pointer_cast<Change>(Memento())->Apply(*document_);
  return STATUS_SUCCESS;
}

bool SketchCommand::OptionImpl(const GString& key, const boost::any& value) {
  Document* const* document = boost::any_cast<Document*>(&value);
  if (key != "document" || document == nullptr) return false;
  document_ = *document;
  return true;
}

bool SketchCommand::OptionImpl(const GString& key, const GString& value) {
  return options_.Set(key, value);
}

void SketchCommand::EnumerateOptionsImpl(std::list<std::pair<GString, GString>>& options) const {
  options.insert(options.end(), options_.All().begin(), options_.All().end());
}

void RegisterCommands() {
  static const SketchCommandFactory<AddCommand> add("Add");
  static const SketchCommandFactory<MoveCommand> move("Move");
  static const SketchCommandFactory<RecolorCommand> recolor("Recolor");
  static const SketchCommandFactory<DeleteCommand> remove("Delete");
}

}  // namespace vlm::sketchbook
