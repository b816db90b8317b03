#include <velum/mathtext/MTMultiLineElement.h>

#include <velum/mathtext/MTAssocStringElement.h>
#include <velum/mathtext/MTLayout.h>
#include <velum/mathtext/MTLineElement.h>
#include <velum/mathtext/MTStringElement.h>
#include <velum/mathtext/detail/LeftBaseline.h>
#include <velum/mathtext/detail/StateBracket.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace vlm {
namespace {

// The box of a line, or what stands for it if the line has no ink.
Box2d BoxInStack(CMTTextIF& textIF, const CMTLineElement& line, const Vec2d& pen) {
  Box2d box = line.GetInternalBBox(textIF, pen);
  if (box.yRange() == 0.0) line.CalcEmptyLineInternalBBox(textIF, pen, box);
  return box;
}

// How far the lines of a block `width` wide move in x so that each stands justified and the block
// as a whole stands aligned.
double JustifyShift(double width, unsigned int blockAlignment, unsigned int lineAlignment) {
  const double halfWidths =
      static_cast<double>(lineAlignment) - static_cast<double>(blockAlignment);
  return halfWidths * (width / 2.0);
}

// Gives a line another horizontal alignment for as long as this object lives.
class AlignedLine {
 public:
  AlignedLine(CMTLineElement& line, unsigned int alignment)
      : line_(line), horizAlignment_(line.GetHorizAlignment()) {
    line.SetHorizAlignment(alignment);
  }
  AlignedLine(const AlignedLine&) = delete;
  AlignedLine& operator=(const AlignedLine&) = delete;
  ~AlignedLine() { line_.SetHorizAlignment(horizAlignment_); }

 private:
  CMTLineElement& line_;
  unsigned int horizAlignment_;
};

}  // namespace

CMTMultiLineElement::CMTMultiLineElement() = default;

CMTMultiLineElement::CMTMultiLineElement(CMTTextIF& textIF) : CMTElement(textIF) {}

CMTMultiLineElement::CMTMultiLineElement(const CMTMultiLineElement& other) = default;

CMTMultiLineElement& CMTMultiLineElement::operator=(const CMTMultiLineElement& other) = default;

CMTMultiLineElement::~CMTMultiLineElement() = default;

CMTMultiLineElement* CMTMultiLineElement::Clone() const { return new CMTMultiLineElement(*this); }

bool CMTMultiLineElement::empty() const { return lines_.empty(); }

void CMTMultiLineElement::clear() { lines_.clear(); }

double CMTMultiLineElement::GetExtentUsingTextIF(CMTTextIF& textIF) const {
  if (!IsExtentValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    double extent = lines_.empty() ? 0.0 : -std::numeric_limits<double>::infinity();
    for (const auto& line : lines_) extent = std::max(extent, line->GetExtentUsingTextIF(textIF));
    bracket.Close();
    SetExtent(extent);
  }
  return GetExtent();
}

void CMTMultiLineElement::DrawUsingTextIF(CMTTextIF& textIF, const Vec2d& position) {
  const Box2d box = GetInternalBBox(textIF, Vec2d());
  const unsigned int blockAlignment = textIF.GetHorizAlignment();
  const Vec2d start =
      detail::LeftBaseline(box, position, blockAlignment, textIF.GetVertAlignment());
  Vec2d pen = CalcInternalLeftBaseline(textIF, start);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    detail::StateBracket bracket(textIF);
    const unsigned int alignment = MapKQTextIFHorizJustifyToHorizAlign(textIF.GetHorizJustify());
    const double shift = JustifyShift(box.xRange(), textIF.GetHorizAlignment(), alignment);
    {
      const AlignedLine aligned(*lines_[i], alignment);
      lines_[i]->InternalDraw(textIF, Vec2d(pen.x + shift, pen.y));
      StackLine(textIF, i, pen);
    }
    bracket.Close();
  }
}

void CMTMultiLineElement::InternalDraw(CMTTextIF& textIF, const Vec2d& position) {
  Vec2d pen = CalcInternalLeftBaseline(textIF, position);
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    lines_[i]->InternalDraw(textIF, pen);
    StackLine(textIF, i, pen);
  }
}

void CMTMultiLineElement::FillMTStringElementList(
    std::vector<std::shared_ptr<CMTStringElement>>& list) const {
  for (const auto& line : lines_) line->FillMTStringElementList(list);
}

GString CMTMultiLineElement::GetSimpleText() const {
  GString text;
  for (const auto& line : lines_) {
    if (&line != &lines_.front()) text += '\n';
    text += line->GetSimpleText();
  }
  return text;
}

Box2d CMTMultiLineElement::GetGenericBBox(CMTTextIF& textIF) const {
  if (!IsGBBoxValid()) {
    detail::AttributeBracket bracket(textIF, *this);
    Box2d box(0.0, 0.0, 0.0, 0.0);
    Vec2d pen;
    for (std::size_t i = 0; i < lines_.size(); ++i) box.ExtendBy(StackLine(textIF, i, pen));
    bracket.Close();
    SetGBBox(box);
  }
  return GetGBBox();
}

void CMTMultiLineElement::AppendLine(CMTTextIF& textIF,
                                     const std::shared_ptr<CMTLineElement>& line) {
  AppendOwnLine(textIF, std::shared_ptr<CMTLineElement>(line->Clone()));
}

// `AppendLine` for a caller who clears its line next: the strings move over, which spares copying
// them.
void CMTMultiLineElement::AppendAndClearLine(CMTTextIF& textIF, CMTLineElement& line) {
  AppendOwnLine(textIF, line.MoveToCopy());
}

void CMTMultiLineElement::AppendOwnLine(CMTTextIF& textIF, std::shared_ptr<CMTLineElement> line) {
  if (line->empty()) {
    auto string = std::make_shared<CMTStringElement>(textIF, "");
    line->AddAssocStringElement(std::make_shared<CMTAssocStringElement>(textIF, string), Vec2d());
  }
  lines_.push_back(std::move(line));
  InvalidateTextMetrics();
}

// Gives the box of a line whose baseline begins at the pen, and moves the pen down to the next
// line's baseline, if there is one: its box touches this one.
Box2d CMTMultiLineElement::StackLine(CMTTextIF& textIF, std::size_t index, Vec2d& pen) const {
  const Box2d box = BoxInStack(textIF, *lines_[index], pen);
  if (index + 1 < lines_.size())
    pen.y = box.yMax() - BoxInStack(textIF, *lines_[index + 1], Vec2d()).yMin();
  return box;
}

}  // namespace vlm
