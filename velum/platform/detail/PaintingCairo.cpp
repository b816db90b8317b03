#include <velum/platform/detail/Painting.h>

#include <velum/platform/detail/CairoState.h>
#include <velum/platform/detail/TextLayout.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace vlm::platform {

namespace {

constexpr double kFarthest = 1'000'000;
// Cairo's own coordinates end at 2^23 pixels; a shape and its origin may both be as far.
constexpr double kFarthestPixel = 4'000'000;

void SetColor(cairo_t* context, std::uint32_t argb) {
  const auto part = [argb](int shift) { return (argb >> shift & 0xFF) / 255.0; };
  cairo_set_source_rgba(context, part(16), part(8), part(0), part(24));
}

/// Paints on a Cairo context. Pixels lie between whole coordinates there, so that their centres,
/// which the callers name, are half a pixel on.
class CairoPainter final : public Painter {
 public:
  explicit CairoPainter(cairo_t* context) : context_(cairo_reference(context)) {
    cairo_get_matrix(context, &base_);
    cairo_matrix_t toPixels = DeviceMatrix(cairo_get_group_target(context));
    cairo_matrix_multiply(&toPixels, &base_, &toPixels);
    const double scale = std::max(std::abs(toPixels.xx) + std::abs(toPixels.xy),
                                  std::abs(toPixels.yx) + std::abs(toPixels.yy));
    farthest_ = std::min(kFarthest, kFarthestPixel / scale);
    ResetWorld();
  }
  ~CairoPainter() override { cairo_destroy(context_); }

  PaintResult FillRectangle(std::uint32_t argb, const PaintBox& box) override {
    return Fill(argb, [&](cairo_t* context) { AddPixels(context, Near(box)); });
  }

  PaintResult DrawRectangle(const PaintPen& pen, const PaintBox& box) override {
    if (box.width == 0 || box.height == 0) {
      const PaintPoint ends[] = {{box.x, box.y}, {box.x + box.width, box.y + box.height}};
      return DrawLines(pen, ends, 2);
    }
    return Stroke(pen, [&](cairo_t* context) {
      const PaintBox near = Near(box);
      cairo_rectangle(context, near.x, near.y, near.width, near.height);
    });
  }

  PaintResult DrawLines(const PaintPen& pen, const PaintPoint* points, std::size_t count) override {
    const auto isFirst = [&](const PaintPoint& point) {
      return point.x == points[0].x && point.y == points[0].y;
    };
    if (std::all_of(points, points + count, isFirst)) {
      // A stroke without length would paint nothing.
      return Fill(pen.argb, [&](cairo_t* context) {
        const double width = Near(pen.width);
        cairo_rectangle(context, Near(points[0].x) - width / 2, Near(points[0].y) - width / 2,
                        width, width);
      });
    }
    return Stroke(pen, [&](cairo_t* context) {
      for (std::size_t i = 0; i < count; ++i) {
        cairo_line_to(context, Near(points[i].x), Near(points[i].y));
      }
    });
  }

  PaintResult DrawEllipse(const PaintPen& pen, const PaintBox& box) override {
    if (box.width == 0 || box.height == 0) return DrawRectangle(pen, box);
    return Stroke(pen, [&](cairo_t* context) { AddEllipse(context, Near(box)); });
  }

  PaintResult FillEllipse(std::uint32_t argb, const PaintBox& box) override {
    return Fill(argb, [&](cairo_t* context) { AddEllipse(context, Near(box)); });
  }

  PaintResult MeasureText(std::string_view text, const PaintFont& font, double& width,
                          double& height) override {
    TextLayout& layout = TextLayout::OfThread();
    layout.Set(text, font);
    layout.Measure(width, height);
    return PaintResult::kDone;
  }

  PaintResult DrawText(std::string_view text, const PaintFont& font, const PaintPoint& at,
                       PaintAlignment across, PaintAlignment down, std::uint32_t argb) override {
    TextLayout& layout = TextLayout::OfThread();
    layout.Set(text, font);
    double width;
    double height;
    layout.Measure(width, height);
    // A text that is near begins with the pixel of its point, one that is far ends with it.
    const auto corner = [](double point, double size, PaintAlignment alignment) {
      return alignment == PaintAlignment::kNear     ? point - 0.5
             : alignment == PaintAlignment::kCentre ? point - size / 2
                                                    : point + 0.5 - size;
    };
    return Paint(argb, [&](cairo_t* context) {
      layout.Draw(context, {corner(Near(at.x), width, across), corner(Near(at.y), height, down)},
                  across);
    });
  }

  PaintResult Translate(double dx, double dy) override {
    cairo_matrix_t matrix = world_;
    cairo_matrix_translate(&matrix, dx, dy);
    return SetWorld(matrix);
  }

  PaintResult Rotate(double degrees) override {
    const double radians = degrees * std::numbers::pi / 180;
    // Quarter turns are exact, so that what is level stays so.
    const double quarters = std::fmod(degrees, 360) / 90;
    const bool isQuarter = quarters == std::trunc(quarters);
    const double cosine = isQuarter ? std::round(std::cos(radians)) : std::cos(radians);
    const double sine = isQuarter ? std::round(std::sin(radians)) : std::sin(radians);
    const cairo_matrix_t turn{cosine, sine, -sine, cosine, 0, 0};
    cairo_matrix_t matrix;
    cairo_matrix_multiply(&matrix, &turn, &world_);
    return SetWorld(matrix);
  }

  PaintResult ResetTransform() override {
    ResetWorld();
    return PaintResult::kDone;
  }

  PaintResult SetClip(const PaintBox& box) override {
    clip_ = Clip{Near(box), world_};
    return PaintResult::kDone;
  }

