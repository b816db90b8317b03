#include <velum/fonts/detail/SymbolSetReader.h>

#include <velum/files/BufferedFile.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vlm::detail {

namespace {

using GlyphInfo = CStrokedFace::GlyphInfo;
using Operation = CStrokedFace::GFESYMOP;

constexpr unsigned int kCodes = 256;
constexpr unsigned int kBlank = 32;
constexpr int kMove = 3;
constexpr int kDraw = 2;

/// What is known of all glyphs while they are read.
struct Totals {
  int records = 0;
  std::int64_t width = 0;
  int lowest = std::numeric_limits<int>::max();
  int highest = std::numeric_limits<int>::min();
};

/// Makes a glyph's polylines; false if a line would begin nowhere.
bool MakePolylines(const Operation* operations, int count, GlyphInfo& glyph) {
  if (count == 1) return false;
  for (int i = 0; i < count; ++i) {
    const auto [x, y, operation] = operations[i];
    const bool isLast = i + 1 == count;
    if (isLast && operation != kDraw) break;
    if (operation != kMove) {
      if (glyph.counts.empty()) return false;
      ++glyph.counts.back();
    } else if (operations[i + 1].operation == kDraw) {
      glyph.counts.push_back(1);
    } else {
      continue;
    }
    glyph.vertices.emplace_back(x, y);
  }
  return true;
}

/// Measures and makes a glyph of `count` operations.
bool MakeGlyph(const Operation* operations, int count, GlyphInfo& glyph, Totals& totals) {
  const auto [left, right] =
      std::minmax_element(operations, operations + count,
                          [](const Operation& a, const Operation& b) { return a.x < b.x; });
  const auto [low, high] =
      std::minmax_element(operations, operations + count,
                          [](const Operation& a, const Operation& b) { return a.y < b.y; });
  glyph.metrics.gmBlackBoxX = static_cast<std::uint32_t>(right->x - left->x);
  glyph.metrics.gmBlackBoxY = static_cast<std::uint32_t>(high->y - low->y);
  glyph.metrics.gmptGlyphOrigin = {left->x, high->y};
  totals.width += glyph.metrics.gmCellIncX;
  totals.lowest = std::min<int>(totals.lowest, low->y);
  totals.highest = std::max<int>(totals.highest, high->y);
  return MakePolylines(operations, count, glyph);
}

bool IsMagic(const char (&magic)[3]) {
  const auto folded = [](char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : int{c}; };
  return folded(magic[0]) == 'S' && folded(magic[1]) == 'Y' && folded(magic[2]) == 'M';
}

/// Reads all glyphs, each to the place of its code.
bool ReadGlyphs(CBufferedFile& file, SymbolSet& set, Totals& totals) {
  char magic[3];
  if (file.Read(magic, sizeof(magic)) != sizeof(magic) || !IsMagic(magic)) return false;
  std::uint8_t header[4];
  while (const unsigned int got = file.Read(header, sizeof(header))) {
    if (got != sizeof(header)) return false;
    const unsigned short code = header[0];
    set.firstChar = std::min(set.firstChar, code);
    set.lastChar = std::max(set.lastChar, code);
    GlyphInfo& glyph = set.glyphs[code];
    if (!glyph.counts.empty()) return false;
    const auto left = static_cast<std::int8_t>(header[1]);
    const auto right = static_cast<std::int8_t>(header[2]);
    glyph.metrics.gmCellIncX = static_cast<std::int16_t>(right - left);
    // No sound set has more glyphs than an `int` counts; one of many gigabytes that repeats a blank
    // may.
    if (totals.records == std::numeric_limits<int>::max()) return false;
    ++totals.records;
    const int count = static_cast<std::int8_t>(header[3]);
    if (count <= 0) continue;
    Operation operations[127];
    const auto bytes =
        static_cast<unsigned int>(static_cast<std::size_t>(count) * sizeof(Operation));
    if (file.Read(operations, bytes) != bytes) return false;
    set.maxCharWidth = std::max<int>(set.maxCharWidth, glyph.metrics.gmCellIncX);
    if (!MakeGlyph(operations, count, glyph, totals)) return false;
  }
  return totals.records > 0 && totals.lowest <= totals.highest;
}

/// Works out the measures of the whole and leaves the glyphs from the first code to the last.
void Finish(const Totals& totals, bool isFixedPitch, SymbolSet& set) {
  set.avgCharWidth = static_cast<int>(totals.width / totals.records);
  std::int16_t& blankWidth = set.glyphs[kBlank].metrics.gmCellIncX;
  if (isFixedPitch || blankWidth == 0) blankWidth = static_cast<std::int16_t>(set.avgCharWidth);
  set.maxDescender = std::max(-totals.lowest, 0);
  set.maxAscender = std::max(totals.highest, 0);
  set.emSize = set.maxAscender + set.maxDescender;
  set.aspect = set.emSize == 0 || set.avgCharWidth == 0
                   ? 1.0
                   : static_cast<double>(set.emSize) / set.avgCharWidth;
  set.glyphs.resize(set.lastChar + 1u);
  set.glyphs.erase(set.glyphs.begin(), set.glyphs.begin() + set.firstChar);
  for (GlyphInfo& glyph : set.glyphs) {
    glyph.metrics.gmCellIncY = static_cast<std::int16_t>(totals.highest - totals.lowest);
  }
  const auto blank = std::find_if(set.glyphs.begin(), set.glyphs.end(),
                                  [](const GlyphInfo& glyph) { return glyph.counts.empty(); });
  const auto offset = blank == set.glyphs.end() ? 0 : blank - set.glyphs.begin();
  set.defaultChar = set.breakChar = static_cast<unsigned short>(set.firstChar + offset);
}

}  // namespace

bool ReadSymbolSet(CBufferedFile& file, bool isFixedPitch, SymbolSet& set) {
  set = SymbolSet();
  set.glyphs.resize(kCodes);
  Totals totals;
  if (!ReadGlyphs(file, set, totals)) {
    set.glyphs.clear();
    set.firstChar = set.lastChar = 0;
    return false;
  }
  Finish(totals, isFixedPitch, set);
  return true;
}

}  // namespace vlm::detail
