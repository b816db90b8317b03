#include <velum/fonts/SystemFaceInfo.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>
#include <velum/fonts/FontRefDC.h>
#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/ReferenceContext.h>
#include <testing/FontFile.h>
#include <testing/TemporaryFolder.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

CSystemFaceInfo& Faces() { return CSystemFaceInfo::GetInstance(); }

const CFaceInfo& FaceAt(int index) {
  return *Faces().GetFaceInfo(static_cast<unsigned int>(index));
}

int IndexOf(const CFaceInfo& face) {
  for (unsigned int i = 0; i < Faces().GetNumItems(); ++i) {
    if (Faces().GetFaceInfo(i).get() == &face) return static_cast<int>(i);
  }
  return -1;
}

TEST(CSystemFaceInfo, ListsAllFacesInTheOrderOfTheirNames) {
  unsigned int sets = 0;
  for (unsigned int i = 0; i < Faces().GetNumItems(); ++i) {
    const auto face = Faces().GetFaceInfo(i);
    EXPECT_FALSE(i > 0 && FaceNameLess(face, Faces().GetFaceInfo(i - 1)));
    EXPECT_LE(face->GetFaceName().size(), 31u);
    const TEXTMETRICA& metrics = face->GetOTM().otmTextMetrics;
    EXPECT_EQ(Faces().CalcMatchValue(i, face->GetFaceName(), metrics.tmWeight, metrics.tmItalic,
                                     metrics.tmCharSet, metrics.tmPitchAndFamily, 63),
              1500)
        << "what is compared is what the face says";
    if (face->GetFaceType() != CFaceInfo::FACE_TYPE_SYM) continue;
    ++sets;
    const auto& set = static_cast<const CSYMFaceInfo&>(*face);
    EXPECT_EQ(face->GetFaceName(), g_SYMSetList[set.GetSYMSetIndex()].GetFaceName());
  }
  EXPECT_EQ(sets, 28u);
  EXPECT_GT(Faces().GetNumItems(), 28u);
}

TEST(CSystemFaceInfo, ScoresEachTermThatCounts) {
  // "DejaVu Sans" has weights of 400 and 700; as records say, 0x27 is a swiss face of variable
  // pitch in TrueType outlines.
  const int sans = Faces().Match("DejaVu Sans", 400, 0, 0, 0, 7, 1);
  const int mono = Faces().Match("DejaVu Sans Mono", 700, 0, 0, 0, 7, 1);
  const int light = Faces().Match("DejaVu Sans Light", 200, 0, 0, 0, 7, 1);
  ASSERT_EQ(FaceAt(sans).GetOTM().otmTextMetrics.tmPitchAndFamily, 0x27);
  ASSERT_EQ(FaceAt(mono).GetOTM().otmTextMetrics.tmPitchAndFamily, 0x36);
  const struct {
    const char* why;
    int face;
    const char* name;
    long weight;
    unsigned char italic;
    unsigned char charset;
    unsigned char pitchAndFamily;
    int flags;
    int value;
  } rows[] = {
      {"all is as asked", sans, "DejaVu Sans", 400, 0, 0, 0x21, 63, 1500},
      {"nothing counts", sans, "Nobody", 900, 1, 2, 0x10, 0, 1500},
      {"nothing is as asked", sans, "Nobody", 1400, 1, 2, 0x10, 63, 0},
      {"the name in any case", sans, "dejavu SANS", 400, 0, 0, 0x21, 63, 1500},
      {"the beginning of the name", sans, "DejaVu San", 400, 0, 0, 0x21, 63, 1200},
      {"700 against 400", sans, "DejaVu Sans", 700, 0, 0, 0x21, 63, 1470},
      {"900 against 200", light, "DejaVu Sans Light", 900, 0, 0, 0x21, 63, 1430},
      {"99 less", sans, "DejaVu Sans", 301, 0, 0, 0x21, 63, 1500},
      {"100 less", sans, "DejaVu Sans", 300, 0, 0, 0x21, 63, 1490},
      {"2000 more", sans, "DejaVu Sans", 2400, 0, 0, 0x21, 63, 1300},
      {"no weight overflows", sans, "DejaVu Sans", 0x7FFFFFFFFFFFFFFF, 0, 0, 0x21, 63, -99998460},
      {"nor does its opposite", sans, "", -0x7FFFFFFFFFFFFFFF, 0, 0, 0x21, 62, -99998540},
      {"any italic", sans, "DejaVu Sans", 400, 255, 0, 0x21, 63, 1400},
      {"another character set", sans, "DejaVu Sans", 400, 0, 2, 0x21, 63, 1100},
      {"fixed pitch", sans, "DejaVu Sans", 400, 0, 0, 0x20, 63, 1200},
      {"fixed pitch of a face that has it", mono, "DejaVu Sans Mono", 700, 0, 0, 0x30, 63, 1500},
      {"another family", sans, "DejaVu Sans", 400, 0, 0, 0x31, 63, 1200},
      {"low bits other than the pitch", sans, "DejaVu Sans", 400, 0, 0, 0x2F, 63, 1500},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Faces().CalcMatchValue(static_cast<unsigned int>(row.face), row.name, row.weight,
                                     row.italic, row.charset, row.pitchAndFamily, row.flags),
              row.value)
        << row.why;
  }
}

