#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/OutlineFont.h>
#include <velum/platform/detail/Shaper.h>
#include <velum/platform/detail/TextRuns.h>
#include <velum/platform/detail/Utf8.h>

#include <testing/FontFile.h>
#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vlm::platform {
namespace {

using Glyphs = std::vector<std::uint16_t>;

/// Each run's position, script (ISO 15924) and level.
std::string Runs(std::wstring_view text) {
  std::vector<TextRun> runs;
  if (!FindTextRuns(text, 2000, runs)) return "too many";
  std::string names;
  for (const TextRun& run : runs) {
    names += std::to_string(run.first) + ':' +
             uscript_getShortName(static_cast<UScriptCode>(run.script)) +
             std::to_string(run.level) + ' ';
  }
  return names;
}

TEST(TextRuns, HaveOneScriptAndOneLevel) {
  // Levels by the rules of the Unicode Bidirectional Algorithm, worked out by hand.
  const struct {
    const char* why;
    const wchar_t* text;
    const char* runs;
  } rows[] = {
      {"nothing", L"", ""},
      {"spaces and digits follow a script", L"abc 12.5", "0:Latn0 "},
      {"or lead to one", L"12 abc", "0:Latn0 "},
      {"or have none", L"12", "0:Zyyy0 "},
      {"two scripts of one direction", L"ab \u03B1\u03B2", "0:Latn0 3:Grek0 "},
      {"a word to the left", L"abc \u05D0\u05D1 def", "0:Latn0 4:Hebr1 6:Latn0 "},
      {"the space between two of them", L"\u05D0 \u05D1", "0:Hebr1 "},
      {"a number after Hebrew", L"\u05D0\u05D1 12", "0:Hebr1 3:Zyyy2 "},
      {"a number after Arabic", L"\u0639\u0645\u0642 12.5", "0:Arab1 4:Zyyy2 "},
      {"a number before Hebrew", L"12 \u05D0", "0:Zyyy0 3:Hebr1 "},
      {"brackets go with Latin inside", L"\u05D0(b)", "0:Hebr1 1:Latn0 "},
      {"an isolate to the left", L"a\u2067b\u2069c", "0:Latn0 2:Latn2 3:Latn0 "},
      {"lines are paragraphs", L"\u05D0\n\u05D1", "0:Hebr1 1:Zyyy0 2:Hebr1 "},
      {"marks of Hebrew stay", L"\u05E9\u05C1\u05B8", "0:Hebr1 "},
      {"letters and marks are shaped", L"ae\u0301", "0:Zinh0 "},
      {"joined pictures as well", L"\xD83D\xDC69\u200D\xD83D\xDC67", "0:Zinh0 "},
      {"a vowel sign of its script", L"\u0915\u093F", "0:Deva0 "},
      {"kana among ideographs", L"\u6F22\u304B\u30AB\u3002", "0:Hani0 "},
      {"Korean", L"\uC548\uB155", "0:Hang0 "},
      {"pairs count twice", L"\xD800\xDF30 a", "0:Goth0 3:Latn0 "},
      {"pairs to the left", L"\xD802\xDD00", "0:Phnx1 "},
      {"halves of pairs", L"a\xDC00\xD800z", "0:Latn0 "},
      {"half a pair alone", L"\xD800", "0:Zyyy0 "},
  };
  for (const auto& row : rows) EXPECT_EQ(Runs(row.text), row.runs) << row.why;
}

TEST(TextRuns, PairBracketsUpToTheDepthOfUnicode) {
  const std::wstring alef(L"\u05D0"), bet(L"\u05D1");
  const auto brackets = [](std::size_t count, wchar_t bracket) {
    return std::wstring(count, bracket);
  };
  // Brackets that are paired around Hebrew after Hebrew are part of it; others at the end are not.
  const struct {
    const char* why;
    std::wstring text;
    const char* runs;
  } rows[] = {
      {"one pair", alef + L"(" + bet + L")", "0:Hebr1 "},
      {"none", alef + L"(" + bet + L"]", "0:Hebr1 3:Zyyy0 "},
      {"63 pairs", alef + brackets(63, '(') + bet + brackets(63, ')'), "0:Hebr1 "},
      {"64 are too many", alef + brackets(64, '(') + bet + brackets(64, ')'), "0:Hebr1 66:Zyyy0 "},
      {"a line later", brackets(64, '(') + L"\n" + alef + L"(" + bet + L")", "0:Zyyy0 65:Hebr1 "},
      {"inside of an isolate, not outside",
       alef + L"(\u2067" + brackets(64, '(') + L"\u2069" + bet + L")", "0:Hebr1 "},
      {"an isolate that has ended",
       alef + L"\u2067(\u2069" + brackets(63, '(') + bet + brackets(63, ')'), "0:Hebr1 "},
      {"the same brackets twice in Unicode", alef + L"\u2329" + bet + L"\u3009", "0:Hebr1 "},
      {"nested, not open", alef + L"[" + bet + L"]" + brackets(63, '(') + bet + brackets(63, ')'),
       "0:Hebr1 "},
  };
  for (const auto& row : rows) EXPECT_EQ(Runs(row.text), row.runs) << row.why;
}

TEST(TextRuns, ACharacterAloneHasTheDirectionOfItsClass) {
  int turned = 0;
  for (char32_t code = 1; code < 0x20000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    wchar_t units[2];
    std::vector<TextRun> runs;
    ASSERT_TRUE(FindTextRuns({units, PutWide(code, units)}, 1, runs));
    const UCharDirection direction = u_charDirection(static_cast<UChar32>(code));
    const bool isTurned = direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
    ASSERT_EQ(runs.at(0).level % 2 != 0, isTurned) << std::hex << static_cast<int>(code);
    turned += isTurned;
  }
  EXPECT_GT(turned, 3000);
}

TEST(TextRuns, AreLimited) {
  std::wstring text;
  for (int i = 0; i < 1000; ++i) text += L"a\u05D0";
  std::vector<TextRun> runs;
  EXPECT_TRUE(FindTextRuns(text, 2000, runs));
  EXPECT_EQ(runs.size(), 2000u);
  text += L'a';
  EXPECT_FALSE(FindTextRuns(text, 2000, runs));
  EXPECT_TRUE(runs.empty());
}

TEST(TextRuns, ScriptsAreComplexWhereGlyphsDependOnEachOther) {
  EXPECT_GT(ScriptCount(), 160u);
  for (const int script : {USCRIPT_ARABIC, USCRIPT_HEBREW, USCRIPT_DEVANAGARI, USCRIPT_THAI,
                           USCRIPT_KHMER, USCRIPT_INHERITED}) {
    EXPECT_TRUE(IsComplexScript(static_cast<std::uint16_t>(script))) << script;
  }
  for (const int script : {USCRIPT_COMMON, USCRIPT_LATIN, USCRIPT_CYRILLIC, USCRIPT_HAN}) {
    EXPECT_FALSE(IsComplexScript(static_cast<std::uint16_t>(script))) << script;
  }
}

class ShaperTest : public ::testing::Test {
 protected:
  ShaperTest() {
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, "DejaVu Sans");
    description.lfWeight = 400;
    entry_ = FontCatalog::Instance().Find(description);
    if (entry_) shaper_ = Shaper::Open(entry_->file, entry_->index);
  }
  void SetUp() override { ASSERT_TRUE(shaper_) << "DejaVu Sans is not installed"; }

