#include <examples/overlay/OverlayPicture.h>

#include <velum/core/GString.h>
#include <velum/geometry/ClipUtil.h>
#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/Thinning.h>
#include <examples/common/Picture.h>
#include <examples/overlay/MapPanel.h>

#include <algorithm>
#include <functional>

namespace vlm::overlay {
namespace {

const Color4b kFirst(34, 94, 168, 255);
const Color4b kSecond(217, 95, 14, 255);
const Color4b kBoth(84, 39, 136, 255);
const Color4b kGround(196, 202, 210, 255);
const Color4b kHole(200, 30, 50, 255);

Color4b Faint(Color4b color, unsigned char alpha) {
  color.A = alpha;
  return color;
}

GString Formatted(const char* format, double value) {
  GString text;
  text.FormatString(format, value);
  return text;
}

std::string AreaText(const Result& result) {
  return Formatted("%.0f km\\up35 {\\fs65 2}\\dn35 ", result.area);
}

std::string TitleOf(const char* name, const Result& result) {
  return name + std::string(", ") + AreaText(result);
}

// Parallel lines over a box, `distance` apart, going up or down at 45 degrees.
struct Hatching {
  Hatching(const Box2d& box, double distance, bool up) {
    const double height = box.yRange();
    for (double x = box.xMin() - height; x < box.xMax(); x += distance) {
      points.emplace_back(x, up ? box.yMin() : box.yMax());
      points.emplace_back(x + height, up ? box.yMax() : box.yMin());
      counts.push_back(2);
    }
  }
  [[nodiscard]] unsigned int Size() const { return static_cast<unsigned int>(counts.size()); }

  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
};

void DrawInputs(MapPanel& panel, const Outline& first, const Outline& second,
                const std::vector<Result>& results) {
  panel.Fill(first.shape, Faint(kFirst, 110));
  panel.Fill(second.shape, Faint(kSecond, 110));
  panel.Stroke(first.shape, 0.5, kFirst);
  panel.Stroke(second.shape, 0.5, kSecond);
  panel.Frame("a", "Two outlines on one map");
  panel.Note(0, first.name + ", " + AreaText(results[0]), kFirst);
  panel.Note(1, second.name + ", " + AreaText(results[1]), kSecond);
  panel.ScaleBar(200.0, "200 km");
}

void DrawIntersection(MapPanel& panel, const Result& result) {
  panel.Fill(result.shape, Faint(kBoth, 36));
  const Hatching hatching(result.shape.GetBBox(), 18.0, true);
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  GClipPolylinesToPolygon(hatching.points.data(), hatching.counts.data(), hatching.Size(),
                          result.shape, points, counts);
  panel.Paths(points, counts, 0.6, kBoth);
  panel.Stroke(result.shape, 0.7, kBoth);
  panel.Frame("b", TitleOf("Intersection", result));
  panel.Note(0, "lines clipped to the area", kBoth);
}

void DrawUnion(MapPanel& panel, const Result& result) {
  panel.Fill(result.shape, Faint(kFirst, 30));
  const Hatching hatching(result.shape.GetBBox(), 22.0, false);
  constexpr double kDashes[] = {26.0, 10.0, 4.0, 10.0};
  GDashLineGenerator dashes(kDashes, 4);
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  GClipDashedPolylinesToPolygon(hatching.points.data(), hatching.counts.data(), hatching.Size(),
                                dashes, result.shape, points, counts);
  panel.Paths(points, counts, 0.7, kFirst);
  panel.Stroke(result.shape, 0.7, kFirst);
  panel.Frame("c", TitleOf("Union", result));
  panel.Note(0, "dashed lines clipped to the area", kFirst);
}

void DrawDifference(MapPanel& panel, const Result& result) {
  struct Strips {
    MapPanel& panel;
    std::size_t count = 0;
  } strips{panel};
  result.shape.Decompose(
      [](const Vec2d* points, unsigned int count, void* userData) {
        const Color4b kHues[] = {{198, 219, 239, 255},
                                 {66, 146, 198, 255},
                                 {158, 202, 225, 255},
                                 {8, 81, 156, 255},
                                 {107, 174, 214, 255}};
        auto& drawn = *static_cast<Strips*>(userData);
        drawn.panel.Strip(points, count, kHues[drawn.count++ % std::size(kHues)]);
        return true;
      },
      &strips);
  panel.Frame("d", TitleOf("Difference", result));
  panel.Note(0, Formatted("%.0f triangle strips", result.strips), kFirst);
}

void DrawExclusiveOr(MapPanel& panel, const Result& result) {
  panel.Fill(result.shape, kGround);
  panel.Stroke(result.shape, 0.5, Color4b(70, 78, 90, 255));
  panel.StrokeHoles(result.shape, 0.9, kHole);
  panel.Frame("e", TitleOf("Exclusive-or", result));
  panel.Note(0, Formatted("%.0f holes", result.holes), kHole);
}

// A way of thinning that appends what is left of a path.
using Thinning = std::function<void(const Vec2d*, unsigned int, std::vector<Vec2d>&)>;

// Draws the contours of a shape, each thinned as a path from its first vertex back to it. Returns
// the number of points left.
double DrawThinned(MapPanel& panel, const GPolygon& shape, const Thinning& thin, Color4b color,
                   double radius) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, true);
  std::vector<Vec2d> thinned;
  std::vector<unsigned int> thinnedCounts;
  const Vec2d* path = points.data();
  for (const unsigned int count : counts) {
    const std::size_t before = thinned.size();
    thin(path, count, thinned);
    thinnedCounts.push_back(static_cast<unsigned int>(thinned.size() - before));
    path += count;
  }
  panel.Paths(thinned, thinnedCounts, 0.8, color);
  panel.Dots(thinned, radius, color);
  return static_cast<double>(thinned.size());
}

