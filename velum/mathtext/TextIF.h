#pragma once

/// \file
/// The device that math text is measured and drawn on. An application implements `KQTextIF` for
/// each of its devices (screen, printer, metafile) and gives it to the library through `CMTTextIF`
/// (MTTextIF.h):
///
///     MyDevice device;  // implements vlm::KQTextIF
///     vlm::CMTTextIF textIF(device);
///     textIF.SetFace("DejaVu Sans");
///     textIF.SetHeight(12.0);

#include <velum/colour/Color4b.h>
#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>

namespace vlm {

/// Weight codes of text.
enum TextWeight : unsigned int {
  TEXT_WEIGHT_NORMAL = 4,  ///< the default
  TEXT_WEIGHT_BOLD = 7     ///< bold
};

/// Style bits of text; a style is a sum of them, and 0 is upright.
enum TextStyle : unsigned int {
  TEXT_STYLE_ITALIC = 1,     ///< slanted
  TEXT_STYLE_UNDERLINE = 2,  ///< a line below
  TEXT_STYLE_STRIKEOUT = 4   ///< a line through the middle
};

/// How the lines of a block stand to each other. A block's anchor is a matter of `HAlignment`.
enum HorizJustify : unsigned int {
  HORIZ_JUSTIFY_LEFT = 1,    ///< they begin below each other: the default
  HORIZ_JUSTIFY_CENTER = 2,  ///< their middles stand below each other
  HORIZ_JUSTIFY_RIGHT = 3    ///< they end below each other
};

/// A drawing device for text: a set of text attributes, a stack to keep them on, measures, and two
/// things to draw.
///
/// Implemented by applications. It has identity; whoever hands one to the library goes on owning
/// it, and the library never destroys one. One thread uses it at a time. It may throw: the library
/// lets the exception pass and restores the attributes that it changed.
///
/// *Units*. Lengths are in the device's own units. The origin of a text is the left end of its
/// baseline and y grows downwards, so that what stands above the baseline has a negative y. The
/// measures are those of the attributes in force at the call.
///
/// *Attributes*, with the value that math text elements begin with: colour (black, alpha 255), face
/// ("Arial"), weight (4, see `TextWeight`), style (0, see `TextStyle`), character set (1), pitch
/// (2), family (2), horizontal alignment (0, see `HAlignment`), vertical alignment (1, see
/// `VAlignment`), horizontal justify (1, see `HorizJustify`), height (the text height). Character
/// set, pitch and family help to choose a face; math text sets all three to 0 when it changes the
/// face. A device keeps alignments and justify, but `Draw` doesn't heed them: it takes the
/// baseline's left end.
class VELUM_API KQTextIF {
 public:
  /// What a face measures, in the device's units unless said otherwise.
  struct _TXTMETRICS {
    unsigned int emSquare;        ///< units per em of the face
    double height;                ///< of the cell
    double ascent;                ///< of the cell above the baseline
    double descent;               ///< of the cell below the baseline
    double internalLeading;       ///< part of the height that accents take
    double externalLeading;       ///< distance that the face asks for between two cells
    double aveCharWidth;          ///< average character width; tab stops are multiples of it
    double maxCharWidth;          ///< widest character
    double italicAngle;           ///< in radians, of an italic face
    double simulatedItalicAngle;  ///< in radians, where the device slants an upright face
    double minimumPpem;           ///< smallest legible size, in pixels per em
    double strikeoutSize;         ///< thickness of the line
    double strikeoutPosition;     ///< of the line, from the baseline
    double underscoreSize;        ///< thickness of the line
    double underscorePosition;    ///< of the line, from the baseline
    unsigned short defaultChar;   ///< code shown in place of an undefined character
    unsigned short breakChar;     ///< code at which words are parted
    unsigned short reserved;      ///< 0
  };

  /// Sets the colour of text and lines.
  virtual void SetColor(Color4b color) = 0;
  /// Gives the colour of text and lines.
  virtual Color4b GetColor() const = 0;
  /// Sets the name of the face.
  virtual void SetFace(const GString& face) = 0;
  /// Gives the name of the face.
  virtual GString GetFace() const = 0;
  /// Sets the weight code.
  virtual void SetWeight(unsigned int weight) = 0;
  /// Gives the weight code.
  virtual unsigned int GetWeight() const = 0;
  /// Sets the style bits.
  virtual void SetStyle(unsigned int style) = 0;
  /// Gives the style bits.
  virtual unsigned int GetStyle() const = 0;
  /// Sets the character set code.
  virtual void SetCharset(unsigned int charset) = 0;
  /// Gives the character set code.
  virtual unsigned int GetCharset() const = 0;
  /// Sets the pitch code.
  virtual void SetPitch(unsigned int pitch) = 0;
  /// Gives the pitch code.
  virtual unsigned int GetPitch() const = 0;
  /// Sets the family code.
  virtual void SetFamily(unsigned int family) = 0;
  /// Gives the family code.
  virtual unsigned int GetFamily() const = 0;
  /// Sets the horizontal alignment, an `HAlignment`.
  virtual void SetHorizAlignment(unsigned int alignment) = 0;
  /// Gives the horizontal alignment.
  virtual unsigned int GetHorizAlignment() const = 0;
  /// Sets the vertical alignment, a `VAlignment`.
  virtual void SetVertAlignment(unsigned int alignment) = 0;
  /// Gives the vertical alignment.
  virtual unsigned int GetVertAlignment() const = 0;
  /// Sets the text height.
  virtual void SetHeight(double height) = 0;
  /// Gives the text height.
  virtual double GetHeight() const = 0;
  /// Sets the justification of lines, a `HorizJustify`.
  virtual void SetHorizJustify(unsigned int justify) = 0;
  /// Gives the justification of lines.
  virtual unsigned int GetHorizJustify() const = 0;

  /// Pushes all attributes on the device's stack. Only `CMTDirectTextIF` calls it.
  virtual void PreserveState() = 0;
  /// Takes the attributes back from the stack. Only `CMTDirectTextIF` calls it. With nothing pushed
  /// it must do nothing.
  virtual void RestoreState() = 0;

  /// Gives the box around the ink of a text that begins at (0, 0). `box` comes in empty (inverted).
  virtual void GetBounds(const GString& text, Box2d& box) = 0;
  /// Gives the advance of a text as x and the cell height as y.
  virtual void GetExtent(const GString& text, Vec2d& extent) = 0;
  /// Fills the measures of the face.
  virtual void GetMetrics(KQTextIF::_TXTMETRICS& metrics) = 0;
  /// Draws a text from the left end of its baseline; true if that went well.
  virtual bool Draw(const Vec2d& position, const GString& text) = 0;
  /// Draws a straight line in the present colour; true if that went well.
  virtual bool DrawLine(const Vec2d& from, const Vec2d& to) = 0;

 protected:
  /// No attributes: a device keeps its own.
  KQTextIF() noexcept;
  /// Copies nothing; for devices that can be copied.
  KQTextIF(const KQTextIF&) = default;
  /// Copies nothing; for devices that can be copied.
  KQTextIF& operator=(const KQTextIF&) = default;
  ~KQTextIF() = default;
};

}  // namespace vlm
