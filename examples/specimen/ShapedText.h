#pragma once

/// \file
/// A piece of text as the glyphs that a script makes of it, shaped by HarfBuzz.
///
///     vlm::specimen::Shaper shaper;
///     const auto shaped = shaper.Shape(piece);
///     shaper.Draw(context, shaped, vlm::Vec2d(40.0, 60.0), 24.0);

#include <velum/geometry/Vec2.h>
#include <examples/specimen/FacePainter.h>
#include <examples/specimen/TextPieces.h>

#include <map>
#include <memory>
#include <vector>

struct _cairo;

namespace vlm::specimen {

/// Glyphs from left to right. A plain value; lengths are for an em of 1, with y up.
struct ShapedText {
  struct Glyph {
    unsigned int glyph;
    Vec2d position;
  };
  std::shared_ptr<const CFaceInfo> face;
  std::vector<Glyph> glyphs;  ///< of the font; empty in a stroked face
  GString codes;              ///< of a stroked face
  double advance = 0.0;
};

/// Shapes and draws pieces of text. Has identity and keeps fonts open; one thread uses it at a
/// time.
class Shaper {
 public:
  Shaper();
  Shaper(const Shaper&) = delete;
  Shaper& operator=(const Shaper&) = delete;
  ~Shaper();

  /// Finds the glyphs of a piece.
  ///
  /// *Errors*: `std::runtime_error` if the face has no file that can be read.
  [[nodiscard]] ShapedText Shape(const TextPiece& piece);

  /// Draws shaped text in the context's colour, with the left end of its baseline at `position`.
  void Draw(struct _cairo* context, const ShapedText& text, const Vec2d& position, double height);

 private:
  struct Font;

  Font& FontOf(const CFaceInfo& face);

  std::map<const CFaceInfo*, std::unique_ptr<Font>> fonts_;
  FacePainter painter_;
};

}  // namespace vlm::specimen
