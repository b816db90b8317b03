#pragma once

/// \file
/// A text in any script, piece by piece, with the face and the direction of each piece.
///
///     const vlm::specimen::TextSheet sheet("Depth עומק 12 m", vlm::specimen::FindFace("Arial"));
///     vlm::examples::WritePicture("text.png", sheet.Width(), sheet.Height(),
///                                 [&](cairo_t* context) { sheet.Draw(context); });

#include <examples/specimen/NamePlaces.h>
#include <examples/specimen/Page.h>
#include <examples/specimen/ShapedText.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct _cairo;

namespace vlm::specimen {

/// Shows lines of text. Under each piece stand a bracket, and the face and the direction of the
/// piece; lines that are too long are broken where their scripts allow it. Lengths are points.
class TextSheet {
 public:
  /// Cuts a text in UTF-8, of one line or of several, into pieces and shapes them.
  ///
  /// *Errors*: `std::runtime_error` for a text of too many runs, and for a word that is wider than
  /// a page can be; those of `UCS2Decomp` and of font files.
  TextSheet(const std::string& text, unsigned int face);

  /// The width of the page.
  [[nodiscard]] double Width() const { return width_; }
  /// The height of the page.
  [[nodiscard]] double Height() const { return height_; }
  /// Draws the page with its top left corner at the origin of the context.
  void Draw(struct _cairo* context) const;

  /// The pieces in words, one a line: number, direction, face and text.
  [[nodiscard]] const std::vector<std::string>& Pieces() const { return told_; }

 private:
  // What stands in a line without a break: a word, or a part of one that belongs to a piece.
  struct Word {
    ShapedText shaped;
    std::size_t piece;
    int level;
  };
  struct Line {
    std::vector<Word> words;  // from left to right
    std::vector<double> lefts;
    std::vector<Bracket> brackets;    // of each piece, as far as it stands in the line
    std::vector<std::size_t> pieces;  // of each bracket
    double baseline = 0.0;
  };

  void AddText(const std::string& text, const std::shared_ptr<const CFaceInfo>& face, Page& page);
  std::size_t AddPiece(const TextPiece& piece);
  void AddLine(std::vector<Word> words, Page& page);
  void AddBrackets(Line& line, Page& page) const;

  mutable Shaper shaper_;
  std::vector<Line> lines_;
  std::vector<std::string> names_;  // of each piece: its face and direction
  std::vector<std::string> told_;
  double width_ = 0.0;
  double height_ = 0.0;
};

}  // namespace vlm::specimen
