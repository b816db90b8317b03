#include <examples/common/StrokedTextDevice.h>

#include <velum/core/WideText.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/MathStrokes.h>
#include <examples/common/StrokedText.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace vlm::examples {
namespace {

// The pen and what it adds for each weight above the regular one, in shares of the em.
constexpr double kPen = 0.038;
constexpr double kPenPerWeight = 0.013;
constexpr double kLean = 0.21;  // of italics, the tangent of 12 degrees

constexpr unsigned int kWesternCodePage = 1252;

// Beyond these Cairo takes nothing.
bool IsDrawable(double height) { return height > 1e-6 && height < 1e6; }

bool IsFinite(const Vec2d& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

bool IsHighSurrogate(wchar_t unit) { return unit >= 0xD800 && unit < 0xDC00; }

std::u32string CharactersOf(const GString& text) {
  const AtoW wide(text.c_str());
  std::u32string characters;
  for (const wchar_t* unit = wide; *unit != 0; ++unit) {
    auto character = static_cast<char32_t>(*unit);
    if (IsHighSurrogate(unit[0]) && unit[1] >= 0xDC00 && unit[1] < 0xE000) {
      character =
          0x10000 + ((character - 0xD800) << 10) + (static_cast<char32_t>(unit[1]) - 0xDC00);
      ++unit;
    }
    characters += character;
  }
  return characters;
}

// The code of a character in windows-1252, 0 if it has none.
unsigned int WesternCode(char32_t character) {
  if (character < 0x80) return character;
  static const std::map<char32_t, unsigned int> codes = [] {
    std::map<char32_t, unsigned int> table;
    for (unsigned int code = 0x80; code < 0x100; ++code) {
      const AtoW wide(std::string(1, static_cast<char>(code)), kWesternCodePage);
      table[static_cast<char32_t>(wide[0])] = code;
    }
    return table;
  }();
  const auto found = codes.find(character);
  return found == codes.end() ? 0 : found->second;
}

// The glyph of a code in a set; null if it has none, or a blank one that is no space.
const CStrokedFace::GlyphInfo* GlyphOf(const CStrokedFace& set, unsigned int code) {
  if (code < set.GetFirstChar() || code > set.GetLastChar()) return nullptr;
  const CStrokedFace::GlyphInfo& glyph = set.GetGlyphInfo(code);
  return glyph.counts.empty() && code != ' ' ? nullptr : &glyph;
}

std::string NamesOfSets() {
  std::string names;
  for (const CSYMSetInfo& set : g_SYMSetList) {
    if (!names.empty()) names += ", ";
    names += set.GetFaceName().String();
  }
  return names;
}

}  // namespace

StrokedTextDevice::StrokedTextDevice(cairo_t* context, double height, const GString& face)
    : AttributedTextDevice(height), context_(context) {
  if (context == nullptr) throw std::invalid_argument("a text device needs a Cairo context");
  const Set set = FindSet(face.String());
  if (set == nullptr) {
    throw std::runtime_error("there is no stroked face '" + face.String() + "' among " +
                             NamesOfSets());
  }
  baseFace_ = set->GetFaceName();
  SetFace(baseFace_);
  cairo_reference(context_);
}

StrokedTextDevice::~StrokedTextDevice() { cairo_destroy(context_); }

StrokedTextDevice::Set StrokedTextDevice::FindSet(const std::string& name) {
  const auto known = sets_.find(name);
  if (known != sets_.end()) return known->second;
  return sets_[name] = FindSymbolSet(name);
}

StrokedTextDevice::Set StrokedTextDevice::CurrentSet() {
  Set set = FindSet(Now().face.String());
  if (set == nullptr) set = FindSet(baseFace_.String());
  if (set->GetGlyphInfoListSize() == 0) {
    throw std::runtime_error("the symbol set '" + set->GetFaceName().String() + "' is damaged");
  }
  return set;
}

const CStrokedFace::GlyphInfo* StrokedTextDevice::FindGlyph(char32_t character, Set& set) {
  if (const unsigned int code = WesternCode(character)) {
    if (const auto* glyph = GlyphOf(*set, code)) return glyph;
    for (const char* western : {"KQ Roman", "KQ Helv"}) {
      const Set other = FindSet(western);
      if (const auto* glyph = other == nullptr ? nullptr : GlyphOf(*other, code)) {
        set = other;
        return glyph;
      }
    }
  }
  if (const char letter = GreekLetterCode(character)) {
    const Set greek = FindSet("KQ Symbol");
    const auto code = static_cast<unsigned char>(letter);
    if (const auto* glyph = greek == nullptr ? nullptr : GlyphOf(*greek, code)) {
      set = greek;
      return glyph;
    }
  }
  if (const char32_t plain = WithoutTonos(character)) {
    if (const auto* letter = FindGlyph(plain, set)) {
      return &accented_.try_emplace(character, AddTonos(*letter)).first->second;
    }
  }
  return &MathStrokes(character);
}

StrokedTextDevice::Line StrokedTextDevice::LayOut(const GString& text) {
  Line line;
  const Set current = CurrentSet();
  const double scale = Now().height / current->GetEmSize();
  for (const char32_t character : CharactersOf(text)) {
    Set set = current;
    const CStrokedFace::GlyphInfo* glyph = FindGlyph(character, set);
    // Letters are as high in all sets, whatever else these hold.
    line.letters.push_back({glyph, line.advance, scale});
    line.advance += scale * glyph->metrics.gmCellIncX;
  }
  return line;
}

double StrokedTextDevice::PenWidth() const {
  const double weight = std::clamp(static_cast<int>(Now().weight), 1, 10) - 4;
  return Now().height * (kPen + kPenPerWeight * weight);
}

double StrokedTextDevice::Slant() const {
  return (Now().style & TEXT_STYLE_ITALIC) != 0 ? kLean : 0.0;
}

KQTextIF::_TXTMETRICS StrokedTextDevice::Measures() {
  const Set set = CurrentSet();
  const double unit = Now().height / set->GetEmSize();
  _TXTMETRICS metrics{};
  metrics.emSquare = static_cast<unsigned int>(set->GetEmSize());
  metrics.ascent = unit * set->GetMaxAscender();
  metrics.descent = unit * set->GetMaxDescender();
  metrics.height = metrics.ascent + metrics.descent;
  metrics.aveCharWidth = unit * set->GetAvgCharWidth();
  metrics.maxCharWidth = unit * set->GetMaxCharWidth();
  metrics.italicAngle = 0.0;
  metrics.simulatedItalicAngle = -std::atan(Slant());
  metrics.strikeoutSize = metrics.underscoreSize = PenWidth();
  metrics.strikeoutPosition = metrics.ascent / 3.0;
  metrics.underscorePosition = metrics.descent / 4.0 - metrics.descent;
  metrics.defaultChar = set->GetDefaultChar();
  metrics.breakChar = ' ';
  return metrics;
}

void StrokedTextDevice::GetMetrics(_TXTMETRICS& metrics) { metrics = Measures(); }

void StrokedTextDevice::GetExtent(const GString& text, Vec2d& extent) {
  extent.Set(LayOut(text).advance, Measures().height);
}

void StrokedTextDevice::GetBounds(const GString& text, Box2d& box) {
  const Line line = LayOut(text);
  const _TXTMETRICS metrics = Measures();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double left = kInfinity;
  double right = -kInfinity;
  for (const Letter& letter : line.letters) {
    for (const Vec2d& point : letter.glyph->vertices) {
      const double x = letter.x + letter.scale * (point.x + Slant() * point.y);
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }
  if ((Now().style & (TEXT_STYLE_UNDERLINE | TEXT_STYLE_STRIKEOUT)) != 0) {
    left = std::min(left, 0.0);
    right = std::max(right, line.advance);
  }
  const double half = 0.5 * PenWidth();
  if (left > right) {
    box.Set(0.0, -metrics.ascent, 0.0, metrics.descent);
  } else {
    box.Set(left - half, -metrics.ascent, right + half, metrics.descent);
  }
}

bool StrokedTextDevice::Draw(const Vec2d& position, const GString& text) {
  if (!IsDrawable(Now().height) || !IsFinite(position)) return true;
  const Line line = LayOut(text);
  cairo_save(context_);
  SetSourceColor(context_, Now().color);
  cairo_new_path(context_);
  for (const Letter& letter : line.letters) {
    AddStrokedGlyph(context_, *letter.glyph, position + Vec2d(letter.x, 0.0), letter.scale,
                    Slant());
  }
  const _TXTMETRICS metrics = Measures();
  const auto addLine = [&](double height) {
    cairo_move_to(context_, position.x, position.y - height);
    cairo_line_to(context_, position.x + line.advance, position.y - height);
  };
  if ((Now().style & TEXT_STYLE_UNDERLINE) != 0) addLine(metrics.underscorePosition);
  if ((Now().style & TEXT_STYLE_STRIKEOUT) != 0) addLine(metrics.strikeoutPosition);
  StrokeRound(context_, PenWidth());
  cairo_restore(context_);
  return cairo_status(context_) == CAIRO_STATUS_SUCCESS;
}

bool StrokedTextDevice::DrawLine(const Vec2d& from, const Vec2d& to) {
  if (!IsDrawable(Now().height) || !IsFinite(from) || !IsFinite(to)) return true;
  cairo_save(context_);
  SetSourceColor(context_, Now().color);
  cairo_new_path(context_);
  cairo_move_to(context_, from.x, from.y);
  cairo_line_to(context_, to.x, to.y);
  StrokeRound(context_, PenWidth());
  cairo_restore(context_);
  return cairo_status(context_) == CAIRO_STATUS_SUCCESS;
}

}  // namespace vlm::examples
