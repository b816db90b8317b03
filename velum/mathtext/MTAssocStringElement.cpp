#include <velum/mathtext/MTAssocStringElement.h>

#include <velum/core/Exception.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTStringElement.h>
#include <velum/mathtext/detail/LeftBaseline.h>
#include <velum/mathtext/detail/StateBracket.h>

#include <algorithm>
#include <utility>

namespace vlm {
namespace {

Vec2d SegmentEnd(Vec2d start, IMathTextScanner::Side side, const Box2d& box) {
  switch (side) {
    case IMathTextScanner::SIDE_LEFT:
      start.x = box.xMin();
      return start;
    case IMathTextScanner::SIDE_TOP:
      start.y = box.yMin();
      return start;
    case IMathTextScanner::SIDE_RIGHT:
      start.x = box.xMax();
      return start;
    case IMathTextScanner::SIDE_BOTTOM:
      start.y = box.yMax();
      return start;
  }
  ThrowErrorImpl("MTParser", __LINE__, ERR_INTERNAL);
}

}  // namespace

CMTAssocStringElement::CMTAssocStringElement(const GString& text)
    : string_(std::make_shared<CMTStringElement>(text)) {}

CMTAssocStringElement::CMTAssocStringElement(CMTTextIF& textIF, const GString& text)
    : string_(std::make_shared<CMTStringElement>(textIF, text)) {}

CMTAssocStringElement::CMTAssocStringElement(CMTTextIF& textIF,
                                             std::shared_ptr<CMTStringElement> string)
    : CMTElement(textIF), string_(std::move(string)) {}

CMTAssocStringElement::CMTAssocStringElement(const CMTAssocStringElement& other) = default;

CMTAssocStringElement& CMTAssocStringElement::operator=(const CMTAssocStringElement& other) =
    default;

CMTAssocStringElement::~CMTAssocStringElement() = default;

CMTAssocStringElement* CMTAssocStringElement::Clone() const {
  return new CMTAssocStringElement(*this);
}

bool CMTAssocStringElement::empty() const { return string_->empty() && blocks_.empty(); }

void CMTAssocStringElement::clear() {
  string_->clear();
  blocks_.clear();
  blocksInBox_ = 0;
}

double CMTAssocStringElement::GetExtentUsingTextIF(CMTTextIF& textIF) const {
  if (!IsExtentValid()) {
    blocksInBox_ = 0;
    MeasureExtent(textIF);
  }
  return GetExtent() + GetOffset().x;
}

Box2d CMTAssocStringElement::GetInternalBBox(CMTTextIF& textIF, const Vec2d& position) const {
  const Box2d box = GetGenericBBox(textIF);
  return box +
         detail::LeftBaseline(box, Vec2d(-box.xMin(), 0.0), GetHorizAlignment(),
                              GetVertAlignment()) +
         GetOffset() + position;
}

void CMTAssocStringElement::InternalDraw(CMTTextIF& textIF, const Vec2d& position) {
  const Box2d box = GetGenericBBox(textIF);
  const Vec2d base =
      position + GetOffset() +
      detail::LeftBaseline(box, Vec2d(-box.xMin(), 0.0), GetHorizAlignment(), GetVertAlignment());

  detail::StateBracket bracket(textIF);
  textIF.SetHorizAlignment(HALIGN_LEFT);
  textIF.SetVertAlignment(VALIGN_BASELINE);
  GetAttributes(textIF);
  string_->InternalDraw(textIF, base);
  for (const MLEntry& entry : blocks_) entry.block->InternalDraw(textIF, base + entry.offset);

  string_->GetAttributes(textIF);
  const Box2d placed = box + base;
  for (const SegmentEntry& entry : segments_) {
    const Vec2d start = base + entry.offset;
    textIF.DrawLine(start, SegmentEnd(start, entry.side, placed));
  }
  bracket.Close();
}

void CMTAssocStringElement::FillMTStringElementList(
    std::vector<std::shared_ptr<CMTStringElement>>& list) const {
  string_->FillMTStringElementList(list);
  for (const MLEntry& entry : blocks_) entry.block->FillMTStringElementList(list);
}

GString CMTAssocStringElement::GetSimpleText() const {
  GString text = string_->GetSimpleText();
  for (const MLEntry& entry : blocks_) text += entry.block->GetSimpleText();
  return text;
}

Box2d CMTAssocStringElement::GetGenericBBox(CMTTextIF& textIF) const {
  if (!IsGBBoxValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    Box2d box(0.0, 0.0, 0.0, 0.0);
    box.ExtendBy(string_->GetInternalBBox(textIF, Vec2d()));
    for (const MLEntry& entry : blocks_)
      box.ExtendBy(entry.block->GetInternalBBox(textIF, entry.offset));
    bracket.Close();
    SetGBBox(box);
  }
  return GetGBBox() + GetOffset();
}

void CMTAssocStringElement::AssociateMLElement(const std::shared_ptr<CMTMultiLineElement>& block,
                                               const Vec2d& offset) {
  blocks_.push_back({offset, block});
  InvalidateTextMetrics();
}

void CMTAssocStringElement::AssociateLineSegment(IMathTextScanner::Side side, const Vec2d& offset) {
  segments_.push_back({offset, side});
  InvalidateTextMetrics();
}

// Attaches a block and gives the new width, for a caller who knows that the blocks before it are as
// they were when the width was last taken: then only the new one has to be looked at. Without this,
// many substrings on one string would take quadratic time.
double CMTAssocStringElement::AttachFinishedBlock(CMTTextIF& textIF,
                                                  const std::shared_ptr<CMTMultiLineElement>& block,
                                                  const Vec2d& offset) {
  if (!IsExtentValid() || blocksInBox_ != blocks_.size()) blocksInBox_ = 0;
  AssociateMLElement(block, offset);
  MeasureExtent(textIF);
  return GetExtent() + GetOffset().x;
}

// Takes the width of the string and all blocks, of which the first `blocksInBox_` are in
// `blocksBox_`.
void CMTAssocStringElement::MeasureExtent(CMTTextIF& textIF) const {
  detail::AttributeBracket bracket(textIF, *this);
  const double extent = string_->GetExtentUsingTextIF(textIF);
  if (blocksInBox_ == 0) blocksBox_ = Box2d(0.0, 0.0, 0.0, 0.0);
  for (; blocksInBox_ < blocks_.size(); ++blocksInBox_) {
    const MLEntry& entry = blocks_[blocksInBox_];
    blocksBox_.ExtendBy(entry.block->GetInternalBBox(textIF, entry.offset));
  }
  bracket.Close();
  SetExtent(std::max(extent, blocksBox_.xRange()));
}

}  // namespace vlm
