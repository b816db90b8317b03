#include <velum/fonts/UCS2Decomp.h>

#include <velum/core/Exception.h>
#include <velum/fonts/ScopedScriptCache.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/fonts/TrueTypeFaceInfo.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/OutlineFont.h>
#include <velum/platform/detail/Shaper.h>
#include <velum/platform/detail/Utf8.h>

#include <testing/FontFile.h>
#include <testing/Sanitized.h>
#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace vlm {
namespace {

using vlm::testing::Rounds;
using Face = std::shared_ptr<const CFaceInfo>;
constexpr unsigned kCheck = DECOMP_CHECK_GLYPHS;
constexpr unsigned kReverse = DECOMP_REVERSE;

/// Keeps what comes.
class Recorder : public UCS2DecompIF {
 public:
  void BeginDecomp() override { calls += '{'; }
  void EndDecomp() override { calls += '}'; }
  void SubText(const UCS2DecompSubSet& piece) override {
    calls += piece.IsRTLReading() ? '<' : '>';
    pieces.push_back(piece);
    text += piece.GetString();
  }

  std::string calls;
  std::vector<UCS2DecompSubSet> pieces;
  std::wstring text;
};

Recorder Decompose(const std::wstring& text, const Face& face, unsigned flags) {
  UCS2Decomp decomp;
  Recorder recorder;
  EXPECT_TRUE(decomp.SetupDecomp(text));
  EXPECT_TRUE(decomp.DecompValid());
  decomp.Decompose(recorder, face, flags);
  return recorder;
}

Face FaceOf(const char* name, long weight = 400, unsigned char italic = 0) {
  auto& faces = CSystemFaceInfo::GetInstance();
  const int index = faces.Match(name, weight, italic, 0, 0, 7, 65535);
  return faces.GetFaceInfo(static_cast<unsigned int>(index));
}

Face Uninstalled() {
  LOGFONTA description{};
  std::strcpy(description.lfFaceName, "No Such Face");
  return std::make_shared<CTrueTypeFaceInfo>(description, "No Such Face");
}

/// True if FreeType finds a glyph in a face, or one of each part that the character is made of.
bool HasGlyph(const CFaceInfo& face, char32_t code) {
  static std::map<const CFaceInfo*, std::unique_ptr<platform::OutlineFont>> fonts;
  auto& font = fonts[&face];
  if (!font) {
    const auto& description = static_cast<const CTrueTypeFaceInfo&>(face).GetLogFont();
    const auto* const entry = platform::FontCatalog::Instance().Find(description);
    font = platform::OutlineFont::Open(entry->file, entry->index);
  }
  if (font->GlyphOfCharacter(code) != 0) return true;
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* const normalizer = unorm2_getNFCInstance(&status);
  UChar parts[32];
  const int count =
      unorm2_getDecomposition(normalizer, static_cast<UChar32>(code), parts, 32, &status);
  return count > 0 && std::all_of(parts, parts + count,
                                  [&](UChar part) { return font->GlyphOfCharacter(part) != 0; });
}

bool IsMark(char32_t code) {
  return (U_MASK(u_charType(static_cast<UChar32>(code))) & U_GC_M_MASK) != 0;
}

bool Extends(char32_t code) { return IsMark(code) || code == 0x200C || code == 0x200D; }

bool NeedsNoGlyph(char32_t code) {
  return platform::IsInvisible(code) || u_isUWhiteSpace(static_cast<UChar32>(code));
}

/// True if a face shows all characters of UTF-16 text, by themselves or made one with their marks.
bool Shows(const CFaceInfo& face, const std::u16string& text) {
  UErrorCode status = U_ZERO_ERROR;
  UChar composed[256];
  const int length = unorm2_normalize(unorm2_getNFCInstance(&status), text.data(),
                                      static_cast<int>(text.size()), composed, 256, &status);
  const auto showsAll = [&face](const UChar* units, int size) {
    for (int i = 0; i < size;) {
      UChar32 code;
      U16_NEXT_OR_FFFD(units, i, size, code);
      const auto character = static_cast<char32_t>(code);
      if (!NeedsNoGlyph(character) && !HasGlyph(face, character)) return false;
    }
    return true;
  };
  return showsAll(text.data(), static_cast<int>(text.size())) ||
         (U_SUCCESS(status) && showsAll(composed, length));
}

bool AnyFaceShows(const std::u16string& text) {
  static const std::vector<Face> plainFaces = [] {
    std::vector<Face> faces;
    auto& all = CSystemFaceInfo::GetInstance();
    for (unsigned int i = 0; i < all.GetNumItems(); ++i) {
      const Face face = all.GetFaceInfo(i);
      const bool isPlain = face->GetFaceType() == 1 && FaceOf(face->GetFaceName().c_str()) == face;
      if (isPlain) faces.push_back(face);
    }
    return faces;
  }();
  static std::map<std::u16string, bool> answers;
  const auto [answer, isNew] = answers.try_emplace(text, false);
  if (isNew) {
    answer->second = std::any_of(plainFaces.begin(), plainFaces.end(),
                                 [&text](const Face& face) { return Shows(*face, text); });
  }
  return answer->second;
}

/// Text as it is written in the world, and as it is not.
const struct {
  const char* what;
  const wchar_t* text;
  const char* directions;  ///< Of the runs.
} kTexts[] = {
    {"Latin", L"Depth (m), \u00E9t\u00E9 \u2014 \u0141\u00F3d\u017A", ">"},
    {"Arabic", L"\u0645\u0631\u062D\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645", "<"},
    {"Hebrew with points", L"\u05E9\u05C1\u05B8\u05DC\u05D5\u05B9\u05DD", "<"},
    {"Hindi", L"\u0928\u092E\u0938\u094D\u0924\u0947 \u0926\u0941\u0928\u093F\u092F\u093E", ">"},
    {"Thai", L"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E04\u0E23\u0E31\u0E1A", ">"},
    {"Chinese", L"\u4F60\u597D\uFF0C\u4E16\u754C", ">"},
    {"Japanese", L"\u3053\u3093\u306B\u3061\u306F\u3001\u4E16\u754C\u30AB\u30CA", ">"},
    {"Korean", L"\uC548\uB155\uD558\uC138\uC694 \u1100\u1161\u11A8", ">"},
    {"emoji", L"a\U0001F600\U0001F468\u200D\U0001F469\u200D\U0001F467\u2764\uFE0F", ">"},
    {"flags and skins", L"\U0001F1E9\U0001F1EA\U0001F44D\U0001F3FD", ">"},
    {"marks", L"e\u0301 q\u0308\u0323 \u0905\u0301", ">>"},
    {"Latin, Arabic, numbers", L"abc \u0639\u0645\u0642 123 \u0645\u062A\u0631 def", "><><>"},
    {"no character", L"\uFFFF\U0010FFFF \uE123", ">"},
    {"halves of pairs", L"x\xD800y\xDC00\xDC00 \xD83D", ">"},
    {"line ends", L"a\nb\tc\r\n\u2028", ">"},
    {"marks after controls", L"a\t\u0301 \u0303\n\u093F\u200B\u0301", ">>"},
};

/// True if a control or line end stands before a position, so that marks there are by themselves.
bool IsControl(const std::wstring& text, std::size_t position) {
  const auto code = static_cast<UChar32>(text[position - 1]);
  return (U_MASK(u_charType(code)) & (U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK)) != 0;
}

/// What holds for any text in any set of faces.
void CheckPieces(const std::wstring& text, const Face& face) {
  const Recorder runs = Decompose(text, face, 0);
  const Recorder checked = Decompose(text, face, kCheck);
  EXPECT_EQ(checked.text, runs.text) << "each character once, in order";
  const std::size_t length = runs.text.size();
  std::vector<bool> directions;
  std::set<std::size_t> starts;
  for (const auto& piece : runs.pieces) {
    EXPECT_EQ(piece.GetFaceInfoPtr(), face);
    starts.insert(directions.size());
    directions.resize(directions.size() + piece.GetString().size(), piece.IsRTLReading());
  }
  ASSERT_EQ(directions.size(), length);
  std::size_t position = 0;
  for (const auto& piece : checked.pieces) {
    EXPECT_EQ(piece.IsRTLReading(), directions[position]);
    const std::wstring& part = piece.GetString();
    ASSERT_FALSE(part.empty());
    const CFaceInfo& shown = *piece.GetFaceInfoPtr();
    const auto isShown = [&shown](const std::u16string& characters) {
      return Shows(shown, characters) || !AnyFaceShows(characters);
    };
    std::u16string cluster;  // a letter with its marks
    const wchar_t* at = part.data();
    const wchar_t* const end = at + part.size();
    while (at != end) {
      const wchar_t* const start = at;
      const bool isCutOff = at == part.data() && starts.count(position) == 0;
      const char32_t code = platform::NextCodePoint(at, end);
      EXPECT_FALSE(isCutOff && IsMark(code) && !IsControl(runs.text, position))
          << "a mark without its letter at " << position;
      if (!Extends(code)) cluster.clear();
      cluster.append(start, at);
      const auto mirrored = static_cast<char32_t>(u_charMirror(static_cast<UChar32>(code)));
      EXPECT_TRUE(IsMark(code) || isShown({start, at}) ||
                  (piece.IsRTLReading() && HasGlyph(shown, mirrored)))
          << shown.GetFaceName() << std::hex << " lacks U+" << int(code);
      const wchar_t* next = at;
      if (next != end && Extends(platform::NextCodePoint(next, end))) continue;
      EXPECT_TRUE(!IsMark(code) || isShown(cluster))
          << shown.GetFaceName() << std::hex << " lacks marks up to U+" << int(code);
    }
    position += part.size();
  }
}

TEST(UCS2Decomp, PiecesHaveAFaceWithTheirGlyphsIfThereIsOne) {
  for (const char* const name : {"DejaVu Sans", "Liberation Serif", "DejaVu Sans Mono"}) {
    for (const auto& row : kTexts) {
      SCOPED_TRACE(std::string(row.what) + " in " + name);
      CheckPieces(row.text, FaceOf(name));
      EXPECT_EQ(Decompose(row.text, FaceOf(name), 0).calls,
                '{' + std::string(row.directions) + '}');
    }
  }
}

TEST(UCS2Decomp, RandomTextHoldsToTheSameRules) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::wstring all;
  for (const auto& row : kTexts) all += row.text;
  for (int i = 0; i < 200; ++i) {
    std::wstring text(L"a");
    while (text.size() < 40) {
      text += random() % 4 == 0 ? static_cast<wchar_t>(1 + random() % 0xFFFF)
                                : all[random() % all.size()];
    }
    CheckPieces(text, FaceOf(i % 2 == 0 ? "Liberation Sans" : "DejaVu Sans"));
    ASSERT_FALSE(::testing::Test::HasFailure()) << ::testing::PrintToString(text);
  }
}

