#pragma once

/// \file
/// A text device on Cairo and Pango: what math text is measured and drawn with in the examples.
///
///     cairo_t* context = ...;                         // of a PNG, SVG or PDF surface
///     vlm::examples::CairoTextDevice device(context, 12.0);
///     vlm::CMTTextIF textIF(device);
///     vlm::CMTContext mathText(textIF, 8.0);
///     auto label = std::make_shared<vlm::CMTMultiLineElement>(textIF);
///     const char* text = "Area (km\\up35 {\\fs65 2}\\dn35 )";
///     if (mathText.Parse(text, label) == vlm::CMTContext::RETVAL_SUCCESS) {
///       label->DrawUsingTextIF(textIF, vlm::Vec2d(72.0, 72.0));
///     }

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/AttributedTextDevice.h>

#include <map>
#include <memory>
#include <string>
#include <tuple>

struct _cairo;
struct _PangoLayout;

namespace vlm::examples {

/// Makes a colour, alpha included, the source of what a Cairo context draws next.
void SetSourceColor(struct _cairo* context, Color4b color);

/// Draws and measures text on a Cairo context. Has identity and holds a reference to the context;
/// one thread uses it at a time.
///
/// *Text* is UTF-8; a malformed byte shows as U+FFFD. Where the face lacks a character, Pango takes
/// it from another.
///
/// *Units* are those of the context when the device draws. The text height is the em: 12 on a PDF
/// page is 12 points. Nothing is hinted or rounded, so a text measures the same at every scale and
/// in every output format. What has a height of 0, or one that no page could show, measures as it
/// should and isn't drawn.
///
/// *Attributes*. A weight code times 100 is the usual number of a weight: 4 is regular, 7 is bold.
/// Style bits 1, 2 and 4 are italic, underline and strikeout. Character set, pitch and family are
/// kept and have no effect: the face name and Pango's fallback decide. The rest stands in
/// `AttributedTextDevice`.
class CairoTextDevice final : public AttributedTextDevice {
 public:
  /// Makes a device with the default attributes (black, "Arial", regular, left, baseline) and this
  /// height of the em.
  ///
  /// *Errors*: `std::invalid_argument` if `context` is null.
  CairoTextDevice(struct _cairo* context, double height);
  CairoTextDevice(const CairoTextDevice&) = delete;
  CairoTextDevice& operator=(const CairoTextDevice&) = delete;
  ~CairoTextDevice();

  /// Gives the box of a text whose baseline begins at (0, 0).
  ///
  /// Across, the box is that of the ink, so that an overhang shows; an underlined or struck-out
  /// text reaches over its whole advance, and a blank one is 0 wide. Down, it runs from the ascent
  /// to the descent of the face, whatever the letters are, so that lines set one upon another are
  /// evenly spaced.
  void GetBounds(const GString& text, Box2d& box) override;

  /// Gives the advance of a text, blanks at its ends included, and the cell height.
  void GetExtent(const GString& text, Vec2d& extent) override;

  /// Gives the metrics of the face, from its font file; see ReadEmMetrics for the signs.
  ///
  /// *Errors*: `std::runtime_error` if the face has no file that can be read.
  void GetMetrics(_TXTMETRICS& metrics) override;

  /// Draws a text with the left end of its baseline at `position`; nothing if that is not finite.
  /// False if Cairo reports an error.
  bool Draw(const Vec2d& position, const GString& text) override;

  /// Draws a stroke as thick as the rules of a formula, which is a share of the height; nothing if
  /// an end is not finite. False if Cairo reports an error.
  ///
  /// The stroke ends where it is told, so that two strokes that go on from one point join without a
  /// knot.
  bool DrawLine(const Vec2d& from, const Vec2d& to) override;

 private:
  using FontKey = std::tuple<std::string, unsigned int, bool>;  // face, weight, italic
  struct Font;

  const Font& CurrentFont();
  const Font& LayOut(const GString& text);

  struct _cairo* context_;
  struct _PangoLayout* layout_;
  std::map<FontKey, std::unique_ptr<Font>> fonts_;
};

}  // namespace vlm::examples
