#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/fonts/StrokedFace.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/detail/SymbolSetReader.h>
#include <velum/fonts/detail/SymbolSetTable.h>
#include <velum/fonts/detail/sets/GlyphShapes.h>
#include <velum/fonts/detail/sets/SymbolSetFile.h>

#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using detail::SymbolSet;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using vlm::testing::TemporaryFolder;

/// A file of "SYM" and numbers from -128 to 255.
std::string Bytes(std::initializer_list<int> numbers) {
  std::string bytes = "SYM";
  for (const int number : numbers) bytes += static_cast<char>(number);
  return bytes;
}

/// Reads a set from memory; false where it is refused.
bool Read(std::string bytes, SymbolSet& set, bool isFixedPitch = false) {
  CBufferedFile file;
  file.Open(bytes.data(), static_cast<unsigned int>(bytes.size()));
  return detail::ReadSymbolSet(file, isFixedPitch, set);
}

TEST(SymbolSet, GlyphsAreMeasuredAndTakenApart) {
  SymbolSet set;
  // An "A" of two lines, a blank and a "C" below the baseline.
  ASSERT_TRUE(Read(Bytes({65, -3, 9, 5, 0, 0,  3, 5, 20, 2, 2, 8, 3, 7, 8, 2, 8, 9, 1,  //
                          32, 0,  8, 0,                                                 //
                          67, 1,  5, 2, 1, -7, 3, 4, 6,  2}),
                   set));
  EXPECT_EQ(set.firstChar, 32);
  EXPECT_EQ(set.lastChar, 67);
  EXPECT_EQ(set.maxAscender, 20);
  EXPECT_EQ(set.maxDescender, 7);
  EXPECT_EQ(set.emSize, 27);
  EXPECT_EQ(set.avgCharWidth, 5) << "(12 + 4) / 3";
  EXPECT_EQ(set.maxCharWidth, 12);
  EXPECT_EQ(set.aspect, 27.0 / 5);
  EXPECT_EQ(set.defaultChar, 32);
  EXPECT_EQ(set.breakChar, 32);
  ASSERT_EQ(set.glyphs.size(), 36u);
  EXPECT_EQ(set.glyphs[0].metrics.gmCellIncX, 8) << "a blank that has a width keeps it";

  const CStrokedFace::GlyphInfo& a = set.glyphs[65 - 32];
  EXPECT_THAT(a.counts, ElementsAre(2, 2));
  EXPECT_THAT(a.vertices, ElementsAre(Vec2d(0, 0), Vec2d(5, 20), Vec2d(2, 8), Vec2d(7, 8)));
  EXPECT_EQ(a.metrics.gmBlackBoxX, 8u) << "the last point counts, although no line goes there";
  EXPECT_EQ(a.metrics.gmBlackBoxY, 20u);
  EXPECT_EQ(a.metrics.gmptGlyphOrigin.x, 0);
  EXPECT_EQ(a.metrics.gmptGlyphOrigin.y, 20);
  EXPECT_EQ(a.metrics.gmCellIncX, 12);
  EXPECT_EQ(a.metrics.gmCellIncY, 27);
  EXPECT_THAT(set.glyphs[66 - 32].counts, IsEmpty()) << "a code that the file lacks";
}

TEST(SymbolSet, OperationsMakePolylines) {
  const struct {
    const char* why;
    std::vector<int> operations;
    bool valid;
    std::vector<int> counts;
  } rows[] = {
      {"two lines", {3, 2, 3, 2, 2}, true, {2, 3}},
      {"a move before a move; the end draws nothing", {3, 3, 2, 1}, true, {2}},
      {"anything but 3 draws", {3, 2, 0, -1, 2}, true, {5}},
      {"only a 2 begins a line", {3, 2, 3, 1}, true, {2}},
      {"nothing but moves", {3, 3, 3}, true, {}},
      {"a line from nowhere", {2, 2}, false, {}},
      {"a line from a move that was passed over", {3, 1, 2}, false, {}},
      {"a single line", {2}, false, {}},
      {"a single move", {3}, false, {}},
  };
  for (const auto& row : rows) {
    std::string bytes = Bytes({65, 0, 10, static_cast<int>(row.operations.size())});
    int x = 0;
    for (const int operation : row.operations) {
      bytes += static_cast<char>(++x);
      bytes += '\1';
      bytes += static_cast<char>(operation);
    }
    SymbolSet set;
    EXPECT_EQ(Read(bytes, set), row.valid) << row.why;
    if (!row.valid) continue;
    EXPECT_EQ(set.glyphs[0].counts, row.counts) << row.why;
  }
}