TEST(UCS2Decomp, OnlyWhatIsMissingChangesItsFace) {
  const Face mono = FaceOf("Liberation Mono");
  const Face bold = FaceOf("Liberation Mono", 700);
  const Face oblique = FaceOf("Liberation Mono", 400, 1);
  ASSERT_EQ(mono->GetFaceName(), "Liberation Mono");
  ASSERT_EQ((std::set<Face>{mono, bold, oblique}.size()), 3u);
  const struct {
    const char* why;
    Face face;
    const wchar_t* text;
    std::vector<std::wstring> parts;
    const char* faces;  ///< Of each piece: the given one, Liberation Mono, or another.
  } rows[] = {
      {"nothing is missing", mono, L"ab cd", {L"ab cd"}, "g"},
      {"one character", mono, L"ab\u2603cd", {L"ab", L"\u2603", L"cd"}, "gog"},
      {"the space stays with what is before",
       mono,
       L"ab \u2603 \u2603 cd",
       {L"ab ", L"\u2603 \u2603 ", L"cd"},
       "gog"},
      {"a space that leads", mono, L" \u2603a", {L" \u2603", L"a"}, "og"},
      {"a mark goes with its letter",
       mono,
       L"ab\u2603\u0301cd",
       {L"ab", L"\u2603\u0301", L"cd"},
       "gog"},
      {"a mark after a tab", mono, L"ab\t\u064B", {L"ab\t", L"\u064B"}, "go"},
      {"a mark after what is invisible", mono, L"\xDB40\xDC01\u064B", {L"\xDB40\xDC01\u064B"}, "o"},
      {"what no face has", mono, L"a\uFFFFb", {L"a\uFFFFb"}, "g"},
      {"a weight", bold, L"ab", {L"ab"}, "g"},
      {"a name alone stands for the normal weight", bold, L"ab\u2603", {L"ab", L"\u2603"}, "mo"},
      {"bold that no face has", bold, L"\uFFFF", {L"\uFFFF"}, "g"},
      {"nothing is gained", bold, L"ok \uFFFF ok", {L"ok \uFFFF ok"}, "g"},
      {"an oblique one", oblique, L"ok \uFFFF ok", {L"ok \uFFFF ok"}, "g"},
      {"what no face has among the rest",
       bold,
       L"a\uFFFF b\u2603",
       {L"a", L"\uFFFF ", L"b", L"\u2603"},
       "mgmo"},
  };
  for (const auto& row : rows) {
    const Recorder recorder = Decompose(row.text, row.face, kCheck);
    std::string faces;
    std::vector<std::wstring> parts;
    for (const auto& piece : recorder.pieces) {
      const Face face = piece.GetFaceInfoPtr();
      faces += face == row.face ? 'g' : face == mono ? 'm' : 'o';
      parts.push_back(piece.GetString());
    }
    EXPECT_EQ(parts, row.parts) << row.why;
    EXPECT_EQ(faces, row.faces) << row.why;
  }
}

