#pragma once

/// \file
/// One line of a laid-out math text: strings, each at its pen position.
///
///     vlm::CMTLineElement line(textIF);
///     line.AddAssocStringElement(string, vlm::Vec2d(0.0, 0.0));

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTElement.h>
#include <velum/mathtext/MTParser.h>

#include <memory>
#include <vector>

namespace vlm {

/// One line: a row of strings with their offsets from the line's origin.
///
/// Its box holds the origin and every string at its offset. See `CMTElement` for ownership, threads
/// and units.
class VELUM_API CMTLineElement : public CMTElement {
 public:
  /// Makes an empty line with default attributes.
  CMTLineElement();
  /// Makes an empty line with the attributes of the interface.
  explicit CMTLineElement(CMTTextIF& textIF);
  /// Copies the attributes, the kept measures and the list; strings are shared.
  CMTLineElement(const CMTLineElement& other);
  /// Copies the attributes, the kept measures and the list; strings are shared.
  CMTLineElement& operator=(const CMTLineElement& other);
  ~CMTLineElement() override;

  [[nodiscard]] CMTLineElement* Clone() const override;
  [[nodiscard]] bool empty() const override;
  void clear() override;
  double GetExtentUsingTextIF(CMTTextIF& textIF) const override;
  void InternalDraw(CMTTextIF& textIF, const Vec2d& position) override;
  void FillMTStringElementList(std::vector<std::shared_ptr<CMTStringElement>>& list) const override;
  [[nodiscard]] GString GetSimpleText() const override;
  Box2d GetGenericBBox(CMTTextIF& textIF) const override;

  /// Appends a string, which must not be null, at an offset from the line's origin.
  void AddAssocStringElement(std::shared_ptr<CMTAssocStringElement> element, const Vec2d& offset);
  /// Attaches a line segment to the last string. `offset` is in units of the interface's text
  /// height and is converted to those of the string's. A line without a string first gets an empty
  /// one.
  ///
  /// - The interface's text height is 0: the offset becomes (0, 0).
  ///
  /// *Errors*: `ERR_CUSTOM` "MathText number out of range", if a finite offset would become
  /// infinite; nothing is attached.
  void AssociateLineSegment(CMTTextIF& textIF, IMathTextScanner::Side side, const Vec2d& offset);
  /// Attaches a block, which must not be null, to the last string, and gives the pen position
  /// behind it. `offset` is in units of the block's text height and is converted to those of the
  /// string's. A line without a string first gets an empty one.
  ///
  /// - The block's text height is 0: the offset becomes (0, 0).
  ///
  /// *Errors*: `ERR_CUSTOM` "MathText number out of range", if a finite offset would become
  /// infinite; nothing is attached. *Cost*: measures all blocks of the string.
  Vec2d AssociateMLElement(CMTTextIF& textIF, const std::shared_ptr<CMTMultiLineElement>& block,
                           const Vec2d& offset);
  /// Gives the box of a lower-case x in the line's attributes, placed at `position` by the
  /// alignments of the interface: the height of a line without ink.
  void CalcEmptyLineInternalBBox(CMTTextIF& textIF, const Vec2d& position, Box2d& box) const;

 private:
  friend class CMTContext;
  friend class CMTMultiLineElement;

  struct AssocEntry {
    Vec2d offset;
    std::shared_ptr<CMTAssocStringElement> element;
  };

  std::shared_ptr<CMTLineElement> MoveToCopy();
  CMTAssocStringElement& LastString(CMTTextIF& textIF);
  Vec2d AttachFinishedBlock(CMTTextIF& textIF, const std::shared_ptr<CMTMultiLineElement>& block,
                            const Vec2d& offset);

  std::vector<AssocEntry> entries_;
  mutable Box2d xBox_;
  mutable bool xBoxValid_ = false;
};

}  // namespace vlm
