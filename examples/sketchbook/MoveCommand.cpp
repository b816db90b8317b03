#include <examples/sketchbook/MoveCommand.h>

#include <velum/geometry/Constants.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Naming.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

constexpr OptionRow kOptions[] = {{"name", OptionKind::Name},
                                  {"dx", OptionKind::Number},
                                  {"dy", OptionKind::Number},
                                  {"angle", OptionKind::Number}};

}  // namespace

MoveCommand::MoveCommand() : SketchCommand(kOptions) {}

std::unique_ptr<Command> MoveCommand::Clone() const { return std::make_unique<MoveCommand>(*this); }

std::shared_ptr<SketchCommand::Change> MoveCommand::Prepare(const Document& document) const {
  // Both placements are kept: to move back by -dx would leave a rounding error behind.
  class MoveShape final : public Change {
   public:
    MoveShape(std::shared_ptr<Shape> shape, const Mat3d& after)
        : shape_(std::move(shape)), before_(shape_->Placement()), after_(after) {}
    std::unique_ptr<vlm::Memento> Clone() const override {
      return std::make_unique<MoveShape>(*this);
    }
    void Apply(Document&) override { shape_->SetPlacement(after_); }
    void Revert(Document&) override { shape_->SetPlacement(before_); }
    GString Label() const override { return "Move '" + shape_->Name() + "'"; }

   private:
    std::shared_ptr<Shape> shape_;
    Mat3d before_;
    Mat3d after_;
  };

  const std::shared_ptr<Shape> shape = RequireShape(document, Options().Text("name"));
  if (!shape->IsPlaced()) Refuse("a " + shape->Kind() + " goes where its shapes go");
  const double angle = Options().Number("angle", 0.0) * DEG_TO_RAD;
  Mat3d after = Mat3d::MakeRotation(angle) * shape->Placement();
  after.Translate(Options().Number("dx", 0.0), Options().Number("dy", 0.0));
  if (!IsWithin(after)) Refuse("'" + shape->Name() + "' would lie too far out");
  return std::make_shared<MoveShape>(shape, after);
}

}  // namespace vlm::sketchbook
