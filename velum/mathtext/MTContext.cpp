#include <velum/mathtext/MTContext.h>

#include <velum/core/Exception.h>
#include <velum/mathtext/MTAssocStringElement.h>
#include <velum/mathtext/MTDateTimeFormat.h>
#include <velum/mathtext/MTLayout.h>
#include <velum/mathtext/MTLineElement.h>
#include <velum/mathtext/MTStringElement.h>
#include <velum/mathtext/TextIF.h>
#include <velum/mathtext/detail/DateTimeText.h>
#include <velum/mathtext/detail/Finite.h>
#include <velum/platform/detail/LocalTime.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace vlm {
namespace {

// Measuring, drawing and destroying a tree descend with its substrings, so their depth has a limit.
constexpr std::size_t kMaxSubstringDepth = 100;

constexpr const char* kSourceName = "MTParser";
constexpr const char* kUnbalancedBraces = "Unbalanced '{' and '}' directives";
constexpr const char* kUnbalancedSubstrings = "Unbalanced 'ssbeg' and 'ssend' directives";

[[noreturn]] void Fail(int line, const char* message) {
  ThrowErrorImpl(kSourceName, line, ERR_CUSTOM, "%s", message);
}

}  // namespace

CMTContext::MTState::MTState(CMTTextIF& textIF)
    : block(std::make_shared<CMTMultiLineElement>(textIF)),
      line(std::make_shared<CMTLineElement>(textIF)) {}

CMTContext::CMTContext(CMTTextIF& textIF, double charsPerTab)
    : textIF_(textIF), charsPerTab_(charsPerTab) {
  states_.emplace_back(textIF);
  CMTLineElement& line = *Top().line;
  line.SetHorizAlignment(textIF.GetHorizAlignment());
  line.SetVertAlignment(textIF.GetVertAlignment());
  line.SetHorizJustify(textIF.GetHorizJustify());
}

CMTContext::~CMTContext() = default;

CMTContext::RETVAL CMTContext::Parse(const GString& text,
                                     std::shared_ptr<CMTMultiLineElement>& result) {
  PartialReset();
  KQTextIF::_TXTMETRICS metrics{};
  textIF_.GetMetrics(metrics);
  tabWidth_ = charsPerTab_ * metrics.aveCharWidth;
  text_ = text.c_str();
  if (text.empty()) return RETVAL_SUCCESS;
  if (ContainsMathText(text_)) return ParseMultiLine(result) ? RETVAL_SUCCESS : RETVAL_FAILURE;

  if (!result) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  auto line = std::make_shared<CMTLineElement>(textIF_);
  line->AddAssocStringElement(std::make_shared<CMTAssocStringElement>(
                                  textIF_, std::make_shared<CMTStringElement>(textIF_, text)),
                              Vec2d());
  result->AppendLine(textIF_, line);
  return RETVAL_SUCCESS;
}

void CMTContext::SetOptions(unsigned short bits) {
  options_ = static_cast<unsigned short>(options_ | bits);
}

void CMTContext::ClearOptions(unsigned short bits) {
  options_ = static_cast<unsigned short>(options_ & ~bits);
}

bool CMTContext::ParseMultiLine(std::shared_ptr<CMTMultiLineElement>& result) {
  const std::size_t depth = states_.size();
  try {
    BeginLine();
    if (!ScanMathText(text_, *this)) return false;
    if (states_.size() > depth) Fail(__LINE__, kUnbalancedSubstrings);
    EndLine();
  } catch (const Exception&) {
    return false;
  }
  result = Top().block;
  return true;
}

void CMTContext::PartialReset() {
  MTState& state = Top();
  state.line->clear();
  state.pen = Vec2d();
  state.savedPositions.fill(Vec2d());
}

void CMTContext::BeginLine() {
  PartialReset();
  textIF_.PreserveState();
}

void CMTContext::EndLine() {
  SendText();
  Top().block->AppendAndClearLine(textIF_, *Top().line);
  textIF_.RestoreState();
  PartialReset();
}

void CMTContext::AccumulateText(char character) { Top().pendingText += character; }

void CMTContext::AccumulateText(const char* text) {
  std::string_view rest(text);
  for (;;) {
    const std::size_t tab = std::min(rest.find('\t'), rest.size());
    Top().pendingText.append(rest.data(), static_cast<unsigned int>(tab));
    if (tab == rest.size()) return;
    AdvanceToTabStop();
    rest.remove_prefix(tab + 1);
  }
}

void CMTContext::AdvanceToTabStop() {
  SendText();
  Vec2d& pen = Top().pen;
  if (tabWidth_ == 0.0 || !std::isfinite(tabWidth_) || !std::isfinite(pen.x)) return;
  const double next = (std::trunc(pen.x / tabWidth_) + 1.0) * tabWidth_;
  if (std::isfinite(next)) pen.x = next;
}

void CMTContext::SendText() {
  MTState& state = Top();
  if (state.pendingText.empty()) return;
  // A zero byte ends it.
  state.pendingText.resize(static_cast<unsigned int>(std::strlen(state.pendingText.c_str())));
  auto string = std::make_shared<CMTStringElement>(textIF_, state.pendingText);
  // Measured before anything is changed, since the device may throw.
  const double extent = string->GetExtentUsingTextIF(textIF_);
  state.line->AddAssocStringElement(
      std::make_shared<CMTAssocStringElement>(textIF_, std::move(string)), state.pen);
  state.pen.x += extent;
  state.pendingText.clear();
}

