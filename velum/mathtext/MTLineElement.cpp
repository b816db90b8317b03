#include <velum/mathtext/MTLineElement.h>

#include <velum/geometry/detail/Finite.h>
#include <velum/mathtext/MTAssocStringElement.h>
#include <velum/mathtext/MTLayout.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTStringElement.h>
#include <velum/mathtext/detail/Finite.h>
#include <velum/mathtext/detail/StateBracket.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace vlm {
namespace {

constexpr std::size_t kUsualStrings = 4;

// An offset in units of one text height, in units of another.
Vec2d ConvertOffset(const Vec2d& offset, double fromHeight, double toHeight) {
  if (fromHeight == 0.0) return Vec2d();
  const Vec2d converted = offset * (toHeight / fromHeight);
  if (detail::IsFinite(offset)) detail::RequireFinite(converted);
  return converted;
}

}  // namespace

CMTLineElement::CMTLineElement() = default;

CMTLineElement::CMTLineElement(CMTTextIF& textIF) : CMTElement(textIF) {}

CMTLineElement::CMTLineElement(const CMTLineElement& other) = default;

CMTLineElement& CMTLineElement::operator=(const CMTLineElement& other) = default;

CMTLineElement::~CMTLineElement() = default;

CMTLineElement* CMTLineElement::Clone() const { return new CMTLineElement(*this); }

bool CMTLineElement::empty() const { return entries_.empty(); }

void CMTLineElement::clear() { entries_.clear(); }

double CMTLineElement::GetExtentUsingTextIF(CMTTextIF& textIF) const {
  if (!IsExtentValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    double extent = entries_.empty() ? 0.0 : -std::numeric_limits<double>::infinity();
    for (const AssocEntry& entry : entries_) {
      const Box2d box = entry.element->GetInternalBBox(textIF, entry.offset);
      extent = std::max(extent, box.xRange() + entry.offset.x);
    }
    bracket.Close();
    SetExtent(extent);
  }
  return GetExtent() + GetOffset().x;
}

void CMTLineElement::InternalDraw(CMTTextIF& textIF, const Vec2d& position) {
  const Vec2d start = CalcInternalLeftBaseline(textIF, position);
  for (const AssocEntry& entry : entries_)
    entry.element->InternalDraw(textIF, start + entry.offset);
}

void CMTLineElement::FillMTStringElementList(
    std::vector<std::shared_ptr<CMTStringElement>>& list) const {
  for (const AssocEntry& entry : entries_) entry.element->FillMTStringElementList(list);
}

GString CMTLineElement::GetSimpleText() const {
  GString text;
  for (const AssocEntry& entry : entries_) text += entry.element->GetSimpleText();
  return text;
}

Box2d CMTLineElement::GetGenericBBox(CMTTextIF& textIF) const {
  if (!IsGBBoxValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    Box2d box(0.0, 0.0, 0.0, 0.0);
    for (const AssocEntry& entry : entries_)
      box.ExtendBy(entry.element->GetInternalBBox(textIF, entry.offset));
    bracket.Close();
    SetGBBox(box);
    xBoxValid_ = false;
  }
  return GetGBBox();
}

void CMTLineElement::AddAssocStringElement(std::shared_ptr<CMTAssocStringElement> element,
                                           const Vec2d& offset) {
  if (entries_.capacity() == 0) entries_.reserve(kUsualStrings);
  entries_.push_back({offset, std::move(element)});
  InvalidateTextMetrics();
}

void CMTLineElement::AssociateLineSegment(CMTTextIF& textIF, IMathTextScanner::Side side,
                                          const Vec2d& offset) {
  CMTAssocStringElement& target = LastString(textIF);
  target.AssociateLineSegment(side, ConvertOffset(offset, textIF.GetHeight(), target.GetHeight()));
  InvalidateTextMetrics();
}

Vec2d CMTLineElement::AssociateMLElement(CMTTextIF& textIF,
                                         const std::shared_ptr<CMTMultiLineElement>& block,
                                         const Vec2d& offset) {
  CMTAssocStringElement& target = LastString(textIF);
  target.AssociateMLElement(block, ConvertOffset(offset, block->GetHeight(), target.GetHeight()));
  InvalidateTextMetrics();
  return entries_.back().offset + Vec2d(target.GetExtentUsingTextIF(textIF), 0.0);
}

void CMTLineElement::CalcEmptyLineInternalBBox(CMTTextIF& textIF, const Vec2d& position,
                                               Box2d& box) const {
  // The measures of the x are kept for as long as the line's own. The sum is that of
  // `GetInternalBBox`, the x's offset of (0, 0) included, so that both boxes are alike to the bit.
  if (xBoxValid_ && IsGBBoxValid()) {
    const unsigned int horizAlignment = textIF.GetHorizAlignment();
    box = xBox_ + CalcLeftBaseline(xBox_, Vec2d(), horizAlignment, textIF.GetVertAlignment()) +
          Vec2d() + position;
    return;
  }
  detail::StateBracket bracket(textIF);
  const unsigned int horizAlignment = textIF.GetHorizAlignment();
  const unsigned int vertAlignment = textIF.GetVertAlignment();
  const unsigned int horizJustify = textIF.GetHorizJustify();
  GetAttributes(textIF);
  CMTStringElement x(textIF, "x");
  x.SetHorizAlignment(horizAlignment);
  x.SetVertAlignment(vertAlignment);
  x.SetHorizJustify(horizJustify);
  box = x.GetInternalBBox(textIF, position);
  xBox_ = x.GetGenericBBox(textIF);
  bracket.Close();
  xBoxValid_ = IsGBBoxValid();
}

// The string that attachments go to: the last one, or an empty one made for them.
CMTAssocStringElement& CMTLineElement::LastString(CMTTextIF& textIF) {
  if (entries_.empty())
    AddAssocStringElement(std::make_shared<CMTAssocStringElement>(textIF, ""), Vec2d());
  return *entries_.back().element;
}

// A copy with the strings, which this line loses.
std::shared_ptr<CMTLineElement> CMTLineElement::MoveToCopy() {
  std::vector<AssocEntry> entries;
  entries.swap(entries_);
  auto copy = std::make_shared<CMTLineElement>(*this);
  copy->entries_ = std::move(entries);
  return copy;
}

// `AssociateMLElement` for a caller who knows that no attached block has changed since.
Vec2d CMTLineElement::AttachFinishedBlock(CMTTextIF& textIF,
                                          const std::shared_ptr<CMTMultiLineElement>& block,
                                          const Vec2d& offset) {
  CMTAssocStringElement& target = LastString(textIF);
  const Vec2d converted = ConvertOffset(offset, block->GetHeight(), target.GetHeight());
  InvalidateTextMetrics();
  const double extent = target.AttachFinishedBlock(textIF, block, converted);
  return entries_.back().offset + Vec2d(extent, 0.0);
}

}  // namespace vlm
