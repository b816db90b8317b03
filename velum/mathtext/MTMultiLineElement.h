#pragma once

/// \file
/// A block of lines: the root of a laid-out math text, and every substring in it.
///
///     auto block = std::make_shared<vlm::CMTMultiLineElement>(textIF);
///     vlm::CMTContext context(textIF, 8.0);
///     if (context.Parse("Depth\n(km)", block) == vlm::CMTContext::RETVAL_SUCCESS)
///       block->DrawUsingTextIF(textIF, vlm::Vec2d(100.0, 50.0));

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/Forward.h>
#include <velum/mathtext/MTElement.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace vlm {

/// A block of lines, stacked so that each line's box touches the one above.
///
/// The first line's baseline is the block's own. A line without ink is as high as a lower-case x.
/// See `CMTElement` for ownership, threads and units.
///
/// *Cost*: measuring and drawing descend one call level for each level of nested blocks.
/// `CMTContext` builds 100 levels at most; trees that are put together by hand must stay within a
/// few thousand.
class VELUM_API CMTMultiLineElement : public CMTElement {
 public:
  /// Makes an empty block with default attributes.
  CMTMultiLineElement();
  /// Makes an empty block with the attributes of the interface.
  explicit CMTMultiLineElement(CMTTextIF& textIF);
  /// Copies the attributes, the kept measures and the list; lines are shared.
  CMTMultiLineElement(const CMTMultiLineElement& other);
  /// Copies the attributes, the kept measures and the list; lines are shared.
  CMTMultiLineElement& operator=(const CMTMultiLineElement& other);
  ~CMTMultiLineElement() override;

  [[nodiscard]] CMTMultiLineElement* Clone() const override;
  [[nodiscard]] bool empty() const override;
  void clear() override;
  /// Gives the width of the widest line. The block's offset isn't added.
  double GetExtentUsingTextIF(CMTTextIF& textIF) const override;
  /// Draws the block so that `position` is its anchor under the alignments of `textIF`; the lines
  /// stand to each other as the interface's justify value says.
  void DrawUsingTextIF(CMTTextIF& textIF, const Vec2d& position) override;
  /// Draws the block at `position` by its own alignments. All lines begin at one x.
  void InternalDraw(CMTTextIF& textIF, const Vec2d& position) override;
  void FillMTStringElementList(std::vector<std::shared_ptr<CMTStringElement>>& list) const override;
  [[nodiscard]] GString GetSimpleText() const override;
  Box2d GetGenericBBox(CMTTextIF& textIF) const override;

  /// Appends a copy of a line, which must not be null and may be changed afterwards. An empty
  /// line's copy gets an empty string with the attributes of the interface.
  void AppendLine(CMTTextIF& textIF, const std::shared_ptr<CMTLineElement>& line);

 private:
  friend class CMTContext;

  void AppendAndClearLine(CMTTextIF& textIF, CMTLineElement& line);
  void AppendOwnLine(CMTTextIF& textIF, std::shared_ptr<CMTLineElement> line);
  Box2d StackLine(CMTTextIF& textIF, std::size_t index, Vec2d& pen) const;

  std::vector<std::shared_ptr<CMTLineElement>> lines_;
};

}  // namespace vlm
