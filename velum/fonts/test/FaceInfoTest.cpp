#include <velum/fonts/FaceInfo.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/GdiPlusStart.h>
#include <velum/diagnostics/Logger.h>
#include <velum/fonts/FontRefDC.h>
#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/fonts/TrueTypeFaceInfo.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/OutlineFont.h>
#include <velum/platform/detail/ReferenceContext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::Pair;

LOGFONTA Description(const char* name, int weight = 400, bool isItalic = false) {
  LOGFONTA description{};
  std::strcpy(description.lfFaceName, name);
  description.lfWeight = weight;
  description.lfItalic = isItalic;
  return description;
}

std::shared_ptr<const CFaceInfo> Face(const char* name, int weight = 400, bool isItalic = false) {
  CSystemFaceInfo& faces = CSystemFaceInfo::GetInstance();
  return faces.GetFaceInfo(
      static_cast<unsigned int>(faces.Match(name, weight, isItalic, 0, 0, 7, 65535)));
}

std::vector<int> Numbers(const OUTLINETEXTMETRICA& record) {
  const TEXTMETRICA& text = record.otmTextMetrics;
  return {static_cast<int>(record.otmEMSquare),
          text.tmHeight,
          text.tmAscent,
          text.tmDescent,
          text.tmInternalLeading,
          text.tmExternalLeading,
          text.tmAveCharWidth,
          text.tmMaxCharWidth,
          text.tmWeight,
          text.tmItalic,
          text.tmPitchAndFamily,
          text.tmCharSet,
          text.tmFirstChar,
          text.tmLastChar,
          text.tmDefaultChar,
          text.tmBreakChar,
          record.otmItalicAngle,
          static_cast<int>(record.otmusMinimumPPEM),
          static_cast<int>(record.otmsStrikeoutSize),
          record.otmsStrikeoutPosition,
          record.otmsUnderscoreSize,
          record.otmsUnderscorePosition,
          record.otmAscent,
          record.otmDescent,
          static_cast<int>(record.otmLineGap),
          static_cast<int>(record.otmsXHeight),
          static_cast<int>(record.otmsCapEmHeight),
          record.otmrcFontBox.left,
          record.otmrcFontBox.top,
          record.otmrcFontBox.right,
          record.otmrcFontBox.bottom,
          record.otmptSubscriptSize.x,
          record.otmptSubscriptOffset.y,
          record.otmsCharSlopeRise,
          record.otmsCharSlopeRun,
          static_cast<int>(record.otmfsSelection),
          record.otmPanoseNumber.bXHeight};
}

// fontTools 4.38 on DejaVu 2.37 and Liberation 2.1.5: head, hhea, OS/2 and post.
TEST(CTrueTypeFaceInfo, RecordsAreTheFontsOwnTables) {
  EXPECT_THAT(Numbers(Face("DejaVu Sans")->GetOTM()),
              ElementsAre(2048, 1901 + 483, 1901, 483, 1901 + 483 - 2048, 0, 1038, 3838, 400, 0,
                          0x27, 0, 32, 255, 31, 32, 0, 8, 102, 530, 90, -40, 1556, -492, 410, 0, 0,
                          -2090, 2524, 3673, -948, 1331, 286, 1, 0, 0x40, 4));
  EXPECT_THAT(Numbers(Face("DejaVu Sans Mono", 700)->GetOTM()),
              ElementsAre(2048, 1901 + 483, 1901, 483, 1901 + 483 - 2048, 0, 1233, 1233, 700, 0,
                          0x36, 0, 32, 255, 31, 32, 0, 8, 102, 530, 90, -40, 1556, -492, 410, 0, 0,
                          -915, 2132, 1499, -807, 1331, 286, 1, 0, 0x20, 4));
  EXPECT_THAT(Numbers(Face("Liberation Serif", 400, true)->GetOTM()),
              ElementsAre(2048, 1825 + 443, 1825, 443, 1825 + 443 - 2048, 87, 1098, 2618, 400, 1,
                          0x17, 0, 32, 255, 31, 32, -163, 8, 102, 530, 100, -123, 1422, -442, 307,
                          940, 1341, -1114, 2009, 2635, -621, 1434, 293, 100, 29, 1, 4));
}

