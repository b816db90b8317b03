#include <examples/specimen/FaceSheet.h>

#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vlm::specimen {
namespace {

constexpr double kPageWidth = 760.0;
constexpr double kMargin = 40.0;
constexpr double kRoom = kPageWidth - 2.0 * kMargin;

constexpr double kHeadHeight = 112.0;
constexpr double kLinesAbove = 14.0;
constexpr double kLinesBelow = 22.0;
constexpr double kLargeSize = 64.0;
constexpr double kLeastLargeSize = 44.0;
constexpr double kSizes[] = {10.0, 16.0, 26.0};
constexpr double kSizesHeight = 112.0;
constexpr int kColumns = 16;
constexpr double kCellWidth = kRoom / kColumns;
constexpr double kCellHeight = 44.0;
constexpr double kGlyphSize = 22.0;
constexpr double kGridHead = 22.0;
constexpr double kKeyWidth = 70.0;  // of the names beside the lines

constexpr Color4b kFaintRed(214, 74, 60, 110);

constexpr unsigned short kFirstMarker = 33;
constexpr char kPangram[] = "The quick brown fox jumps over the lazy dog 0123456789";

// The first code of the row that holds a code.
int RowStart(int code) { return code / kColumns * kColumns; }

// The default code below the first letter shows the sign for what is missing, as others do.
int FirstShown(const CFaceInfo& face) {
  constexpr unsigned short kSpace = 32;
  return std::max(face.GetFirstChar(), kSpace);
}

// The codes that have glyphs of their own.
std::set<int> DefinedCodes(const CFaceInfo& face) {
  std::vector<CFaceInfo::_CharRange> ranges;
  face.GetDefinedGlyphRanges(ranges);
  std::set<int> codes;
  for (const CFaceInfo::_CharRange& range : ranges) {
    for (int code = range.first; code <= range.last; ++code) codes.insert(code);
  }
  return codes;
}

// A text that the face has; or else, and for markers, the first of its codes behind the blank.
std::string TextIn(const std::set<int>& defined, const FaceFacts& face, const std::string& text) {
  const auto has = [&](char c) { return defined.count(static_cast<unsigned char>(c)) != 0; };
  if (!face.isMarkers && std::all_of(text.begin(), text.end(), has)) return text;
  std::string codes;
  for (const int code : defined) {
    if (code >= kFirstMarker && codes.size() < text.size()) codes += static_cast<char>(code);
  }
  return codes;
}

// As many of the words of a text as are no wider than `room`, or of its letters if there are none.
std::string Fitting(const FaceFacts& face, std::string text, double size, double room) {
  while (text.size() > 1 && FacePainter::Advance(face.index, text, size) > room) {
    const std::size_t blank = text.rfind(' ');
    text.resize(blank == std::string::npos ? text.size() - 1 : blank);
  }
  return text;
}

std::string KindOf(const FaceFacts& facts, const CFaceInfo& face) {
  if (const auto* stroked = dynamic_cast<const CSYMFaceInfo*>(&face)) {
    const CSYMSetInfo& set = g_SYMSetList[stroked->GetSYMSetIndex()];
    return "Stroked face, symbol set " + std::to_string(set.GetIndex()) + ", " +
           set.GetFileName().String();
  }
  return "Outline face of the family " + facts.family;
}

using Measures = std::vector<std::pair<std::string, std::string>>;

Measures MeasuresOf(const FaceFacts& facts, const CFaceInfo& face) {
  const OUTLINETEXTMETRICA& record = face.GetOTM();
  const TEXTMETRICA& metrics = record.otmTextMetrics;
  const auto text = [](long value) { return std::to_string(value); };
  return {{"Em square", text(record.otmEMSquare)},
          {"Height", text(metrics.tmHeight)},
          {"Ascent", text(metrics.tmAscent)},
          {"Descent", text(metrics.tmDescent)},
          {"Mean width", text(metrics.tmAveCharWidth)},
          {"Greatest width", text(metrics.tmMaxCharWidth)},
          {"Internal leading", text(metrics.tmInternalLeading)},
          {"External leading", text(metrics.tmExternalLeading)},
          {"Underscore", text(record.otmsUnderscorePosition)},
          {"Strikeout", text(record.otmsStrikeoutPosition)},
          {"Weight", text(metrics.tmWeight)},
          {"Italic", metrics.tmItalic != 0 ? "yes" : "no"},
          {"Pitch", facts.isFixed ? "fixed" : "variable"},
          {"Family", FamilyWord(facts.familyBits)},
          {"Character set", text(metrics.tmCharSet)},
          {"Codes", text(face.GetFirstChar()) + " to " + text(face.GetLastChar())}};
}

}  // namespace

