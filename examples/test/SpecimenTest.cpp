#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/GlyphFlattener.h>
#include <examples/common/Handles.h>
#include <examples/specimen/FaceFacts.h>
#include <examples/specimen/FacePainter.h>
#include <examples/specimen/FaceSheet.h>
#include <examples/specimen/MatchReport.h>
#include <examples/specimen/NamePlaces.h>
#include <examples/specimen/SetsSheet.h>
#include <examples/specimen/TextPieces.h>
#include <examples/specimen/TextSheet.h>

#include <cairo.h>
#include <ft2build.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include FT_FREETYPE_H

#include <cmath>
#include <random>
#include <stdexcept>

namespace vlm::specimen {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

double AreaOf(const GPolygon& polygon) {
  double area = 0.0;
  polygon.Decompose(
      [](const Vec2d* points, unsigned int count, void* sum) {
        for (unsigned int i = 2; i < count; ++i) {
          const Vec2d a = points[i - 1] - points[i - 2];
          const Vec2d b = points[i] - points[i - 2];
          *static_cast<double*>(sum) += 0.5 * std::abs(a.x * b.y - a.y * b.x);
        }
        return true;
      },
      &area);
  return area;
}

std::vector<Vec2d> Square(double left, double bottom, double side, bool isHole = false) {
  std::vector<Vec2d> corners = {
      {left, bottom}, {left + side, bottom}, {left + side, bottom + side}, {left, bottom + side}};
  if (isHole) std::reverse(corners.begin(), corners.end());
  return corners;
}

TEST(GlyphFlattener, OverlappingInkIsNoHole) {
  EXPECT_DOUBLE_EQ(AreaOf(examples::ResolveContours({Square(0, 0, 4), Square(2, 0, 4)})), 24.0);
  // Where one ring has its hole the other has ink: the second square covers a quarter of the hole.
  EXPECT_DOUBLE_EQ(
      AreaOf(examples::ResolveContours({Square(0, 0, 6), Square(2, 2, 2, true), Square(3, 3, 6)})),
      36.0 - 4.0 + 36.0 - 9.0 + 1.0);
  EXPECT_DOUBLE_EQ(AreaOf(examples::ResolveContours({Square(1, 1, 2, true), Square(0, 0, 4)})),
                   12.0);
  EXPECT_EQ(examples::ResolveContours({}).GetNumContours(), 0u);
}

// How often contours wind around a point.
int WindingOf(const std::vector<std::vector<Vec2d>>& contours, const Vec2d& point) {
  int winding = 0;
  for (const std::vector<Vec2d>& contour : contours) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
      const Vec2d a = contour[i] - point;
      const Vec2d b = contour[(i + 1) % contour.size()] - point;
      if ((a.y > 0.0) == (b.y > 0.0)) continue;
      if ((a.x * b.y - a.y * b.x > 0.0) == (b.y > 0.0)) winding += b.y > 0.0 ? 1 : -1;
    }
  }
  return winding;
}

TEST(GlyphFlattener, TakesWhatContoursWindAround) {
  constexpr unsigned int kSeed = 11;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> whole(0, 12);
  std::uniform_real_distribution<double> anywhere(0.0, 12.0);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::vector<Vec2d>> contours(1 + static_cast<std::size_t>(round % 3));
    for (std::vector<Vec2d>& contour : contours) {
      for (int i = 0; i < 7; ++i) contour.emplace_back(whole(random) + 0.1 * i, whole(random));
    }
    std::vector<Vec2d> vertices;
    std::vector<unsigned int> counts;
    examples::ResolveContours(contours).GetPolyPolygon(vertices, counts, false);
    std::vector<std::vector<Vec2d>> result;
    auto next = vertices.begin();
    for (const unsigned int count : counts) {
      result.emplace_back(next, next + count);
      next += count;
    }
    for (int i = 0; i < 50; ++i) {
      const Vec2d point(anywhere(random), anywhere(random));
      EXPECT_EQ(WindingOf(result, point) % 2 != 0, WindingOf(contours, point) != 0)
          << "seed " << kSeed << " round " << round << " at " << point.x << " " << point.y;
    }
  }
}

