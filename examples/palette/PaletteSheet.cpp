#include <examples/palette/PaletteSheet.h>

#include <velum/colour/Color4b.h>
#include <velum/core/StringFormat.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Picture.h>
#include <examples/palette/ImageSurface.h>
#include <examples/palette/Quantized.h>
#include <examples/palette/Report.h>

#include <cairo.h>

#include <algorithm>
#include <cstddef>

namespace vlm::palette {
namespace {

using examples::Align;
using examples::DrawText;
using examples::kPale;

constexpr double kMargin = 18.0;
constexpr double kGap = 14.0;
constexpr double kHead = 46.0;
constexpr double kCaption = 18.0;  // above a picture
constexpr double kStrip = 12.0;    // of a palette, below a picture
constexpr double kPixel = 0.5;     // a PNG has two pixels to the point
constexpr double kLeastWidth = 150.0;
constexpr unsigned kSizes[] = {256, 16, 4};

void FillBox(cairo_t* context, const Vec2d& corner, const Vec2d& size, const RGBQUAD& color) {
  cairo_rectangle(context, corner.x, corner.y, size.x, size.y);
  examples::SetSourceColor(context, Color4b(color, ALPHA_MAX));
  cairo_fill(context);
}

/// Brightest colours last, so that the strips of different palettes are alike.
std::vector<RGBQUAD> ByBrightness(std::vector<RGBQUAD> palette) {
  std::stable_sort(palette.begin(), palette.end(), [](const RGBQUAD& a, const RGBQUAD& b) {
    return Color4b(a, ALPHA_MAX).Intensity() < Color4b(b, ALPHA_MAX).Intensity();
  });
  return palette;
}

class Sheet {
 public:
  Sheet(const Image& image, std::string name) : image_(image), name_(std::move(name)) {
    for (const unsigned size : kSizes) {
      for (const bool diffuses : {false, true}) {
        parts_.push_back(Quantize(image, size, diffuses));
      }
    }
  }

  [[nodiscard]] double Width() const { return 2.0 * kMargin + 4.0 * Cell() + 3.0 * kGap; }
  [[nodiscard]] double Height() const { return kHead + 2.0 * Row() + kMargin; }

  void Draw(cairo_t* context) const {
    DrawText(context, Vec2d(kMargin, 24.0), {"{\\b " + examples::Verbatim(name_) + "}", 13.0});
    DrawText(context, Vec2d(kMargin, 38.0),
             {ToString("%d × %d pixels, %d colours; palettes by median cut", image_.width,
                       image_.height, static_cast<int>(parts_[0].coloursBefore)),
              9.0, Align::Left, kPale});
    DrawPart(context, 0, 0, "the original", image_, {});
    for (std::size_t i = 0; i < parts_.size(); ++i) {
      const Quantized& part = parts_[i];
      const std::string caption =
          ToString("{\\b %d colours}%s", static_cast<int>(part.image.palette.size()),
                   i % 2 == 0 ? "" : ", diffused") +
          (part.meanSquaredError > 0.0 ? ToString(", %.1f dB", Decibels(part.meanSquaredError))
                                       : std::string(", exact"));
      DrawPart(context, i / 2 + 1, i % 2, caption, ImageOf(part.image), part.image.palette);
    }
    DrawNames(context);
  }

 private:
  [[nodiscard]] double Cell() const { return std::max(image_.width * kPixel, kLeastWidth); }
  [[nodiscard]] double Row() const {
    return std::max(kCaption + image_.height * kPixel + kStrip + kGap, 17.0 * 12.0);
  }
  [[nodiscard]] Vec2d Corner(std::size_t column, std::size_t row) const {
    return Vec2d(kMargin + static_cast<double>(column) * (Cell() + kGap),
                 kHead + static_cast<double>(row) * Row());
  }

  void DrawPart(cairo_t* context, std::size_t column, std::size_t row, const std::string& caption,
                const Image& image, const std::vector<RGBQUAD>& palette) const {
    const Vec2d at = Corner(column, row);
    DrawText(context, at + Vec2d(0.0, 13.0), {caption, 9.0, Align::Left, examples::kInk, Cell()});
    const examples::SurfacePtr surface = SurfaceOf(image);
    cairo_save(context);
    cairo_translate(context, at.x, at.y + kCaption);
    cairo_scale(context, kPixel, kPixel);
    cairo_set_source_surface(context, surface.get(), 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    cairo_paint(context);
    cairo_restore(context);
    const double width = image.width * kPixel / static_cast<double>(palette.size());
    const std::vector<RGBQUAD> strip = ByBrightness(palette);
    cairo_save(context);
    cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
    for (std::size_t i = 0; i < strip.size(); ++i) {
      const double left = at.x + static_cast<double>(i) * width;
      FillBox(context, Vec2d(left, at.y + kCaption + image.height * kPixel + 2.0),
              Vec2d(width, kStrip - 4.0), strip[i]);
    }
    cairo_restore(context);
  }

  // The sixteen colours, where the lower row has no original.
  void DrawNames(cairo_t* context) const {
    const Quantized& sixteen = parts_[2];
    const Vec2d at = Corner(0, 1);
    DrawText(context, at + Vec2d(0.0, 13.0), {"the 16 colours, and the nearest names", 9.0});
    for (std::size_t i = 0; i < sixteen.image.palette.size(); ++i) {
      const RGBQUAD& color = sixteen.image.palette[i];
      const Vec2d line = at + Vec2d(0.0, kCaption + static_cast<double>(i) * 12.0);
      FillBox(context, line, Vec2d(22.0, 10.5), color);
      const double share = 100.0 * static_cast<double>(sixteen.frequency[i]) /
                           static_cast<double>(image_.pixels.size());
      DrawText(context, line + Vec2d(54.0, 8.5),
               {ToString("%.1f %%", share), 8.0, Align::Right, kPale});
      DrawText(context, line + Vec2d(60.0, 8.5),
               {examples::Verbatim(NearestName(color)), 8.5, Align::Left, examples::kInk,
                Cell() - 60.0});
    }
  }

  const Image& image_;
  std::string name_;
  std::vector<Quantized> parts_;
};

}  // namespace

void DrawSheet(const Image& image, const std::string& name, const std::string& path) {
  const Sheet sheet(image, name);
  examples::WritePicture(path, sheet.Width(), sheet.Height(),
                         [&](cairo_t* context) { sheet.Draw(context); });
}

}  // namespace vlm::palette
