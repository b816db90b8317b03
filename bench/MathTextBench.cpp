// Math text beside Pango's markup: the same visible text, laid out and measured. The device here
// has fixed measures, so what is timed is the library; Pango's font is warm, so what is timed there
// is markup, shaping and layout.
#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTParser.h>
#include <testing/FixedTextDevice.h>
#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>
#include <memory>
#include <string>

namespace {

using namespace vlm;  // but GLib has a GString, too

constexpr const char* kLabel = "\\b Catchment area\\plain  in \\red km{\\up40 \\fs70 2}";
constexpr const char* kMarkup =
    "<b>Catchment area</b> in <span foreground=\"red\">km<sup>2</sup></span>";

constexpr const char* kLabel40 = "Q{\\dn20 \\fs70 max}\\b flow, in m\\up40 3/s";
constexpr const char* kMarkup40 = "Q<sub>max</sub><b>flow, in m<sup>3/s</sup></b>";

// So many copies of a text, one to a line, as fill a number of bytes.
std::string Filled(const std::string& line, std::size_t bytes) {
  std::string text = line;
  while (text.size() < bytes) text += "\n" + line;
  return text;
}

class NullScanner : public IMathTextScanner {
  void Text(const char* text) override { benchmark::DoNotOptimize(text); }
  void CharCode(unsigned int) override {}
  void Newline() override {}
  void Facename(const char*) override {}
  void FontSize(double) override {}
  void PredefinedColor(const Color4b&) override {}
  void Color(const Color4b&) override {}
  void ColorComponent(unsigned int, unsigned int) override {}
  void Bold() override {}
  void Italic() override {}
  void StrikeThrough() override {}
  void Underline() override {}
  void Plain() override {}
  void DateTime(const char*) override {}
  void VerticalOffset(double) override {}
  void SavePosition(unsigned int) override {}
  void RestorePosition(unsigned int) override {}
  void PushState() override {}
  void PopState() override {}
  void BeginSubstring(double, double, HAlignment, VAlignment) override {}
  void EndSubstring() override {}
  void Line(double, double, IMathTextScanner::Side) override {}
  void Error(const char*) override {}
};

class PangoLabel {
 public:
  PangoLabel()
      : context_(pango_font_map_create_context(pango_cairo_font_map_get_default())),
        layout_(pango_layout_new(context_)),
        font_(pango_font_description_from_string("Sans 12")) {
    pango_layout_set_font_description(layout_, font_);
    SetMarkup(kMarkup);
    Measure();
  }
  PangoLabel(const PangoLabel&) = delete;
  PangoLabel& operator=(const PangoLabel&) = delete;
  ~PangoLabel() {
    pango_font_description_free(font_);
    g_object_unref(layout_);
    g_object_unref(context_);
  }

  void SetMarkup(const char* markup) { pango_layout_set_markup(layout_, markup, -1); }
  void Measure() {
    PangoRectangle ink;
    PangoRectangle logical;
    pango_layout_get_extents(layout_, &ink, &logical);
    benchmark::DoNotOptimize(ink);
  }

 private:
  PangoContext* context_;
  PangoLayout* layout_;
  PangoFontDescription* font_;
};

void ParseAndBoxVelum(benchmark::State& state) {
  testing::FixedTextDevice device;
  CMTTextIF textIF(device);
  const vlm::GString label(kLabel);
  for (auto _ : state) {
    CMTContext context(textIF, 8.0);
    std::shared_ptr<CMTMultiLineElement> block;
    if (context.Parse(label, block) != CMTContext::RETVAL_SUCCESS) state.SkipWithError("Parse");
    benchmark::DoNotOptimize(block->GetBBoxUsingTextIF(textIF, Vec2d()));
  }
}
BENCHMARK(ParseAndBoxVelum)->Name("ParseAndBox/velum/label");

void ParseAndBoxPango(benchmark::State& state) {
  PangoLabel label;
  for (auto _ : state) {
    label.SetMarkup(kMarkup);
    label.Measure();
  }
}
BENCHMARK(ParseAndBoxPango)->Name("ParseAndBox/peer/label");

void WarmBoxVelum(benchmark::State& state) {
  testing::FixedTextDevice device;
  CMTTextIF textIF(device);
  CMTContext context(textIF, 8.0);
  std::shared_ptr<CMTMultiLineElement> block;
  (void)context.Parse(kLabel, block);
  for (auto _ : state) benchmark::DoNotOptimize(block->GetBBoxUsingTextIF(textIF, Vec2d()));
}
BENCHMARK(WarmBoxVelum)->Name("BoxAgain/velum/label");
// What a caller without kept measures pays, and what Pango's kept layout costs.
BENCHMARK(ParseAndBoxPango)->Name("BoxAgain/peer/label");

void WarmBoxPango(benchmark::State& state) {
  PangoLabel label;
  for (auto _ : state) label.Measure();
}
BENCHMARK(WarmBoxPango)->Name("BoxAgain/peer/kept_layout");

void ScanVelum(benchmark::State& state) {
  const std::string text = Filled(kLabel40, static_cast<std::size_t>(state.range(0)));
  NullScanner scanner;
  for (auto _ : state) {
    if (!ScanMathText(text.c_str(), scanner)) state.SkipWithError("ScanMathText");
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(ScanVelum)->Name("Scan/velum/bytes")->Arg(40)->Arg(4096)->Arg(1000000);

void ScanPango(benchmark::State& state) {
  const std::string text = Filled(kMarkup40, static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    PangoAttrList* attributes = nullptr;
    char* plain = nullptr;
    if (!pango_parse_markup(text.c_str(), static_cast<int>(text.size()), 0, &attributes, &plain,
                            nullptr, nullptr))
      state.SkipWithError("pango_parse_markup");
    pango_attr_list_unref(attributes);
    g_free(plain);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(ScanPango)->Name("Scan/peer/bytes")->Arg(40)->Arg(4096);

}  // namespace