// FreeType's rasterizer counts the same ink.
TEST(GlyphFlattener, AreasAreThoseOfTheRenderedGlyphs) {
  constexpr int kPixels = 400;
  for (const FaceFacts& facts : ListFaces()) {
    if (facts.isStroked) continue;
    const auto face = CSystemFaceInfo::GetInstance().GetFaceInfo(facts.index);
    const auto file = examples::FontFile::Open(*face);
    const double unit = static_cast<double>(face->GetEmSize()) / kPixels;
    ASSERT_EQ(FT_Set_Pixel_Sizes(file->Handle(), 0, kPixels), 0);
    for (const char byte : {'A', 'B', '8', '&', '%', '\xE7', '\xF8'}) {
      const auto code = static_cast<unsigned char>(byte);
      const unsigned int glyph = file->GlyphOfCode(code);
      if (glyph == 0) continue;
      const double area = AreaOf(examples::FlattenGlyph(*file, glyph, 0.2 * unit));
      ASSERT_EQ(FT_Load_Glyph(file->Handle(), glyph, FT_LOAD_RENDER | FT_LOAD_NO_HINTING), 0);
      const FT_Bitmap& bitmap = file->Handle()->glyph->bitmap;
      double ink = 0.0;
      for (unsigned int i = 0; i < bitmap.rows * bitmap.width; ++i) {
        const unsigned int row = i / bitmap.width;
        ink +=
            bitmap
                .buffer[static_cast<int>(row) * bitmap.pitch + static_cast<int>(i % bitmap.width)];
      }
      // Chords lie inside of curves, and pixels count in 255ths.
      EXPECT_NEAR(area / (unit * unit), ink / 255.0, 0.004 * ink / 255.0)
          << facts.name << " " << facts.weight << " code " << int{code};
    }
  }
}

TEST(GlyphFlattener, GivesTheCacheContoursWithHoles) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  const examples::GlyphFlattener flattener(faces);
  PolygonalGlyphCache cache(flattener, 1 << 20);
  for (const FaceFacts& facts : ListFaces()) {
    if (facts.name != "DejaVu Sans") continue;
    EXPECT_EQ(cache.Glyph(facts.index, 'B', true)->Counts().size(), 3u);
    EXPECT_EQ(cache.Glyph(facts.index, 'L', true)->Counts(), std::vector<unsigned int>{6});
    EXPECT_TRUE(cache.Glyph(facts.index, ' ', true)->Vertices().empty());
  }
  EXPECT_EQ(cache.Glyph(FindFace("KQ Helv"), 'A', true), nullptr);
}

std::vector<Description> SomeDescriptions() {
  std::vector<Description> descriptions;
  std::vector<std::string> names = {"no such face", "arial", "KQ ROMAN", "kq set1fs",
                                    std::string(40, 'x')};
  for (const FaceFacts& face : ListFaces()) names.push_back(face.name);
  constexpr unsigned int kSeed = 20260207;
  std::mt19937 random(kSeed);
  for (int i = 0; i < 2000; ++i) {
    Description description;
    description.name = names[random() % names.size()];
    description.weight = 100 * (1 + static_cast<long>(random() % 10));
    description.isItalic = random() % 2 == 1;
    description.charset = random() % 2 == 1 ? 2 : 0;
    description.pitchAndFamily = static_cast<int>(random() % 2 + 16 * (random() % 6));
    description.matchFlags = static_cast<int>(random() % 64);
    description.types = 1 + static_cast<unsigned int>(random() % 3);
    descriptions.push_back(description);
  }
  return descriptions;
}

TEST(MatchReport, TheBestFaceIsWhatMatchGivesAndTheTermsAddUp) {
  auto& faces = CSystemFaceInfo::GetInstance();
  for (const Description& asked : SomeDescriptions()) {
    const auto italic = static_cast<unsigned char>(asked.isItalic);
    const auto charset = static_cast<unsigned char>(asked.charset);
    const auto pitch = static_cast<unsigned char>(asked.pitchAndFamily);
    const std::vector<Score> scores = ScoreFaces(asked);
    const int match = faces.Match(asked.name, asked.weight, italic, charset, pitch,
                                  asked.matchFlags, asked.types);
    ASSERT_EQ(static_cast<int>(scores.front().face.index), match)
        << asked.name << " flags " << asked.matchFlags << " types " << asked.types << " weight "
        << asked.weight;
    for (const Score& score : scores) {
      ASSERT_EQ(score.total, faces.CalcMatchValue(score.face.index, asked.name, asked.weight,
                                                  italic, charset, pitch, asked.matchFlags))
          << asked.name << " in " << score.face.name << " flags " << asked.matchFlags;
      ASSERT_LE(score.total, scores.front().total);
    }
  }
}

TEST(FaceFacts, AreThoseOfTheMeasures) {
  for (const FaceFacts& facts : ListFaces()) {
    const auto face = CSystemFaceInfo::GetInstance().GetFaceInfo(facts.index);
    const TEXTMETRICA& metrics = face->GetOTM().otmTextMetrics;
    EXPECT_EQ(facts.weight, metrics.tmWeight) << facts.name;
    EXPECT_EQ(facts.isItalic, metrics.tmItalic != 0) << facts.name;
    EXPECT_EQ(facts.charset, metrics.tmCharSet) << facts.name;
    EXPECT_EQ(facts.familyBits, metrics.tmPitchAndFamily >> 4) << facts.name;
    EXPECT_EQ(FactsOf(FindFace(facts.name)).name, facts.name);
    EXPECT_EQ(FindFace(std::to_string(facts.index)), facts.index);
  }
}