TEST(UCS2Decomp, SymbolSetsAreNeverChecked) {
  const Face set = FaceOf("KQ Roman");
  ASSERT_EQ(set->GetFaceType(), 2);
  const Recorder recorder = Decompose(L"ab\u6F22", set, kCheck);
  EXPECT_EQ(recorder.calls, "{>>}");
  for (const auto& piece : recorder.pieces) EXPECT_EQ(piece.GetFaceInfoPtr(), set);
}

TEST(UCS2Decomp, RightToLeftPiecesAreReversedOnRequest) {
  const struct {
    const char* why;
    const wchar_t* text;
    unsigned flags;
    const wchar_t* result;
    const char* calls;
  } rows[] = {
      {"as it is", L"a \u05D0\u05D1", 0, L"a \u05D0\u05D1", "{><}"},
      {"reversed", L"a \u05D0\u05D1 \u05D2", kReverse, L"a \u05D2 \u05D1\u05D0", "{><}"},
      {"numbers are not", L"\u05D0\u05D1 12", kReverse, L" \u05D1\u05D012", "{<>}"},
      {"pairs stay", L"\xD802\xDD00\xD802\xDD01", kReverse, L"\xD802\xDD01\xD802\xDD00", "{<}"},
      {"halves do not meet", L"\u202E\xDC00\xD800", kReverse, L"\xFFFD\xFFFD\u202E", "{<}"},
  };
  const Face face = FaceOf("DejaVu Sans");
  for (const auto& row : rows) {
    const Recorder recorder = Decompose(row.text, face, row.flags);
    EXPECT_EQ(recorder.calls, row.calls) << row.why;
    EXPECT_EQ(recorder.text, row.result) << row.why;
  }
}

