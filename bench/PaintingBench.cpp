// Painting: mappings of a million points beside a plain loop, texts beside bare Pango, shapes
// beside bare Cairo, a chart-like picture as PNG beside Cairo's own writer.

#include <velum/core/WideText.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/diagnostics/GdiPlusUtil.h>
#include <velum/diagnostics/MapMode.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

namespace Gdiplus = vlm::Gdiplus;
using vlm::POINT;

constexpr int kPoints = 1000000;

std::vector<POINT> Points() {
  std::mt19937 random(1);
  std::uniform_int_distribution<std::int32_t> coordinate(-30000, 30000);
  std::vector<POINT> points(kPoints);
  for (POINT& point : points) point = {coordinate(random), coordinate(random)};
  return points;
}

void MapVelum(benchmark::State& state) {
  const std::vector<POINT> points = Points();
  std::vector<POINT> mapped(points.size());
  vlm::GMapMode mapping;
  mapping.SetMapMode(vlm::MM_LOMETRIC, 320, 240, 1024, 768);
  for (auto _ : state) {
    mapped = points;
    mapping.LPtoDP(mapped.data(), kPoints);
    benchmark::DoNotOptimize(mapped.data());
  }
}
BENCHMARK(MapVelum)->Name("LPtoDP/velum/million points")->Unit(benchmark::kMicrosecond);

// The same arithmetic; what does not fit into 32 bits is undefined here.
void MapPlain(benchmark::State& state) {
  const std::vector<POINT> points = Points();
  std::vector<POINT> mapped(points.size());
  double ratioX = 1024 / 3200.0;
  double ratioY = -768 / 2400.0;
  benchmark::DoNotOptimize(ratioX);
  benchmark::DoNotOptimize(ratioY);
  const auto round = [](double x) { return static_cast<std::int32_t>(x >= 0 ? x + 0.5 : x - 0.5); };
  for (auto _ : state) {
    mapped = points;
    for (POINT& point : mapped) point = {round(point.x * ratioX), round(point.y * ratioY)};
    benchmark::DoNotOptimize(mapped.data());
  }
}
BENCHMARK(MapPlain)->Name("LPtoDP/plain loop/million points")->Unit(benchmark::kMicrosecond);

// The labels of an axis, a number each.
std::vector<std::string> Labels() {
  std::vector<std::string> labels;
  for (int i = 0; i < 16; ++i) labels.push_back(std::to_string(125 * i) + ".5");
  return labels;
}

void MeasureVelum(benchmark::State& state) {
  std::vector<std::wstring> labels;
  for (const std::string& label : Labels()) labels.emplace_back(label.begin(), label.end());
  Gdiplus::Bitmap bitmap(100, 100);
  Gdiplus::Graphics graphics(&bitmap);
  const Gdiplus::Font font(L"DejaVu Sans", 10);
  for (auto _ : state) {
    for (const std::wstring& label : labels) {
      Gdiplus::RectF box;
      graphics.MeasureString(label.c_str(), -1, &font, Gdiplus::PointF(), &box);
      benchmark::DoNotOptimize(box);
    }
  }
}
BENCHMARK(MeasureVelum)->Name("MeasureString/velum/16 labels")->Unit(benchmark::kMicrosecond);

PangoLayout* BareLayout(cairo_t* context) {
  PangoLayout* const layout = pango_cairo_create_layout(context);
  PangoFontDescription* const description = pango_font_description_from_string("DejaVu Sans 10");
  pango_layout_set_font_description(layout, description);
  pango_font_description_free(description);
  return layout;
}

cairo_t* Context(int width, int height) {
  cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
  cairo_t* const context = cairo_create(surface);
  cairo_surface_destroy(surface);
  return context;
}

void MeasurePango(benchmark::State& state) {
  const std::vector<std::string> labels = Labels();
  cairo_t* const context = Context(100, 100);
  PangoLayout* const layout = BareLayout(context);
  for (auto _ : state) {
    for (const std::string& label : labels) {
      pango_layout_set_text(layout, label.c_str(), -1);
      PangoRectangle box;
      pango_layout_get_extents(layout, nullptr, &box);
      benchmark::DoNotOptimize(box);
    }
  }
  g_object_unref(layout);
  cairo_destroy(context);
}
BENCHMARK(MeasurePango)->Name("MeasureString/pango/16 labels")->Unit(benchmark::kMicrosecond);

void DrawVelum(benchmark::State& state) {
  std::vector<std::wstring> labels;
  for (const std::string& label : Labels()) labels.emplace_back(label.begin(), label.end());
  Gdiplus::Bitmap bitmap(800, 600);
  Gdiplus::Graphics graphics(&bitmap);
  const Gdiplus::Font font(L"DejaVu Sans", 10);
  const Gdiplus::SolidBrush ink{Gdiplus::Color(0xFF000000)};
  for (auto _ : state) {
    float y = 0;
    for (const std::wstring& label : labels) {
      graphics.DrawString(label.c_str(), -1, &font, Gdiplus::PointF(10.3f, y += 30), nullptr, &ink);
    }
  }
}
BENCHMARK(DrawVelum)->Name("DrawString/velum/16 labels")->Unit(benchmark::kMicrosecond);

