#pragma once

/// \file
/// Painting on surfaces, in the terms that the painting classes need.
///
///     const auto surface = vlm::platform::PixelSurface::Make(320, 200);
///     const auto painter = vlm::platform::MakePainter(*surface);
///     painter->FillRectangle(0xFFFFFFFF, {0, 0, 320, 200});
///
/// A pixel is 1/96 inch. Coordinates of lines and ellipses are those of the centres of pixels,
/// those of filled rectangles count pixels. Colours are alpha, red, green, blue from the highest
/// byte down.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct _cairo;
struct _cairo_surface;

namespace vlm::platform {

/// How painting went.
enum class PaintResult { kDone, kNoMemory, kFailed };

/// A rectangle by its corner and size.
struct PaintBox {
  double x;       ///< The left edge.
  double y;       ///< The upper edge.
  double width;   ///< The width.
  double height;  ///< The height.
};

/// A point.
struct PaintPoint {
  double x;  ///< Across.
  double y;  ///< Down.
};

/// What strokes are drawn with.
struct PaintPen {
  std::uint32_t argb;  ///< The colour.
  double width;        ///< The width in pixels.
};

/// What texts are set in.
struct PaintFont {
  std::string family;  ///< The family, UTF-8.
  double points;       ///< The height of the em in points of 1/72 inch.
  bool isBold;         ///< Bold, not regular.
};

/// Where a text stands, seen from its point.
enum class PaintAlignment { kNear, kCentre, kFar };

/// Paints on one surface. Has identity; one thread at a time. Texts are UTF-8.
class Painter {
 public:
  Painter() = default;
  Painter(const Painter&) = delete;
  Painter& operator=(const Painter&) = delete;
  virtual ~Painter();

  /// Fills the pixels of a rectangle.
  virtual PaintResult FillRectangle(std::uint32_t argb, const PaintBox& box) = 0;
  /// Draws the outline of a rectangle.
  virtual PaintResult DrawRectangle(const PaintPen& pen, const PaintBox& box) = 0;
  /// Draws lines from each of two or more points to the next.
  virtual PaintResult DrawLines(const PaintPen& pen, const PaintPoint* points,
                                std::size_t count) = 0;
  /// Draws an ellipse inside of a box.
  virtual PaintResult DrawEllipse(const PaintPen& pen, const PaintBox& box) = 0;
  /// Fills an ellipse inside of a box.
  virtual PaintResult FillEllipse(std::uint32_t argb, const PaintBox& box) = 0;

  /// Measures a text: the width of its widest line, the height of its lines. The empty text is a
  /// line without width.
  virtual PaintResult MeasureText(std::string_view text, const PaintFont& font, double& width,
                                  double& height) = 0;
  /// Draws a text at a point.
  virtual PaintResult DrawText(std::string_view text, const PaintFont& font, const PaintPoint& at,
                               PaintAlignment across, PaintAlignment down, std::uint32_t argb) = 0;

  /// Moves what comes next, before what is there.
  virtual PaintResult Translate(double dx, double dy) = 0;
  /// Turns what comes next by degrees clockwise, before what is there.
  virtual PaintResult Rotate(double degrees) = 0;
  /// Takes away what `Translate` and `Rotate` did.
  virtual PaintResult ResetTransform() = 0;
  /// Paints inside of a rectangle alone, in place of that of an earlier call.
  virtual PaintResult SetClip(const PaintBox& box) = 0;
  /// Takes the clip away.
  virtual PaintResult ResetClip() = 0;
  /// Paints inside of a rectangle alone, where the clip leaves it, in place of that of an earlier
  /// call: for code that paints on a caller's painter and leaves the caller's clip as it is.
  virtual PaintResult SetInnerClip(const PaintBox& box) = 0;
  /// Takes the inner clip away; the clip stays.
  virtual PaintResult ResetInnerClip() = 0;

  /// What it paints on, for `MakeCanvas`; null if it is no Cairo context.
  [[nodiscard]] virtual struct _cairo* Context() const noexcept { return nullptr; }
};

/// Pixels in memory: 32 bits, alpha, red, green, blue from the highest down, colours multiplied by
/// alpha. Transparent at first.
class PixelSurface {
 public:
  /// Pixels of a size from 1 to 32767; null without memory.
  [[nodiscard]] static std::unique_ptr<PixelSurface> Make(int width, int height);
  PixelSurface(const PixelSurface&) = delete;
  PixelSurface& operator=(const PixelSurface&) = delete;
  ~PixelSurface();

  /// The columns.
  [[nodiscard]] int Width() const noexcept;
  /// The rows.
  [[nodiscard]] int Height() const noexcept;
  /// The bytes from one row to the next.
  [[nodiscard]] int Stride() const noexcept;
  /// The first row. What is written through it is told by `MarkWritten`.
  [[nodiscard]] std::uint8_t* Pixels() noexcept;
  /// Tells that pixels were written.
  void MarkWritten() noexcept;
  /// The surface as Cairo knows it.
  [[nodiscard]] struct _cairo_surface* Surface() const noexcept { return surface_; }

 private:
  explicit PixelSurface(struct _cairo_surface* surface) noexcept : surface_(surface) {}

  struct _cairo_surface* surface_;
};

/// How writing a picture went.
enum class SaveResult { kDone, kNoMemory, kNoFile };

/// Writes pixels as a PNG file to a path of the library, which is replaced when the file is whole.
/// errno has the reason for `kNoFile`.
[[nodiscard]] SaveResult SavePng(PixelSurface& surface, const char* path);

/// Makes a painter on pixels, which it holds on to; null if Cairo can't. *Errors*:
/// `std::bad_alloc`.
[[nodiscard]] std::unique_ptr<Painter> MakePainter(PixelSurface& surface);
/// Makes a painter on a Cairo context, to which it holds on; null for null and for a context that
/// has failed. *Errors*: `std::bad_alloc`.
[[nodiscard]] std::unique_ptr<Painter> MakePainter(struct _cairo* context);

}  // namespace vlm::platform