TEST(UCS2Decomp, AReversedRunIsCutFromItsReversedForm) {
  const Face face = FaceOf("Liberation Sans");
  ASSERT_EQ(face->GetFaceName(), "Liberation Sans");
  const struct {
    const char* why;
    const wchar_t* text;
    unsigned flags;
    std::vector<std::wstring> parts;
  } rows[] = {
      {"as it is", L"\u05D0 \u2603 \u05D1", 0, {L"\u05D0 ", L"\u2603 ", L"\u05D1"}},
      {"spaces follow", L"\u05D0 \u2603 \u05D1", kReverse, {L"\u05D1 ", L"\u2603 ", L"\u05D0"}},
      {"marks stay with their letters",
       L"\u05D0\u05B8 \u05D1\u2603\u0301\u05D2",
       kReverse,
       {L"\u05D2", L"\u0301\u2603", L"\u05D1 \u05B8\u05D0"}},
  };
  for (const auto& row : rows) {
    const Recorder recorder = Decompose(row.text, face, kCheck | row.flags);
    ASSERT_EQ(recorder.calls, "{<<<}") << row.why;
    for (std::size_t i = 0; i < 3; ++i) {
      const UCS2DecompSubSet& piece = recorder.pieces[i];
      EXPECT_EQ(piece.GetString(), row.parts[i]) << row.why;
      EXPECT_EQ(piece.GetFaceInfoPtr() == face, i != 1) << row.why;
    }
  }
}

