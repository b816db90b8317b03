#include <examples/common/MathStrokes.h>

#include <velum/geometry/Constants.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm::examples {
namespace {

// From U+0391 and U+03B1 on; a dot where no letter is.
constexpr std::string_view kCapitals = "ABGDEZHQIKLMNXOPR.STUFCYW";
constexpr std::string_view kSmall = "abgdezhqiklmnxoprsstufcyw";

using Polylines = std::vector<std::vector<Vec2d>>;

CStrokedFace::GlyphInfo MakeGlyph(int advance, const Polylines& lines) {
  CStrokedFace::GlyphInfo glyph;
  glyph.metrics.gmCellIncX = static_cast<short>(advance);
  for (const std::vector<Vec2d>& line : lines) {
    glyph.counts.push_back(static_cast<int>(line.size()));
    glyph.vertices.insert(glyph.vertices.end(), line.begin(), line.end());
  }
  return glyph;
}

// A polygon of many corners, or of few.
std::vector<Vec2d> Round(const Vec2d& center, double radius, int corners = 20) {
  std::vector<Vec2d> line;
  for (int i = 0; i <= corners; ++i) {
    const double angle = TWO_PI * i / corners;
    line.push_back(center + Vec2d(std::cos(angle), std::sin(angle)) * radius);
  }
  return line;
}

// Lines side by side, so that a pen fills what is between.
Polylines Filled(const Vec2d& center, double half, bool isRound) {
  constexpr double kStep = 0.75;
  std::vector<Vec2d> line;
  const int steps = static_cast<int>(2.0 * half / kStep);
  for (int i = 0; i <= steps; ++i) {
    const double y = 2.0 * half * i / steps - half;
    const double x = isRound ? std::sqrt(std::max(0.0, half * half - y * y)) : half;
    const double side = i % 2 == 0 ? 1.0 : -1.0;
    line.push_back(center + Vec2d(-side * x, y));
    line.push_back(center + Vec2d(side * x, y));
  }
  return {line};
}

const Polylines kEmptyBox = {{{3, 0}, {3, 21}, {15, 21}, {15, 0}, {3, 0}}};

std::map<char32_t, CStrokedFace::GlyphInfo> MakeSigns() {
  const std::vector<Vec2d> nearly = {{4, 7},  {4, 9},  {6, 11}, {9, 11}, {13, 8},
                                     {17, 5}, {20, 5}, {22, 7}, {22, 9}};
  const auto raised = [](std::vector<Vec2d> line, double by) {
    for (Vec2d& point : line) point.y += by;
    return line;
  };
  std::map<char32_t, CStrokedFace::GlyphInfo> signs;
  signs[0x142] = MakeGlyph(14, {{{4, 21}, {7, 21}, {7, 0}}, {{4, 0}, {10, 0}}, {{3, 8}, {11, 14}}});
  signs[0x2007] = MakeGlyph(20, {});                   // a digit's space
  signs[0x2009] = MakeGlyph(6, {});                    // a thin space
  signs[0x2010] = MakeGlyph(16, {{{3, 9}, {13, 9}}});  // hyphen
  signs[0x2030] = MakeGlyph(
      36, {{{21, 21}, {3, 0}}, Round({7, 17}, 3.5), Round({17, 4}, 3.5), Round({28, 4}, 3.5)});
  signs[0x2032] = MakeGlyph(9, {{{7, 21}, {3, 14}}});                        // minutes
  signs[0x2033] = MakeGlyph(14, {{{7, 21}, {3, 14}}, {{12, 21}, {8, 14}}});  // seconds
  signs[0x2190] = MakeGlyph(28, {{{25, 9}, {3, 9}}, {{9, 14}, {3, 9}, {9, 4}}});
  signs[0x2192] = MakeGlyph(28, {{{3, 9}, {25, 9}}, {{19, 14}, {25, 9}, {19, 4}}});
  signs[0x2202] = MakeGlyph(20, {{{5, 19},
                                  {7, 21},
                                  {10, 21},
                                  {13, 19},
                                  {15, 16},
                                  {16, 11},
                                  {15, 6},
                                  {13, 2},
                                  {10, 0},
                                  {6, 0},
                                  {4, 2},
                                  {3, 5},
                                  {4, 9},
                                  {6, 12},
                                  {9, 13},
                                  {12, 12},
                                  {14, 10},
                                  {16, 7}}});
  signs[0x2212] = MakeGlyph(26, {{{4, 9}, {22, 9}}});
  // The line over what is under the root goes on from here.
  signs[0x221A] = MakeGlyph(18, {{{1, 9}, {4, 11}, {9, 0}, {17, 24}}});
  signs[0x221E] = MakeGlyph(28, {{{14, 9},
                                  {17, 12},
                                  {20, 13},
                                  {23, 12},
                                  {25, 9},
                                  {23, 6},
                                  {20, 5},
                                  {17, 6},
                                  {14, 9},
                                  {11, 12},
                                  {8, 13},
                                  {5, 12},
                                  {3, 9},
                                  {5, 6},
                                  {8, 5},
                                  {11, 6},
                                  {14, 9}}});
  signs[0x222B] = MakeGlyph(18, {{{16, 23},
                                  {15, 25},
                                  {13, 25},
                                  {11, 24},
                                  {10, 21},
                                  {9, 15},
                                  {8, 3},
                                  {7, -3},
                                  {6, -6},
                                  {4, -7},
                                  {2, -7},
                                  {1, -5}}});
  signs[0x2248] = MakeGlyph(26, {raised(nearly, 4), raised(nearly, -3)});
  signs[0x2260] = MakeGlyph(26, {{{4, 12}, {22, 12}}, {{4, 6}, {22, 6}}, {{18, 18}, {8, 0}}});
  signs[0x2264] = MakeGlyph(24, {{{20, 18}, {4, 11}, {20, 4}}, {{4, 0}, {20, 0}}});
  signs[0x2265] = MakeGlyph(24, {{{4, 18}, {20, 11}, {4, 4}}, {{4, 0}, {20, 0}}});
  signs[0x2501] = MakeGlyph(26, {{{1, 8}, {25, 8}, {25, 9}, {1, 9}, {1, 10}, {25, 10}}});
  signs[0x25A0] = MakeGlyph(24, Filled({12, 9}, 8, false));
  signs[0x25CB] = MakeGlyph(24, {Round({12, 9}, 8)});
  signs[0x25CF] = MakeGlyph(24, Filled({12, 9}, 8, true));
  signs[0x2609] = MakeGlyph(24, {Round({12, 9}, 8), Round({12, 9}, 1, 6)});  // the sun
  return signs;
}

}  // namespace

