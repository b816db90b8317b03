// Bitmaps: copies beside shared pointers, pixels beside memcpy and a plain loop, a photograph of a
// million pixels reduced to 256 colours beside Pillow and libimagequant, conversions of colours.
// The rows of the photograph tell their error, too: "dB", of the mapped picture.

#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/ColorConvert.h>
#include <velum/colour/ColorFormat.h>
#include <velum/colour/Dib.h>
#include <velum/colour/MedianCut.h>
#include <examples/palette/Histogram.h>
#include <examples/palette/Image.h>
#include <examples/palette/ImageFile.h>
#include <examples/palette/ImageSurface.h>
#include <examples/palette/NearestColor.h>
#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>
#include <cairo.h>
#include <libimagequant.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using vlm::palette::Image;

// One block for several holders.

void CopyDib(benchmark::State& state) {
  const vlm::CDib dib(640, 480, 24, 0);
  for (auto _ : state) {
    const vlm::CDib copy(dib);
    benchmark::DoNotOptimize(copy.GetBits());
  }
}
BENCHMARK(CopyDib)->Name("Share/velum/copy of a bitmap");

void CopySharedPointer(benchmark::State& state) {
  const auto bits = std::make_shared<std::vector<unsigned char>>(640 * 480 * 3);
  for (auto _ : state) {
    const std::shared_ptr<std::vector<unsigned char>> copy(bits);
    benchmark::DoNotOptimize(copy.get());
  }
}
BENCHMARK(CopySharedPointer)->Name("Share/sharedPtr/copy of a bitmap");

// Pixels from one row to another; "pixels" is how many a second.

constexpr int kPixels = 1 << 16;

// The two do not lie alike in their pages, where a processor takes one for the other.
struct Rows {
  std::vector<unsigned char> srcBytes = std::vector<unsigned char>(4 * kPixels + 8, 0xA5);
  std::vector<unsigned char> dstBytes = std::vector<unsigned char>(4 * kPixels + 2008, 0x3C);
  const unsigned char* src = srcBytes.data();
  unsigned char* dst = dstBytes.data() + 2000;
};

void CountPixels(benchmark::State& state) {
  state.counters["pixels"] =
      benchmark::Counter(kPixels, benchmark::Counter::kIsIterationInvariantRate);
}

