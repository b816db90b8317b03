// Faces beside Pango and fontconfig: the same faces, the same texts.

#include <velum/fonts/PolygonalGlyphCache.h>
#include <velum/fonts/StrokedFace.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <benchmark/benchmark.h>
#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

using vlm::CSystemFaceInfo;
using vlm::FACE_MATCH_ITALIC;
using vlm::FACE_MATCH_NAME;
using vlm::FACE_MATCH_WEIGHT;

constexpr const char* kLabel = "Catchment area (km2)";
static_assert(std::char_traits<char>::length(kLabel) == 20);

// The width of a text that comes anew each time, in a face that has been used before.

void CalcEmExtentVelum(benchmark::State& state) {
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  const int index = faces.Match("DejaVu Sans", 400, 0, 0, 0, FACE_MATCH_NAME, 1);
  const auto face = faces.GetFaceInfo(static_cast<unsigned int>(index));
  for (auto _ : state) {
    const vlm::GString text = kLabel;
    benchmark::DoNotOptimize(text.c_str());
    benchmark::ClobberMemory();
    benchmark::DoNotOptimize(face->CalcEmExtent(text));
  }
}
BENCHMARK(CalcEmExtentVelum)->Name("CalcEmExtent/velum/20bytes");

void CalcEmExtentPango(benchmark::State& state) {
  PangoContext* const context = pango_font_map_create_context(pango_cairo_font_map_get_default());
  PangoLayout* const layout = pango_layout_new(context);
  PangoFontDescription* const font = pango_font_description_from_string("DejaVu Sans 12");
  pango_layout_set_font_description(layout, font);
  for (auto _ : state) {
    pango_layout_set_text(layout, kLabel, -1);
    PangoRectangle box;
    pango_layout_get_extents(layout, nullptr, &box);
    benchmark::DoNotOptimize(box);
  }
  pango_font_description_free(font);
  g_object_unref(layout);
  g_object_unref(context);
}
BENCHMARK(CalcEmExtentPango)->Name("CalcEmExtent/peer/20bytes");

// Which face answers a name: asked twice in a row, or in turn with another name.

void MatchVelum(benchmark::State& state, const char* first, const char* second) {
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  const std::array<vlm::GString, 2> names{first, second};
  std::size_t turn = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(faces.Match(names[turn ^= 1], 400, 0, 0, 0,
                                         FACE_MATCH_NAME | FACE_MATCH_WEIGHT | FACE_MATCH_ITALIC,
                                         1));
  }
}

// The patterns are made and substituted beforehand: matching alone is timed.
void MatchFontconfig(benchmark::State& state, const char* first, const char* second) {
  FcConfig* const configuration = FcInitLoadConfigAndFonts();
  std::array<FcPattern*, 2> patterns{};
  for (std::size_t i = 0; i < 2; ++i) {
    const auto* const name = reinterpret_cast<const FcChar8*>(i == 0 ? first : second);
    patterns[i] = FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, name, FC_WEIGHT, FcTypeInteger,
                                 FC_WEIGHT_REGULAR, nullptr);
    FcConfigSubstitute(configuration, patterns[i], FcMatchPattern);
    FcDefaultSubstitute(patterns[i]);
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    FcResult result;
    FcPatternDestroy(FcFontMatch(configuration, patterns[turn ^= 1], &result));
  }
  for (FcPattern* const pattern : patterns) FcPatternDestroy(pattern);
  FcConfigDestroy(configuration);
}

BENCHMARK_CAPTURE(MatchVelum, same, "DejaVu Sans", "DejaVu Sans")->Name("Match/velum/same");
BENCHMARK_CAPTURE(MatchFontconfig, same, "DejaVu Sans", "DejaVu Sans")->Name("Match/peer/same");
BENCHMARK_CAPTURE(MatchVelum, exact, "DejaVu Sans", "Liberation Mono")->Name("Match/velum/exact");
BENCHMARK_CAPTURE(MatchFontconfig, exact, "DejaVu Sans", "Liberation Mono")
    ->Name("Match/peer/exact");