TEST(UCS2Decomp, TextEndsAtTheFirstZeroForRunsAlone) {
  const Face face = FaceOf("DejaVu Sans");
  EXPECT_EQ(Decompose(L"", face, kCheck).calls, "{}");
  EXPECT_EQ(Decompose(std::wstring(L"\0abc", 4), face, kCheck).calls, "{}");
  const std::wstring text(L"ab\0\u05D0", 4);
  EXPECT_EQ(Decompose(text, face, 0).calls, "{>}");
  EXPECT_EQ(Decompose(text, face, kCheck).text, text);
  EXPECT_EQ(Decompose(L"\U0001F600", face, 0).text, L"\xD83D\xDE00");
  EXPECT_EQ(Decompose(std::wstring(1, wchar_t{0x110000}), face, 0).text, L"\xFFFD");
}

TEST(UCS2Decomp, TooManyRunsAreRefused) {
  std::wstring text;
  for (int i = 0; i < 1000; ++i) text += L"a\u05D0";
  const Face face = FaceOf("DejaVu Sans");
  UCS2Decomp decomp;
  Recorder recorder;
  EXPECT_FALSE(decomp.DecompValid());
  EXPECT_THROW(decomp.Decompose(recorder, face, 0), Exception);
  EXPECT_TRUE(decomp.SetupDecomp(text));
  decomp.Decompose(recorder, face, kCheck);
  EXPECT_EQ(recorder.pieces.size(), 2000u);
  EXPECT_FALSE(decomp.SetupDecomp(text + L'a'));
  EXPECT_FALSE(decomp.DecompValid());
  Recorder second;
  try {
    decomp.Decompose(second, face, kCheck);
    FAIL() << "nothing was taken";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetSrcFile(), "UCS2Decomp");
  }
  EXPECT_EQ(second.calls, "");
  EXPECT_TRUE(decomp.SetupDecomp(L"a"));
  EXPECT_THROW(decomp.Decompose(second, nullptr, kCheck), Exception);
}

