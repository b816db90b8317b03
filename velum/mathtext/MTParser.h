#pragma once

/// \file
/// The reader of the math text language. `ScanMathText` walks through a text and reports what it
/// finds, item by item, to an `IMathTextScanner`; it knows nothing of fonts and layout.
/// `CMTContext` (MTContext.h) is the scanner that lays a text out; an application writes its own to
/// look into a text. This one counts the lines:
///
///     class LineCounter : public MyEmptyScanner {  // all other operations do nothing
///      public:
///       void Newline() override { ++count; }
///       int count = 1;
///     };
///
///     LineCounter lines;
///     vlm::ScanMathText("Depth\n\\fs80 (m below \\i sea\\plain  level)", lines);  // count is 2
///
/// *The language*. A text is a zero-terminated string of bytes. Plain characters stand for
/// themselves; `\\`, `\{` and `\}` for a backslash and a brace. A carriage return, a line feed, or
/// the former right before the latter ends a line. Braces save and restore the state of the text. A
/// directive is a backslash and one of the forms below, and right behind it one blank, which
/// belongs to it, or a line end or the end of the text. Keywords and names are read in any case. n
/// is an unsigned number below 2^32, r a real number, s one or more characters from 1 to 127 in
/// double quotes. Within parentheses white space may stand before each value, comma and closing
/// parenthesis.
///
/// | Directive | Meaning |
/// |---|---|
/// | `\up`n, `\dn`n | the pen moves up or down by n percent of the text height |
/// | `\black` `\blue` `\green` `\cyan` `\red` | a colour, alpha kept |
/// | `\magenta` `\yellow` `\white` `\gray` | a colour, alpha kept |
/// | `\rgbr`n `\rgbg`n `\rgbb`n `\rgba`n | one component of the colour, 0 to 255 |
/// | `\color(`n`,`n`,`n`,`n`)` | red, green, blue and alpha, each 0 to 255 |
/// | `\b` `\i` `\strike` `\ul` `\plain` | bold, italic, struck out, underlined, none of them |
/// | `\f`s | the face |
/// | `\fs`n | the text height, in percent of the present one |
/// | `\a`n | the character with the code n |
/// | `\date` `\time` | the present date, the present time |
/// | `\dt(`s`)` | the present date and time in the notation of MTDateTimeFormat.h |
/// | `\sp`n `\rp`n | keeps the pen's position in slot n, 1 to 20, and goes back to it |
/// | `\ssbeg(`r`,`r`,`h`,`v`)` | begins a substring |
/// | `\ssend` | ends the substring |
/// | `\line(`r`,`r`,`side`)` | a straight line |
///
/// The numbers r lead to a point: so many percent of the text height right of and below the origin
/// of the last string. A substring is anchored there by h (left, center, right) and v (top,
/// baseline, bottom, center); a line runs from there to a side (left, top, right, bottom) of that
/// string's box.

#include <velum/colour/Color4b.h>
#include <velum/core/Api.h>
#include <velum/mathtext/MTAlignment.h>

namespace vlm {

/// Takes what `ScanMathText` finds in a text, in the text's order.
///
/// An abstract class without data; the caller of `ScanMathText` owns the scanner. Each operation is
/// called once its item has been read to its end; a directive that is wrong leaves no call behind.
/// Texts handed over are valid during the call only. An operation may throw, which ends the scan,
/// and may itself call `ScanMathText`.
class VELUM_API IMathTextScanner {
 public:
  /// The side of a string's box that a line runs to.
  enum Side : unsigned int { SIDE_LEFT = 0, SIDE_TOP = 1, SIDE_RIGHT = 2, SIDE_BOTTOM = 3 };

  /// Takes a run of plain text, escapes replaced; never empty.
  virtual void Text(const char* text) = 0;
  /// Takes the character code of `\a`.
  virtual void CharCode(unsigned int code) = 0;
  /// Takes a line end.
  virtual void Newline() = 0;
  /// Takes the face name of `\f`.
  virtual void Facename(const char* face) = 0;
  /// Takes the percentage of `\fs`.
  virtual void FontSize(double percent) = 0;
  /// Takes a colour given by its name.
  virtual void PredefinedColor(const Color4b& color) = 0;
  /// Takes the colour of `\color(`.
  virtual void Color(const Color4b& color) = 0;
  /// Takes a colour component: 0 red, 1 green, 2 blue, 3 alpha.
  virtual void ColorComponent(unsigned int component, unsigned int value) = 0;
  /// Takes `\b`.
  virtual void Bold() = 0;
  /// Takes `\i`.
  virtual void Italic() = 0;
  /// Takes `\strike`.
  virtual void StrikeThrough() = 0;
  /// Takes `\ul`.
  virtual void Underline() = 0;
  /// Takes `\plain`.
  virtual void Plain() = 0;
  /// Takes the pattern of `\date` ("mm/dd/yy"), `\time` ("h:nn tt") or `\dt(`.
  virtual void DateTime(const char* format) = 0;
  /// Takes the percentage of `\up`, below 0, or of `\dn`.
  virtual void VerticalOffset(double percent) = 0;
  /// Takes the slot of `\sp`, 1 to 20.
  virtual void SavePosition(unsigned int slot) = 0;
  /// Takes the slot of `\rp`, 1 to 20.
  virtual void RestorePosition(unsigned int slot) = 0;
  /// Takes an opening brace, matched or not.
  virtual void PushState() = 0;
  /// Takes a closing brace, matched or not.
  virtual void PopState() = 0;
  /// Takes `\ssbeg(`: an offset in percent, and the substring's anchors.
  virtual void BeginSubstring(double x, double y, HAlignment horz, VAlignment vert) = 0;
  /// Takes `\ssend`, matched or not.
  virtual void EndSubstring() = 0;
  /// Takes `\line(`: an offset in percent, and the side that the line runs to.
  virtual void Line(double x, double y, IMathTextScanner::Side side) = 0;
  /// Takes a syntax error: `rest` points into the scanned text, to the first character that could
  /// not be read. The last call of a scan.
  virtual void Error(const char* rest) = 0;

  virtual ~IMathTextScanner();

 protected:
  IMathTextScanner() = default;
  /// Copies nothing; for derived classes that can be copied.
  IMathTextScanner(const IMathTextScanner&) = default;
  /// Copies nothing; for derived classes that can be copied.
  IMathTextScanner& operator=(const IMathTextScanner&) = default;
};

/// Reads a text and calls `scanner` for each item; true if the whole text was read.
///
/// - Null or empty text: true, and no call.
/// - Syntax error: `scanner.Error` is called last, and the result is false.
///
/// A real number may be `nan`, `inf` or `infinity`. One too large for a double is a syntax error,
/// one too small is 0. The locale plays no part. Any number of threads may scan at a time.
///
/// *Errors*: none of its own; what the scanner throws passes through and ends the scan.
/// *Cost*: linear in the length of the text. The grammar is built on a thread's first scan and kept
/// until the thread ends; a scan inside a scan builds another.
VELUM_API bool ScanMathText(const char* text, IMathTextScanner& scanner);

/// Tells whether a text needs the scanner: whether it holds a backslash, a line feed or a tab.
///
/// Braces and carriage returns alone don't make a math text. `text` must not be null.
[[nodiscard]] VELUM_API bool ContainsMathText(const char* text);

}  // namespace vlm