GString CodesFrom(unsigned int first, unsigned int last) {
  std::string bytes;
  for (unsigned int code = first; code <= last; ++code) bytes += static_cast<char>(code);
  return bytes;
}

double CenteredShift(const FaceFacts& face) {
  if (!face.isMarkers) return 0.0;
  const auto info = CSystemFaceInfo::GetInstance().GetFaceInfo(face.index);
  const GLYPHMETRICS& metrics = info->GetGlyphMetrics(kFirstMarker);
  return metrics.gmptGlyphOrigin.x < 0 ? info->GetEmToHeight(0.5 * metrics.gmCellIncX) : 0.0;
}

FaceSheet::FaceSheet(unsigned int face)
    : facts_(FactsOf(face)),
      face_(CSystemFaceInfo::GetInstance().GetFaceInfo(face)),
      defined_(DefinedCodes(*face_)),
      largeText_(Fitting(facts_, TextIn(defined_, facts_, "Hamburgefonstiv"), kLeastLargeSize,
                         kRoom - kKeyWidth)) {
  if (face_->GetEmSize() == 0) {
    throw std::runtime_error("the face '" + facts_.name + "' has no measures");
  }
}

double FaceSheet::Width() const { return kPageWidth; }

double FaceSheet::Height() const {
  const int rows = (RowStart(face_->GetLastChar()) - RowStart(FirstShown(*face_))) / kColumns + 1;
  return kMargin + kHeadHeight + LinesHeight() + kSizesHeight + kGridHead + rows * kCellHeight +
         kMargin;
}

double FaceSheet::LargeSize() const {
  const double width = FacePainter::Advance(facts_.index, largeText_, 1.0);
  return std::min(kLargeSize, (kRoom - kKeyWidth) / std::max(width, 0.1));
}

double FaceSheet::LinesHeight() const {
  return kLinesAbove + kLinesBelow +
         face_->GetEmToHeight(LargeSize()) * face_->GetOTM().otmTextMetrics.tmHeight;
}

double FaceSheet::DrawHead(Page& page, double y) const {
  page.Write(kTitle, kMargin, y + 20.0, facts_.name);
  page.Write(kBody, kMargin, y + 36.0, KindOf(facts_, *face_));
  const Measures measures = MeasuresOf(facts_, *face_);
  constexpr int kRows = 4;
  const double column = kRoom / 4.0;
  constexpr double kLeading = 13.0;
  for (std::size_t i = 0; i < measures.size(); ++i) {
    const double x = kMargin + static_cast<double>(i / kRows) * column;
    const double line = y + 58.0 + static_cast<double>(i % kRows) * kLeading;
    page.Write({4, 8.0, kFaint}, x, line, measures[i].first);
    page.Write({4, 8.0, kInk}, x + 76.0, line, measures[i].second);
  }
  return y + kHeadHeight;
}

