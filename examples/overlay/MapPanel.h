#pragma once

/// \file
/// One map of the picture: a window of the world, framed and named.
///
///     vlm::overlay::MapPanel panel(context, page, world);
///     panel.Fill(shape, color);
///     panel.Frame("a", "Two outlines");

#include <velum/colour/Color4b.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/Vec2.h>

#include <string>
#include <vector>

struct _cairo;

namespace vlm::overlay {

/// Draws in the coordinates of a map, y upwards, inside a window of the page; widths of lines are
/// the page's points. Has identity and does not own the context.
class MapPanel {
 public:
  /// Fits `world` into `window`, whose y grows downwards.
  MapPanel(struct _cairo* context, const Box2d& window, const Box2d& world);
  MapPanel(const MapPanel&) = delete;
  MapPanel& operator=(const MapPanel&) = delete;

  /// Fills a shape by the parity of its contours.
  void Fill(const GPolygon& shape, Color4b color);
  /// Draws the outlines of a shape: all, or its holes alone.
  void Stroke(const GPolygon& shape, double width, Color4b color);
  void StrokeHoles(const GPolygon& shape, double width, Color4b color);
  /// Draws paths, `counts[i]` points each, one after the other in `points`.
  void Paths(const std::vector<Vec2d>& points, const std::vector<unsigned int>& counts,
             double width, Color4b color);
  /// Fills the triangles of a strip.
  void Strip(const Vec2d* points, unsigned int count, Color4b color);
  /// Marks points by dots of a radius in points of the page.
  void Dots(const std::vector<Vec2d>& points, double radius, Color4b color);
  /// Draws a bar of a length in the lower right corner, with its name.
  void ScaleBar(double length, const std::string& name);
  /// Draws the frame, and a heading above it: a letter and a math text.
  void Frame(const std::string& letter, const std::string& text);
  /// Writes a math text into the window, `line` lines below its top.
  void Note(unsigned int line, const std::string& text, Color4b color);

 private:
  [[nodiscard]] Vec2d OnPage(const Vec2d& point) const;
  void Trace(const Vec2d* points, unsigned int count);
  void Paper(const Box2d& box);
  void Text(const std::string& text, const Vec2d& position, double height, Color4b color);

  struct _cairo* context_;
  Box2d window_;
  double scale_;
  Vec2d origin_;  // of the map, on the page
};

}  // namespace vlm::overlay
