#include <examples/sketchbook/DeleteCommand.h>

#include <examples/sketchbook/Connector.h>
#include <examples/sketchbook/Naming.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

constexpr OptionRow kOptions[] = {{"name", OptionKind::Name}};

}  // namespace

DeleteCommand::DeleteCommand() : SketchCommand(kOptions) {}

std::unique_ptr<Command> DeleteCommand::Clone() const {
  return std::make_unique<DeleteCommand>(*this);
}

std::shared_ptr<SketchCommand::Change> DeleteCommand::Prepare(const Document& document) const {
  // The connectors go first, and come back last.
  class DeleteShape final : public Change {
   public:
    explicit DeleteShape(const std::shared_ptr<Shape>& shape) {
      for (const auto& connector : shape->Connectors()) shapes_.push_back(connector.lock());
      shapes_.push_back(shape);
      places_.resize(shapes_.size());
    }
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<DeleteShape>(*this);
    }
    void Apply(Document& sketch) override {
      for (std::size_t i = 0; i < shapes_.size(); ++i) places_[i] = sketch.Remove(shapes_[i]);
    }
    void Revert(Document& sketch) override {
      for (std::size_t i = shapes_.size(); i-- > 0;) sketch.Insert(shapes_[i], places_[i]);
    }
    GString Label() const override { return "Delete '" + shapes_.back()->Name() + "'"; }

   private:
    std::vector<std::shared_ptr<Shape>> shapes_;
    std::vector<Document::Place> places_;
  };

  class DeleteStyle final : public Change {
   public:
    explicit DeleteStyle(std::shared_ptr<Style> style) : style_(std::move(style)) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<DeleteStyle>(*this);
    }
    void Apply(Document& sketch) override { place_ = sketch.Remove(style_); }
    void Revert(Document& sketch) override { sketch.Insert(style_, place_); }
    GString Label() const override { return "Delete style '" + style_->name + "'"; }

   private:
    std::shared_ptr<Style> style_;
    std::size_t place_ = 0;
  };

  const GString name = Options().Text("name");
  if (const auto style = document.FindStyle(name)) {
    const std::size_t users = document.UsersOf(*style);
    if (users > 0) Refuse("'" + name + "' is the style of " + std::to_string(users) + " shapes");
    return std::make_shared<DeleteStyle>(style);
  }
  return std::make_shared<DeleteShape>(RequireShape(document, name));
}

}  // namespace vlm::sketchbook
