#include <examples/georeference/MapSheet.h>

#include <velum/colour/Color4b.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/LabelLayout.h>

#include <cairo.h>

#include <cerrno>
#include <cmath>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace vlm::georeference {
namespace {

using examples::SetSourceColor;

const Color4b kScanner(70, 72, 76, 255);
const Color4b kPaper(250, 246, 232, 255);
const Color4b kSea(222, 233, 240, 255);
const Color4b kLand(236, 222, 190, 255);
const Color4b kCoast(110, 84, 50, 255);
const Color4b kGrid(60, 110, 170, 255);
const Color4b kInk(50, 46, 40, 255);

// Draws straight lines of the map as they run on the sheet.
class BentPath {
 public:
  explicit BentPath(cairo_t* context) : context_(context) { cairo_new_path(context_); }

  void MoveTo(const Vec2d& map) {
    const RPoint place = PlaceOnSheet({map.x, map.y});
    cairo_move_to(context_, place.X(), kSheetHeight - place.Y());
    last_ = map;
  }

  void LineTo(const Vec2d& map) {
    constexpr double kStep = 5.0;  // km
    const int steps = 1 + static_cast<int>((map - last_).Length() / kStep);
    for (int i = 1; i <= steps; ++i) {
      const Vec2d between = last_ + (map - last_) * (static_cast<double>(i) / steps);
      const RPoint place = PlaceOnSheet({between.x, between.y});
      cairo_line_to(context_, place.X(), kSheetHeight - place.Y());
    }
    last_ = map;
  }

  void Box(const Box2d& box) {
    MoveTo(box.MinCorner());
    LineTo({box.xMax(), box.yMin()});
    LineTo(box.MaxCorner());
    LineTo({box.xMin(), box.yMax()});
    LineTo(box.MinCorner());
    cairo_close_path(context_);
  }

 private:
  cairo_t* context_;
  Vec2d last_;
};

void DrawLand(cairo_t* context, const GPolygon& land) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  land.GetPolyPolygon(points, counts, false);
  BentPath path(context);
  const Vec2d* contour = points.data();
  for (const unsigned int count : counts) {
    path.MoveTo(contour[0]);
    for (unsigned int i = 1; i < count; ++i) path.LineTo(contour[i]);
    path.LineTo(contour[0]);
    contour += count;
  }
  SetSourceColor(context, kLand);
  cairo_fill_preserve(context);
  SetSourceColor(context, kCoast);
  cairo_set_line_width(context, 1.4);
  cairo_stroke(context);
}

void DrawGrid(cairo_t* context) {
  const Box2d frame = MapFrame();
  BentPath path(context);
  for (double x = frame.xMin() + kGridStep; x < frame.xMax(); x += kGridStep) {
    path.MoveTo({x, frame.yMin()});
    path.LineTo({x, frame.yMax()});
  }
  for (double y = frame.yMin() + kGridStep; y < frame.yMax(); y += kGridStep) {
    path.MoveTo({frame.xMin(), y});
    path.LineTo({frame.xMax(), y});
  }
  SetSourceColor(context, kGrid);
  cairo_set_line_width(context, 1.6);
  cairo_stroke(context);
}

[[noreturn]] void Refuse(const char* what, const std::string& path, cairo_status_t status) {
  const bool isSystems = status == CAIRO_STATUS_WRITE_ERROR || status == CAIRO_STATUS_READ_ERROR ||
                         status == CAIRO_STATUS_FILE_NOT_FOUND;
  throw std::runtime_error(std::string(what) + " '" + path + "': " +
                           (isSystems ? std::generic_category().message(errno)
                                      : std::string(cairo_status_to_string(status))));
}

}  // namespace

Box2d MapFrame() { return {-500.0, -550.0, 500.0, 800.0}; }

RPoint PlaceOnSheet(const RPoint& map) {
  const Box2d frame = MapFrame();
  const double x = map.X() - frame.Center().x;
  const double y = map.Y() - frame.Center().y;
  const double u = x / (0.5 * frame.xRange());
  const double v = y / (0.5 * frame.yRange());
  // Across and up the paper, in pixels.
  constexpr double kAngle = 0.04;
  const double across = 0.88 * (x * std::cos(kAngle) + y * std::sin(kAngle)) + 0.045 * y;
  const double up = 0.9 * (y * std::cos(kAngle) - x * std::sin(kAngle));
  const double bentAcross = 24.0 * std::sin(1.9 * v + 0.5) + 10.0 * u * u;
  const double bentUp = 20.0 * std::sin(2.2 * u) - 12.0 * u * v;
  const double dent = 13.0 * std::exp(-((u - 0.3) * (u - 0.3) + (v + 0.25) * (v + 0.25)) / 0.1);
  return {0.5 * kSheetWidth + across + bentAcross + dent,
          0.5 * kSheetHeight + up + bentUp - 0.7 * dent};
}

examples::SurfacePtr DrawSheet(const overlay::Outline& land) {
  examples::SurfacePtr sheet(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, kSheetWidth, kSheetHeight));
  const examples::ContextPtr context(cairo_create(sheet.get()));
  SetSourceColor(context.get(), kScanner);
  cairo_paint(context.get());
  Box2d paper = MapFrame();
  paper.Inflate(45.0, 60.0);
  BentPath(context.get()).Box(paper);
  SetSourceColor(context.get(), kPaper);
  cairo_fill(context.get());
  BentPath(context.get()).Box(MapFrame());
  SetSourceColor(context.get(), kSea);
  cairo_fill(context.get());
  DrawLand(context.get(), land.shape);
  DrawGrid(context.get());
  BentPath(context.get()).Box(MapFrame());
  SetSourceColor(context.get(), kInk);
  cairo_set_line_width(context.get(), 3.0);
  cairo_stroke(context.get());
  return sheet;
}

void WriteSheet(cairo_surface_t* sheet, const std::string& path) {
  errno = 0;
  const cairo_status_t status = cairo_surface_write_to_png(sheet, path.c_str());
  if (status != CAIRO_STATUS_SUCCESS) Refuse("cannot write", path, status);
}

examples::SurfacePtr ReadSheet(const std::string& path) {
  errno = 0;
  examples::SurfacePtr sheet(cairo_image_surface_create_from_png(path.c_str()));
  const cairo_status_t status = cairo_surface_status(sheet.get());
  if (status != CAIRO_STATUS_SUCCESS) Refuse("cannot read", path, status);
  return sheet;
}

}  // namespace vlm::georeference