TEST(CTrueTypeFaceInfo, TheNamesStandBehindTheRecord) {
  const auto face = Face("Liberation Serif", 700, true);
  const OUTLINETEXTMETRICA& record = face->GetOTM();
  const auto* const bytes = reinterpret_cast<const char*>(&record);
  EXPECT_STREQ(bytes + record.otmpFamilyName, "Liberation Serif");
  EXPECT_STREQ(bytes + record.otmpFaceName, "Liberation Serif");
  EXPECT_STREQ(bytes + record.otmpStyleName, "Bold Italic");
  EXPECT_STREQ(bytes + record.otmpFullName, "Liberation Serif Bold Italic");
  EXPECT_EQ(record.otmSize, record.otmpFullName + std::strlen("Liberation Serif Bold Italic") + 1);
  EXPECT_EQ(face->GetFamilyName(), "Liberation Serif");
  EXPECT_EQ(Face("DejaVu Sans Condensed")->GetFamilyName(), "DejaVu Sans Condensed");
}

TEST(CTrueTypeFaceInfo, GlyphsAreMeasuredInDesignUnits) {
  const auto face = Face("Liberation Serif", 400, true);
  const struct {
    const char* why;
    unsigned short code;
    int advance, left, top;
    unsigned int width, height;
  } rows[] = {
      {"a capital", 'A', 1251, -112, 1352, 1258 + 112, 1352},
      {"deep and wide", 'j', 569, -219, 1356, 519 + 219, 1356 + 436},
      {"nothing to draw", ' ', 512, 0, 0, 0, 0},
      {"the euro sign of windows-1252", 0x80, 1024, 24, 1356, 1104 - 24, 1356 + 20},
      {"an accent", 0xE9, 909, 63, 1423, 983 - 63, 1423 + 20},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const GLYPHMETRICS& glyph = face->GetGlyphMetrics(row.code);
    EXPECT_EQ(glyph.gmCellIncX, row.advance);
    EXPECT_EQ(glyph.gmptGlyphOrigin.x, row.left);
    EXPECT_EQ(glyph.gmptGlyphOrigin.y, row.top);
    EXPECT_EQ(glyph.gmBlackBoxX, row.width);
    EXPECT_EQ(glyph.gmBlackBoxY, row.height);
    EXPECT_EQ(&face->GetGlyphMetrics(row.code), &glyph);
  }
  for (const int code : {0, 10, 31, 127, 0x81, 256, 0x20AC}) {
    EXPECT_EQ(face->GetGlyphMetrics(static_cast<unsigned short>(code)).gmCellIncX, 1593)
        << "the missing glyph for " << code;
  }
}

TEST(CTrueTypeFaceInfo, TextIsMeasuredByItsBytes) {
  const char text[] = "Depth (m) \x80\xE9\x96x";
  const auto sans = Face("DejaVu Sans");
  EXPECT_EQ(sans->CalcEmExtent(text), 15932u);
  EXPECT_EQ(Face("DejaVu Sans Mono", 700)->CalcEmExtent(text), 17262u);
  EXPECT_EQ(Face("Liberation Serif", 400, true)->CalcEmExtent(text), 12738u);
  EXPECT_EQ(sans->CalcEmExtent(""), 0u);
  EXPECT_EQ(sans->CalcEmExtent("\x01\x7F"), 2u * 1229) << "codes without a glyph";
  EXPECT_EQ(sans->CalcEmExtent(GString(std::string(1, '\0'))), 1229u);
  EXPECT_DOUBLE_EQ(sans->GetEmToHeight(12.0) * sans->CalcEmExtent("A"), 1401 * 12.0 / 2048);
  EXPECT_DOUBLE_EQ(sans->GetAspect(), 2384.0 / 1038);
}