double FaceSheet::DrawLines(Page& page, FacePainter& painter, double y) const {
  const TEXTMETRICA& metrics = face_->GetOTM().otmTextMetrics;
  const double size = LargeSize();
  const double unit = face_->GetEmToHeight(size);
  const double baseline = y + kLinesAbove + unit * metrics.tmAscent;
  const double right = kPageWidth - kMargin - kKeyWidth + 4.0;

  struct Line {
    const char* name;
    double height;
    Color4b color;
  };
  std::vector<Line> lines = {
      {"ascent", 1.0 * metrics.tmAscent, kBlue},
      {"baseline", 0.0, kRed},
      {"descent", -1.0 * metrics.tmDescent, kBlue},
  };
  if (metrics.tmInternalLeading != 0) {
    lines.insert(lines.begin() + 1,
                 {"em", 1.0 * metrics.tmAscent - metrics.tmInternalLeading, kFaint});
  } else {
    lines.front().name = "ascent, em";
    lines.back().name = "descent, em";
  }
  double free = -1e9;
  for (const Line& line : lines) {
    const double at = baseline - unit * line.height;
    page.Rule(Vec2d(kMargin, at), Vec2d(right, at), line.color);
    free = std::max(at + 2.2, free + 7.5);
    page.Write({4, 6.5, line.color}, right + 6.0, free, line.name);
  }
  examples::SetSourceColor(page.Context(), kInk);
  painter.Draw(page.Context(), facts_.index, largeText_,
               Vec2d(kMargin + size * CenteredShift(facts_), baseline), size);
  return y + LinesHeight();
}

double FaceSheet::DrawSizes(Page& page, FacePainter& painter, double y) const {
  const double left = kMargin + 18.0;
  double baseline = y;
  for (const double size : kSizes) {
    baseline += 10.0 + size;
    const GString text =
        Fitting(facts_, TextIn(defined_, facts_, kPangram), size, kPageWidth - kMargin - left);
    const double width = FacePainter::Advance(facts_.index, text, size);
    page.Write(kSmall, left - 6.0, baseline, std::to_string(std::lround(size)), Anchor::Right);
    page.Rule(Vec2d(left, baseline), Vec2d(left + width, baseline), kFaintRed, 0.4);
    examples::SetSourceColor(page.Context(), kInk);
    painter.Draw(page.Context(), facts_.index, text,
                 Vec2d(left + size * CenteredShift(facts_), baseline), size);
  }
  return y + kSizesHeight;
}

double FaceSheet::DrawGrid(Page& page, FacePainter& painter, double y) const {
  y += kGridHead;
  page.Write(kHeading, kMargin, y - 8.0, "Codes");
  const int first = FirstShown(*face_);
  const int last = face_->GetLastChar();
  const TEXTMETRICA& metrics = face_->GetOTM().otmTextMetrics;
  // The cell of the face stands in the middle of the grid's.
  const double size =
      std::min(kGlyphSize, 0.72 * kCellHeight * face_->GetEmSize() / std::max(1, metrics.tmHeight));
  const double unit = face_->GetEmToHeight(size);
  const double above =
      0.5 * (kCellHeight - 8.0 - unit * metrics.tmHeight) + unit * metrics.tmAscent;
  for (int code = RowStart(first); code < RowStart(last) + kColumns; ++code) {
    const double left = kMargin + (code % kColumns) * kCellWidth;
    const double top = y + (code - RowStart(first)) / kColumns * kCellHeight;
    const Vec2d corners[] = {{left, top},
                             {left + kCellWidth, top},
                             {left + kCellWidth, top + kCellHeight},
                             {left, top + kCellHeight}};
    for (int i = 0; i < 4; ++i) page.Rule(corners[i], corners[(i + 1) % 4], kHairline);
    if (code < first || code > last) continue;
    page.Write(kSmall, left + 3.0, top + kCellHeight - 3.0, std::to_string(code));
    const GString text =
        CodesFrom(static_cast<unsigned int>(code), static_cast<unsigned int>(code));
    const double width = FacePainter::Advance(facts_.index, text, size);
    const bool isDefined = defined_.count(code) != 0;
    if (!isDefined && width > kCellWidth) continue;
    const double x = left + 0.5 * (kCellWidth - width);
    page.Rule(Vec2d(x, top + above), Vec2d(x + width, top + above), kFaintRed, 0.4);
    examples::SetSourceColor(page.Context(), isDefined ? kInk : kHairline);
    painter.Draw(page.Context(), facts_.index, text,
                 Vec2d(x + size * CenteredShift(facts_), top + above), size);
  }
  return y;
}

void FaceSheet::Draw(cairo_t* context) const {
  Page page(context);
  FacePainter painter;
  double y = DrawHead(page, kMargin);
  y = DrawLines(page, painter, y);
  y = DrawSizes(page, painter, y);
  DrawGrid(page, painter, y);
}

}  // namespace vlm::specimen
