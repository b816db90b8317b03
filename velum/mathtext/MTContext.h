#pragma once

/// \file
/// Lays a math text out. The road of a label from a string to a device:
///
///     vlm::CMTTextIF textIF(device);  // device implements vlm::KQTextIF
///     textIF.SetHeight(12.0);
///
///     vlm::CMTContext context(textIF, 8.0);
///     auto label = std::make_shared<vlm::CMTMultiLineElement>(textIF);
///     const char* text = "CO\\dn20 {\\fs70 2}\\up20  (ppm)";
///     if (context.Parse(text, label) == vlm::CMTContext::RETVAL_SUCCESS) {
///       const vlm::Box2d box = label->GetBBoxUsingTextIF(textIF, vlm::Vec2d(100.0, 50.0));
///       label->DrawUsingTextIF(textIF, vlm::Vec2d(100.0, 50.0));
///     }
///
/// MTParser.h describes the language.

#include <velum/colour/Color4b.h>
#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTAlignment.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTParser.h>
#include <velum/mathtext/MTTextIF.h>

#include <array>
#include <memory>
#include <vector>

namespace vlm {

/// Builds the element tree of a math text on a text interface.
///
/// The state of the text (face, size, colour, style) lives in the interface, which the context
/// doesn't own and which must outlive it. The context keeps the pen, the text not yet placed, and
/// the unfinished tree. It has identity and may parse any number of texts. It and its interface
/// belong to one thread during `Parse`. Units are the interface's.
class VELUM_API CMTContext : private IMathTextScanner {
 public:
  /// The result of `Parse`.
  enum RETVAL {
    RETVAL_SUCCESS = 0,  ///< The whole text was laid out.
    RETVAL_FAILURE = 1   ///< The text has an error, or the device failed.
  };

  /// Makes a context whose lines take their alignments and justification from the interface as it
  /// is now. `charsPerTab` is the distance of tab stops in average character widths.
  ///
  /// *Lifetime*: keeps a reference to `textIF`.
  CMTContext(CMTTextIF& textIF, double charsPerTab);
  ~CMTContext() override;
  CMTContext(const CMTContext&) = delete;
  CMTContext& operator=(const CMTContext&) = delete;

  /// Lays a text out.
  ///
  /// - Empty text: success, and `result` is left alone.
  /// - Text that needs no scanner (see `ContainsMathText`): one line is appended to `*result`.
  /// - Math text: `result` is replaced by the context's own block, and a further call on this
  ///   context appends to that block.
  /// - Failure: `result` is unchanged. The unfinished text and the attributes of the interface stay
  ///   as they were at the failure, so that the next text goes on from there: for a text that has
  ///   nothing to do with the failed one, make a new context on a new interface. Both are safe to
  ///   use and to destroy all the same.
  ///
  /// What fails: a syntax error; "}" without "{" in its line or substring; a line end while a brace
  /// is open; `\ssend` without `\ssbeg`; a text that ends inside a substring; substrings nested
  /// more than 100 deep; a number that makes the height, the pen or an offset infinite or NaN. A
  /// brace left open at the end of the text doesn't fail.
  ///
  /// - A tab where the tab width is 0 or not finite, or where the pen isn't finite: the pen stays.
  /// - A substring or line at a text height of 0: its offset is (0, 0).
  ///
  /// *Errors*: `ERR_INTERNAL` if `result` is null and the text needs no scanner. While a math text
  /// is read, an `Exception` from the device is a failure, too; any other exception, such as a
  /// failed allocation, passes through and leaves what a failure leaves. *Cost*: linear in the
  /// length of the text.
  RETVAL Parse(const GString& text, std::shared_ptr<CMTMultiLineElement>& result);

  /// Gives the distance of tab stops in average character widths.
  [[nodiscard]] double GetCharsPerTab() const { return charsPerTab_; }
  /// Sets the distance of tab stops for the next `Parse`.
  void SetCharsPerTab(double charsPerTab) { charsPerTab_ = charsPerTab; }

  /// Sets the given bits of a word that is the application's own.
  void SetOptions(unsigned short bits);
  /// Clears the given bits of that word.
  void ClearOptions(unsigned short bits);
  /// Gives that word; 0 at first.
  [[nodiscard]] unsigned short GetOptions() const { return options_; }

 private:
  /// One level of nesting: the outermost text or a substring.
  struct MTState {
    explicit MTState(CMTTextIF& textIF);

    std::shared_ptr<CMTMultiLineElement> block;
    std::shared_ptr<CMTLineElement> line;
    Vec2d pen;
    std::array<Vec2d, 20> savedPositions;
    GString pendingText;
    unsigned int braceDepth = 0;
  };

  void Text(const char* text) override;
  void CharCode(unsigned int code) override;
  void Newline() override;
  void Facename(const char* face) override;
  void FontSize(double percent) override;
  void PredefinedColor(const Color4b& color) override;
  void Color(const Color4b& color) override;
  void ColorComponent(unsigned int component, unsigned int value) override;
  void Bold() override;
  void Italic() override;
  void StrikeThrough() override;
  void Underline() override;
  void Plain() override;
  void DateTime(const char* format) override;
  void VerticalOffset(double percent) override;
  void SavePosition(unsigned int slot) override;
  void RestorePosition(unsigned int slot) override;
  void PushState() override;
  void PopState() override;
  void BeginSubstring(double x, double y, HAlignment horz, VAlignment vert) override;
  void EndSubstring() override;
  void Line(double x, double y, IMathTextScanner::Side side) override;
  void Error(const char* rest) override;

  void PartialReset();
  void BeginLine();
  void EndLine();
  void AccumulateText(char character);
  void AccumulateText(const char* text);
  void AdvanceToTabStop();
  void SendText();
  void AddStyle(unsigned int bits);
  [[nodiscard]] Vec2d OffsetInTextHeights(double x, double y) const;
  bool ParseMultiLine(std::shared_ptr<CMTMultiLineElement>& result);
  [[nodiscard]] MTState& Top() { return states_.back(); }

  CMTTextIF& textIF_;
  unsigned short options_ = 0;
  const char* text_ = nullptr;
  double charsPerTab_;
  double tabWidth_ = 0.0;
  std::vector<MTState> states_;
};

}  // namespace vlm
