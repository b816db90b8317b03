#include <velum/fonts/detail/sets/GlyphShapes.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vlm::sets {

namespace {

std::size_t PointsOf(const Glyph& glyph) {
  std::size_t count = 0;
  for (const Polyline& line : glyph.lines) count += line.size();
  return count;
}

/// Joins each line to one that ends where it begins.
void JoinLines(Glyph& glyph) {
  auto& lines = glyph.lines;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    for (std::size_t j = i + 1; j < lines.size();) {
      if (lines[j].front() == lines[i].back() && lines[i].front() != lines[i].back()) {
        lines[i].insert(lines[i].end(), lines[j].begin() + 1, lines[j].end());
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(j));
        j = i + 1;
      } else {
        ++j;
      }
    }
  }
}

double Distance(Point p, Point a, Point b) {
  const double dx = b.x - a.x, dy = b.y - a.y, px = p.x - a.x, py = p.y - a.y;
  const double length = dx * dx + dy * dy;
  if (length == 0) return std::hypot(px, py);
  const double t = std::clamp((px * dx + py * dy) / length, 0.0, 1.0);
  return std::hypot(px - t * dx, py - t * dy);
}

/// Appends the points of a line behind `first` up to `last` that its shape needs.
void Simplify(const Polyline& line, std::size_t first, std::size_t last, double tolerance,
              Polyline& out) {
  std::size_t farthest = first;
  double distance = tolerance;
  for (std::size_t i = first + 1; i < last; ++i) {
    const double d = Distance(line[i], line[first], line[last]);
    if (d > distance) {
      distance = d;
      farthest = i;
    }
  }
  if (farthest == first) {
    out.push_back(line[last]);
    return;
  }
  Simplify(line, first, farthest, tolerance, out);
  Simplify(line, farthest, last, tolerance, out);
}

}  // namespace

void MakeFixedPitch(int width, Face& face) {
  constexpr int kMargin = 1;
  for (auto& [code, glyph] : face) {
    const double middle = (glyph.left + glyph.right) / 2.0;
    const int old = glyph.right - glyph.left;
    const double scale = old > width ? double(width - 2 * kMargin) / old : 1.0;
    for (Polyline& line : glyph.lines) {
      for (Point& point : line) {
        point.x = static_cast<int>(std::lround((point.x - middle) * scale));
      }
    }
    glyph.left = -(width / 2);
    glyph.right = glyph.left + width;
  }
}

void BeginAtZero(Face& face) {
  for (auto& [code, glyph] : face) {
    for (Polyline& line : glyph.lines) {
      for (Point& point : line) point.x -= glyph.left;
    }
    glyph.right -= std::exchange(glyph.left, 0);
  }
}

void MoveUp(int height, Face& face) {
  for (auto& [code, glyph] : face) {
    for (Polyline& line : glyph.lines) {
      for (Point& point : line) point.y += height;
    }
  }
}

void FitIn(int low, int high, int width, Face& face) {
  for (auto& [code, glyph] : face) {
    int lowest = low;
    int highest = high;
    for (const Polyline& line : glyph.lines) {
      for (const Point& point : line) {
        lowest = std::min(lowest, point.y);
        highest = std::max(highest, point.y);
      }
    }
    const double scale = double(high - low) / (highest - lowest);
    const auto scaled = [scale](int value) { return static_cast<int>(std::lround(value * scale)); };
    for (Polyline& line : glyph.lines) {
      for (Point& point : line) point = {scaled(point.x), low + scaled(point.y - lowest)};
    }
    glyph.left = scaled(glyph.left);
    glyph.right = scaled(glyph.right);
    const int missing = std::max(width - (glyph.right - glyph.left), 0);
    glyph.left -= missing / 2;
    glyph.right += missing - missing / 2;
  }
}

void LimitPoints(std::size_t most, Glyph& glyph) {
  auto& lines = glyph.lines;
  if (PointsOf(glyph) > most) JoinLines(glyph);
  const auto isLong = [](const Polyline& line) { return line.size() > 2; };
  for (double tolerance = 0.5;
       PointsOf(glyph) > most && std::any_of(lines.begin(), lines.end(), isLong);
       tolerance += 0.25) {
    for (Polyline& line : lines) {
      Polyline simple{line.front()};
      Simplify(line, 0, line.size() - 1, tolerance, simple);
      line = std::move(simple);
    }
  }
  const auto length = [](const Polyline& line) {
    return std::hypot(line.back().x - line.front().x, line.back().y - line.front().y);
  };
  while (PointsOf(glyph) > most) {
    lines.erase(std::min_element(
        lines.begin(), lines.end(),
        [&](const Polyline& a, const Polyline& b) { return length(a) < length(b); }));
  }
}

}  // namespace vlm::sets
