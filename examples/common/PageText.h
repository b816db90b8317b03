#pragma once

/// \file
/// Texts of a page: aligned, made to fit, upright or upward.
///
///     DrawText(context, Vec2d(300, 20), {"Depth (m)", 9.5, Align::Center, kInk, 200.0});

#include <velum/colour/Color4b.h>
#include <velum/geometry/Vec2.h>

#include <cstddef>
#include <string>
#include <string_view>

struct _cairo;

namespace vlm::examples {

/// The ink of texts and frames.
extern const Color4b kInk;
/// The ink of what stands back.
extern const Color4b kPale;

/// Where a text stands beside its point.
enum class Align { Left, Center, Right };

/// A text of a page, a math text. A plain value.
struct PageText {
  std::string text;
  double height = 9.0;  ///< of the em
  Align align = Align::Left;
  Color4b color = kInk;
  double room = 1e9;      ///< a wider text is drawn smaller
  bool isUpward = false;  ///< whether it runs from the bottom to the top
};

/// Draws a text with its baseline through `position`.
///
/// *Errors*: `std::runtime_error` for a text that is wrong.
void DrawText(struct _cairo* context, const Vec2d& position, const PageText& text);

/// The width of a math text at a height of the em.
///
/// *Errors*: those of `DrawText`.
[[nodiscard]] double TextWidth(struct _cairo* context, const std::string& text, double height);

/// A text as a math text that shows it as `Shown` does, cut to `longest` bytes.
[[nodiscard]] std::string Verbatim(std::string_view text, std::size_t longest = 40);

}  // namespace vlm::examples
