// What a user's program does with the installed library: parses a label over a device of its own,
// and catches every exception type where the library throws it.
#include <velum/velum.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

int failures = 0;

void Check(bool holds, const char* what) {
  if (holds) return;
  std::printf("FAILED: %s\n", what);
  ++failures;
}

/// Ten units to a byte, eight up and two down.
class FixedDevice : public vlm::KQTextIF {
 public:
  void SetColor(vlm::Color4b) override {}
  vlm::Color4b GetColor() const override { return {}; }
  void SetFace(const vlm::GString&) override {}
  vlm::GString GetFace() const override { return "Arial"; }
  void SetWeight(unsigned) override {}
  unsigned GetWeight() const override { return 4; }
  void SetStyle(unsigned) override {}
  unsigned GetStyle() const override { return 0; }
  void SetCharset(unsigned) override {}
  unsigned GetCharset() const override { return 1; }
  void SetPitch(unsigned) override {}
  unsigned GetPitch() const override { return 2; }
  void SetFamily(unsigned) override {}
  unsigned GetFamily() const override { return 2; }
  void SetHorizAlignment(unsigned) override {}
  unsigned GetHorizAlignment() const override { return 0; }
  void SetVertAlignment(unsigned) override {}
  unsigned GetVertAlignment() const override { return 1; }
  void SetHeight(double) override {}
  double GetHeight() const override { return 10; }
  void SetHorizJustify(unsigned) override {}
  unsigned GetHorizJustify() const override { return 1; }
  void PreserveState() override {}
  void RestoreState() override {}
  void GetBounds(const vlm::GString& text, vlm::Box2d& box) override {
    box.Set(0, -8, 10.0 * text.size(), 2);
  }
  void GetExtent(const vlm::GString& text, vlm::Vec2d& extent) override {
    extent.Set(10.0 * text.size(), 10);
  }
  void GetMetrics(_TXTMETRICS& metrics) override { metrics = _TXTMETRICS(); }
  bool Draw(const vlm::Vec2d&, const vlm::GString& text) override {
    drawn += text;
    return true;
  }
  bool DrawLine(const vlm::Vec2d&, const vlm::Vec2d&) override { return true; }

  vlm::GString drawn;
};

void LabelIsLaidOutAndDrawn() {
  FixedDevice device;
  vlm::CMTTextIF text(device);
  vlm::CMTContext context(text, 8);
  auto block = std::make_shared<vlm::CMTMultiLineElement>(text);
  Check(context.Parse("CO{\\dn20 2}\nin air", block) == 0, "a label parses");
  const vlm::Box2d box = block->GetBBoxUsingTextIF(text, vlm::Vec2d(0, 0));
  Check(box.xRange() == 60, "its box is as wide as its longest line");
  block->DrawUsingTextIF(text, vlm::Vec2d(0, 0));
  Check(device.drawn == "CO2in air", "all of its text is drawn");
}

template <class Thrown, class Raise>
void ArrivesAs(const char* what, Raise raise) {
  try {
    raise();
    Check(false, what);
  } catch (const Thrown&) {
  } catch (...) {
    Check(false, what);
  }
}

void ExceptionsCrossTheBoundary() {
  ArrivesAs<vlm::Exception>("Exception", [] { vlm::ThrowErrorImpl("consumer.cpp", __LINE__, 2); });
  ArrivesAs<vlm::Exception>("Exception of CalcLeftBaseline",
                            [] { (void)vlm::CalcLeftBaseline({}, {}, 3, 0); });
  ArrivesAs<vlm::Exception>("UserAbortException as Exception",
                            [] { throw vlm::UserAbortException("consumer", "consumer.cpp", 1); });
  ArrivesAs<std::out_of_range>("std::out_of_range", [] { (void)vlm::GString("abc").substr(4, 1); });
  ArrivesAs<std::length_error>("std::length_error",
                               [] { vlm::GString("abc").append(0xFFFFFFFEu, 'x'); });
  ArrivesAs<vlm::StandardError>("StandardError",
                                [] { (void)vlm::CommandFactory::CanConstruct(""); });
  ArrivesAs<vlm::BadAllocError>("BadAllocError", [] { vlm::CMemoryFile().SetLength(0x80000001u); });
}

void InstalledDataAreFound() {
  Check(!vlm::LocateFile("Symbols\\default.sym").empty(), "the installed symbols are found");
  Check(vlm::CColorTable::Instance().size() > 140, "the installed colours are found");
}

}  // namespace

/// With the argument "installed" the library's data are looked for, too.
int main(int count, char** words) {
  LabelIsLaidOutAndDrawn();
  ExceptionsCrossTheBoundary();
  if (count > 1 && std::strcmp(words[1], "installed") == 0) InstalledDataAreFound();
  if (failures == 0) std::printf("consumer: all is well\n");
  return failures == 0 ? 0 : 1;
}
