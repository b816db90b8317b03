// Text in several scripts, made ready to draw: taken apart by direction, script and face, its
// glyphs looked up. The peer is Pango, which shapes every run and keeps the places of the glyphs;
// Velum shapes what a look at a table can't tell.

#include <velum/fonts/SystemFaceInfo.h>
#include <velum/fonts/UCS2Decomp.h>

#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

#include <cstddef>
#include <memory>
#include <string>

namespace {

/// 100 characters: Latin, Hebrew, Arabic with a number, Greek, Cyrillic.
constexpr wchar_t kText[] =
    L"Depth \u05E2\u05D5\u05DE\u05E7 \u05D4\u05DE\u05D9\u05DD and \u0639\u0645\u0642 "
    L"\u0627\u0644\u0645\u0627\u0621 1250 m, "
    L"\u0392\u03AC\u03B8\u03BF\u03C2 \u03B8\u03AC\u03BB\u03B1\u03C3\u03C3\u03B1\u03C2, "
    L"\u0413\u043B\u0443\u0431\u0438\u043D\u0430 \u043C\u043E\u0440\u044F, sounded by hand, by "
    L"line, twice.";
static_assert(sizeof kText / sizeof(wchar_t) == 101);

class CountingSink : public vlm::UCS2DecompIF {
 public:
  void BeginDecomp() override {}
  void EndDecomp() override {}
  void SubText(const vlm::UCS2DecompSubSet& piece) override { count += piece.GetString().size(); }

  std::size_t count = 0;
};

void DecomposeWithVelum(benchmark::State& state, const char* faceName) {
  auto& faces = vlm::CSystemFaceInfo::GetInstance();
  const int index = faces.Match(faceName, 400, 0, 0, 0, 3, 1);
  const auto face = faces.GetFaceInfo(static_cast<unsigned int>(index));
  if (face->GetFaceName() != faceName) return state.SkipWithError("the face is not installed");
  const std::wstring text = kText;
  vlm::UCS2Decomp decomp;
  CountingSink sink;
  for (auto _ : state) {
    if (!decomp.SetupDecomp(text)) state.SkipWithError("the text was refused");
    decomp.Decompose(sink, face, vlm::DECOMP_CHECK_GLYPHS);
    benchmark::DoNotOptimize(sink.count);
  }
}

void DecomposeWithPango(benchmark::State& state, const char* faceName) {
  std::string text;
  for (const wchar_t* at = kText; *at != 0; ++at) {
    char bytes[6];
    text.append(bytes,
                static_cast<std::size_t>(g_unichar_to_utf8(static_cast<gunichar>(*at), bytes)));
  }
  const std::unique_ptr<PangoContext, void (*)(void*)> context(
      pango_font_map_create_context(pango_cairo_font_map_get_default()), g_object_unref);
  PangoFontDescription* const description = pango_font_description_new();
  pango_font_description_set_family(description, faceName);
  pango_font_description_set_size(description, 12 * PANGO_SCALE);
  pango_context_set_font_description(context.get(), description);
  pango_font_description_free(description);
  const std::unique_ptr<PangoAttrList, void (*)(PangoAttrList*)> attributes(pango_attr_list_new(),
                                                                            pango_attr_list_unref);
  const std::unique_ptr<PangoGlyphString, void (*)(PangoGlyphString*)> glyphs(
      pango_glyph_string_new(), pango_glyph_string_free);
  int count = 0;
  for (auto _ : state) {
    GList* const items = pango_itemize(context.get(), text.c_str(), 0,
                                       static_cast<int>(text.size()), attributes.get(), nullptr);
    for (GList* at = items; at; at = at->next) {
      auto* const item = static_cast<PangoItem*>(at->data);
      pango_shape(text.c_str() + item->offset, item->length, &item->analysis, glyphs.get());
      count += item->num_chars;
      pango_item_free(item);
    }
    g_list_free(items);
    benchmark::DoNotOptimize(count);
  }
}

BENCHMARK_CAPTURE(DecomposeWithVelum, one, "DejaVu Sans")
    ->Name("Decompose/velum/mixed text of 100 characters, one face");
BENCHMARK_CAPTURE(DecomposeWithPango, one, "DejaVu Sans")
    ->Name("Decompose/peer/mixed text of 100 characters, one face");
// The face has no Arabic letters.
BENCHMARK_CAPTURE(DecomposeWithVelum, two, "Liberation Sans")
    ->Name("Decompose/velum/mixed text of 100 characters, two faces");
BENCHMARK_CAPTURE(DecomposeWithPango, two, "Liberation Sans")
    ->Name("Decompose/peer/mixed text of 100 characters, two faces");

}  // namespace