  const FontEntry* entry_;
  std::unique_ptr<Shaper> shaper_;
};

TEST_F(ShaperTest, LooksUpWhatFreeTypeFinds) {
  const auto font = OutlineFont::Open(entry_->file, entry_->index);
  Glyphs glyphs;
  int found = 0;
  for (wchar_t code = 0x21; code < 0xD800; ++code) {
    if (IsInvisible(static_cast<char32_t>(code)) || u_isUWhiteSpace(code)) continue;
    shaper_->Map(std::wstring(1, code), glyphs);
    ASSERT_EQ(
        glyphs,
        Glyphs{static_cast<std::uint16_t>(font->GlyphOfCharacter(static_cast<char32_t>(code)))})
        << std::hex << static_cast<int>(code);
    found += glyphs[0] != 0;
  }
  EXPECT_GT(found, 4000);
}

TEST_F(ShaperTest, ShapesWhatDependsOnItsNeighbours) {
  Glyphs looked, shaped;
  shaper_->Map(L"\u0628\u0628\u0628", looked);
  EXPECT_EQ(looked[0], looked[1]);
  ASSERT_TRUE(shaper_->Shape(L"\u0628\u0628\u0628", USCRIPT_ARABIC, true, shaped));
  ASSERT_EQ(shaped.size(), 3u);
  EXPECT_NE(shaped[0], shaped[1]) << "the last and the middle form";
  EXPECT_NE(shaped[1], shaped[2]) << "the middle and the first form";
  ASSERT_TRUE(shaper_->Shape(L"\u0644\u0627", USCRIPT_ARABIC, true, shaped));
  EXPECT_EQ(shaped.size(), 1u) << "lam and alef are one glyph";
  shaper_->Map(L"\u00E9", looked);
  ASSERT_TRUE(shaper_->Shape(L"e\u0301", kCombiningScript, false, shaped));
  EXPECT_EQ(shaped, looked) << "a letter and its mark";
}

