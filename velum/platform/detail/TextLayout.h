#pragma once

/// \file
/// Texts laid out for painting, the same for measuring and drawing and for every surface.
///
///     double width, height;
///     vlm::platform::TextLayout::OfThread().Set("1.25", {"DejaVu Sans", 10, false});
///     vlm::platform::TextLayout::OfThread().Measure(width, height);

#include <velum/platform/detail/Painting.h>

#include <string_view>

struct _PangoLayout;

namespace vlm::platform {

/// One layout of the calling thread, which takes one text after the other.
///
/// Pango's fonts belong to one thread at a time, so that each thread has its own, until it ends.
/// Letters are fitted to pixels down alone, which leaves every width as it is, and no width is
/// rounded.
class TextLayout {
 public:
  /// The layout of the calling thread.
  [[nodiscard]] static TextLayout& OfThread();
  TextLayout(const TextLayout&) = delete;
  TextLayout& operator=(const TextLayout&) = delete;

  /// Takes a text up to its first terminator, in a font.
  void Set(std::string_view text, const PaintFont& font);
  /// The width of the widest line and the height of all lines, in pixels.
  void Measure(double& width, double& height);
  /// Draws the text with its left top corner at a point of the context, in its colour; its lines
  /// stand as `across` says. On a surface of pixels, the first baseline lies on a whole one if it
  /// is level or upright.
  void Draw(struct _cairo* context, const PaintPoint& corner, PaintAlignment across);

 private:
  TextLayout();
  ~TextLayout();

  struct _PangoLayout* layout_;
  PaintFont font_{};
};

}  // namespace vlm::platform
