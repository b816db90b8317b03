#pragma once

/// \file
/// A text device that draws with plain lines: math text in the library's symbol sets, on Cairo.
///
///     vlm::examples::StrokedTextDevice device(context, 14.0, "KQ Roman");
///     const vlm::examples::LabelLayout label(device, "Area (km\\up35 {\\fs65 2}\\dn35 )");
///     label.Draw(device, vlm::Vec2d(40.0, 40.0));

#include <velum/core/GString.h>
#include <velum/fonts/StrokedFace.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/TextIF.h>
#include <examples/common/AttributedTextDevice.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

struct _cairo;

namespace vlm {
class CFaceInfo;
}

namespace vlm::examples {

/// Draws and measures text with polylines. Has identity and holds a reference to the context; one
/// thread uses it at a time.
///
/// *Text* is UTF-8. A character that windows-1252 has is looked for in the face under that code,
/// then in "KQ Roman" or "KQ Helv"; a Greek letter comes from "KQ Symbol", and some mathematical
/// signs from strokes of the device's own. What none of them has shows as an empty box.
///
/// *Units* are those of the context; the text height is the em of the set. Lines are as thick as a
/// pen is that suits the height, and thicker for a bold text; an italic one leans.
///
/// *Attributes*. The face is one of the symbol sets. Another name, such as a directive of a text
/// may give, stands for the set that the device was made with. Character set, pitch and family are
/// kept and have no effect. The rest stands in `AttributedTextDevice`.
class StrokedTextDevice final : public AttributedTextDevice {
 public:
  /// Makes a device with the default attributes but for the face and the height.
  ///
  /// *Errors*: `std::invalid_argument` if `context` is null; `std::runtime_error` that lists the
  /// sets if `face` is none; those of `CStrokedFace` if the set can't be read.
  StrokedTextDevice(struct _cairo* context, double height, const GString& face);
  StrokedTextDevice(const StrokedTextDevice&) = delete;
  StrokedTextDevice& operator=(const StrokedTextDevice&) = delete;
  ~StrokedTextDevice();

  /// Gives the box of a text whose baseline begins at (0, 0): across that of the ink, down from the
  /// ascent to the descent of the face.
  void GetBounds(const GString& text, Box2d& box) override;
  /// Gives the advance of a text, blanks at its ends included, and the cell height.
  void GetExtent(const GString& text, Vec2d& extent) override;
  /// Gives the measures of the face.
  void GetMetrics(_TXTMETRICS& metrics) override;
  /// Draws a text with the left end of its baseline at `position`; nothing if that is not finite.
  /// False if Cairo reports an error.
  bool Draw(const Vec2d& position, const GString& text) override;
  /// Draws a line as thick as those of letters; nothing if an end is not finite. False if Cairo
  /// reports an error.
  bool DrawLine(const Vec2d& from, const Vec2d& to) override;

 private:
  // A glyph of a text, with its advance and what its units measure in the context's.
  struct Letter {
    const CStrokedFace::GlyphInfo* glyph;
    double x;
    double scale;
  };
  struct Line {
    std::vector<Letter> letters;
    double advance = 0.0;
  };
  using Set = std::shared_ptr<const CStrokedFace>;

  Set FindSet(const std::string& name);
  Set CurrentSet();
  Line LayOut(const GString& text);
  const CStrokedFace::GlyphInfo* FindGlyph(char32_t character, Set& set);
  double PenWidth() const;
  double Slant() const;
  KQTextIF::_TXTMETRICS Measures();

  struct _cairo* context_;
  GString baseFace_;
  std::map<std::string, Set> sets_;
  std::map<char32_t, CStrokedFace::GlyphInfo> accented_;
};

}  // namespace vlm::examples
