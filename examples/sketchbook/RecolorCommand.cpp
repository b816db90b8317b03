#include <examples/sketchbook/RecolorCommand.h>

#include <examples/sketchbook/Naming.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

constexpr OptionRow kOptions[] = {
    {"name", OptionKind::Name}, {"color", OptionKind::Color}, {"fill", OptionKind::Color}};

}  // namespace

RecolorCommand::RecolorCommand() : SketchCommand(kOptions) {}

std::unique_ptr<Command> RecolorCommand::Clone() const {
  return std::make_unique<RecolorCommand>(*this);
}

std::shared_ptr<SketchCommand::Change> RecolorCommand::Prepare(const Document& document) const {
  class RecolorShape final : public Change {
   public:
    RecolorShape(std::shared_ptr<Shape> shape, std::shared_ptr<Style> after)
        : shape_(std::move(shape)), before_(shape_->Style()), after_(std::move(after)) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<RecolorShape>(*this);
    }
    void Apply(Document&) override { shape_->SetStyle(after_); }
    void Revert(Document&) override { shape_->SetStyle(before_); }
    GString Label() const override { return "Recolor '" + shape_->Name() + "'"; }

   private:
    std::shared_ptr<Shape> shape_;
    std::shared_ptr<Style> before_;
    std::shared_ptr<Style> after_;
  };

  class RecolorStyle final : public Change {
   public:
    RecolorStyle(std::shared_ptr<Style> style, const Style& after)
        : style_(std::move(style)), before_(*style_), after_(after) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<RecolorStyle>(*this);
    }
    void Apply(Document&) override { *style_ = after_; }
    void Revert(Document&) override { *style_ = before_; }
    GString Label() const override { return "Recolor style '" + style_->name + "'"; }

   private:
    std::shared_ptr<Style> style_;
    Style before_;
    Style after_;
  };

  if (!Options().Has("color") && !Options().Has("fill")) Refuse("needs 'color' or 'fill'");
  const GString name = Options().Text("name");
  if (const auto style = document.FindStyle(name)) {
    return std::make_shared<RecolorStyle>(style, Recolored(*style));
  }
  const std::shared_ptr<Shape> shape = RequireShape(document, name);
  auto own = std::make_shared<Style>(Recolored(*shape->Style()));
  own->name.clear();
  return std::make_shared<RecolorShape>(shape, own);
}

Style RecolorCommand::Recolored(const Style& style) const {
  Style recolored = style;
  recolored.line = Options().Color("color", style.line);
  recolored.fill = Options().Color("fill", style.fill);
  return recolored;
}

}  // namespace vlm::sketchbook
