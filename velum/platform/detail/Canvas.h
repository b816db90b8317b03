#pragma once

/// \file
/// A surface by its own pixels, for drawing contexts: lines that combine with what is there, areas,
/// copies.
///
///     const auto canvas = vlm::platform::MakeCanvas(context);
///     canvas->Fill({0, 0, 10, 10}, 0x000000FF);  // red
///
/// Coordinates count the pixels of the surface, whatever matrix its context and whatever scale the
/// surface has, from where its origin lies; those of a surface of vectors count its units. Colours
/// are red, green, blue from the lowest byte up. Nothing is painted out of the clip of the context.

#include <velum/platform/Types.h>
#include <velum/platform/detail/Painting.h>

#include <cstddef>
#include <cstdint>
#include <memory>

struct _cairo;

namespace vlm::platform {

/// What the lines of a drawing context are drawn with.
struct CanvasPen {
  std::uint32_t color;     ///< The colour.
  int width;               ///< The width in pixels, at least 1.
  bool isDotted;           ///< Three pixels are drawn, three are gap, in turn.
  bool hasGapColor;        ///< The gaps are drawn too.
  std::uint32_t gapColor;  ///< What they are drawn in.
  int operation;           ///< How colours combine with what is there, from 1 to 16.
};

/// A surface that lines, areas and copies are put on. Has identity; one thread at a time.
class Canvas {
 public:
  /// Holds on to a context that is good; `MakeCanvas` looks at it first.
  explicit Canvas(struct _cairo* context) noexcept;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas();

  /// The box of what can be painted; `right` and `bottom` are behind it.
  [[nodiscard]] RECT ClipBox() const;
  /// Draws lines from each point to the next, without the last point. Every pixel is changed once,
  /// so that an operation which is its own inverse is undone by the same call.
  ///
  /// - On a surface of vectors: lines that replace what is there are drawn as vectors; false for
  ///   other operations.
  /// - A clip that is not made of rectangles of whole pixels, a surface without colours: false.
  bool Lines(const CanvasPen& pen, const POINT* points, std::size_t count);
  /// Fills a box with an opaque colour.
  bool Fill(const RECT& box, std::uint32_t color);
  /// Copies the pixels of a canvas, from `at` on, into a box, with their alpha; where it has none,
  /// the box stays. False for the canvas itself.
  bool Copy(const RECT& box, const Canvas& from, const POINT& at);

 private:
  struct _cairo* context_;
};

/// Makes a canvas on what a Cairo context paints on, to which it holds on; null for null and for a
/// context that has failed. *Errors*: `std::bad_alloc`.
[[nodiscard]] std::unique_ptr<Canvas> MakeCanvas(struct _cairo* context);
/// Makes a canvas on pixels, to which it holds on. *Errors*: `std::bad_alloc`.
[[nodiscard]] std::unique_ptr<Canvas> MakeCanvas(PixelSurface& surface);

}  // namespace vlm::platform