TEST(CTrueTypeFaceInfo, BoundsHoldTheInkOfTheEndsAndALowUnderscore) {
  const auto serif = Face("Liberation Serif", 400, true);
  const auto sans = Face("DejaVu Sans");
  const struct {
    const char* why;
    const CFaceInfo* face;
    const char* text;
    RECT box;
  } rows[] = {
      {"nothing", sans.get(), "", {0, -1901, 0, 483}},
      {"inside of its cells", sans.get(), "A", {0, -1901, 1401, 483}},
      {"ink to the left", sans.get(), "jA", {-37, -1901, 569 + 1401, 483}},
      {"ink to the right", serif.get(), "f", {0, -1825, 805, 443}},
      {"ink on both sides", serif.get(), "jf", {-219, -1825, 569 + 805, 443}},
      {"a space has none", serif.get(), "f ", {0, -1825, 569 + 512, 443}},
  };
  for (const auto& row : rows) {
    const RECT box = row.face->CalcEmBounds(row.text);
    EXPECT_THAT((std::vector{box.left, box.top, box.right, box.bottom}),
                ElementsAre(row.box.left, row.box.top, row.box.right, row.box.bottom))
        << row.why;
  }
  POINT from{1, 1};
  POINT to{};
  sans->CalcEmUnderscoreLine("A", from, to);
  EXPECT_THAT((std::vector{from.x, from.y, to.x, to.y}), ElementsAre(0, -40, 1401, -40));
  sans->CalcEmStrikeoutLine("A", from, to);
  EXPECT_THAT((std::vector{from.x, from.y, to.x, to.y}), ElementsAre(0, 530, 1401, 530));
}

std::vector<std::pair<int, int>> Ranges(const CFaceInfo& face) {
  std::vector<CFaceInfo::_CharRange> ranges(3);
  face.GetDefinedGlyphRanges(ranges);
  std::vector<std::pair<int, int>> pairs;
  for (const auto& range : ranges) pairs.emplace_back(range.first, range.last);
  return pairs;
}

TEST(CTrueTypeFaceInfo, RangesLeaveOutWhatWindows1252LeavesOpen) {
  EXPECT_THAT(Ranges(*Face("DejaVu Sans")),
              ElementsAre(Pair(32, 126), Pair(128, 128), Pair(130, 140), Pair(142, 142),
                          Pair(145, 156), Pair(158, 255)));
}

/// The lines of the log as long as the object lives, each with its type before it.
class LogLines {
 public:
  LogLines() {
    g_Logger.SetOutputCallback(
        [](int type, const GString& text, void* self) {
          static_cast<LogLines*>(self)->lines.push_back(std::to_string(type) + " " + text.String());
        },
        this);
    g_Logger.Enable(true);
  }
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;
  ~LogLines() {
    g_Logger.Enable(false);
    g_Logger.SetOutputCallback(nullptr, nullptr);
  }
  std::vector<std::string> lines;
};

TEST(CTrueTypeFaceInfo, AFaceThatIsNotThereAnswersWithTheDefaultFace) {
  const LogLines log;
  const CTrueTypeFaceInfo face(Description("Nobody's Face"), "Nobody");
  const auto other = CSystemFaceInfo::GetInstance().GetDefVariablePitchFaceInfo();
  EXPECT_EQ(&face.GetOTM(), &other->GetOTM());
  EXPECT_EQ(&face.GetOTM(), &other->GetOTM()) << "the second time, too";
  for (const unsigned short code : std::vector<unsigned short>{10, 65, 255, 256}) {
    EXPECT_EQ(face.GetGlyphMetrics(code).gmCellIncX, other->GetGlyphMetrics(code).gmCellIncX);
  }
  EXPECT_EQ(face.CalcEmExtent("Depth"), other->CalcEmExtent("Depth"));
  EXPECT_THAT(Ranges(face), IsEmpty());
  EXPECT_EQ(face.GetFaceName(), "Nobody's Face");
  EXPECT_THAT(log.lines, ElementsAre("4 CFaceInfo: Could not get text metrics for typeface "
                                     "'Nobody's Face'"));
  EXPECT_EQ(face.GetFamilyName(), "Nobody");
}