TEST_F(ShaperTest, TellsWhatIsMissingFromWhatIsInvisible) {
  const std::wstring far = std::wstring(1000, 'a') + L'\u6F22' + std::wstring(1000, 'a');
  const struct {
    const char* why;
    const wchar_t* text;
    bool isMissing;
  } rows[] = {
      {"letters", L"ab", false},
      {"an ideograph", L"a\u6F22", true},
      {"line ends", L"a\r\n\t\u2028b", false},
      {"joiners and directions", L"a\u200D\u200F\u2060b", false},
      {"a selector of a variant", L"a\uFE0F", false},
      {"a space that faces lack", L"a\u3000b", false},
      {"half a pair is a replacement character", L"\xD800", false},
      {"a pair without a glyph", L"\xDBFF\xDFFD", true},
      {"an ideograph far inside", far.c_str(), true},
  };
  for (const auto& row : rows) {
    Glyphs glyphs;
    shaper_->Map(row.text, glyphs);
    EXPECT_EQ(glyphs.size(), std::wcslen(row.text)) << row.why;
    EXPECT_EQ(::testing::Matches(::testing::Contains(0))(glyphs), row.isMissing) << row.why;
    ASSERT_TRUE(shaper_->Shape(row.text, kCombiningScript, false, glyphs));
    EXPECT_EQ(::testing::Matches(::testing::Contains(0))(glyphs), row.isMissing) << row.why;
  }
}

TEST_F(ShaperTest, NeedsNoGlyphOfWhatIsInvisible) {
  Glyphs glyphs;
  int count = 0;
  for (char32_t code = 1; code < 0xE1000; ++code) {
    if (!IsInvisible(code)) continue;
    wchar_t units[3] = {L'a'};
    const std::wstring_view text(units, 1 + PutWide(code, units + 1));
    ASSERT_TRUE(shaper_->Shape(text, kCombiningScript, false, glyphs));
    EXPECT_THAT(glyphs, ::testing::Not(::testing::Contains(0))) << std::hex << int(code);
    ++count;
  }
  EXPECT_GT(count, 4000);
}

TEST_F(ShaperTest, JoinsLettersOfALongTextEverywhere) {
  Glyphs glyphs;
  ASSERT_TRUE(shaper_->Shape(std::wstring(3000, L'\u0628'), USCRIPT_ARABIC, true, glyphs));
  ASSERT_EQ(glyphs.size(), 3000u);
  const auto middle = glyphs[1];
  EXPECT_EQ(std::count(glyphs.begin(), glyphs.end(), middle), 2998);
}

TEST_F(ShaperTest, ReadsCompressedFiles) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("font.woff");
  std::ofstream(path, std::ios::binary) << testing::FontFile::Read(entry_->file).Woff();
  const auto woff = Shaper::Open(path, 0);
  ASSERT_TRUE(woff);
  Glyphs glyphs, expected;
  for (const wchar_t* const text : {L"abc", L"\u0628\u0628\u0628", L"\u6F22", L"e\u0301"}) {
    woff->Map(text, glyphs);
    shaper_->Map(text, expected);
    EXPECT_EQ(glyphs, expected);
    ASSERT_TRUE(woff->Shape(text, kCombiningScript, false, glyphs));
    ASSERT_TRUE(shaper_->Shape(text, kCombiningScript, false, expected));
    EXPECT_EQ(glyphs, expected);
  }
  EXPECT_FALSE(Shaper::Open(path, 1)) << "there is one face";
}

TEST_F(ShaperTest, OpensNoDamagedFile) {
  const testing::TemporaryFolder folder;
  std::ifstream file(entry_->file, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const std::string path = folder.Path("cut.ttf");
  Glyphs glyphs;
  for (const std::size_t size : {std::size_t{0}, std::size_t{11}, bytes.size() / 2}) {
    std::ofstream(path, std::ios::binary) << bytes.substr(0, size);
    // What still opens shows that glyphs are missing.
    const auto shaper = Shaper::Open(path, 0);
    if (shaper) shaper->Map(L"ab", glyphs);
    EXPECT_TRUE(!shaper || glyphs == Glyphs({0, 0})) << size;
  }
  EXPECT_FALSE(Shaper::Open(folder.Path("none.ttf"), 0));
  EXPECT_FALSE(Shaper::Open(entry_->file, 7)) << "there is one face";
}

}  // namespace
}  // namespace vlm::platform