TEST(CSystemFaceInfo, MatchesAsDescribed) {
  const struct {
    const char* why;
    const char* name;
    long weight;
    unsigned char italic;
    int flags;
    unsigned int types;
    const char* face;
    int faceWeight;
    bool faceItalic;
  } rows[] = {
      {"an exact name", "DejaVu Sans", 400, 0, 7, 65535, "DejaVu Sans", 400, false},
      {"bold", "DejaVu Sans", 700, 0, 7, 65535, "DejaVu Sans", 700, false},
      {"bold italic", "Liberation Serif", 700, 1, 7, 65535, "Liberation Serif", 700, true},
      {"a name in another case", "liberation mono", 700, 0, 7, 1, "Liberation Mono", 700, false},
      {"a weight between", "Liberation Mono", 900, 0, 7, 1, "Liberation Mono", 700, false},
      {"a weight beyond all", "Liberation Mono", 3000, 0, 7, 1, "Liberation Mono", 700, false},
      {"a symbol set", "KQ Roman", 400, 0, 7, 65535, "KQ Roman", 400, false},
      {"a symbol set where none may be", "KQ Roman", 400, 0, 3, 1, nullptr, 400, false},
      {"an outline face where none may be", "DejaVu Sans", 400, 0, 1, 2, "KQ CENTERED", 400, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const int index = Faces().Match(row.name, row.weight, row.italic, 0, 0, row.flags, row.types);
    ASSERT_GE(index, 0);
    EXPECT_EQ(Faces().Match(row.name, row.weight, row.italic, 0, 0, row.flags, row.types), index);
    const CFaceInfo& face = FaceAt(index);
    EXPECT_NE(face.GetFaceType() & row.types, 0u);
    if (row.face) {
      EXPECT_EQ(face.GetFaceName(), row.face);
    }
    EXPECT_EQ(face.GetOTM().otmTextMetrics.tmWeight, row.faceWeight);
    EXPECT_EQ(face.GetOTM().otmTextMetrics.tmItalic != 0, row.faceItalic);
  }
  EXPECT_EQ(Faces().Match("DejaVu Sans", 400, 0, 0, 0, 7, 4), -1) << "no face of that type";
}

TEST(CSystemFaceInfo, AnEmptyNameIsADefaultFace) {
  const int variable = IndexOf(*Faces().GetDefVariablePitchFaceInfo());
  const int fixed = IndexOf(*Faces().GetDefFixedPitchFaceInfo());
  EXPECT_EQ(Faces().Match("", 700, 1, 2, 0, 7, 0), variable) << "pitch does not count";
  EXPECT_EQ(Faces().Match("", 400, 0, 0, 1, 16, 2), variable);
  EXPECT_EQ(Faces().Match("", 400, 0, 0, 0, 16, 2), fixed);
  const int known = Faces().Match("DejaVu Serif", 400, 0, 0, 0, 7, 1);
  (void)Faces().Match("", 400, 0, 0, 0, 7, 1);
  EXPECT_EQ(Faces().Match("DEJAVU serif", 400, 0, 0, 0, 7, 1), known);
}

TEST(CSystemFaceInfo, TakesTheFirstOfTheBestUnlessADefaultFaceIsAsGood) {
  const int variable = IndexOf(*Faces().GetDefVariablePitchFaceInfo());
  const int fixed = IndexOf(*Faces().GetDefFixedPitchFaceInfo());
  const char* const names[] = {"DejaVu Sans", "dejavu sans mono", "KQ Roman",
                               "Nobody",      "kq set3",          "Liberation Serif"};
  const unsigned int seed = std::random_device()();
  std::mt19937 random(seed);
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  for (int turn = 0; turn < 2000; ++turn) {
    const GString name = names[random() % std::size(names)];
    const long weight = static_cast<long>(random() % 10) * 100;
    const auto italic = static_cast<unsigned char>(random() % 2);
    const auto charset = static_cast<unsigned char>(random() % 3);
    const auto pitchAndFamily = static_cast<unsigned char>(random() % 96);
    const int flags = static_cast<int>(random() % 64);
    const unsigned int types = 1 + static_cast<unsigned int>(random() % 3);
    int best = -1;
    int bestValue = -1;
    int perfect = -1;
    for (int i = 0; i < static_cast<int>(Faces().GetNumItems()); ++i) {
      if ((FaceAt(i).GetFaceType() & types) == 0) continue;
      const int value = Faces().CalcMatchValue(static_cast<unsigned int>(i), name, weight, italic,
                                               charset, pitchAndFamily, flags);
      const bool isExact = (flags & 1) != 0 && FaceAt(i).GetFaceName() == name;
      if (isExact && value == 1500 && perfect < 0) perfect = i;
      if (bestValue == 1500) continue;
      if (value > bestValue || (value == bestValue && (i == variable || i == fixed))) {
        best = i;
        bestValue = value;
      }
    }
    ASSERT_EQ(Faces().Match(name, weight, italic, charset, pitchAndFamily, flags, types),
              perfect >= 0 ? perfect : best)
        << name.c_str() << " " << weight << " flags " << flags << " types " << types;
  }
}

TEST(CSystemFaceInfo, RefusesWhatIsNoIndexAndNoType) {
  const auto code = [](auto call) {
    try {
      call();
    } catch (const Exception& error) {
      return error.GetSrcFile() + " " + std::to_string(error.GetErrCode());
    }
    return GString("nothing");
  };
  EXPECT_EQ(code([] { Faces().SetFontMatcherFaceTypeFlags(0); }), "SystemFaceInfo 4");
  EXPECT_EQ(code([] { Faces().SetMarkerMatcherFaceTypeFlags(0); }), "SystemFaceInfo 4");
  EXPECT_EQ(code([] { (void)Faces().GetFaceInfo(Faces().GetNumItems()); }), "SystemFaceInfo 4");
  EXPECT_EQ(Faces().GetFontMatcherFaceTypeFlags(), 65535u);
  Faces().SetMarkerMatcherFaceTypeFlags(2);
  EXPECT_EQ(Faces().GetMarkerMatcherFaceTypeFlags(), 2u);
  Faces().SetMarkerMatcherFaceTypeFlags(65535);
}

TEST(CSystemFaceInfo, MatchesOnManyThreads) {
  const int sans = Faces().Match("DejaVu Sans", 400, 0, 0, 0, 7, 1);
  const int none = Faces().Match("Nobody", 700, 0, 0, 0, 7, 1);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int turn = 0; turn < 200; ++turn) {
        EXPECT_EQ(Faces().Match("DejaVu Sans", 400, 0, 0, 0, 7, 1), sans);
        EXPECT_EQ(Faces().Match("Nobody", 700, 0, 0, 0, 7, 1), none);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// The list is made once, so that each of these needs a process of its own.
class CSystemFaceInfoDeathTest : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

/// Ends the process after asking about the faces when a folder of one font is all there is; prints
/// the log, and the answer or the error.
template <class Ask>
[[noreturn]] void AskWithOnly(const std::string& font, Ask ask) {
  const testing::TemporaryFolder folder;
  const testing::TemporaryFolder fonts;
  std::ofstream(fonts.Path("font.ttf"), std::ios::binary) << font;
  const std::string path = testing::WriteFontConfiguration(folder.Path(), fonts.Path());
  ::setenv("FONTCONFIG_FILE", path.c_str(), 1);
  g_Logger.SetOutputCallback(
      [](int, const GString& text, void*) { std::fputs(text.c_str(), stderr); }, nullptr);
  g_Logger.Enable(true);
  try {
    std::fprintf(stderr, "%u", ask());
  } catch (const Exception& error) {
    std::fprintf(stderr, "%s %d", error.GetSrcFile().c_str(), error.GetErrCode());
  }
  std::filesystem::remove_all(folder.Path());
  std::filesystem::remove_all(fonts.Path());
  std::_Exit(0);
}

testing::FontFile Sans() {
  return testing::FontFile::Read("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
}

TEST_F(CSystemFaceInfoDeathTest, WithoutGoodFontsThereIsAnInternalError) {
  const auto ask = [] { return Faces().GetNumItems(); };
  EXPECT_EXIT(AskWithOnly("", ask), ::testing::ExitedWithCode(0),
              "^CSystemFaceInfo: Left out the font .*/font.ttf: it can't be read"
              "SystemFaceInfo 2$");
  testing::FontFile flat = Sans();
  flat.Zero("OS/2");
  EXPECT_EXIT(AskWithOnly(flat.Bytes(), ask), ::testing::ExitedWithCode(0),
              "^CSystemFaceInfo: Left out the font .*/font.ttf: the cell has no height"
              "SystemFaceInfo 2$");
  EXPECT_EXIT(AskWithOnly(Sans().Bytes(), ask), ::testing::ExitedWithCode(0), "^29$");
}

TEST_F(CSystemFaceInfoDeathTest, TheLibrarysOwnSymbolFontsReachToTheLastCode) {
  const auto ask = [] {
    const CFaceInfo& face = FaceAt(Faces().Match("", 400, 0, 0, 0, 0, 1));
    return 1000u * face.GetFirstChar() + face.GetLastChar();
  };
  testing::FontFile font = Sans();
  font.MakeSymbols();
  EXPECT_EXIT(AskWithOnly(font.Bytes(), ask), ::testing::ExitedWithCode(0), "^32126$");
  font.Rename("DejaVu Sans", "KQI Symbols");
  EXPECT_EXIT(AskWithOnly(font.Bytes(), ask), ::testing::ExitedWithCode(0), "^32255$");
}

TEST_F(CSystemFaceInfoDeathTest, InstancesOfAVariableFontMeasureAndAreSelectedAsThemselves) {
  const auto ask = [] {
    unsigned int widths = 0;
    for (unsigned int i = 0; i < 2; ++i) {
      const auto face = Faces().GetFaceInfo(i);
      widths = 10000 * widths + face->CalcEmExtent("A");
      FontRefDC context;
      context.SelectEmFont(*face);
      if (platform::SelectedEntry(context)->index >> 16 != i) return 0u;
    }
    return widths;
  };
  testing::FontFile font = Sans();
  // Faces that differ in nothing that a description tells.
  font.MakeVariable({{400, 50}});
  font.Put16("OS/2", 2, 1);
  EXPECT_EXIT(AskWithOnly(font.Bytes(), ask), ::testing::ExitedWithCode(0), "^14011001$");
}

TEST_F(CSystemFaceInfoDeathTest, ALongNameFindsItsFamily) {
  const auto ask = [] {
    const GString family = "A Family of a Name Beyond 31 Bytes";
    const auto value = [](const GString& name) {
      return static_cast<unsigned int>(Faces().CalcMatchValue(0, name, 400, 0, 0, 0, 1));
    };
    const bool isFound =
        Faces().Match("a FAMILY of a Name Beyond 31 Bytes", 400, 0, 0, 0, 3, 65535) == 0 &&
        Faces().Match(family, 400, 0, 0, 0, 3, 65535) == 0;
    const bool isTold = value(family) == 1500 && value(family.substr(0, 31)) == 1500 &&
                        value(family + "!") == 1200 && value(family.substr(0, 32)) == 1200;
    return isFound && isTold ? 1u : 0u;
  };
  testing::FontFile font = Sans();
  font.SetNames("A Family of a Name Beyond 31 Bytes");
  EXPECT_EXIT(AskWithOnly(font.Bytes(), ask), ::testing::ExitedWithCode(0), "^1$");
}

TEST_F(CSystemFaceInfoDeathTest, ASetWhoseFileIsMissingAnswersWithTheDefaultFace) {
  const auto ask = [] {
    ::setenv("KQSRC", "/nowhere", 1);
    ::setenv("KQSUBVER", "none", 1);
    const int index = Faces().Match("KQ Roman", 400, 0, 0, 0, 7, 65535);
    const CFaceInfo& face = FaceAt(index);
    const CFaceInfo& other = *Faces().GetDefVariablePitchFaceInfo();
    const bool isSame = face.GetFaceName() == "KQ Roman" && &face.GetOTM() == &other.GetOTM() &&
                        face.CalcEmExtent("Depth") == other.CalcEmExtent("Depth") &&
                        face.GetCellHeight() == other.GetCellHeight();
    std::_Exit(isSame ? 0 : 1);
  };
  EXPECT_EXIT(ask(), ::testing::ExitedWithCode(0), "");
}

TEST_F(CSystemFaceInfoDeathTest, AFlatSetHasTheAspectOfSetsAllTheSame) {
  const auto ask = [] {
    const testing::TemporaryFolder folder;
    std::filesystem::create_directories(folder.Path("Subsystems/1/Symbol"));
    ::setenv("KQSRC", folder.Path().c_str(), 1);
    ::setenv("KQSUBVER", "1", 1);
    // An em of one unit, cells of 255.
    std::ofstream(folder.Path("Subsystems/1/Symbol/KQroman.sym"), std::ios::binary)
        << std::string("SYMA\x80\x7F\x02\0\0\x03\x05\x01\x02", 13);
    const CFaceInfo& face = FaceAt(Faces().Match("KQ Roman", 400, 0, 0, 0, 7, 65535));
    const bool isSound = face.GetEmSize() == 1 && face.CalcEmExtent("A") == 255 &&
                         std::abs(face.GetAspect() - 1.0) < 1e-6;
    std::filesystem::remove_all(folder.Path());
    std::_Exit(isSound ? 0 : 1);
  };
  EXPECT_EXIT(ask(), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vlm
