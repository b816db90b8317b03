#pragma once

/// \file
/// The words and rules of a page around the faces that it shows.
///
///     vlm::specimen::Page page(context);
///     page.Write(vlm::specimen::kTitle, 40.0, 60.0, "DejaVu Sans");

#include <velum/colour/Color4b.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/CairoTextDevice.h>

#include <string>

struct _cairo;

namespace vlm::specimen {

inline constexpr Color4b kInk(24, 24, 28, 255);          ///< of what is shown
inline constexpr Color4b kPale(96, 100, 108, 255);       ///< of what is told of it
inline constexpr Color4b kFaint(150, 154, 162, 255);     ///< of codes and keys
inline constexpr Color4b kHairline(214, 217, 222, 255);  ///< of grids
inline constexpr Color4b kBlue(70, 124, 200, 255);       ///< of lines of measure
inline constexpr Color4b kRed(214, 74, 60, 255);         ///< of baselines

/// How words are written. A plain value.
struct Type {
  unsigned int weight;
  double height;
  Color4b color;
};
inline constexpr Type kTitle{7, 22.0, kInk};    ///< of a page
inline constexpr Type kHeading{7, 10.0, kInk};  ///< of a part of a page
inline constexpr Type kBody{4, 9.0, kPale};     ///< sentences
inline constexpr Type kSmall{4, 6.5, kFaint};   ///< codes and keys

/// Which point of a text stands at its position.
enum class Anchor { Left, Center, Right };

/// Writes on a context, which it holds a reference to. Units are points, y grows downwards.
class Page {
 public:
  /// Makes a page over a context.
  explicit Page(struct _cairo* context);

  /// The context.
  [[nodiscard]] struct _cairo* Context() const { return context_; }
  /// The width of a text.
  [[nodiscard]] double Width(const Type& type, const std::string& text);

  /// Writes a text in UTF-8 with its baseline through (x, y), and gives its width.
  double Write(const Type& type, double x, double y, const std::string& text,
               Anchor anchor = Anchor::Left);
  /// Draws a thin line.
  void Rule(const Vec2d& from, const Vec2d& to, Color4b color, double width = 0.5);
  /// Fills a rectangle.
  void Fill(const Box2d& box, Color4b color);

 private:
  void Set(const Type& type);

  struct _cairo* context_;
  examples::CairoTextDevice device_;
};

}  // namespace vlm::specimen