TEST(FaceFacts, ANameThatIsNoneIsToldWithTheNearest) {
  for (const char* name : {"none", "KQ Nothing", "100000", ""}) {
    try {
      (void)FindFace(name);
      FAIL() << name << " was found";
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), HasSubstr("there is no face '" + std::string(name) + "'"));
      EXPECT_EQ(std::string(error.what()).find("; there is KQ ") != std::string::npos,
                std::string(name) == "KQ Nothing");
    }
  }
}

TEST(FaceFacts, AreFiltered) {
  const auto count = [](const FaceFilter& filter) { return SelectFaces(filter).size(); };
  EXPECT_EQ(count({"", true, false, false, 0}), 28u);
  EXPECT_EQ(count({"kq set1f", false, false, false, 0}), 1u);
  EXPECT_EQ(count({"kq", false, true, false, 0}), 0u);
  EXPECT_EQ(count({"kq", false, false, true, 0}), 0u);
  EXPECT_EQ(count({"KQ", false, false, false, 400}), 28u);
  EXPECT_EQ(count({}), CSystemFaceInfo::GetInstance().GetNumItems());
}

// The box of the ink of what is drawn.
Box2d InkOf(const std::function<void(cairo_t*)>& draw) {
  const examples::SurfacePtr surface(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
  const examples::ContextPtr context(cairo_create(surface.get()));
  draw(context.get());
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
  cairo_recording_surface_ink_extents(surface.get(), &x, &y, &width, &height);
  EXPECT_EQ(cairo_status(context.get()), CAIRO_STATUS_SUCCESS);
  return {x, y, x + width, y + height};
}

TEST(FacePainter, DrawsEachSetWhereItsMeasuresSay) {
  constexpr double kSize = 100.0;
  FacePainter painter;
  ASSERT_EQ(g_SYMSetList.size(), 28u);
  for (const CSYMSetInfo& set : g_SYMSetList) {
    const unsigned int face = FindFace(set.GetFaceName().String());
    const auto info = CSystemFaceInfo::GetInstance().GetFaceInfo(face);
    const double unit = info->GetEmToHeight(kSize);
    const double pen = set.GetIndex() >= 26 ? 1.15 * unit : 0.3 + 0.022 * kSize;
    int drawn = 0;
    for (unsigned int code = 33; code < 127; ++code) {
      const Box2d ink = InkOf([&](cairo_t* context) {
        painter.Draw(context, face, CodesFrom(code, code), Vec2d(0.0, 0.0), kSize);
      });
      const GLYPHMETRICS& metrics = info->GetGlyphMetrics(static_cast<unsigned short>(code));
      if (ink.xRange() == 0.0) continue;
      ++drawn;
      // The box is of whole units.
      EXPECT_NEAR(ink.xMin(), unit * metrics.gmptGlyphOrigin.x - 0.5 * pen, 1.5) << code;
      EXPECT_NEAR(ink.xRange(), unit * metrics.gmBlackBoxX + pen, 2.5) << code;
      EXPECT_NEAR(ink.yMin(), -unit * metrics.gmptGlyphOrigin.y - 0.5 * pen, 1.5) << code;
      EXPECT_NEAR(ink.yRange(), unit * metrics.gmBlackBoxY + pen, 2.5) << code;
    }
    EXPECT_GE(drawn, set.GetIndex() >= 26 ? 40 : 88) << set.GetFaceName().String();
  }
}

TEST(Sheets, KeepToTheirPages) {
  const auto hold = [](const auto& sheet, const std::string& name) {
    const Box2d ink = InkOf([&](cairo_t* context) { sheet.Draw(context); });
    EXPECT_GT(ink.xMin(), 20.0) << name;
    EXPECT_GT(ink.yMin(), 20.0) << name;
    EXPECT_LT(ink.xMax(), sheet.Width() - 15.0) << name;
    EXPECT_LT(ink.yMax(), sheet.Height() - 15.0) << name;
    EXPECT_GT(ink.yMax(), sheet.Height() - 60.0) << name;
  };
  hold(SetsSheet(), "sets");
  for (const FaceFacts& facts : ListFaces()) {
    // All stroked faces, and on a machine with many fonts some of the others.
    const bool isTaken = facts.isStroked || facts.index < 20 || facts.index % 10 == 0;
    if (isTaken) hold(FaceSheet(facts.index), facts.name);
  }
  const unsigned int helv = FindFace("KQ Helv");
  hold(TextSheet("Depth 12 m\n" + std::string(300, 'x') + " y", helv), "a long word");
  std::string mixed;
  for (int i = 0; i < 60; ++i) mixed += "a א ";
  hold(TextSheet(mixed, helv), "many short pieces");
}

TEST(NamePlaces, NamesAndLinesToThemLeaveOtherNamesAlone) {
  constexpr unsigned int kSeed = 7;
  constexpr double kGap = 8.0;
  std::mt19937 random(kSeed);
  const auto below = [&random](int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
  };
  std::size_t lowest = 0;
  for (int round = 0; round < 500; ++round) {
    std::vector<Bracket> brackets;
    double x = 36.0;
    for (int count = 1 + below(20); count > 0; --count) {
      const double width = 2.0 + below(below(2) == 0 ? 20 : 200);
      brackets.push_back({x, x + width, 20.0 + below(90)});
      x += width;
    }
    PlaceNames(brackets, 36.0, kGap);
    for (const Bracket& a : brackets) {
      EXPECT_GE(a.nameLeft, 36.0);
      lowest = std::max(lowest, a.lane);
      for (const Bracket& b : brackets) {
        if (&a == &b) continue;
        const double right = b.nameLeft + b.nameWidth;
        if (a.lane == b.lane && a.left < b.left) {
          EXPECT_GE(b.nameLeft, a.nameLeft + a.nameWidth + kGap - 1e-9) << "seed " << kSeed;
        }
        if (a.lane > b.lane) {
          EXPECT_FALSE(b.nameLeft <= a.Middle() && a.Middle() <= right) << "seed " << kSeed;
        }
      }
    }
  }
  EXPECT_GT(lowest, 3u);
}

TEST(TextPieces, OrderOfTheLineIsThatOfTheBidirectionalAlgorithm) {
  const struct {
    std::vector<int> levels;
    std::vector<std::size_t> order;
    const char* why;
  } rows[] = {
      {{}, {}, "nothing"},
      {{0, 0, 0}, {0, 1, 2}, "all from left to right"},
      {{1, 1, 1}, {2, 1, 0}, "all from right to left"},
      {{0, 1, 1, 0}, {0, 2, 1, 3}, "a run within"},
      {{1, 2, 1}, {2, 1, 0}, "a number within"},
      {{1, 2, 2, 1}, {3, 1, 2, 0}, "a number of two pieces keeps its order"},
      {{0, 1, 2, 3, 2, 1}, {0, 5, 2, 3, 4, 1}, "deeply embedded"},
  };
  for (const auto& row : rows) EXPECT_EQ(VisualOrder(row.levels), row.order) << row.why;
}

TEST(TextPieces, LinesEndWhereTheirScriptsAllowIt) {
  const struct {
    const wchar_t* text;
    std::vector<std::size_t> places;
    const char* why;
  } rows[] = {
      {L"", {}, "nothing"},
      {L"one two", {4}, "behind a blank"},
      {L"(12 m)", {4}, "not behind a bracket"},
      {L"中文。字", {1, 3}, "between ideographs, not before a full stop"},
      {L"\xD83D\xDE00\xD83D\xDE00", {2}, "not inside a character"},
      {L"e\x301 a", {3}, "not before a mark"},
  };
  for (const auto& row : rows) {
    const std::vector<bool> breaks = LineBreaks(row.text);
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < breaks.size(); ++i) {
      if (breaks[i]) places.push_back(i);
    }
    EXPECT_EQ(places, row.places) << row.why;
  }
}

TEST(TextPieces, HoldTheTextInItsOrderWithDirections) {
  const auto face = CSystemFaceInfo::GetInstance().GetFaceInfo(FindFace("KQ Roman"));
  const std::vector<TextPiece> pieces = CutText("ab עם 12 גד cd", face);
  std::wstring text;
  for (const TextPiece& piece : pieces) text += piece.text;
  EXPECT_EQ(text, L"ab עם 12 גד cd");
  std::vector<int> levels;
  for (const TextPiece& piece : pieces) levels.push_back(piece.level);
  EXPECT_THAT(levels, ElementsAre(0, 1, 2, 1, 0));
  EXPECT_TRUE(CutText("", face).empty());
}

TEST(TextPieces, TooManyRunsAreToldOf) {
  std::string text;
  for (int i = 0; i < 2001; ++i) text += i % 2 == 0 ? "a" : "א";
  const auto face = CSystemFaceInfo::GetInstance().GetFaceInfo(FindFace("KQ Roman"));
  try {
    (void)CutText(text, face);
    FAIL() << "was cut";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("too often"));
  }
}

}  // namespace
}  // namespace vlm::specimen
