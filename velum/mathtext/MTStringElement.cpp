#include <velum/mathtext/MTStringElement.h>

#include <velum/mathtext/detail/StateBracket.h>

namespace vlm {

CMTStringElement::CMTStringElement(const GString& text) : text_(text) {}

CMTStringElement::CMTStringElement(CMTTextIF& textIF, const GString& text)
    : CMTElement(textIF), text_(text) {}

CMTStringElement::CMTStringElement(const CMTStringElement& other) = default;

CMTStringElement& CMTStringElement::operator=(const CMTStringElement& other) = default;

CMTStringElement::~CMTStringElement() = default;

CMTStringElement* CMTStringElement::Clone() const { return new CMTStringElement(*this); }

bool CMTStringElement::empty() const { return text_.empty(); }

void CMTStringElement::clear() { text_.clear(); }

double CMTStringElement::GetExtentUsingTextIF(CMTTextIF& textIF) const {
  if (!IsExtentValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    Vec2d extent;
    textIF.GetExtent(text_, extent);
    bracket.Close();
    SetExtent(extent.x);
  }
  return GetExtent() + GetOffset().x;
}

void CMTStringElement::InternalDraw(CMTTextIF& textIF, const Vec2d& position) {
  const Vec2d start = CalcInternalLeftBaseline(textIF, position);
  detail::StateBracket bracket(textIF);
  textIF.SetHorizAlignment(HALIGN_LEFT);
  textIF.SetVertAlignment(VALIGN_BASELINE);
  GetAttributes(textIF);
  textIF.Draw(start, text_);
  bracket.Close();
}

void CMTStringElement::FillMTStringElementList(
    std::vector<std::shared_ptr<CMTStringElement>>& list) const {
  list.push_back(std::make_shared<CMTStringElement>(*this));
}

GString CMTStringElement::GetSimpleText() const { return text_; }

Box2d CMTStringElement::GetGenericBBox(CMTTextIF& textIF) const {
  if (!IsGBBoxValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    Box2d box;
    textIF.GetBounds(text_, box);
    bracket.Close();
    SetGBBox(box);
  }
  return GetGBBox();
}

void CMTStringElement::SetText(const GString& text) {
  text_ = text;
  InvalidateTextMetrics();
}

GString CMTStringElement::GetText() const { return text_; }

}  // namespace vlm