char32_t WithoutTonos(char32_t character) {
  static const std::map<char32_t, char32_t> plain = {
      {0x386, 0x391}, {0x388, 0x395}, {0x389, 0x397}, {0x38A, 0x399}, {0x38C, 0x39F},
      {0x38E, 0x3A5}, {0x38F, 0x3A9}, {0x3AC, 0x3B1}, {0x3AD, 0x3B5}, {0x3AE, 0x3B7},
      {0x3AF, 0x3B9}, {0x3CC, 0x3BF}, {0x3CD, 0x3C5}, {0x3CE, 0x3C9}};
  const auto found = plain.find(character);
  return found == plain.end() ? 0 : found->second;
}

CStrokedFace::GlyphInfo AddTonos(const CStrokedFace::GlyphInfo& letter) {
  CStrokedFace::GlyphInfo accented = letter;
  double top = 0.0;
  for (const Vec2d& vertex : letter.vertices) top = std::max(top, vertex.y);
  const double middle = 0.5 * letter.metrics.gmCellIncX;
  accented.counts.push_back(2);
  accented.vertices.emplace_back(middle, top + 3.0);
  accented.vertices.emplace_back(middle + 3.0, top + 8.0);
  return accented;
}

char GreekLetterCode(char32_t character) {
  for (const auto& [first, letters] :
       {std::pair(char32_t{0x391}, kCapitals), std::pair(char32_t{0x3B1}, kSmall)}) {
    if (character < first || character - first >= letters.size()) continue;
    const char letter = letters[character - first];
    return letter == '.' ? '\0' : letter;
  }
  return 0;
}

const CStrokedFace::GlyphInfo& MathStrokes(char32_t character) {
  static const std::map<char32_t, CStrokedFace::GlyphInfo> signs = MakeSigns();
  static const CStrokedFace::GlyphInfo emptyBox = MakeGlyph(18, kEmptyBox);
  const auto found = signs.find(character);
  return found == signs.end() ? emptyBox : found->second;
}

}  // namespace vlm::examples