// As outlines, as Velum draws them, and as bitmaps of glyphs, which lie on whole pixels.
void DrawPango(benchmark::State& state, bool asOutlines) {
  const std::vector<std::string> labels = Labels();
  cairo_t* const context = Context(800, 600);
  PangoLayout* const layout = BareLayout(context);
  for (auto _ : state) {
    double y = 0;
    for (const std::string& label : labels) {
      pango_layout_set_text(layout, label.c_str(), -1);
      cairo_move_to(context, 10.3, y += 30);
      if (asOutlines) {
        pango_cairo_layout_path(context, layout);
        cairo_fill(context);
      } else {
        pango_cairo_show_layout(context, layout);
      }
    }
  }
  g_object_unref(layout);
  cairo_destroy(context);
}
BENCHMARK_CAPTURE(DrawPango, outlines, true)
    ->Name("DrawString/pango outlines/16 labels")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DrawPango, glyphs, false)
    ->Name("DrawString/pango glyphs/16 labels")
    ->Unit(benchmark::kMicrosecond);

constexpr int kBars = 40;

void BarsVelum(benchmark::State& state) {
  Gdiplus::Bitmap bitmap(800, 600);
  Gdiplus::Graphics graphics(&bitmap);
  const Gdiplus::SolidBrush grey{Gdiplus::Color(0xFFCCCCCC)};
  const Gdiplus::Pen black{Gdiplus::Color(0xFF000000)};
  for (auto _ : state) {
    for (int i = 0; i < kBars; ++i) {
      graphics.FillRectangle(&grey, 20 * i, 500 - 10 * i, 19, 10 * i + 9);
      graphics.DrawRectangle(&black, 20 * i, 500 - 10 * i, 18, 10 * i + 8);
    }
  }
}
BENCHMARK(BarsVelum)->Name("Rectangles/velum/40 bars")->Unit(benchmark::kMicrosecond);

void BarsCairo(benchmark::State& state) {
  cairo_t* const context = Context(800, 600);
  for (auto _ : state) {
    for (int i = 0; i < kBars; ++i) {
      cairo_set_source_rgb(context, 0.8, 0.8, 0.8);
      cairo_rectangle(context, 20 * i, 500 - 10 * i, 19, 10 * i + 9);
      cairo_fill(context);
      cairo_set_source_rgb(context, 0, 0, 0);
      cairo_set_line_width(context, 1);
      cairo_rectangle(context, 20 * i + 0.5, 500.5 - 10 * i, 18, 10 * i + 8);
      cairo_stroke(context);
    }
  }
  cairo_destroy(context);
}
BENCHMARK(BarsCairo)->Name("Rectangles/cairo/40 bars")->Unit(benchmark::kMicrosecond);

void PaintChart(Gdiplus::Graphics& graphics) {
  const Gdiplus::SolidBrush white{Gdiplus::Color(0xFFFFFFFF)};
  const Gdiplus::SolidBrush grey{Gdiplus::Color(0xFFCCCCCC)};
  const Gdiplus::Pen black{Gdiplus::Color(0xFF000000)};
  const Gdiplus::Pen red{Gdiplus::Color(0xFFFF0000)};
  const Gdiplus::Font font(L"DejaVu Sans", 10);
  graphics.FillRectangle(&white, 0, 0, 800, 600);
  for (int i = 0; i < kBars; ++i) {
    graphics.FillRectangle(&grey, 20 * i, 500 - 10 * i, 19, 10 * i + 9);
    graphics.DrawRectangle(&black, 20 * i, 500 - 10 * i, 18, 10 * i + 8);
    graphics.DrawLine(&red, 20 * i, 500 - 3 * i, 20 * i + 20, 500 - 3 * i - 3);
  }
  const Gdiplus::SolidBrush ink{Gdiplus::Color(0xFF000000)};
  for (int i = 0; i < 16; ++i) {
    graphics.DrawString(L"123.5", -1, &font, {static_cast<float>(50 * i), 520.f}, nullptr, &ink);
  }
}

void SaveVelum(benchmark::State& state) {
  const vlm::testing::TemporaryFolder folder;
  Gdiplus::Bitmap bitmap(800, 600);
  Gdiplus::Graphics graphics(&bitmap);
  PaintChart(graphics);
  vlm::GUID png;
  vlm::GetEncoderClsid(L"image/png", &png);
  const vlm::AtoW path(folder.Path("a.png"));
  for (auto _ : state) bitmap.Save(path, &png);
}
BENCHMARK(SaveVelum)->Name("Save/velum/800 x 600")->Unit(benchmark::kMicrosecond);

// Cairo writes into the file where it stands and does not wait for the disk.
void SaveCairo(benchmark::State& state) {
  const vlm::testing::TemporaryFolder folder;
  cairo_t* const context = Context(800, 600);
  Gdiplus::Graphics graphics(context);
  PaintChart(graphics);
  const std::string path = folder.Path("a.png");
  for (auto _ : state) cairo_surface_write_to_png(cairo_get_target(context), path.c_str());
  cairo_destroy(context);
}
BENCHMARK(SaveCairo)->Name("Save/cairo/800 x 600")->Unit(benchmark::kMicrosecond);

}  // namespace
