#include <velum/mathtext/MTMetricsTextIF.h>

#include <velum/fonts/SystemFaceInfo.h>
#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTDirectTextIF.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTParser.h>

#include <memory>
#include <utility>

namespace vlm {

namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kCharsPerTab = 10.0;

}  // namespace

CMTMetricsTextIF::CMTMetricsTextIF() { now_.text.height = MatchToFace()->GetEmSize(); }

CMTMetricsTextIF::~CMTMetricsTextIF() = default;

void CMTMetricsTextIF::SetColor(Color4b color) { now_.text.color = color; }
Color4b CMTMetricsTextIF::GetColor() const { return now_.text.color; }
void CMTMetricsTextIF::SetFace(const GString& face) { now_.text.face = face; }
GString CMTMetricsTextIF::GetFace() const { return now_.text.face; }
void CMTMetricsTextIF::SetWeight(unsigned int weight) { now_.text.weight = weight; }
unsigned int CMTMetricsTextIF::GetWeight() const { return now_.text.weight; }
void CMTMetricsTextIF::SetStyle(unsigned int style) { now_.text.style = style; }
unsigned int CMTMetricsTextIF::GetStyle() const { return now_.text.style; }
void CMTMetricsTextIF::SetCharset(unsigned int charset) { now_.text.charset = charset; }
unsigned int CMTMetricsTextIF::GetCharset() const { return now_.text.charset; }
void CMTMetricsTextIF::SetPitch(unsigned int pitch) { now_.text.pitch = pitch; }
unsigned int CMTMetricsTextIF::GetPitch() const { return now_.text.pitch; }
void CMTMetricsTextIF::SetFamily(unsigned int family) { now_.text.family = family; }
unsigned int CMTMetricsTextIF::GetFamily() const { return now_.text.family; }
void CMTMetricsTextIF::SetHorizAlignment(unsigned int alignment) {
  now_.horizAlignment = alignment;
}
unsigned int CMTMetricsTextIF::GetHorizAlignment() const { return now_.horizAlignment; }
void CMTMetricsTextIF::SetVertAlignment(unsigned int alignment) { now_.vertAlignment = alignment; }
unsigned int CMTMetricsTextIF::GetVertAlignment() const { return now_.vertAlignment; }
void CMTMetricsTextIF::SetHeight(double height) { now_.text.height = height; }
double CMTMetricsTextIF::GetHeight() const { return now_.text.height; }
void CMTMetricsTextIF::SetHorizJustify(unsigned int justify) { now_.horizJustify = justify; }
unsigned int CMTMetricsTextIF::GetHorizJustify() const { return now_.horizJustify; }

void CMTMetricsTextIF::PreserveState() { stack_.push_back(now_); }

void CMTMetricsTextIF::RestoreState() {
  if (stack_.empty()) return;
  now_ = std::move(stack_.back());
  stack_.pop_back();
}

std::shared_ptr<const CFaceInfo> CMTMetricsTextIF::MatchToFace() const {
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  const long weight = now_.text.weight < TEXT_WEIGHT_BOLD ? 400 : 700;
  const int index = faces.Match(now_.text.face, weight, now_.text.style & TEXT_STYLE_ITALIC, 0, 0,
                                FACE_MATCH_NAME | FACE_MATCH_WEIGHT | FACE_MATCH_ITALIC,
                                faces.GetFontMatcherFaceTypeFlags());
  return index < 0 ? faces.GetDefVariablePitchFaceInfo()
                   : faces.GetFaceInfo(static_cast<unsigned int>(index));
}

void CMTMetricsTextIF::GetBounds(const GString& text, Box2d& box) {
  const RECT bounds = MatchToFace()->CalcEmBounds(text);
  box.Set(bounds.left, bounds.top, bounds.right, bounds.bottom);
}

void CMTMetricsTextIF::GetExtent(const GString& text, Vec2d& extent) {
  const auto face = MatchToFace();
  extent.Set(face->CalcEmExtent(text), face->GetCellHeight());
}

void CMTMetricsTextIF::GetMetrics(KQTextIF::_TXTMETRICS& metrics) {
  const auto face = MatchToFace();
  const OUTLINETEXTMETRICA& record = face->GetOTM();
  const TEXTMETRICA& text = record.otmTextMetrics;
  metrics.emSquare = face->GetEmSize();
  metrics.height = text.tmHeight;
  metrics.ascent = text.tmAscent;
  metrics.descent = text.tmDescent;
  metrics.internalLeading = text.tmInternalLeading;
  metrics.externalLeading = text.tmExternalLeading;
  metrics.aveCharWidth = text.tmAveCharWidth;
  metrics.maxCharWidth = text.tmMaxCharWidth;
  metrics.italicAngle = record.otmItalicAngle / 10.0 * kRadiansPerDegree;
  metrics.simulatedItalicAngle = -15.0 * kRadiansPerDegree;
  metrics.minimumPpem = record.otmusMinimumPPEM;
  metrics.strikeoutSize = record.otmsStrikeoutSize;
  metrics.strikeoutPosition = record.otmsStrikeoutPosition;
  metrics.underscoreSize = record.otmsUnderscoreSize;
  metrics.underscorePosition = record.otmsUnderscorePosition;
  metrics.defaultChar = text.tmDefaultChar;
  metrics.breakChar = text.tmBreakChar;
  metrics.reserved = 0;
}

bool CMTMetricsTextIF::Draw(const Vec2d&, const GString&) { return true; }
bool CMTMetricsTextIF::DrawLine(const Vec2d&, const Vec2d&) { return true; }

GString MathTextToSimpleText(const GString& text) {
  if (!ContainsMathText(text.c_str())) return text;
  CMTMetricsTextIF device;
  CMTDirectTextIF textIF(device);
  CMTContext context(textIF, kCharsPerTab);
  auto block = std::make_shared<CMTMultiLineElement>(textIF);
  if (context.Parse(text, block) != CMTContext::RETVAL_SUCCESS) {
    block->clear();
    (void)context.Parse("*** Math Text Error ***", block);
  }
  return block->GetSimpleText();
}

}  // namespace vlm
