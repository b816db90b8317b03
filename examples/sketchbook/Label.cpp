#include <examples/sketchbook/Label.h>

#include <examples/common/LabelFault.h>
#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

namespace vlm::sketchbook {

const CTypeInfo Label::kType("SketchLabel", CreateStored<Label>, Shape::GetClassTypeId());

GString Label::Fault() const {
  if (text_.empty()) return "a label needs a text";
  if (const auto fault = examples::FindFault(text_)) return "the text, " + fault->InWords();
  if (!IsSize(height_)) return "letters are more than 0 and at most 10000 high";
  if (alignment_ < 1 || alignment_ > 3) return "a label is aligned in a way that there is not";
  return Shape::Fault();
}

Box2d Label::Extent(const Canvas& canvas) const {
  constexpr double kGap = 3.0;  // between the text and a connector
  Box2d box = canvas.LabelBox(text_, height_, alignment_);
  box.Inflate(kGap, 0.0);
  return box;
}

void Label::Draw(Canvas& canvas) const {
  canvas.DrawLabel(Placement(), text_, height_, alignment_, *Style());
}

void Label::Serialize(Archive& archive) {
  Shape::Serialize(archive);
  archive.Transfer(text_);
  archive.Transfer(height_);
  archive.Transfer(alignment_);
}

}  // namespace vlm::sketchbook
