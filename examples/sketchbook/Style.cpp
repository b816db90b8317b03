#include <examples/sketchbook/Style.h>

#include <examples/sketchbook/Limits.h>
#include <examples/sketchbook/Stored.h>

namespace vlm::sketchbook {

const CTypeInfo Style::kType("SketchStyle", CreateStored<Style>, GetClassTypeId());

void Style::Serialize(Archive& archive) {
  archive.Transfer(name);
  archive.Transfer(line);
  archive.Transfer(fill);
  archive.Transfer(width);
  archive.Transfer(dash);
}

GString Style::Fault() const {
  if (!name.empty() && !IsName(name)) return "a style has a name that cannot be typed";
  if (width != 0.0 && !IsSize(width)) return "a line is at least 0 and at most 10000 wide";
  if (dash != 0.0 && !IsSize(dash)) return "a dash is at least 0 and at most 10000 long";
  return "";
}

}  // namespace vlm::sketchbook
