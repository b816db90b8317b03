#pragma once

/// \file
/// Text in any face: outline glyphs as polygons from the cache of glyphs, stroked ones as lines.
///
///     vlm::specimen::FacePainter painter;
///     painter.Draw(context, face, "Depth (m)", vlm::Vec2d(40.0, 60.0), 14.0);

#include <velum/core/GString.h>
#include <velum/fonts/PolygonalGlyphCache.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/GlyphFlattener.h>

struct _cairo;

namespace vlm::specimen {

/// Draws 8-bit text, whose bytes are codes as `CFaceInfo` tells, in the context's colour. Faces are
/// told by their index in the list; heights are those of the em. Has identity and keeps the glyphs
/// that it used last; one thread uses it at a time.
class FacePainter {
 public:
  /// Makes a painter.
  ///
  /// *Errors*: those of `CSystemFaceInfo`.
  FacePainter();

  /// The width of a text.
  [[nodiscard]] static double Advance(unsigned int face, const GString& text, double height);

  /// Draws a text with the left end of its baseline at `position`.
  ///
  /// *Errors*: `std::runtime_error` if the face has no file that can be read.
  void Draw(struct _cairo* context, unsigned int face, const GString& text, Vec2d position,
            double height);

 private:
  examples::GlyphFlattener flattener_;
  PolygonalGlyphCache cache_;
};

}  // namespace vlm::specimen
