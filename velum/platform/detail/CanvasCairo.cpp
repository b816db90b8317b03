#include <velum/platform/detail/Canvas.h>

#include <velum/platform/detail/CairoState.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace vlm::platform {

namespace {

constexpr std::int32_t kFarthest = 1'000'000;
constexpr int kDotPixels = 3;
constexpr int kCopyPen = 13;

std::int32_t Near(std::int32_t coordinate) { return std::clamp(coordinate, -kFarthest, kFarthest); }

bool IsEmpty(const RECT& box) { return box.left >= box.right || box.top >= box.bottom; }

RECT Common(const RECT& a, const RECT& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

/// Where a surface has its origin, in its pixels.
POINT OriginOf(cairo_surface_t* surface) {
  const cairo_matrix_t device = DeviceMatrix(surface);
  const auto whole = [](double x) {
    return static_cast<std::int32_t>(std::clamp(std::round(x), -1. * kFarthest, 1. * kFarthest));
  };
  return {whole(device.x0), whole(device.y0)};
}

/// The matrix of a context whose coordinates count pixels of a surface, from its origin on.
cairo_matrix_t PixelMatrix(cairo_surface_t* surface) {
  if (IsOfVectors(surface)) return {1, 0, 0, 1, 0, 0};
  const cairo_matrix_t device = DeviceMatrix(surface);
  const POINT origin = OriginOf(surface);
  return {1 / device.xx,
          0,
          0,
          1 / device.yy,
          (origin.x - device.x0) / device.xx,
          (origin.y - device.y0) / device.yy};
}

/// Lets the coordinates of a context be those of its surface, until it brings the state back.
class OwnPixels : KeptState {
 public:
  explicit OwnPixels(cairo_t* context) : KeptState(context) {
    const cairo_matrix_t matrix = PixelMatrix(cairo_get_group_target(context));
    cairo_set_matrix(context, &matrix);
    cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
    cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
  }
};

void SetColor(cairo_t* context, std::uint32_t color) {
  const auto part = [color](int shift) { return (color >> shift & 0xFF) / 255.0; };
  cairo_set_source_rgb(context, part(0), part(8), part(16));
}

bool IsPainted(cairo_t* context) { return cairo_status(context) == CAIRO_STATUS_SUCCESS; }

/// Whole pixels that may be painted, from a box in coordinates of the surface.
RECT Pixels(double left, double top, double right, double bottom) {
  // What a scale leaves of a whole pixel's edge.
  constexpr double kNothing = 1e-6;
  const auto whole = [](double x) {
    return static_cast<std::int32_t>(std::clamp(x, -1.0 * kFarthest, 1.0 * kFarthest));
  };
  return {whole(std::floor(left + kNothing)), whole(std::floor(top + kNothing)),
          whole(std::ceil(right - kNothing)), whole(std::ceil(bottom - kNothing))};
}

RECT ClipBoxOf(cairo_t* context) {
  double left;
  double top;
  double right;
  double bottom;
  cairo_clip_extents(context, &left, &top, &right, &bottom);
  return Pixels(left, top, right, bottom);
}

/// The clip as boxes of whole pixels; false if it is something else.
bool ClipBoxes(cairo_t* context, std::vector<RECT>& boxes) {
  const std::unique_ptr<cairo_rectangle_list_t, decltype(&cairo_rectangle_list_destroy)> list(
      cairo_copy_clip_rectangle_list(context), &cairo_rectangle_list_destroy);
  // There is a list only if its boxes are of whole pixels.
  const bool isWhole = list->status == CAIRO_STATUS_SUCCESS;
  for (int i = 0; isWhole && i < list->num_rectangles; ++i) {
    const cairo_rectangle_t& box = list->rectangles[i];
    boxes.push_back(Pixels(box.x, box.y, box.x + box.width, box.y + box.height));
  }
  return isWhole;
}

/// What lines pass over: for each pixel of a box nothing, gap or line.
class Trace {
 public:
  enum Mark : std::uint8_t { kNothing, kGap, kLine };

  explicit Trace(const RECT& box)
      : box_(box),
        width_(static_cast<std::size_t>(box.right - box.left)),
        marks_(width_ * static_cast<std::size_t>(box.bottom - box.top), kNothing) {}

  /// Marks the pixels from one point up to another, the last one left out (Bresenham, 1965).
  void Line(const CanvasPen& pen, POINT from, const POINT& to) {
    const int dx = std::abs(to.x - from.x);
    const int dy = std::abs(to.y - from.y);
    const int stepX = from.x < to.x ? 1 : -1;
    const int stepY = from.y < to.y ? 1 : -1;
    int error = dx - dy;
    while (from.x != to.x || from.y != to.y) {
      const bool isGap = pen.isDotted && phase_++ / kDotPixels % 2 == 1;
      MarkSquare(from, pen.width, isGap ? kGap : kLine);
      const int twice = 2 * error;
      if (twice > -dy) {
        error -= dy;
        from.x += stepX;
      }
      if (twice < dx) {
        error += dx;
        from.y += stepY;
      }
    }
  }

  [[nodiscard]] Mark At(int x, int y) const {
    return static_cast<Mark>(marks_[static_cast<std::size_t>(y - box_.top) * width_ +
                                    static_cast<std::size_t>(x - box_.left)]);
  }

 private:
  /// Marks a square around a pixel, without what the last square of the same mark covers.
  void MarkSquare(const POINT& centre, int width, Mark mark) {
    const int left = centre.x - (width - 1) / 2;
    const int top = centre.y - (width - 1) / 2;
    const RECT square{left, top, left + width, top + width};
    const RECT known = Common(square, std::exchange(last_[mark], square));
    if (IsEmpty(known)) {
      MarkBox(square, mark);
      return;
    }
    MarkBox({square.left, square.top, square.right, known.top}, mark);
    MarkBox({square.left, known.bottom, square.right, square.bottom}, mark);
    MarkBox({square.left, known.top, known.left, known.bottom}, mark);
    MarkBox({known.right, known.top, square.right, known.bottom}, mark);
  }

  void MarkBox(const RECT& box, Mark mark) {
    const RECT square = Common(box_, box);
    for (int y = square.top; y < square.bottom; ++y) {
      for (int x = square.left; x < square.right; ++x) {
        std::uint8_t& at = marks_[static_cast<std::size_t>(y - box_.top) * width_ +
                                  static_cast<std::size_t>(x - box_.left)];
        at = std::max(at, static_cast<std::uint8_t>(mark));
      }
    }
  }

  RECT box_;
  std::size_t width_;
  std::vector<std::uint8_t> marks_;
  RECT last_[kLine + 1]{};
  unsigned phase_ = 0;
};

/// A pixel combined with a colour: the bits of `operation` - 1 are the results for both 0, the
/// pixel alone 1, the colour alone 1, both 1.
std::uint32_t Combine(std::uint32_t pixel, std::uint32_t color, int operation) {
  const std::uint32_t pen = (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
  const int table = operation - 1;
  std::uint32_t result = 0;
  if (table & 1) result |= ~pen & ~pixel;
  if (table & 2) result |= ~pen & pixel;
  if (table & 4) result |= pen & ~pixel;
  if (table & 8) result |= pen & pixel;
  // What does not depend on the pixel is opaque; the rest keeps its alpha, so that it can be
  // undone.
  const bool isNew = ((table ^ table >> 1) & 5) == 0;
  return (result & 0xFFFFFF) | (isNew ? 0xFF000000 : pixel & 0xFF000000);
}

bool DrawVectors(cairo_t* context, const CanvasPen& pen, const POINT* points, std::size_t count) {
  const auto stroke = [&](std::uint32_t color, double dashStart) {
    const double dashes[] = {kDotPixels, kDotPixels};
    SetColor(context, color);
    cairo_set_dash(context, dashes, pen.isDotted ? 2 : 0, dashStart);
    cairo_stroke_preserve(context);
  };
  for (std::size_t i = 0; i < count; ++i) {
    cairo_line_to(context, Near(points[i].x) + 0.5, Near(points[i].y) + 0.5);
  }
  cairo_set_operator(context, CAIRO_OPERATOR_OVER);
  cairo_set_antialias(context, CAIRO_ANTIALIAS_DEFAULT);
  cairo_set_line_width(context, pen.width);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_BUTT);
  cairo_set_line_join(context, CAIRO_LINE_JOIN_MITER);
  stroke(pen.color, 0);
  if (pen.isDotted && pen.hasGapColor) stroke(pen.gapColor, kDotPixels);
  return IsPainted(context);
}

}  // namespace

Canvas::Canvas(cairo_t* context) noexcept : context_(cairo_reference(context)) {}

Canvas::~Canvas() { cairo_destroy(context_); }

RECT Canvas::ClipBox() const {
  const OwnPixels own(context_);
  return ClipBoxOf(context_);
}

bool Canvas::Lines(const CanvasPen& pen, const POINT* points, std::size_t count) {
  if (count < 2) return false;
  const OwnPixels own(context_);
  cairo_surface_t* const target = cairo_get_group_target(context_);
  if (IsOfVectors(target)) {
    return pen.operation == kCopyPen && DrawVectors(context_, pen, points, count);
  }
  std::vector<RECT> clip;
  if (!ClipBoxes(context_, clip)) return false;
  const RECT clipBox = ClipBoxOf(context_);
  RECT box{kFarthest, kFarthest, -kFarthest, -kFarthest};
  for (std::size_t i = 0; i < count; ++i) {
    const std::int32_t x = Near(points[i].x);
    const std::int32_t y = Near(points[i].y);
    box = {std::min(box.left, x - pen.width), std::min(box.top, y - pen.width),
           std::max(box.right, x + pen.width + 1), std::max(box.bottom, y + pen.width + 1)};
  }
  box = Common(box, clipBox);
  if (IsEmpty(box)) return true;

  Trace trace(box);
  for (std::size_t i = 1; i < count; ++i) {
    trace.Line(pen, {Near(points[i - 1].x), Near(points[i - 1].y)},
               {Near(points[i].x), Near(points[i].y)});
  }

  const POINT origin = OriginOf(target);
  const cairo_rectangle_int_t extents{box.left + origin.x, box.top + origin.y, box.right - box.left,
                                      box.bottom - box.top};
  cairo_surface_flush(target);
  cairo_surface_t* const image = cairo_surface_map_to_image(target, &extents);
  const bool isKnown = cairo_surface_status(image) == CAIRO_STATUS_SUCCESS &&
                       (cairo_image_surface_get_format(image) == CAIRO_FORMAT_ARGB32 ||
                        cairo_image_surface_get_format(image) == CAIRO_FORMAT_RGB24);
  if (isKnown) {
    unsigned char* const data = cairo_image_surface_get_data(image);
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(image);
    for (const RECT& part : clip) {
      const RECT common = Common(part, box);
      for (int y = common.top; y < common.bottom; ++y) {
        for (int x = common.left; x < common.right; ++x) {
          const Trace::Mark mark = trace.At(x, y);
          if (mark == Trace::kNothing || (mark == Trace::kGap && !pen.hasGapColor)) continue;
          unsigned char* const at = data + (y - box.top) * stride + 4 * (x - box.left);
          std::uint32_t pixel;
          std::memcpy(&pixel, at, 4);
          pixel = Combine(pixel, mark == Trace::kLine ? pen.color : pen.gapColor, pen.operation);
          std::memcpy(at, &pixel, 4);
        }
      }
    }
    cairo_surface_mark_dirty(image);
  }
  cairo_surface_unmap_image(target, image);
  // Else a group that has nothing but lines counts as empty.
  if (isKnown) cairo_surface_mark_dirty(target);
  return isKnown && IsPainted(context_);
}

bool Canvas::Fill(const RECT& box, std::uint32_t color) {
  if (IsEmpty(box)) return true;
  const OwnPixels own(context_);
  SetColor(context_, color);
  cairo_rectangle(context_, Near(box.left), Near(box.top), 1. * Near(box.right) - Near(box.left),
                  1. * Near(box.bottom) - Near(box.top));
  cairo_fill(context_);
  return IsPainted(context_);
}

bool Canvas::Copy(const RECT& box, const Canvas& from, const POINT& at) {
  cairo_surface_t* const source = cairo_get_group_target(from.context_);
  if (source == cairo_get_group_target(context_)) return false;
  const std::int32_t dx = Near(at.x) - Near(box.left);
  const std::int32_t dy = Near(at.y) - Near(box.top);
  const cairo_matrix_t toSource = PixelMatrix(source);
  const ContextPtr whole(cairo_create(source));
  cairo_set_matrix(whole.get(), &toSource);
  const RECT extents = ClipBoxOf(whole.get());
  const RECT part =
      Common({Near(box.left), Near(box.top), Near(box.right), Near(box.bottom)},
             {extents.left - dx, extents.top - dy, extents.right - dx, extents.bottom - dy});
  if (IsEmpty(part)) return true;
  const OwnPixels own(context_);
  cairo_set_source_surface(context_, source, 0, 0);
  cairo_matrix_t matrix;
  cairo_matrix_init_translate(&matrix, dx, dy);
  cairo_matrix_multiply(&matrix, &matrix, &toSource);
  cairo_pattern_set_matrix(cairo_get_source(context_), &matrix);
  cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_NEAREST);
  cairo_rectangle(context_, part.left, part.top, part.right - part.left, part.bottom - part.top);
  cairo_fill(context_);
  return IsPainted(context_);
}

std::unique_ptr<Canvas> MakeCanvas(cairo_t* context) {
  if (!context || cairo_status(context) != CAIRO_STATUS_SUCCESS) return nullptr;
  return std::make_unique<Canvas>(context);
}

std::unique_ptr<Canvas> MakeCanvas(PixelSurface& surface) {
  const ContextPtr context(cairo_create(surface.Surface()));
  return MakeCanvas(context.get());
}

}  // namespace vlm::platform
