#include <velum/mathtext/MTElement.h>

#include <velum/mathtext/detail/LeftBaseline.h>

namespace vlm {
namespace {

// Where the left end of the baseline lies when a box is anchored as the interface says.
Vec2d CalcAnchoredBaseline(CMTTextIF& textIF, const Box2d& box, const Vec2d& position) {
  const unsigned int horizAlignment = textIF.GetHorizAlignment();
  return detail::LeftBaseline(box, position, horizAlignment, textIF.GetVertAlignment());
}

}  // namespace

CMTElement::CMTElement(CMTTextIF& textIF) : attributes_(AttributesOf(textIF)) {}

CMTElement::~CMTElement() = default;

void CMTElement::DrawUsingTextIF(CMTTextIF& textIF, const Vec2d& position) {
  const Box2d box = GetInternalBBox(textIF, Vec2d());
  InternalDraw(textIF, CalcAnchoredBaseline(textIF, box, position));
}

Box2d CMTElement::GetInternalBBox(CMTTextIF& textIF, const Vec2d& position) const {
  const Box2d box = GetGenericBBox(textIF);
  return box + detail::LeftBaseline(box, Vec2d(), horizAlignment_, vertAlignment_) + offset_ +
         position;
}

Box2d CMTElement::GetBBoxUsingTextIF(CMTTextIF& textIF, const Vec2d& position) const {
  const Box2d box = GetInternalBBox(textIF, Vec2d());
  return box + CalcAnchoredBaseline(textIF, box, position);
}

void CMTElement::SetAttributes(CMTTextIF& textIF) {
  attributes_ = AttributesOf(textIF);
  InvalidateTextMetrics();
}

void CMTElement::GetAttributes(CMTTextIF& textIF) const {
  textIF.SetColor(attributes_.color);
  textIF.SetFace(attributes_.face);
  textIF.SetWeight(attributes_.weight);
  textIF.SetStyle(attributes_.style);
  textIF.SetCharset(attributes_.charset);
  textIF.SetPitch(attributes_.pitch);
  textIF.SetFamily(attributes_.family);
  textIF.SetHeight(attributes_.height);
}

void CMTElement::InvalidateTextMetrics() {
  extent_ = 0.0;
  extentValid_ = false;
  genericBox_ = Box2d();
  genericBoxValid_ = false;
}

// Tells whether `GetAttributes` would change nothing and nobody would hear of it.
bool CMTElement::HasAttributesOf(CMTTextIF& textIF) const {
  const MTTextAttributes* const kept = textIF.KeptAttributes();
  return kept != nullptr && *kept == attributes_;
}

MTTextAttributes CMTElement::AttributesOf(CMTTextIF& textIF) {
  if (const MTTextAttributes* const kept = textIF.KeptAttributes()) return *kept;
  MTTextAttributes attributes;
  attributes.color = textIF.GetColor();
  attributes.face = textIF.GetFace();
  attributes.weight = textIF.GetWeight();
  attributes.style = textIF.GetStyle();
  attributes.charset = textIF.GetCharset();
  attributes.pitch = textIF.GetPitch();
  attributes.family = textIF.GetFamily();
  attributes.height = textIF.GetHeight();
  return attributes;
}

Vec2d CMTElement::CalcInternalLeftBaseline(CMTTextIF& textIF, const Vec2d& position) const {
  return detail::LeftBaseline(GetGenericBBox(textIF), Vec2d(), horizAlignment_, vertAlignment_) +
         offset_ + position;
}

}  // namespace vlm