  PaintResult ResetClip() override {
    clip_.reset();
    return PaintResult::kDone;
  }

  PaintResult SetInnerClip(const PaintBox& box) override {
    innerClip_ = Clip{Near(box), world_};
    return PaintResult::kDone;
  }

  PaintResult ResetInnerClip() override {
    innerClip_.reset();
    return PaintResult::kDone;
  }

  [[nodiscard]] cairo_t* Context() const noexcept override { return context_; }

 private:
  /// A clip and the coordinates that it was told in.
  struct Clip {
    PaintBox box;
    cairo_matrix_t world;
  };

  [[nodiscard]] double Near(double coordinate) const {
    return std::clamp(coordinate, -farthest_, farthest_);
  }

  [[nodiscard]] PaintBox Near(const PaintBox& box) const {
    const double x = Near(box.x);
    const double y = Near(box.y);
    return {x, y, Near(box.x + box.width) - x, Near(box.y + box.height) - y};
  }

  /// False for NaN too.
  [[nodiscard]] bool IsNear(double coordinate) const { return std::abs(coordinate) <= farthest_; }

  /// Adds pixels by their edges, in coordinates of centres.
  static void AddPixels(cairo_t* context, const PaintBox& box) {
    cairo_rectangle(context, box.x - 0.5, box.y - 0.5, box.width, box.height);
  }

  /// Adds nothing for a box that is too far for a size: a scale of 0 would end the context.
  static void AddEllipse(cairo_t* context, const PaintBox& box) {
    if (box.width == 0 || box.height == 0) return;
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    cairo_translate(context, box.x + box.width / 2, box.y + box.height / 2);
    cairo_scale(context, box.width / 2, box.height / 2);
    cairo_arc(context, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(context);
    cairo_set_matrix(context, &matrix);
  }

  template <class T>
  PaintResult Fill(std::uint32_t argb, T addPath) {
    return Paint(argb, [&](cairo_t* context) {
      addPath(context);
      cairo_fill(context);
    });
  }

  template <class T>
  PaintResult Stroke(const PaintPen& pen, T addPath) {
    return Paint(pen.argb, [&](cairo_t* context) {
      addPath(context);
      cairo_set_line_width(context, Near(pen.width));
      // Both end pixels are painted whole, and corners; the points of sharp bends are cut.
      cairo_set_line_cap(context, CAIRO_LINE_CAP_SQUARE);
      cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
      cairo_set_miter_limit(context, 1.5);
      cairo_set_dash(context, nullptr, 0, 0);
      cairo_stroke(context);
    });
  }

  template <class T>
  PaintResult Paint(std::uint32_t argb, T paint) {
    {
      const KeptState kept(context_);
      for (const std::optional<Clip>* clip : {&clip_, &innerClip_}) {
        if (!*clip) continue;
        Enter((*clip)->world);
        AddPixels(context_, (*clip)->box);
        cairo_clip(context_);
      }
      Enter(world_);
      SetColor(context_, argb);
      cairo_set_operator(context_, CAIRO_OPERATOR_OVER);
      cairo_set_antialias(context_, CAIRO_ANTIALIAS_DEFAULT);
      cairo_set_tolerance(context_, 0.1);
      cairo_set_fill_rule(context_, CAIRO_FILL_RULE_WINDING);
      paint(context_);
    }
    switch (cairo_status(context_)) {
      case CAIRO_STATUS_SUCCESS:
        return PaintResult::kDone;
      case CAIRO_STATUS_NO_MEMORY:
        return PaintResult::kNoMemory;
      default:
        return PaintResult::kFailed;
    }
  }

  void Enter(const cairo_matrix_t& world) {
    cairo_matrix_t matrix;
    cairo_matrix_multiply(&matrix, &world, &base_);
    cairo_set_matrix(context_, &matrix);
  }

  void ResetWorld() { cairo_matrix_init_translate(&world_, 0.5, 0.5); }

  PaintResult SetWorld(const cairo_matrix_t& matrix) {
    if (!IsNear(matrix.x0) || !IsNear(matrix.y0)) return PaintResult::kFailed;
    world_ = matrix;
    return PaintResult::kDone;
  }

  cairo_t* context_;
  cairo_matrix_t base_;
  double farthest_;  // what coordinates are cut to
  cairo_matrix_t world_;
  std::optional<Clip> clip_;
  std::optional<Clip> innerClip_;
};

}  // namespace

Painter::~Painter() = default;

std::unique_ptr<PixelSurface> PixelSurface::Make(int width, int height) {
  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height), &cairo_surface_destroy);
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  std::unique_ptr<PixelSurface> pixels(new PixelSurface(surface.get()));
  static_cast<void>(surface.release());
  return pixels;
}

PixelSurface::~PixelSurface() { cairo_surface_destroy(surface_); }

int PixelSurface::Width() const noexcept { return cairo_image_surface_get_width(surface_); }

int PixelSurface::Height() const noexcept { return cairo_image_surface_get_height(surface_); }

int PixelSurface::Stride() const noexcept { return cairo_image_surface_get_stride(surface_); }

std::uint8_t* PixelSurface::Pixels() noexcept {
  cairo_surface_flush(surface_);
  return cairo_image_surface_get_data(surface_);
}

void PixelSurface::MarkWritten() noexcept { cairo_surface_mark_dirty(surface_); }

std::unique_ptr<Painter> MakePainter(PixelSurface& surface) {
  const ContextPtr context(cairo_create(surface.Surface()));
  return MakePainter(context.get());
}

std::unique_ptr<Painter> MakePainter(cairo_t* context) {
  if (!context || cairo_status(context) != CAIRO_STATUS_SUCCESS) return nullptr;
  return std::make_unique<CairoPainter>(context);
}

}  // namespace vlm::platform
