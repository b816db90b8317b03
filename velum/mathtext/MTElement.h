#pragma once

/// \file
/// The common part of the elements that a math text is laid out in. A block (MTMultiLineElement.h)
/// holds lines (MTLineElement.h), a line holds strings with what is attached to them
/// (MTAssocStringElement.h), and each of these holds its string (MTStringElement.h). The elements
/// know their size and draw themselves; they hold no device:
///
///     const vlm::Box2d box = block->GetBBoxUsingTextIF(textIF, vlm::Vec2d(100.0, 50.0));
///     block->DrawUsingTextIF(textIF, vlm::Vec2d(100.0, 50.0));

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/NonComparable.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTAlignment.h>
#include <velum/mathtext/MTTextAttributes.h>
#include <velum/mathtext/MTTextIF.h>

#include <memory>
#include <vector>

namespace vlm {
namespace detail {
class AttributeBracket;
}

/// One element of a math text: its attributes, its place, and its measures, which are kept once
/// taken.
///
/// Elements have identity and can't be compared. They own their children through `shared_ptr`, and
/// a copy shares them: it copies the attributes, the kept measures and the list of children. One
/// thread uses a tree at a time, since measuring fills the kept measures of a const element; copies
/// that share children may be destroyed on different threads.
///
/// Units are those of the text interface; y grows downwards, so the top of a box is its `yMin()`.
///
/// *Measures*. The first measuring asks the interface; from then on, until the element itself is
/// changed, the interface isn't touched. A change of a child is noticed only when the parent is
/// changed, too. Measures of one interface are kept for every other: a tree that goes to a device
/// with other measures is laid out anew, not measured again.
///
/// Every operation that takes an interface leaves its attributes as it found them, also when the
/// device throws; then the exception passes through, and what was measured up to there is kept.
class VELUM_API CMTElement : private NonComparable {
 public:
  virtual ~CMTElement();

  /// Gives a new copy, which shares the children.
  ///
  /// *Lifetime*: the caller owns the result.
  [[nodiscard]] virtual CMTElement* Clone() const = 0;
  /// Tells whether there is no content.
  [[nodiscard]] virtual bool empty() const = 0;
  /// Drops the content. Measures that are kept stay.
  virtual void clear() = 0;
  /// Gives the width, the x of the offset included.
  virtual double GetExtentUsingTextIF(CMTTextIF& textIF) const = 0;
  /// Draws the element so that `position` is its anchor under the alignments of `textIF`.
  virtual void DrawUsingTextIF(CMTTextIF& textIF, const Vec2d& position);
  /// Gives the box of the element placed at `position` by its own alignments.
  virtual Box2d GetInternalBBox(CMTTextIF& textIF, const Vec2d& position) const;
  /// Draws the element at `position` by its own alignments.
  virtual void InternalDraw(CMTTextIF& textIF, const Vec2d& position) = 0;
  /// Appends a copy of every string, in the order of `GetSimpleText`.
  virtual void FillMTStringElementList(
      std::vector<std::shared_ptr<CMTStringElement>>& list) const = 0;
  /// Gives the text without markup; a line feed parts the lines of a block.
  [[nodiscard]] virtual GString GetSimpleText() const = 0;
  /// Gives the box around the element's own origin.
  virtual Box2d GetGenericBBox(CMTTextIF& textIF) const = 0;

  /// Gives the box that `DrawUsingTextIF` fills at the same position.
  Box2d GetBBoxUsingTextIF(CMTTextIF& textIF, const Vec2d& position) const;

  /// Gives what is added to every position that the element is placed at; (0, 0) at first.
  [[nodiscard]] Vec2d GetOffset() const { return offset_; }
  /// Gives how the element stands to its position in x, an `HAlignment`; left at first.
  [[nodiscard]] unsigned int GetHorizAlignment() const { return horizAlignment_; }
  /// Gives how the element stands to its position in y, a `VAlignment`; baseline at first.
  [[nodiscard]] unsigned int GetVertAlignment() const { return vertAlignment_; }
  /// Gives the justify value, a `HorizJustify`; left at first.
  [[nodiscard]] unsigned int GetHorizJustify() const { return horizJustify_; }
  /// Gives the text height; 0 at first.
  [[nodiscard]] double GetHeight() const { return attributes_.height; }

  /// Sets the offset. Like the next four, it leaves kept measures alone.
  void SetOffset(const Vec2d& offset) { offset_ = offset; }
  /// Sets the horizontal alignment. A value above 2 makes measuring and drawing raise
  /// `ERR_INTERNAL`.
  void SetHorizAlignment(unsigned int alignment) { horizAlignment_ = alignment; }
  /// Sets the vertical alignment. A value above 3 makes measuring and drawing raise `ERR_INTERNAL`.
  void SetVertAlignment(unsigned int alignment) { vertAlignment_ = alignment; }
  /// Sets the justify value.
  void SetHorizJustify(unsigned int justify) { horizJustify_ = justify; }
  /// Sets the text height.
  void SetHeight(double height) { attributes_.height = height; }

  /// Takes colour, face, weight, style, character set, pitch, family and height over from the
  /// interface, and drops the measures.
  void SetAttributes(CMTTextIF& textIF);
  /// Hands the same eight attributes, in this order, to the interface, which it changes.
  void GetAttributes(CMTTextIF& textIF) const;

 protected:
  /// Makes an element with black, "Arial", weight 4, style 0, character set 1, pitch 2, family 2.
  CMTElement() = default;
  /// Makes an element with the attributes of the interface.
  explicit CMTElement(CMTTextIF& textIF);
  /// Copies the attributes and the kept measures.
  CMTElement(const CMTElement& other) = default;
  /// Copies the attributes and the kept measures.
  CMTElement& operator=(const CMTElement& other) = default;

  /// Gives the kept width.
  [[nodiscard]] double GetExtent() const { return extent_; }
  /// Keeps a width.
  void SetExtent(double extent) const {
    extent_ = extent;
    extentValid_ = true;
  }
  /// Tells whether a width is kept.
  [[nodiscard]] bool IsExtentValid() const { return extentValid_; }
  /// Gives the kept box.
  [[nodiscard]] const Box2d& GetGBBox() const { return genericBox_; }
  /// Keeps a box.
  void SetGBBox(const Box2d& box) const {
    genericBox_ = box;
    genericBoxValid_ = true;
  }
  /// Tells whether a box is kept.
  [[nodiscard]] bool IsGBBoxValid() const { return genericBoxValid_; }
  /// Drops the kept measures.
  void InvalidateTextMetrics();
  /// Gives the left end of the baseline for the element placed at `position` by its own alignments.
  Vec2d CalcInternalLeftBaseline(CMTTextIF& textIF, const Vec2d& position) const;

 private:
  friend class detail::AttributeBracket;

  static MTTextAttributes AttributesOf(CMTTextIF& textIF);
  bool HasAttributesOf(CMTTextIF& textIF) const;

  Vec2d offset_;
  unsigned int horizAlignment_ = HALIGN_LEFT;
  unsigned int vertAlignment_ = VALIGN_BASELINE;
  unsigned int horizJustify_ = HORIZ_JUSTIFY_LEFT;
  MTTextAttributes attributes_;
  mutable double extent_ = 0.0;
  mutable Box2d genericBox_;
  mutable bool extentValid_ = false;
  mutable bool genericBoxValid_ = false;
};

}  // namespace vlm