TEST(SymbolSet, DamageGivesAFaceWithoutGlyphs) {
  const std::string a = Bytes({65, 0, 10, 2, 0, 0, 3, 5, 9, 2});
  SymbolSet set;
  ASSERT_TRUE(Read(a, set));
  ASSERT_TRUE(Read("sYm" + a.substr(3), set)) << "the magic in any case";
  for (std::size_t size = 0; size < a.size(); ++size) {
    EXPECT_FALSE(Read(a.substr(0, size), set)) << "cut to " << size;
    EXPECT_THAT(set.glyphs, IsEmpty());
    EXPECT_EQ(set.firstChar, 0);
    EXPECT_EQ(set.lastChar, 0);
  }
  EXPECT_FALSE(Read("SYN" + a.substr(3), set)) << "another magic";
  EXPECT_FALSE(Read(a + a.substr(3), set)) << "strokes twice";
  EXPECT_FALSE(Read(Bytes({65, 0, 10, 0}), set)) << "no point at all";
  EXPECT_FALSE(Read(a + "B", set)) << "an end inside a header";
}

TEST(SymbolSet, BlankRecordsWidenTheFaceAndMayBeRepeated) {
  SymbolSet set;
  ASSERT_TRUE(Read(Bytes({90, 0, 3, 0, 90, 0, 7, -128, 65, 0, 10, 2, 0, 0, 3, 5, 9, 2}), set));
  EXPECT_EQ(set.lastChar, 90);
  EXPECT_EQ(set.glyphs.back().metrics.gmCellIncX, 7) << "the later record";
  EXPECT_EQ(set.avgCharWidth, 3) << "10 over three records";
  EXPECT_EQ(set.defaultChar, 66) << "the first code without strokes";
  ASSERT_TRUE(Read(Bytes({65, 0, 10, 0, 65, 0, 6, 2, 0, 0, 3, 5, 9, 2}), set));
  EXPECT_EQ(set.glyphs[0].metrics.gmCellIncX, 6);
  EXPECT_EQ(set.defaultChar, 65) << "no code is blank";
}

TEST(SymbolSet, TheBlankTakesTheMeanWidthWhereItHasNoneOrThePitchIsFixed) {
  const std::string without = Bytes({65, 0, 10, 2, 0, 0, 3, 5, 9, 2, 32, 4, 4, 0});
  const std::string with = Bytes({65, 0, 10, 2, 0, 0, 3, 5, 9, 2, 32, 0, 8, 0});
  const struct {
    const std::string& bytes;
    bool isFixedPitch;
    int width;
  } rows[] = {{without, false, 5}, {without, true, 5}, {with, false, 8}, {with, true, 5}};
  for (const auto& row : rows) {
    SymbolSet set;
    ASSERT_TRUE(Read(row.bytes, set, row.isFixedPitch));
    EXPECT_EQ(set.glyphs[0].metrics.gmCellIncX, row.width);
  }
}

TEST(SymbolSet, ExtremeNumbersKeepTheMeasuresFinite) {
  SymbolSet set;
  ASSERT_TRUE(Read(Bytes({0, 127, -128, 2, -128, 127, 3, 127, -128, 2}), set));
  EXPECT_EQ(set.glyphs[0].metrics.gmCellIncX, -255);
  EXPECT_EQ(set.glyphs[0].metrics.gmBlackBoxX, 255u);
  EXPECT_EQ(set.emSize, 255);
  ASSERT_TRUE(Read(Bytes({65, 0, 0, 2, 0, 0, 3, 5, 0, 2}), set));
  EXPECT_EQ(set.aspect, 1) << "no height and no width";
}

/// Sets both variables that name the folder of the sets, for as long as it lives.
class SymbolFolder {
 public:
  SymbolFolder() {
    std::filesystem::create_directories(Folder());
    setenv("KQSRC", folder_.Path().c_str(), 1);
    setenv("KQSUBVER", "7", 1);
  }
  ~SymbolFolder() {
    unsetenv("KQSRC");
    unsetenv("KQSUBVER");
  }
  [[nodiscard]] std::string Folder() const { return folder_.Path("Subsystems/7/Symbol/"); }

