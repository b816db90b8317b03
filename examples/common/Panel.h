#pragma once

/// \file
/// One panel of a picture: a window with two axes, and what is drawn in their units.
///
///     Panel panel(context, window, MakeAxis(0, 10, 5), MakeAxis(0, 100, 5));
///     panel.Dots({{Vec2d(5, 50), 1.5, color}});
///     panel.Frame();
///     panel.TicksBelow("Depth (m)");

#include <velum/colour/Color4b.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/Axis.h>

#include <string>
#include <vector>

struct _cairo;

namespace vlm::examples {

/// A dot of a panel. A plain value.
struct PanelDot {
  Vec2d point;    ///< by the axes
  double radius;  ///< in the page's points
  Color4b color;
};

/// A window of the page with axes, y upwards. Has identity and does not own the context. Widths and
/// radii are the page's points; what is drawn keeps to the window.
class Panel {
 public:
  /// Makes a panel and lays its ground.
  Panel(struct _cairo* context, const Box2d& window, Axis x, Axis y);
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// Fills a rectangle between two corners and strokes its edge.
  void Bar(const Vec2d& from, const Vec2d& to, Color4b fill, Color4b edge);
  /// Draws a path.
  void Path(const std::vector<Vec2d>& points, double width, Color4b color);
  /// Fills dots, one upon the other.
  void Dots(const std::vector<PanelDot>& dots);

  /// Draws the frame.
  void Frame();
  /// Draws the ticks of an axis with their labels, and its title beyond these.
  void TicksBelow(const std::string& title);
  void TicksLeft(const std::string& title);

  /// Where a point of the axes stands on the page.
  [[nodiscard]] Vec2d OnPage(const Vec2d& point) const;

 private:
  void Tick(const Vec2d& from, const Vec2d& to);

  struct _cairo* context_;
  Box2d window_;
  Axis x_;
  Axis y_;
};

}  // namespace vlm::examples