void CopyWithVelum(benchmark::State& state, vlm::ColorFormat format, int from, int to) {
  Rows rows;
  for (auto _ : state) {
    vlm::CopyPixels(rows.dst, to, rows.src, from, kPixels, format);
    benchmark::DoNotOptimize(rows.dst);
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

void CopyWithMemcpy(benchmark::State& state, std::size_t bits) {
  Rows rows;
  for (auto _ : state) {
    std::memcpy(rows.dst + 1, rows.src + 3, kPixels * bits / 8);
    benchmark::DoNotOptimize(rows.dst);
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

// One pixel after the other, of 1 or 4 bits.
template <int bits, int from, int to>
void CopyOneByOne(benchmark::State& state) {
  Rows rows;
  constexpr unsigned kMask = (1U << bits) - 1;
  for (auto _ : state) {
    for (int i = 0; i < kPixels; ++i) {
      const int srcBit = (from + i) * bits;
      const int dstBit = (to + i) * bits;
      const unsigned value = rows.src[srcBit / 8] >> (8 - bits - srcBit % 8);
      unsigned char& byte = rows.dst[dstBit / 8];
      const int shift = 8 - bits - dstBit % 8;
      byte = static_cast<unsigned char>((byte & ~(kMask << shift)) | (value & kMask) << shift);
    }
    benchmark::DoNotOptimize(rows.dst);
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

BENCHMARK_CAPTURE(CopyWithVelum, whole, vlm::ColorFormatBGR24, 1, 3)->Name("Pixels/velum/24 bits");
BENCHMARK_CAPTURE(CopyWithMemcpy, whole, 24)->Name("Pixels/memcpy/24 bits");
BENCHMARK_CAPTURE(CopyWithVelum, byte, vlm::ColorFormatIndexed8, 1, 3)->Name("Pixels/velum/8 bits");
BENCHMARK_CAPTURE(CopyWithMemcpy, byte, 8)->Name("Pixels/memcpy/8 bits");
BENCHMARK_CAPTURE(CopyWithVelum, bit, vlm::ColorFormatIndexed1, 3, 6)
    ->Name("Pixels/velum/1 bit, places that differ");
BENCHMARK_TEMPLATE(CopyOneByOne, 1, 3, 6)->Name("Pixels/loop/1 bit, places that differ");
BENCHMARK_CAPTURE(CopyWithVelum, nibble, vlm::ColorFormatIndexed4, 1, 2)
    ->Name("Pixels/velum/4 bits, places that differ");
BENCHMARK_TEMPLATE(CopyOneByOne, 4, 1, 2)->Name("Pixels/loop/4 bits, places that differ");
BENCHMARK_CAPTURE(CopyWithVelum, alike, vlm::ColorFormatIndexed1, 3, 11)
    ->Name("Pixels/velum/1 bit, places alike");
BENCHMARK_CAPTURE(CopyWithMemcpy, alike, 1)->Name("Pixels/memcpy/1 bit, places alike");

constexpr int kSide = 1024;
constexpr unsigned kColors = 256;

/// The photograph of the example, enlarged to 1024 by 1024 pixels.
const Image& Photograph() {
  static const Image photograph = [] {
    const Image small = vlm::palette::ReadImage(VELUM_PHOTOGRAPH);
    const vlm::examples::SurfacePtr from = vlm::palette::SurfaceOf(small);
    const vlm::examples::SurfacePtr to(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, kSide, kSide));
    const vlm::examples::ContextPtr context(cairo_create(to.get()));
    cairo_scale(context.get(), double{kSide} / small.width, double{kSide} / small.height);
    cairo_set_source_surface(context.get(), from.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context.get()), CAIRO_FILTER_BILINEAR);
    cairo_pattern_set_extend(cairo_get_source(context.get()), CAIRO_EXTEND_PAD);
    cairo_paint(context.get());
    cairo_surface_flush(to.get());
    Image image{kSide, kSide, std::vector<vlm::RGBQUAD>(kSide * kSide)};
    std::memcpy(image.pixels.data(), cairo_image_surface_get_data(to.get()),
                image.pixels.size() * sizeof(vlm::RGBQUAD));
    for (vlm::RGBQUAD& pixel : image.pixels) pixel.rgbReserved = 0;
    return image;
  }();
  return photograph;
}

void TellError(benchmark::State& state, double meanSquaredError) {
  state.counters["mse"] = meanSquaredError;
  state.counters["dB"] = vlm::palette::Decibels(meanSquaredError);
}

void ReduceWithVelum(benchmark::State& state) {
  const Image& photograph = Photograph();
  vlm::palette::IndexedImage mapped;
  for (auto _ : state) {
    std::vector<vlm::ColorCount> colors = vlm::palette::CountColors(photograph);
    std::vector<vlm::RGBQUAD> palette;
    vlm::MedianCut(colors, palette, kColors);
    mapped = vlm::palette::MapToNearest(photograph, palette);
  }
  TellError(state, MeanSquaredError(photograph, vlm::palette::ImageOf(mapped)));
}
BENCHMARK(ReduceWithVelum)->Name("Reduce/velum/photograph")->Unit(benchmark::kMillisecond);

// Each part by itself; the parts have no peers.
void CountPhotograph(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<vlm::ColorCount> colors = vlm::palette::CountColors(Photograph());
    benchmark::DoNotOptimize(colors.data());
    state.counters["colours"] = static_cast<double>(colors.size());
  }
}
BENCHMARK(CountPhotograph)->Name("Reduce/velum/count alone")->Unit(benchmark::kMillisecond);

void CutPhotograph(benchmark::State& state) {
  const std::vector<vlm::ColorCount> counted = vlm::palette::CountColors(Photograph());
  std::vector<vlm::RGBQUAD> palette;
  for (auto _ : state) {
    std::vector<vlm::ColorCount> colors = counted;
    vlm::MedianCut(colors, palette, kColors);
    benchmark::DoNotOptimize(palette.data());
  }
}
BENCHMARK(CutPhotograph)->Name("Reduce/velum/cut alone")->Unit(benchmark::kMillisecond);

void ReduceWithImagequant(benchmark::State& state) {
  const Image& photograph = Photograph();
  std::vector<liq_color> pixels;
  for (const vlm::RGBQUAD& pixel : photograph.pixels) {
    pixels.push_back({pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue, 255});
  }
  vlm::palette::IndexedImage mapped{kSide, kSide, {}, {}};
  mapped.indices.resize(pixels.size());
  for (auto _ : state) {
    liq_attr* const attributes = liq_attr_create();
    liq_set_max_colors(attributes, kColors);
    liq_image* const image = liq_image_create_rgba(attributes, pixels.data(), kSide, kSide, 0);
    liq_result* result = nullptr;
    if (liq_image_quantize(image, attributes, &result) != LIQ_OK) {
      state.SkipWithError("libimagequant fails");
      break;
    }
    liq_set_dithering_level(result, 0);
    liq_write_remapped_image(result, image, mapped.indices.data(), mapped.indices.size());
    const liq_palette* const palette = liq_get_palette(result);
    mapped.palette.clear();
    for (unsigned i = 0; i < palette->count; ++i) {
      const liq_color& color = palette->entries[i];
      mapped.palette.push_back({color.b, color.g, color.r, 0});
    }
    liq_result_destroy(result);
    liq_image_destroy(image);
    liq_attr_destroy(attributes);
  }
  TellError(state, MeanSquaredError(photograph, vlm::palette::ImageOf(mapped)));
}
BENCHMARK(ReduceWithImagequant)
    ->Name("Reduce/imagequant/photograph")
    ->Unit(benchmark::kMillisecond);

// Pillow runs in a process of its own, which reads the pixels from a file and tells the processor
// time of the reduction and its error.
void ReduceWithPillow(benchmark::State& state) {
  const vlm::testing::TemporaryFolder folder;
  const std::string file = folder.Path("photograph.rgb");
  {
    std::ofstream out(file, std::ios::binary);
    for (const vlm::RGBQUAD& pixel : Photograph().pixels) {
      const char rgb[] = {static_cast<char>(pixel.rgbRed), static_cast<char>(pixel.rgbGreen),
                          static_cast<char>(pixel.rgbBlue)};
      out.write(rgb, sizeof(rgb));
    }
  }
  const std::string command = std::string(VELUM_SYSTEM_PYTHON " " VELUM_PILLOW_SCRIPT " ") + file +
                              " " + std::to_string(kSide) + " " + std::to_string(kColors);
  double error = 0;
  for (auto _ : state) {
    double seconds = 0;
    FILE* const child = ::popen(command.c_str(), "r");
    const bool told = child && std::fscanf(child, "%lf %lf", &seconds, &error) == 2;
    if (child) ::pclose(child);
    if (!told) {
      state.SkipWithError("Pillow says nothing");
      break;
    }
    state.SetIterationTime(seconds);
  }
  TellError(state, error);
}
BENCHMARK(ReduceWithPillow)
    ->Name("Reduce/pillow/photograph")
    ->UseManualTime()
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);

// Colours, a million in each row.

constexpr std::size_t kColours = 1000000;

template <class Color>
struct Colours {
  Colours() : a(kColours), b(kColours) {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < kColours; ++i) {
      a[i] = Color(vlm::Color4b(random() & 0xFFFFFF, 255));
      b[i] = Color(vlm::Color4b(random() & 0xFFFFFF, 200));
    }
  }
  std::vector<Color> a, b;
};

template <class Color, vlm::ColorInterpolation::InterpMethod method>
void Interpolate(benchmark::State& state) {
  Colours<Color> colours;
  for (auto _ : state) {
    for (std::size_t i = 0; i < kColours; ++i) {
      colours.b[i].Interpolate(colours.a[i], colours.b[i], 0.25, method);
    }
    benchmark::DoNotOptimize(colours.b.data());
  }
}
BENCHMARK_TEMPLATE(Interpolate, vlm::Color4b, vlm::Color4b::Linear)
    ->Name("Colours/velum/blend of bytes, 1e6")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(Interpolate, vlm::Color4f, vlm::Color4b::Linear)
    ->Name("Colours/velum/blend of floats, 1e6")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(Interpolate, vlm::Color4b, vlm::Color4b::HueShort)
    ->Name("Colours/velum/blend by hue, 1e6")
    ->Unit(benchmark::kMicrosecond);

void ToHslAndBack(benchmark::State& state) {
  Colours<vlm::Color4b> colours;
  for (auto _ : state) {
    for (vlm::Color4b& color : colours.a) {
      double h = 0, s = 0, l = 0;
      color.GetHSL(h, s, l);
      color.SetHSL(h, s, l, 1);
    }
    benchmark::DoNotOptimize(colours.a.data());
  }
}
BENCHMARK(ToHslAndBack)->Name("Colours/velum/HSL and back, 1e6")->Unit(benchmark::kMicrosecond);

void ToFloatsAndBack(benchmark::State& state) {
  Colours<vlm::Color4b> colours;
  for (auto _ : state) {
    for (vlm::Color4b& color : colours.a) color = vlm::Color4b(vlm::Color4f(color));
    benchmark::DoNotOptimize(colours.a.data());
  }
}
BENCHMARK(ToFloatsAndBack)
    ->Name("Colours/velum/floats and back, 1e6")
    ->Unit(benchmark::kMicrosecond);

void ToQuads(benchmark::State& state) {
  Colours<vlm::Color4b> colours;
  std::vector<vlm::RGBQUAD> quads(kColours);
  for (auto _ : state) {
    vlm::CopyColor4bToRGBQUAD(quads.data(), colours.a.data(), int{kColours}, true);
    benchmark::DoNotOptimize(quads.data());
  }
}
BENCHMARK(ToQuads)->Name("Colours/velum/to palette entries, 1e6")->Unit(benchmark::kMicrosecond);

}  // namespace