 private:
  TemporaryFolder folder_;
};

TEST(StrokedFace, AllShippedSetsAreSound) {
  detail::FillSymbolSetList();
  ASSERT_EQ(g_SYMSetList.size(), 28u);
  for (const CSYMSetInfo& set : g_SYMSetList) {
    SCOPED_TRACE(set.GetFaceName());
    const auto face = set.GetStrokedFacePtr();
    EXPECT_EQ(face, set.GetStrokedFacePtr()) << "read once";
    EXPECT_EQ(face->GetFaceName(), set.GetFaceName());
    const bool isMarkerSet = set.GetIndex() >= 26;
    int drawn = 0, widths = 0;
    for (unsigned int code = 33; code <= face->GetLastChar(); ++code) {
      const auto& glyph = face->GetGlyphInfo(code);
      drawn += glyph.counts.empty() ? 0 : 1;
      if (!glyph.counts.empty()) {
        const auto& metrics = glyph.metrics;
        const double middle = metrics.gmptGlyphOrigin.x + 0.5 * metrics.gmBlackBoxX;
        EXPECT_GT(metrics.gmCellIncX, 0) << code;
        // All but one set begin their cells at 0, so text stands where it is drawn.
        EXPECT_NEAR(middle, set.GetIndex() == 26 ? 0.0 : 0.5 * metrics.gmCellIncX, 8.0) << code;
      }
      widths |= code < 127 && !glyph.counts.empty() &&
                glyph.metrics.gmCellIncX != face->GetMaxCharWidth();
    }
    EXPECT_EQ(face->GetFirstChar(), 32);
    EXPECT_EQ(face->GetDefaultChar(), 32);
    if (isMarkerSet) {
      EXPECT_GE(drawn, 40);
    } else {
      EXPECT_GE(face->GetLastChar(), 126);
      // KQ Symbol has signs where others have the letters of western Europe.
      EXPECT_GE(drawn, set.GetIndex() == 2 ? 2 * 94 : face->GetLastChar() > 127 ? 94 + 122 : 94);
      EXPECT_GE(face->GetMaxAscender(), 21);
      const auto& stop = face->GetGlyphInfo('.').metrics;
      EXPECT_EQ(stop.gmptGlyphOrigin.y, static_cast<int>(stop.gmBlackBoxY)) << "on the baseline";
    }
    if ((set.GetPitchAndFamily() & 3) == 1) {
      EXPECT_EQ(widths, 0) << "one width for all";
      EXPECT_EQ(face->GetGlyphInfo(32).metrics.gmCellIncX, face->GetAvgCharWidth());
    }
  }
}

TEST(StrokedFace, WesternSetsHaveAllOfWindows1252) {
  detail::FillSymbolSetList();
  for (const unsigned int index : {0u, 1u, 24u, 25u}) {
    SCOPED_TRACE(g_SYMSetList[index].GetFaceName());
    const auto face = g_SYMSetList[index].GetStrokedFacePtr();
    for (unsigned int code = 32; code < 256; ++code) {
      const bool isOpen = code == 129 || code == 141 || code == 143 || code == 144 || code == 157;
      if (isOpen || code == 127) continue;
      const auto& glyph = face->GetGlyphInfo(code);
      EXPECT_GT(glyph.metrics.gmCellIncX, 0) << code;
      EXPECT_EQ(glyph.counts.empty(), code == 32 || code == 160) << code;
    }
    EXPECT_EQ(face->GetGlyphInfo(160).metrics.gmCellIncX,
              face->GetGlyphInfo(32).metrics.gmCellIncX);
  }
}

TEST(StrokedFace, CodesOutsideShowTheDefault) {
  detail::FillSymbolSetList();
  const auto face = g_SYMSetList[1].GetStrokedFacePtr();
  EXPECT_EQ(&face->GetGlyphInfo(300), &face->GetGlyphInfo(face->GetDefaultChar()));
  EXPECT_EQ(&face->GetGlyphInfo(3), &face->GetGlyphInfo(face->GetDefaultChar()));
  EXPECT_NE(&face->GetGlyphInfo('A'), &face->GetGlyphInfo('B'));
}