BENCHMARK_CAPTURE(MatchVelum, missing, "Nobody Sans", "Nobody Mono")->Name("Match/velum/missing");
BENCHMARK_CAPTURE(MatchFontconfig, missing, "Nobody Sans", "Nobody Mono")
    ->Name("Match/peer/missing");

// What has no peer: a glyph that is kept, and all symbol sets read from their files.

class TriangleBuilder : public vlm::PolygonalGlyphBuilder {
 public:
  TriangleBuilder() : PolygonalGlyphBuilder(CSystemFaceInfo::GetInstance()) {}

  std::unique_ptr<vlm::PolygonalGlyph> DoBuildGlyph(unsigned int,
                                                    unsigned short code) const override {
    auto glyph = std::make_unique<vlm::PolygonalGlyph>(code);
    glyph->Vertices().resize(3);
    glyph->Counts().push_back(3);
    return glyph;
  }
};

void GlyphCacheHit(benchmark::State& state) {
  const TriangleBuilder builder;
  vlm::PolygonalGlyphCache cache(builder, 1 << 20);
  const std::string label = kLabel;
  for (const char c : label) (void)cache.Glyph(0, static_cast<unsigned char>(c), true);
  std::size_t turn = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(cache.Glyph(0, static_cast<unsigned char>(label[turn]), false));
    turn = turn + 1 == label.size() ? 0 : turn + 1;
  }
}
BENCHMARK(GlyphCacheHit)->Name("GlyphCache/velum/hit");

void SymbolSetLoad(benchmark::State& state) {
  (void)CSystemFaceInfo::GetInstance();
  for (auto _ : state) {
    for (const vlm::CSYMSetInfo& set : vlm::g_SYMSetList) {
      benchmark::DoNotOptimize(vlm::CStrokedFace(set.GetIndex()).GetEmSize());
    }
  }
}
BENCHMARK(SymbolSetLoad)->Name("SymbolSets/velum/load28")->Unit(benchmark::kMillisecond);

// All faces listed by a process that has asked for none: this program, run again.

constexpr const char* kStart = "VELUM_BENCH_START";

void ListWithFontconfig() {
  FcConfig* const configuration = FcInitLoadConfigAndFonts();
  FcPattern* const all = FcPatternCreate();
  FcObjectSet* const wanted =
      FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_FILE, FC_INDEX, FC_WEIGHT, FC_SLANT, nullptr);
  benchmark::DoNotOptimize(FcFontList(configuration, all, wanted)->nfont);
}

[[maybe_unused]] const bool isParent = [] {
  const char* const what = std::getenv(kStart);
  if (!what) return true;
  const auto begin = std::chrono::steady_clock::now();
  if (std::strcmp(what, "velum") == 0) {
    benchmark::DoNotOptimize(CSystemFaceInfo::GetInstance().GetNumItems());
  } else {
    ListWithFontconfig();
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  std::printf("%.9f\n", took.count());
  std::fflush(stdout);
  ::_exit(0);
}();

void Start(benchmark::State& state, const char* what) {
  for (auto _ : state) {
    ::setenv(kStart, what, 1);
    const std::string self = "/proc/" + std::to_string(::getpid()) + "/exe";
    double seconds = 0;
    if (FILE* const child = ::popen(self.c_str(), "r")) {
      if (std::fscanf(child, "%lf", &seconds) != 1) state.SkipWithError("the child says nothing");
      ::pclose(child);
    }
    ::unsetenv(kStart);
    state.SetIterationTime(seconds);
  }
}
BENCHMARK_CAPTURE(Start, velum, "velum")
    ->Name("Start/velum/list")
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Start, peer, "peer")
    ->Name("Start/peer/list")
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);

}  // namespace
