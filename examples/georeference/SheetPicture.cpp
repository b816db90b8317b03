#include <examples/georeference/SheetPicture.h>

#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <examples/common/Picture.h>
#include <examples/georeference/ErrorChart.h>
#include <examples/georeference/MapSheet.h>
#include <examples/georeference/Resampling.h>
#include <examples/overlay/MapPanel.h>

#include <cairo.h>

#include <iterator>

namespace vlm::georeference {
namespace {

using overlay::MapPanel;

const Color4b kPoint(200, 30, 50, 255);
const Color4b kStraight(200, 30, 50, 200);
const Color4b kInk(40, 44, 52, 255);

constexpr double kWidth = 250.0;
constexpr double kHeight = kWidth * kSheetHeight / kSheetWidth;

void PaintImage(cairo_t* context, cairo_surface_t* image, const Box2d& window) {
  cairo_save(context);
  cairo_rectangle(context, window.xMin(), window.yMin(), window.xRange(), window.yRange());
  cairo_clip(context);
  cairo_translate(context, window.xMin(), window.yMin());
  cairo_scale(context, window.xRange() / cairo_image_surface_get_width(image),
              window.yRange() / cairo_image_surface_get_height(image));
  cairo_set_source_surface(context, image, 0.0, 0.0);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
  cairo_paint(context);
  cairo_restore(context);
}

void DrawBefore(cairo_t* context, const Box2d& window, cairo_surface_t* sheet,
                const RPoints& points) {
  MapPanel panel(context, window, {0.0, 0.0, double{kSheetWidth}, double{kSheetHeight}});
  PaintImage(context, sheet, window);
  std::vector<Vec2d> dots;
  for (const RPoint& p : points.Points()) dots.emplace_back(p.X(), p.Y());
  panel.Dots(dots, 2.6, kPoint);
  panel.Frame("a", "The sheet as it was scanned");
  GString note;
  note.FormatString("%u control points", static_cast<unsigned>(dots.size()));
  panel.Note(0, note, kPoint);
}

// The box of the map that fills a panel, and the grid that belongs there.
Box2d PanelBox() {
  Box2d box = MapFrame();
  box.Inflate(25.0, 0.5 * ((box.xRange() + 50.0) * kHeight / kWidth - box.yRange()));
  return box;
}

void DrawAfter(cairo_t* context, const Box2d& window, cairo_surface_t* sheet, const Trial& trial,
               const std::string& letter, const std::string& name) {
  constexpr int kPixels = 1000;
  MapPanel panel(context, window, PanelBox());
  const examples::SurfacePtr image = Resampled(sheet, trial.toSheet, PanelBox(), kPixels);
  PaintImage(context, image.get(), window);
  const Box2d frame = MapFrame();
  std::vector<Vec2d> grid;
  std::vector<unsigned int> counts;
  for (double x = frame.xMin(); x <= frame.xMax(); x += kGridStep) {
    grid.insert(grid.end(), {{x, frame.yMin()}, {x, frame.yMax()}});
    counts.push_back(2);
  }
  for (double y = frame.yMin(); y <= frame.yMax(); y += kGridStep) {
    grid.insert(grid.end(), {{frame.xMin(), y}, {frame.xMax(), y}});
    counts.push_back(2);
  }
  panel.Paths(grid, counts, 0.4, kStraight);
  panel.Frame(letter, name);
  GString note;
  note.FormatString("error %.1f km, at worst %.1f km", trial.elsewhere.rms, trial.elsewhere.worst);
  panel.Note(0, note, kInk);
  if (letter == "b") panel.Note(1, "red: where the grid belongs", kPoint);
}

}  // namespace

void DrawComparison(cairo_surface_t* sheet, const ControlPoints& points,
                    const std::vector<Trial>& trials, const std::string& path) {
  constexpr double kMargin = 20.0;
  constexpr double kHeading = 24.0;
  const auto window = [&](unsigned int number) {
    const double x = kMargin + number % 3 * (kWidth + kMargin);
    const double y = kMargin + kHeading + number / 3 * (kHeight + kMargin + kHeading);
    return Box2d(x, y, x + kWidth, y + kHeight);
  };
  const struct {
    std::size_t method;  // a WarpingMethod
    const char* letter;
    const char* name;
  } kShown[] = {{LinearConformal, "b", "Linear conformal: turned and scaled"},
                {QuadraticPolynomial, "c", "Quadratic polynomial"},
                {InverseDistanceSquared, "d", "Inverse distance squared"},
                {ThinPlateSpline, "e", "Thin-plate spline"}};
  examples::WritePicture(path, 3.0 * (kWidth + kMargin) + kMargin,
                         2.0 * (kHeight + kMargin + kHeading) + kMargin, [&](cairo_t* context) {
                           DrawBefore(context, window(0), sheet, points.sheet);
                           for (unsigned int i = 0; i < std::size(kShown); ++i) {
                             DrawAfter(context, window(i + 1), sheet, trials[kShown[i].method],
                                       kShown[i].letter, kShown[i].name);
                           }
                           DrawErrorChart(context, window(5), "f", trials);
                         });
}

}  // namespace vlm::georeference