TEST(CTrueTypeFaceInfo, OneFaceServesManyThreads) {
  const CTrueTypeFaceInfo face(Description("DejaVu Sans"), "DejaVu Sans");
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&face, i] {
      if (i % 2 == 0) {
        EXPECT_EQ(face.GetEmSize(), 2048u);
      }
      EXPECT_EQ(face.GetGlyphMetrics('A').gmCellIncX, 1401);
      EXPECT_EQ(face.CalcEmExtent("AA"), 2802u);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(CSYMFaceInfo, RecordsTellOfTheStrokedFace) {
  (void)CSystemFaceInfo::GetInstance();
  for (const CSYMSetInfo& set : g_SYMSetList) {
    SCOPED_TRACE(set.GetFaceName().c_str());
    const CSYMFaceInfo face(set.GetIndex());
    const auto stroked = set.GetStrokedFacePtr();
    const OUTLINETEXTMETRICA& record = face.GetOTM();
    const TEXTMETRICA& text = record.otmTextMetrics;
    EXPECT_EQ(record.otmSize, 212u);
    EXPECT_EQ(text.tmAscent + text.tmDescent, text.tmHeight);
    EXPECT_EQ(face.GetCellHeight(), face.GetEmSize());
    EXPECT_EQ(face.GetEmSize(), static_cast<unsigned int>(stroked->GetEmSize()));
    EXPECT_EQ(text.tmPitchAndFamily, set.GetPitchAndFamily());
    EXPECT_EQ(text.tmWeight, 400);
    EXPECT_EQ(record.otmItalicAngle, -150);
    EXPECT_EQ(record.otmsStrikeoutPosition, text.tmAscent / 3);
    EXPECT_EQ(record.otmsUnderscorePosition, text.tmDescent / 4 - text.tmDescent);
    EXPECT_NEAR(face.GetAspect(), 1.0, 1e-7);
    EXPECT_EQ(face.GetFirstChar(), stroked->GetFirstChar());
    EXPECT_THAT(Ranges(face), ElementsAre(Pair(face.GetFirstChar(), face.GetLastChar())));
    unsigned int sum = 0;
    for (const char c : std::string("A1 \xF0")) {
      const auto code = face.MapCharCode(static_cast<unsigned char>(c));
      sum += static_cast<unsigned int>(stroked->GetGlyphInfo(code).metrics.gmCellIncX);
    }
    EXPECT_EQ(face.CalcEmExtent("A1 \xF0"), sum);
  }
  EXPECT_THROW(CSYMFaceInfo(28), Exception);
}

/// A face of given codes whose glyphs are as wide as their code.
class MadeFace : public CFaceInfo {
 public:
  MadeFace(int first, int last, int defaultChar) : CFaceInfo("Made", "Made Face") {
    TEXTMETRICA& text = record_.otmTextMetrics;
    text.tmFirstChar = static_cast<unsigned char>(first);
    text.tmLastChar = static_cast<unsigned char>(last);
    text.tmDefaultChar = static_cast<unsigned char>(defaultChar);
    text.tmDescent = 3;
    record_.otmsUnderscorePosition = -6;
    record_.otmsUnderscoreSize = 5;
  }
  FaceType GetFaceType() const override { return FACE_TYPE_SYM; }
  void GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const override { ranges.clear(); }

 protected:
  const OUTLINETEXTMETRICA* FetchOTM() const override {
    return CopyOTM([](const CFaceInfo& face) {
      std::vector<unsigned char> bytes(sizeof(OUTLINETEXTMETRICA));
      std::memcpy(bytes.data(), &static_cast<const MadeFace&>(face).record_, bytes.size());
      return bytes;
    });
  }
  void FetchGlyphMetrics(unsigned short code) const override {
    CopyGlyphMetrics(code, [](const CFaceInfo&, unsigned short first, unsigned short last,
                              std::vector<GLYPHMETRICS>& metrics) {
      for (int of = first; of <= last; ++of) {
        GLYPHMETRICS glyph{};
        glyph.gmCellIncX = static_cast<std::int16_t>(of);
        metrics.push_back(glyph);
      }
      return true;
    });
  }
  unsigned int FetchCellHeight() const override { return 10; }

 private:
  OUTLINETEXTMETRICA record_{};
};

TEST(CFaceInfo, CodesOutsideOfTheFaceAreTheDefaultCode) {
  const MadeFace face(50, 200, 48);
  EXPECT_EQ(face.GetFirstChar(), 48) << "the default code is lower";
  EXPECT_EQ(face.GetLastChar(), 200);
  EXPECT_EQ(face.MapCharCode(47), 48);
  EXPECT_EQ(face.MapCharCode(49), 49);
  EXPECT_EQ(face.MapCharCode(200), 200);
  EXPECT_EQ(face.MapCharCode(201), 48);
  EXPECT_EQ(face.CalcEmExtent("\xC8\xC9\x01"), 200u + 48 + 48);
  EXPECT_EQ(MadeFace(50, 200, 60).GetFirstChar(), 50);
  EXPECT_EQ(MadeFace(50, 60, 70).GetGlyphMetrics(65).gmCellIncX, 0) << "beyond the last code";
  EXPECT_EQ(face.GetAspect(), 1.0) << "no widths";
}

TEST(CFaceInfo, ALowUnderscoreMakesTheBoxDeeper) {
  const RECT box = MadeFace(32, 255, 32).CalcEmBounds("");
  EXPECT_EQ(box.top, -7);
  EXPECT_EQ(box.bottom, 3 - 3 + 8) << "the line reaches from -6 + 2 to -6 - 2";
}

TEST(LOGFONTSAreEqual, ComparesEveryFieldAndTheNameAsText) {
  const LOGFONTA a = Description("Face");
  LOGFONTA b = a;
  EXPECT_TRUE(LOGFONTSAreEqual(a, b));
  b.lfFaceName[31] = 'x';
  EXPECT_TRUE(LOGFONTSAreEqual(a, b)) << "behind the end of the text";
  b.lfFaceName[0] = 'f';
  EXPECT_FALSE(LOGFONTSAreEqual(a, b)) << "case counts";
  for (std::size_t at = 0; at < 28; ++at) {
    LOGFONTA other = a;
    reinterpret_cast<unsigned char*>(&other)[at] ^= 1;
    EXPECT_FALSE(LOGFONTSAreEqual(a, other)) << "byte " << at;
  }
}

TEST(FontRefDC, SelectsFacesThatTheSystemHas) {
  const auto sans = Face("DejaVu Sans", 700);
  const auto serif = Face("Liberation Serif", 400, true);
  FontRefDC context;
  EXPECT_EQ(platform::SelectedEntry(context), nullptr);
  EXPECT_EQ(platform::SelectedFont(context), nullptr);
  context.SelectEmFont(*Face("KQ Roman"));
  EXPECT_EQ(platform::SelectedEntry(context), nullptr) << "a symbol set is no face of the system";
  context.SelectEmFont(*sans);
  context.SelectEmFont(*serif);
  ASSERT_NE(platform::SelectedEntry(context), nullptr);
  EXPECT_THAT(platform::SelectedEntry(context)->file, EndsWith("/LiberationSerif-Italic.ttf"));
  ASSERT_NE(platform::SelectedFont(context), nullptr);
  EXPECT_NE(platform::SelectedFont(context)->GlyphOfCharacter('A'), 0u);
  context.SelectEmFont(*Face("KQ Roman"));
  EXPECT_THAT(platform::SelectedEntry(context)->file, EndsWith("/LiberationSerif-Italic.ttf"));
}

TEST(CStartGdiPlus, AUserTooFewIsTold) {
  const LogLines log;
  {
    const CStartGdiPlus outer;
    const CStartGdiPlus inner;
  }
  EXPECT_THAT(log.lines, IsEmpty());
  TermGdiPlus();
  InitGdiPlus();
  EXPECT_THAT(log.lines, ElementsAre("8 s_GdiRefs invalid: -1"));
}

}  // namespace
}  // namespace vlm