TEST(StrokedFace, TheFolderComesFromTwoVariablesOrThePlaceOfTheProgram) {
  detail::FillSymbolSetList();
  const SymbolFolder folder;
  try {
    const CStrokedFace face(2);
    FAIL() << "there is no file";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_CUSTOM);
    const std::string text = error.GetDescription().String();
    EXPECT_THAT(text, ::testing::StartsWith("Symbol set file: "));
    EXPECT_THAT(text,
                ::testing::EndsWith(
                    "\\Subsystems\\7\\Symbol\\KQsymbol.sym\ndoes not exist or is not readable."));
  }
  std::ofstream(folder.Folder() + "KQsymbol.sym") << "no symbol set";
  const CStrokedFace face(2);
  EXPECT_EQ(face.GetGlyphInfoListSize(), 0u);
  EXPECT_THAT(face.GetGlyphInfo(65).counts, IsEmpty());
  unsetenv("KQSUBVER");
  EXPECT_GT(CStrokedFace(2).GetGlyphInfoListSize(), 0u) << "one variable alone says nothing";
  EXPECT_THROW(CStrokedFace(28), Exception);
}

TEST(StrokedFace, AnyThreadMayAskFirst) {
  detail::FillSymbolSetList();
  const CSYMSetInfo set("KQ Helv", "KQhelv.sym", 0x22, 0, 0);
  std::shared_ptr<const CStrokedFace> faces[4];
  std::vector<std::thread> threads;
  for (auto& face : faces) {
    threads.emplace_back([&] {
      const CSYMSetInfo copy = set;  // with the face or without
      face = set.GetStrokedFacePtr();
      EXPECT_EQ(copy.GetFileName(), "KQhelv.sym");
    });
  }
  for (auto& thread : threads) thread.join();
  for (const auto& face : faces) EXPECT_EQ(face, faces[0]);
  CSYMSetInfo assigned;
  assigned = set;
  EXPECT_EQ(assigned.GetStrokedFacePtr(), faces[0]) << "copies share the face";
  EXPECT_EQ(CSYMSetInfo(set).GetStrokedFacePtr(), faces[0]);
  EXPECT_EQ(assigned.GetPitchAndFamily(), 0x22);
}

TEST(SymbolSetMaking, GlyphsOfTooManyPointsAreSimplifiedAndKeepTheirEnds) {
  sets::Glyph glyph{0, 100, {{}}};
  for (int i = 0; i <= 120; ++i) glyph.lines[0].push_back({i - 60, i % 7 == 0 ? 1 : 0});
  glyph.lines.push_back({{60, 0}, {60, 50}, {0, 50}, {-60, 90}, {-50, 95}, {-45, 60}, {-60, 60}});
  sets::LimitPoints(127, glyph);
  std::size_t points = 0;
  for (const auto& line : glyph.lines) points += line.size();
  EXPECT_LE(points, 127u);
  EXPECT_GE(points, 8u);
  EXPECT_EQ(glyph.lines.front().front(), (sets::Point{-60, 1}));
  EXPECT_EQ(glyph.lines.back().back(), (sets::Point{-60, 60}));
}

TEST(SymbolSetMaking, TooManyStraightLinesLoseTheShortest) {
  sets::Glyph glyph{0, 100, {}};
  for (int i = 0; i < 70; ++i) glyph.lines.push_back({{i, 0}, {i, 100 - i}});
  sets::LimitPoints(127, glyph);
  ASSERT_EQ(glyph.lines.size(), 63u);
  EXPECT_EQ(glyph.lines.back().back(), (sets::Point{62, 38}));
}

TEST(SymbolSetMaking, WhatDoesNotFitInBytesIsRefused) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a.sym");
  sets::WriteSymbolSet({{65, {0, 10, {{{5, 5}}}}}}, path);
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  EXPECT_EQ(bytes, Bytes({65, 0, 10, 2, 5, 5, 3, 5, 5, 2})) << "a dot is a line of no length";
  EXPECT_THROW(sets::WriteSymbolSet({{65, {0, 128, {}}}}, path), sets::Failure);
  EXPECT_THROW(sets::WriteSymbolSet({{65, {0, 9, {{{0, -129}}}}}}, path), sets::Failure);
  EXPECT_THROW(sets::WriteSymbolSet({}, folder.Path("none/a.sym")), sets::Failure);
}

}  // namespace
}  // namespace vlm
