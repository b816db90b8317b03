#pragma once

/// \file
/// A string of a laid-out math text together with what is attached to it: substrings and straight
/// lines.
///
///     auto string = std::make_shared<vlm::CMTAssocStringElement>(textIF, "x");
///     string->AssociateMLElement(exponent, vlm::Vec2d(0.0, -5.0));
///     string->AssociateLineSegment(vlm::IMathTextScanner::SIDE_RIGHT, vlm::Vec2d(0.0, -10.0));

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTElement.h>
#include <velum/mathtext/MTParser.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace vlm {

/// A string with the blocks and line segments that are attached to it.
///
/// Its box holds the origin, the string and the blocks; its width is that of the string or of the
/// blocks, whichever is larger. With left alignment the left side of its box, not the origin,
/// stands on its position. Segments run to the sides of the box and don't count in it. See
/// `CMTElement` for ownership, threads and units.
class VELUM_API CMTAssocStringElement : public CMTElement {
 public:
  /// Makes an element and a string in it, both with default attributes.
  explicit CMTAssocStringElement(const GString& text);
  /// Makes an element with default attributes, height 0 included, and a string in it with those of
  /// the interface.
  CMTAssocStringElement(CMTTextIF& textIF, const GString& text);
  /// Makes an element with the attributes of the interface around a string, which must not be null.
  CMTAssocStringElement(CMTTextIF& textIF, std::shared_ptr<CMTStringElement> string);
  /// Copies the attributes, the kept measures and the lists; string and blocks are shared.
  CMTAssocStringElement(const CMTAssocStringElement& other);
  /// Copies the attributes, the kept measures and the lists; string and blocks are shared.
  CMTAssocStringElement& operator=(const CMTAssocStringElement& other);
  ~CMTAssocStringElement() override;

  [[nodiscard]] CMTAssocStringElement* Clone() const override;
  /// Tells whether the string is empty and no block is attached; segments don't count.
  [[nodiscard]] bool empty() const override;
  /// Clears the string, which copies share, and drops the blocks. Segments stay.
  void clear() override;
  double GetExtentUsingTextIF(CMTTextIF& textIF) const override;
  Box2d GetInternalBBox(CMTTextIF& textIF, const Vec2d& position) const override;
  /// Draws the string, the blocks, and then the segments in the string's colour.
  ///
  /// *Errors*: `ERR_INTERNAL` for a side that is none.
  void InternalDraw(CMTTextIF& textIF, const Vec2d& position) override;
  void FillMTStringElementList(std::vector<std::shared_ptr<CMTStringElement>>& list) const override;
  /// Gives the string's text and behind it that of each block.
  [[nodiscard]] GString GetSimpleText() const override;
  Box2d GetGenericBBox(CMTTextIF& textIF) const override;

  /// Attaches a block, which must not be null, at an offset from the string's origin.
  void AssociateMLElement(const std::shared_ptr<CMTMultiLineElement>& block, const Vec2d& offset);
  /// Attaches a line from an offset to a side of the box.
  void AssociateLineSegment(IMathTextScanner::Side side, const Vec2d& offset);

 private:
  friend class CMTLineElement;

  struct MLEntry {
    Vec2d offset;
    std::shared_ptr<CMTMultiLineElement> block;
  };
  struct SegmentEntry {
    Vec2d offset;
    IMathTextScanner::Side side;
  };

  double AttachFinishedBlock(CMTTextIF& textIF, const std::shared_ptr<CMTMultiLineElement>& block,
                             const Vec2d& offset);
  void MeasureExtent(CMTTextIF& textIF) const;

  std::shared_ptr<CMTStringElement> string_;
  std::vector<MLEntry> blocks_;
  std::vector<SegmentEntry> segments_;
  // The box around the first so many blocks, which the width was last taken from.
  mutable Box2d blocksBox_;
  mutable std::size_t blocksInBox_ = 0;
};

}  // namespace vlm