void DrawThinning(MapPanel& panel, const Outline& outline) {
  panel.Fill(outline.shape, kGround);
  const double turns = DrawThinned(
      panel, outline.shape,
      [](const Vec2d* points, unsigned int count, std::vector<Vec2d>& out) {
        GThinByAngularDeviation(points, count, 0.6, out);
      },
      kFirst, 0.9);
  const double extremes = DrawThinned(panel, outline.shape, GThinToMinimalDetail, kSecond, 1.4);
  const double vertices = outline.shape.GetTotalVertexCount();
  constexpr unsigned int kSea = 16;  // The line of open water.
  panel.Note(kSea, Formatted("%.0f vertices in all", vertices), Color4b(90, 96, 106, 255));
  panel.Note(kSea + 1, Formatted("%.0f, turns of more than 0.6 rad", turns), kFirst);
  panel.Note(kSea + 2, Formatted("%.0f, where it turns back in x or y", extremes), kSecond);
  panel.ScaleBar(20.0, "20 km");
  panel.Frame("f", "A stretch of the first outline, thinned");
}

// The box of an eighth of the width of a shape that holds most of its vertices: where there is most
// to thin.
Box2d DetailOf(const GPolygon& shape, double aspect) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, false);
  const Box2d& box = shape.GetBBox();
  const double width = box.xRange() / 8.0;
  const double height = width / aspect;
  Box2d best;
  std::ptrdiff_t most = -1;
  for (double x = box.xMin(); x + width <= box.xMax(); x += width / 2.0) {
    for (double y = box.yMin(); y + height <= box.yMax(); y += height / 2.0) {
      const Box2d candidate(x, y, x + width, y + height);
      const auto held = std::count_if(points.begin(), points.end(), [&](const Vec2d& point) {
        return candidate.Contains(point);
      });
      if (held > most) {
        most = held;
        best = candidate;
      }
    }
  }
  return best;
}

}  // namespace

void DrawOverlay(const Outline& first, const Outline& second, const Results& results,
                 const std::string& path) {
  constexpr double kMargin = 20.0;
  constexpr double kWidth = 250.0;
  constexpr double kHeading = 24.0;
  Box2d world = first.shape.GetBBox();
  world.ExtendBy(second.shape.GetBBox());
  world.Inflate(world.xRange() * 0.04, world.yRange() * 0.04);
  world.ExtendBy(world.MaxCorner() + Vec2d(0.0, world.yRange() * 0.05));  // room for notes
  const double height = kWidth * world.yRange() / world.xRange();
  const auto window = [&](unsigned int column, unsigned int row) {
    const double x = kMargin + column * (kWidth + kMargin);
    const double y = kMargin + kHeading + row * (height + kMargin + kHeading);
    return Box2d(x, y, x + kWidth, y + height);
  };
  const std::vector<Result>& all = results.All();
  examples::WritePicture(path, 3.0 * (kWidth + kMargin) + kMargin,
                         2.0 * (height + kMargin + kHeading) + kMargin, [&](_cairo* context) {
                           MapPanel inputs(context, window(0, 0), world);
                           DrawInputs(inputs, first, second, all);
                           MapPanel intersection(context, window(1, 0), world);
                           DrawIntersection(intersection, all[2]);
                           MapPanel both(context, window(2, 0), world);
                           DrawUnion(both, all[3]);
                           MapPanel difference(context, window(0, 1), world);
                           DrawDifference(difference, all[4]);
                           MapPanel exclusiveOr(context, window(1, 1), world);
                           DrawExclusiveOr(exclusiveOr, all[5]);
                           MapPanel thinned(context, window(2, 1),
                                            DetailOf(first.shape, kWidth / height));
                           DrawThinning(thinned, first);
                         });
}

}  // namespace vlm::overlay
