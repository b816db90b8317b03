#include <examples/sketchbook/AddCommand.h>

#include <examples/sketchbook/Making.h>

namespace vlm::sketchbook {
namespace {

constexpr OptionRow kOptions[] = {{"kind", OptionKind::Name},     {"name", OptionKind::Name},
                                  {"style", OptionKind::Name},    {"color", OptionKind::Color},
                                  {"fill", OptionKind::Color},    {"width", OptionKind::Number},
                                  {"dash", OptionKind::Number},   {"x", OptionKind::Number},
                                  {"y", OptionKind::Number},      {"r", OptionKind::Number},
                                  {"rx", OptionKind::Number},     {"ry", OptionKind::Number},
                                  {"w", OptionKind::Number},      {"h", OptionKind::Number},
                                  {"corner", OptionKind::Number}, {"angle", OptionKind::Number},
                                  {"points", OptionKind::Points}, {"closed", OptionKind::Flag},
                                  {"arrow", OptionKind::Arrow},   {"text", OptionKind::Text},
                                  {"size", OptionKind::Number},   {"align", OptionKind::Alignment},
                                  {"from", OptionKind::Name},     {"to", OptionKind::Name},
                                  {"via", OptionKind::Points}};

}  // namespace

AddCommand::AddCommand() : SketchCommand(kOptions) {}

std::unique_ptr<Command> AddCommand::Clone() const { return std::make_unique<AddCommand>(*this); }

std::shared_ptr<SketchCommand::Change> AddCommand::Prepare(const Document& document) const {
  // Of what was made there is one object, which comes back when the command is redone: later
  // commands know it by its address.
  class AddShape final : public Change {
   public:
    AddShape(std::shared_ptr<Shape> shape, const Document::Place& place)
        : shape_(std::move(shape)), place_(place) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<AddShape>(*this);
    }
    void Apply(Document& sketch) override { sketch.Insert(shape_, place_); }
    void Revert(Document& sketch) override { sketch.Remove(shape_); }
    GString Label() const override { return "Add " + shape_->Kind() + " '" + shape_->Name() + "'"; }

   private:
    std::shared_ptr<Shape> shape_;
    Document::Place place_;
  };

  class AddStyle final : public Change {
   public:
    AddStyle(std::shared_ptr<Style> style, std::size_t place)
        : style_(std::move(style)), place_(place) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<AddStyle>(*this);
    }
    void Apply(Document& sketch) override { sketch.Insert(style_, place_); }
    void Revert(Document& sketch) override { sketch.Remove(style_); }
    GString Label() const override { return "Add style '" + style_->name + "'"; }

   private:
    std::shared_ptr<Style> style_;
    std::size_t place_;
  };

  if (Options().Text("kind") == "style") {
    return std::make_shared<AddStyle>(MakeSharedStyle(Options(), document),
                                      document.Styles().size());
  }
  const std::shared_ptr<Shape> shape = MakeShape(Options(), document);
  return std::make_shared<AddShape>(shape, document.End(*shape));
}

}  // namespace vlm::sketchbook