void CMTContext::Text(const char* text) { AccumulateText(text); }

void CMTContext::CharCode(unsigned int code) {
  AccumulateText(static_cast<char>(static_cast<unsigned char>(code & 0xFFU)));
}

void CMTContext::DateTime(const char* format) {
  const std::string text = detail::FormatDateTimeText(MathTextDTToPrintfFormat(format).c_str(),
                                                      platform::PresentLocalTime());
  AccumulateText(text.c_str());
}

void CMTContext::Newline() {
  SendText();
  if (Top().braceDepth != 0) Fail(__LINE__, kUnbalancedBraces);
  EndLine();
  BeginLine();
}

void CMTContext::Facename(const char* face) {
  SendText();
  textIF_.SetFace(face);
  textIF_.SetCharset(0);
  textIF_.SetPitch(0);
  textIF_.SetFamily(0);
}

void CMTContext::FontSize(double percent) {
  SendText();
  const double height = textIF_.GetHeight() * percent / 100.0;
  detail::RequireFinite(height);
  textIF_.SetHeight(height);
}

void CMTContext::PredefinedColor(const Color4b& color) {
  SendText();
  Color4b withPresentAlpha = color;
  withPresentAlpha.A = textIF_.GetColor().A;
  textIF_.SetColor(withPresentAlpha);
}

void CMTContext::Color(const Color4b& color) {
  SendText();
  textIF_.SetColor(color);
}

void CMTContext::ColorComponent(unsigned int component, unsigned int value) {
  SendText();
  Color4b color = textIF_.GetColor();
  unsigned char* const bytes[] = {&color.R, &color.G, &color.B, &color.A};
  *bytes[component] = static_cast<unsigned char>(value);
  textIF_.SetColor(color);
}

void CMTContext::Bold() {
  SendText();
  textIF_.SetWeight(TEXT_WEIGHT_BOLD);
}

void CMTContext::Italic() { AddStyle(TEXT_STYLE_ITALIC); }

void CMTContext::StrikeThrough() { AddStyle(TEXT_STYLE_STRIKEOUT); }

void CMTContext::Underline() { AddStyle(TEXT_STYLE_UNDERLINE); }

void CMTContext::AddStyle(unsigned int bits) {
  SendText();
  textIF_.SetStyle(textIF_.GetStyle() | bits);
}

void CMTContext::Plain() {
  SendText();
  textIF_.SetStyle(0);
  textIF_.SetWeight(TEXT_WEIGHT_NORMAL);
}

void CMTContext::VerticalOffset(double percent) {
  SendText();
  const double y = Top().pen.y + textIF_.GetHeight() * percent / 100.0;
  detail::RequireFinite(y);
  Top().pen.y = y;
}

void CMTContext::SavePosition(unsigned int slot) {
  SendText();
  Top().savedPositions[slot - 1] = Top().pen;
}

void CMTContext::RestorePosition(unsigned int slot) {
  SendText();
  Top().pen = Top().savedPositions[slot - 1];
}

void CMTContext::PushState() {
  SendText();
  textIF_.PreserveState();
  ++Top().braceDepth;
}

void CMTContext::PopState() {
  SendText();
  textIF_.RestoreState();
  if (Top().braceDepth == 0) Fail(__LINE__, kUnbalancedBraces);
  --Top().braceDepth;
}

void CMTContext::BeginSubstring(double x, double y, HAlignment horz, VAlignment vert) {
  SendText();
  if (states_.size() > kMaxSubstringDepth)
    Fail(__LINE__, "MathText substrings are nested too deeply");
  const Vec2d offset = OffsetInTextHeights(x, y);
  states_.emplace_back(textIF_);
  CMTMultiLineElement& block = *Top().block;
  block.SetOffset(offset);
  block.SetHorizAlignment(horz);
  block.SetVertAlignment(vert);
  block.SetHorizJustify(MapKQTextIFHorizAlignToHorizJustify(horz));
  BeginLine();
}

void CMTContext::EndSubstring() {
  if (states_.size() == 1) Fail(__LINE__, kUnbalancedSubstrings);
  SendText();
  EndLine();
  const std::shared_ptr<CMTMultiLineElement> block = std::move(Top().block);
  states_.pop_back();
  const Vec2d offset = block->GetOffset();
  block->SetOffset(Vec2d());
  // Nobody else has a hold on the blocks that are attached so far.
  Top().pen = Top().line->AttachFinishedBlock(textIF_, block, offset);
}

void CMTContext::Line(double x, double y, IMathTextScanner::Side side) {
  SendText();
  Top().line->AssociateLineSegment(textIF_, side, OffsetInTextHeights(x, y));
}

void CMTContext::Error(const char* rest) {
  SendText();
  ThrowErrorImpl(kSourceName, __LINE__, ERR_CUSTOM, "MathText parsing error near '%s'", rest);
}

// An offset in percent of the text height, in units of the interface.
Vec2d CMTContext::OffsetInTextHeights(double x, double y) const {
  const double height = textIF_.GetHeight();
  const Vec2d offset(x * height / 100.0, y * height / 100.0);
  detail::RequireFinite(offset);
  return offset;
}

}  // namespace vlm