TEST(UCS2Decomp, LongTextsTakeLinearTime) {
  using Clock = std::chrono::steady_clock;
  // In quadratic time each takes minutes.
  const struct {
    const wchar_t* unit;  ///< What is repeated: a run, or a piece, or neither.
    int count;
    const char* face;
    const wchar_t* ends = L"";  ///< What stands before and behind.
  } rows[] = {
      {L"ab ", 1'000'000, "Liberation Sans"},
      {L"\u0628", 1'000'000, "Liberation Sans"},
      {L"\u0905\u094D", 1'000'000, "Liberation Sans"},
      {L"\u2603a", 1'000'000, "Liberation Sans"},
      {L"\u0301", 1'000'000, "Liberation Sans"},
      {L"\u05B8", 200'000, "DejaVu Sans"},
      {L"\u05B8", 200'000, "DejaVu Sans", L"\u05D0"},
      {L"\u0E33", 200'000, "DejaVu Sans"},
      {L"\u200D", 200'000, "Liberation Sans"},
      {L"\uFE0F", 200'000, "Liberation Sans"},
      {L"\t\u0301", 200'000, "Liberation Sans"},
      {L"(", 500'000, "DejaVu Sans", L"\u05D0"},
      {L"(\u2067)\u2069", 500'000, "DejaVu Sans", L"\u05D0"},
      {L"(\u05D0)", 500'000, "DejaVu Sans", L"\u05D0["},
  };
  for (const auto& row : rows) {
    const auto size = static_cast<std::size_t>(Rounds(row.count));
    std::wstring text(row.ends);
    while (text.size() < size) text += row.unit;
    text.append(size, row.unit[0] == '(' ? L'}' : L' ');
    text += row.ends;
    const auto start = Clock::now();
    EXPECT_EQ(Decompose(text, FaceOf(row.face), kCheck).text, text);
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(30)) << ::testing::PrintToString(row.unit);
  }
}

TEST(UCS2Decomp, AFaceThatIsNotInstalledKeepsItsText) {
  const Face face = Uninstalled();
  for (const char* const name : {"Arial Unicode MS", "Tahoma"}) {
    if (FaceOf(name)->GetFaceName() == name) GTEST_SKIP() << name << " is installed";
  }
  const Recorder recorder = Decompose(L"ab\u6F22 \u05D0\u05D1", face, kCheck | kReverse);
  EXPECT_EQ(recorder.text, L"ab\u6F22 \u05D1\u05D0");
  for (const auto& piece : recorder.pieces) EXPECT_EQ(piece.GetFaceInfoPtr(), face);
}

/// Ends the process with 0 if `check` holds where the only faces are those in `folder`.
template <class Check>
void RunWithFaces(const std::string& folder, const std::string& configuration, Check check) {
  std::ofstream(configuration) << "<?xml version=\"1.0\"?><fontconfig><dir>" << folder
                               << "</dir></fontconfig>";
  setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
  std::exit(check() ? 0 : 1);
}

TEST(UCS2DecompDeathTest, AloneDejaVuShowsEverything) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const std::string dejavu = "/usr/share/fonts/truetype/dejavu";
  if (!std::filesystem::exists(dejavu)) GTEST_SKIP() << "no DejaVu in " << dejavu;
  const testing::TemporaryFolder folder;
  const auto check = [] {
    const Face face = FaceOf("DejaVu Sans");
    for (const auto& row : kTexts) {
      CheckPieces(row.text, face);
      for (const auto& piece : Decompose(row.text, face, kCheck).pieces) {
        EXPECT_EQ(piece.GetFaceInfoPtr(), face) << row.what;
      }
    }
    return face->GetFaceName() == "DejaVu Sans" && !::testing::Test::HasFailure();
  };
  EXPECT_EXIT(RunWithFaces(dejavu, folder.Path("fonts.conf"), check), ::testing::ExitedWithCode(0),
              "");
}

TEST(UCS2DecompDeathTest, EachScriptComesInAFaceOfItsOwn) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const testing::TemporaryFolder folder;
  const std::string fonts = "/usr/share/fonts/";
  for (const char* const name :
       {"truetype/noto/NotoSans-Regular", "truetype/noto/NotoSansArabic-Regular",
        "truetype/noto/NotoSansDevanagari-Regular", "truetype/noto/NotoSansHebrew-Regular",
        "truetype/noto/NotoSansSymbols2-Regular", "truetype/noto/NotoSansTakri-Regular",
        "truetype/noto/NotoSansThai-Regular", "opentype/noto/NotoSansCJK-Regular"}) {
    std::string file = fonts + name + ".ttf";
    if (!std::filesystem::exists(file)) file = fonts + name + ".ttc";
    if (!std::filesystem::exists(file)) GTEST_SKIP() << file << " is not installed";
    std::filesystem::create_symlink(file,
                                    folder.Path(std::filesystem::path(file).filename().string()));
  }
  const auto check = [] {
    const struct {
      const char* what;
      const wchar_t* text;
      const char* faces;  ///< Of the pieces, in turn.
    } rows[] = {
        {"Latin", L"Depth (m), \u00E9t\u00E9 \u2014 \u0141\u00F3d\u017A", "Noto Sans;"},
        {"marks", L"e\u0301 q\u0308\u0323", "Noto Sans;"},
        {"Arabic", L"\u0645\u0631\u062D\u0628\u0627 \u0628\u0643\u0645", "Noto Sans Arabic;"},
        {"Hebrew with points", L"\u05E9\u05C1\u05B8\u05DC\u05D5\u05B9\u05DD", "Noto Sans Hebrew;"},
        {"Hindi, its full stop behind a number", L"\u0939\u093F\u0928\u094D\u0926\u0940 123\u0964",
         "Noto Sans Devanagari;Noto Sans;Noto Sans Devanagari;"},
        {"Thai", L"\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35", "Noto Sans Thai;"},
        {"Chinese", L"\u4F60\u597D\uFF0C\u4E16\u754C", "Noto Sans CJK JP;"},
        {"Japanese", L"\u3053\u3093\u306B\u3061\u306F\u3001\u4E16\u754C", "Noto Sans CJK JP;"},
        {"Korean", L"\uC548\uB155\uD558\uC138\uC694", "Noto Sans CJK JP;"},
        {"emoji", L"a \U0001F408", "Noto Sans;Noto Sans Symbols2;"},
        {"Latin, Arabic, numbers", L"abc \u0639\u0645\u0642 123 \u0645\u062A\u0631 def",
         "Noto Sans;Noto Sans Arabic;Noto Sans;Noto Sans Arabic;Noto Sans;"},
    };
    const Face face = FaceOf("Noto Sans");
    for (const auto& row : rows) {
      CheckPieces(row.text, face);
      std::string faces;
      for (const auto& piece : Decompose(row.text, face, kCheck).pieces) {
        faces += piece.GetFaceInfoPtr()->GetFaceName().String() + ';';
      }
      EXPECT_EQ(faces, row.faces) << row.what;
      // What a child process expects is not printed.
      if (faces != row.faces) std::fprintf(stderr, "%s: %s\n", row.what, faces.c_str());
    }
    return !::testing::Test::HasFailure();
  };
  EXPECT_EXIT(RunWithFaces(folder.Path(), folder.Path("fonts.conf"), check),
              ::testing::ExitedWithCode(0), "");
}

TEST(UCS2DecompDeathTest, ACompressedFaceIsNotReplaced) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const testing::TemporaryFolder folder;
  for (const char* const name : {"Regular", "Bold"}) {
    const std::string file = "/usr/share/fonts/truetype/liberation2/LiberationSans-";
    if (!std::filesystem::exists(file + name + ".ttf")) GTEST_SKIP() << "no " << file;
    std::ofstream(folder.Path(name), std::ios::binary)
        << testing::FontFile::Read(file + name + ".ttf").Woff();
  }
  const auto check = [] {
    const Face bold = FaceOf("Liberation Sans", 700);
    const Recorder recorder = Decompose(L"ab \u05D0\u05D1 e\u0301", bold, kCheck);
    for (const auto& piece : recorder.pieces) EXPECT_EQ(piece.GetFaceInfoPtr(), bold);
    return bold != FaceOf("Liberation Sans") && !::testing::Test::HasFailure();
  };
  EXPECT_EXIT(RunWithFaces(folder.Path(), folder.Path("fonts.conf"), check),
              ::testing::ExitedWithCode(0), "");
}

TEST(UCS2DecompDeathTest, WhatNoFaceHasComesInTheLastResort) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const testing::TemporaryFolder folder;
  const std::string liberation = "/usr/share/fonts/truetype/liberation2/LiberationSans-";
  if (!std::filesystem::exists(liberation + "Bold.ttf")) GTEST_SKIP() << "no " << liberation;
  std::filesystem::create_symlink(liberation + "Bold.ttf", folder.Path("bold.ttf"));
  testing::FontFile font = testing::FontFile::Read(liberation + "Regular.ttf");
  font.SetNames("Tahoma");
  std::ofstream(folder.Path("tahoma.ttf"), std::ios::binary) << font.Bytes();
  const auto check = [] {
    const Face bold = FaceOf("Liberation Sans", 700);
    const Face tahoma = FaceOf("Tahoma");
    const Recorder mixed = Decompose(L"ok \u2603 ok", bold, kCheck);
    const std::vector<Face> expected{bold, tahoma, bold};
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(mixed.pieces.at(i).GetFaceInfoPtr(), expected[i]) << i;
    }
    for (const auto& piece : Decompose(L"ab \u05D0", Uninstalled(), kCheck).pieces) {
      EXPECT_EQ(piece.GetFaceInfoPtr(), tahoma);
    }
    return tahoma->GetFaceName() == "Tahoma" && !::testing::Test::HasFailure();
  };
  EXPECT_EXIT(RunWithFaces(folder.Path(), folder.Path("fonts.conf"), check),
              ::testing::ExitedWithCode(0), "");
}

TEST(UCS2DecompDeathTest, WithoutFacesNothingIsChecked) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const testing::TemporaryFolder folder;
  const auto check = [] {
    const Face face = Uninstalled();
    EXPECT_EQ(Decompose(L"abc", face, 0).calls, "{>}");
    UCS2Decomp decomp;
    Recorder recorder;
    EXPECT_TRUE(decomp.SetupDecomp(L"abc"));
    try {
      decomp.Decompose(recorder, face, kCheck);
    } catch (const Exception& error) {
      const std::string text = error.GetDescription().String();
      return error.GetErrCode() == ERR_CREATE_OBJECT &&
             text.find("IMLangFontLink2") != std::string::npos && !::testing::Test::HasFailure();
    }
    return false;
  };
  EXPECT_EXIT(RunWithFaces(folder.Path(), folder.Path("fonts.conf"), check),
              ::testing::ExitedWithCode(0), "");
}

TEST(ScopedScriptCache, TakesWhatItIsGiven) {
  const auto* const entry = &platform::FontCatalog::Instance().Fonts().at(0);
  ScopedScriptCache cache;
  EXPECT_EQ(*cache.CachePtr(), nullptr);
  for (int i = 0; i < 2; ++i) {
    void* const opened = platform::Shaper::Open(entry->file, entry->index).release();
    ASSERT_TRUE(opened);
    cache.CachePtr(opened);
    EXPECT_EQ(*cache.CachePtr(), opened);
  }
  const auto& itself = cache;
  cache.CachePtr(*const_cast<ScopedScriptCache&>(itself).CachePtr());
  EXPECT_NE(*cache.CachePtr(), nullptr) << "what it holds stays";
  cache.CachePtr(nullptr);
  EXPECT_EQ(*cache.CachePtr(), nullptr);
}

TEST(UCS2DecompSubSet, CopiesShareTheFace) {
  const Face face = FaceOf("DejaVu Sans");
  UCS2DecompSubSet piece(L"a", nullptr, false);
  const UCS2DecompSubSet other(L"b", face, true);
  piece = UCS2DecompSubSet(other);
  EXPECT_EQ(piece.GetString(), L"b");
  EXPECT_EQ(piece.GetFaceInfoPtr(), face);
  EXPECT_TRUE(piece.IsRTLReading());
}

}  // namespace
}  // namespace vlm
