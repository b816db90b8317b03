#include <velum/platform/detail/FontCatalog.h>

#include <velum/platform/detail/FontTables.h>
#include <velum/platform/detail/OutlineFont.h>
#include <testing/FontFile.h>
#include <testing/TemporaryFolder.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace vlm::platform {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using testing::FontFile;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr char kSans[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr char kMono[] = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf";

/// A folder that is all that fontconfig knows, as long as the object lives.
class FontFolder {
 public:
  FontFolder() {
    std::filesystem::create_directory(Path(""));
    const std::string path = testing::WriteFontConfiguration(folder_.Path(), Path(""));
    ::setenv("FONTCONFIG_FILE", path.c_str(), 1);
  }
  FontFolder(const FontFolder&) = delete;
  FontFolder& operator=(const FontFolder&) = delete;
  ~FontFolder() { ::unsetenv("FONTCONFIG_FILE"); }

  [[nodiscard]] std::string Path(const std::string& name) const {
    return folder_.Path("fonts") + "/" + name;
  }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }

 private:
  testing::TemporaryFolder folder_;
};

TEST(FontCatalog, AnEmptyFolderGivesNoFaces) {
  const FontFolder folder;
  folder.Write("nothing.ttf", "");
  folder.Write("text.ttf", "This is no font.");
  folder.Write("text.txt", "This is none, either.");
  folder.Write("zeros.OTF", std::string(1000, '\0'));
  const FontCatalog catalog;
  EXPECT_EQ(catalog.Status(), FontCatalogStatus::kGood);
  EXPECT_THAT(catalog.Fonts(), IsEmpty());
  EXPECT_THAT(catalog.Skipped(), ElementsAre(folder.Path("nothing.ttf") + ": it can't be read",
                                             folder.Path("text.ttf") + ": it can't be read",
                                             folder.Path("zeros.OTF") + ": it can't be read"));
}

TEST(FontCatalog, LeavesDamagedFilesOutAndKeepsTheOthers) {
  const FontFile good = FontFile::Read(kSans);
  ASSERT_EQ(good.tables.count("OS/2"), 1u) << "fonts-dejavu-core is not installed";
  struct Row {
    const char* why;
    bool isListed;
    std::function<void(FontFile&)> damage;
  };
  // Where FreeType can still name a face, what it measures must make sense; where its glyphs alone
  // are gone, it is a face of empty glyphs.
  const Row rows[] = {
      {"nothing changed", true, [](FontFile&) {}},
      {"an em square of 0", false, [](FontFile& f) { f.Put16("head", 18, 0); }},
      {"an em square of 3", false, [](FontFile& f) { f.Put16("head", 18, 3); }},
      {"an em square beyond the format's", false, [](FontFile& f) { f.Put16("head", 18, 65535); }},
      {"a cell without height", false,
       [](FontFile& f) { f.Put16("OS/2", 74, 0), f.Put16("OS/2", 76, 0); }},
      {"no mean width", false, [](FontFile& f) { f.Put16("OS/2", 2, 0); }},
      {"a negative mean width", false, [](FontFile& f) { f.Put16("OS/2", 2, 0xFFF0); }},
      {"a negated descent", true, [](FontFile& f) { f.Put16("OS/2", 76, 0xFE00); }},
      {"zeros for head", false, [](FontFile& f) { f.Zero("head"); }},
      {"zeros for hhea", false, [](FontFile& f) { f.Zero("hhea"); }},
      {"zeros for OS/2", false, [](FontFile& f) { f.Zero("OS/2"); }},
      {"zeros for names: it is named by its file", true, [](FontFile& f) { f.Zero("name"); }},
      {"zeros for outlines", true, [](FontFile& f) { f.Zero("glyf"); }},
      {"zeros for widths", true, [](FontFile& f) { f.Zero("hmtx"); }},
      {"no OS/2", true, [](FontFile& f) { f.tables.erase("OS/2"); }},
      {"a short OS/2", true, [](FontFile& f) { f.tables["OS/2"].resize(40); }},
      {"no post", true, [](FontFile& f) { f.tables.erase("post"); }},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const FontFolder folder;
    folder.Write("good.ttf", FontFile::Read(kMono).Bytes());
    FontFile font = good;
    row.damage(font);
    folder.Write("other.ttf", font.Bytes());
    const FontCatalog catalog;
    std::vector<std::string> files;
    for (const FontEntry& entry : catalog.Fonts()) {
      files.push_back(entry.file);
      const TEXTMETRICA& metrics = entry.record.otmTextMetrics;
      EXPECT_EQ(RecordProblem(entry.record), nullptr);
      EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, metrics.tmHeight);
      EXPECT_EQ(metrics.tmInternalLeading,
                metrics.tmHeight - static_cast<int>(entry.record.otmEMSquare));
    }
    EXPECT_THAT(files, Contains(folder.Path("good.ttf")));
    EXPECT_EQ(std::count(files.begin(), files.end(), folder.Path("other.ttf")), row.isListed);
  }
}

TEST(FontCatalog, TellsWhatItLeftOut) {
  const FontFolder folder;
  FontFile font = FontFile::Read(kSans);
  folder.Write("cut.ttf", font.Bytes().substr(0, font.Bytes().size() - 4));
  font.Put16("OS/2", 2, 0);
  folder.Write("thin.ttf", font.Bytes());
  const FontCatalog catalog;
  EXPECT_THAT(catalog.Fonts(), IsEmpty());
  EXPECT_THAT(catalog.Skipped(),
              ElementsAre(folder.Path("cut.ttf") + ": the file is cut",
                          folder.Path("thin.ttf") + ": the glyphs have no width"));
}

TEST(FontCatalog, TheTablesThatAFontHasAreUsedInAnyFile) {
  const FontFile plain = FontFile::Read(kSans);
  FontFile noPost = plain;
  noPost.tables.erase("post");
  FontFile noOs2 = plain;
  noOs2.tables.erase("OS/2");
  FontFile noMean = plain;
  noMean.tables["OS/2"].resize(40);
  const struct {
    const char* why;
    std::string bytes;
    int height, aveCharWidth, strikeout, underscore, weight, pitchAndFamily;
  } rows[] = {
      {"plain", plain.Bytes(), 1901 + 483, 1038, 530, -40, 400, 0x27},
      {"wrapped", plain.Woff(), 1901 + 483, 1038, 530, -40, 400, 0x27},
      {"no post", noPost.Bytes(), 1901 + 483, 1038, 530, 0, 400, 0x27},
      {"no OS/2: the x is as wide as the mean, the style Book as heavy as it says", noOs2.Bytes(),
       1901 + 483, 1212, 1901 / 3, -40, 380, 0x07},
      {"a short OS/2", noMean.Bytes(), 1901 + 483, 1212, 1901 / 3, -40, 400, 0x07},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const FontFolder folder;
    folder.Write("font", row.bytes);
    const FontCatalog catalog;
    ASSERT_EQ(catalog.Fonts().size(), 1u);
    const OUTLINETEXTMETRICA& record = catalog.Fonts()[0].record;
    const TEXTMETRICA& text = record.otmTextMetrics;
    EXPECT_EQ(text.tmHeight, row.height);
    EXPECT_EQ(text.tmInternalLeading, row.height - 2048);
    EXPECT_EQ(text.tmAveCharWidth, row.aveCharWidth);
    EXPECT_EQ(text.tmMaxCharWidth, 3838);
    EXPECT_EQ(text.tmWeight, row.weight);
    EXPECT_EQ(text.tmDigitizedAspectX, 96);
    EXPECT_EQ(text.tmDigitizedAspectY, 96);
    EXPECT_EQ(text.tmPitchAndFamily, row.pitchAndFamily);
    EXPECT_EQ(record.otmsStrikeoutPosition, row.strikeout);
    EXPECT_EQ(record.otmsUnderscorePosition, row.underscore);
    EXPECT_EQ(record.otmusMinimumPPEM, 8u);
  }
}

TEST(FontCatalog, GivesEachFaceOfACollectionAndTheInstancesOfAVariableFont) {
  const FontFolder folder;
  FontFile first = FontFile::Read(kSans);
  FontFile second = first;
  FontFile variable = first;
  first.Rename("DejaVu Sans", "Collected A");
  second.Rename("DejaVu Sans", "Collected B");
  second.Put16("OS/2", 4, 9);  // as old fonts count
  variable.Rename("DejaVu Sans", "Variable AB");
  variable.MakeVariable({{700, 100}, {250, 100}, {400, 50}, {700, 75}});
  folder.Write("collection.ttc", FontFile::Collection({first, second}));
  folder.Write("variable.ttf", variable.Bytes());
  const FontCatalog catalog;
  std::vector<std::string> faces;
  for (const FontEntry& font : catalog.Fonts()) {
    const auto outline = OutlineFont::Open(font.file, font.index);
    ASSERT_NE(outline, nullptr) << font.faceName;
    GLYPHMETRICS metrics;
    EXPECT_TRUE(outline->Measure(outline->GlyphOfByte('A'), metrics));
    const TEXTMETRICA& text = font.record.otmTextMetrics;
    faces.push_back(font.faceName + " " + std::to_string(text.tmWeight) + " " +
                    std::to_string(text.tmAveCharWidth) + " " + std::to_string(metrics.gmCellIncX));
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, font.faceName.c_str());
    description.lfHeight = text.tmHeight;
    description.lfWidth = text.tmAveCharWidth;
    description.lfWeight = text.tmWeight;
    EXPECT_EQ(catalog.Find(description), &font) << "it is told by its width";
  }
  // fontTools 4.38: a mean width of 1038, an A of 1401, 400 less in the narrowest instance.
  EXPECT_THAT(faces, ElementsAre("Collected A 400 1038 1401", "Collected B 900 1038 1401",
                                 "Variable AB 250 1038 1401", "Variable AB 400 1038 1401",
                                 "Variable AB 400 519 1001", "Variable AB 700 1038 1401",
                                 "Variable AB 700 779 1201"));
}

TEST(FontCatalog, FamiliesWhoseNamesBeginAlikeAreToldApart) {
  const FontFolder folder;
  for (const char last : {'A', 'B'}) {
    FontFile font = FontFile::Read(kMono);
    font.SetNames(std::string("A Family of a Name Beyond 31 Bytes ") + last);
    folder.Write(std::string(1, last) + ".ttf", font.Bytes());
  }
  const FontCatalog catalog;
  ASSERT_EQ(catalog.Fonts().size(), 2u);
  for (const FontEntry& font : catalog.Fonts()) {
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, "A Family of a Name Beyond 31 By");
    EXPECT_EQ(catalog.Find(description, font.familyName), &font);
    EXPECT_EQ(catalog.Find(description, "Another"), &catalog.Fonts()[0]) << "the name alone";
  }
}

TEST(FontCatalog, BytesOfASymbolFontArePrivateCharacters) {
  const FontFolder folder;
  FontFile font = FontFile::Read(kSans);
  font.MakeSymbols();
  folder.Write("symbols.ttf", font.Bytes());
  const FontCatalog catalog;
  ASSERT_EQ(catalog.Fonts().size(), 1u);
  EXPECT_EQ(catalog.Fonts()[0].record.otmTextMetrics.tmCharSet, 2);
  const auto outline = OutlineFont::Open(catalog.Fonts()[0].file, 0);
  ASSERT_NE(outline, nullptr);
  EXPECT_EQ(outline->GlyphOfByte(0x21), 100u);
  EXPECT_EQ(outline->GlyphOfByte(0x7E), 100u + 0x7E - 0x21);
  EXPECT_EQ(outline->GlyphOfByte(0x80), 0u);
  TEXTMETRICA metrics{};
  outline->FillCodes(metrics);
  EXPECT_EQ(metrics.tmFirstChar, 0x21);
  EXPECT_EQ(metrics.tmLastChar, 0x7E);
  EXPECT_EQ(metrics.tmDefaultChar, 0x20);
}

TEST(FontCatalog, FindsTheNearestFaceOfAName) {
  const FontCatalog& catalog = FontCatalog::Instance();
  const struct {
    const char* why;
    const char* name;
    int weight;
    bool isItalic;
    const char* file;
  } rows[] = {
      {"as it is", "DejaVu Sans", 400, false, "/DejaVuSans.ttf"},
      {"in any case", "dejavu SANS", 700, false, "/DejaVuSans-Bold.ttf"},
      {"slanted", "Liberation Serif", 400, true, "/LiberationSerif-Italic.ttf"},
      {"nearest weight", "Liberation Serif", 900, true, "/LiberationSerif-BoldItalic.ttf"},
      {"a family of four styles", "DejaVu Sans Condensed", 400, false, "/DejaVuSansCondensed.ttf"},
      {"a weight of 0 is the usual one", "DejaVu Sans", 0, true, "/DejaVuSans-Oblique.ttf"},
      {"no such name", "DejaVu San", 400, false, nullptr},
      {"no name", "", 400, false, nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    LOGFONTA description{};
    std::strcpy(description.lfFaceName, row.name);
    description.lfWeight = row.weight;
    description.lfItalic = row.isItalic;
    const FontEntry* const font = catalog.Find(description);
    ASSERT_EQ(font != nullptr, row.file != nullptr);
    if (font) {
      EXPECT_THAT(font->file, HasSubstr(row.file));
    }
  }
}

TEST(FontCatalog, FaceNamesEndBeforeACharacterThatDoesNotFit) {
  const std::string thirty(30, 'a');
  EXPECT_EQ(FaceNameBytes(thirty + "b"), 31u);
  EXPECT_EQ(FaceNameBytes(thirty + "bc"), 31u);
  EXPECT_EQ(FaceNameBytes(thirty + "\u00E9"), 30u);
  EXPECT_EQ(FaceNameBytes(thirty.substr(2) + "\U0001F600"), 28u);
  EXPECT_EQ(FaceNameBytes(std::string(40, '\x80')), 31u) << "no UTF-8";
}

TEST(FontTables, WeightFamilyAndCharacterSetAreThoseOfTheDigitsOrElseOfTheClass) {
  const struct {
    const char* why;
    unsigned int weight, panose, proportion, isFixed, familyClass, codePages;
    int tmWeight, tmPitchAndFamily, tmCharSet;
  } rows[] = {
      // The digits are kind and serifs.
      {"nothing is told", 0, 0x0000, 0, 0, 0, 0x00000000, 400, 0x07, 0},
      {"text with serifs", 1, 0x0202, 0, 0, 8, 0x00000001, 100, 0x17, 0},
      {"text with the last of the serifs", 9, 0x020A, 0, 0, 8, 0x00000002, 900, 0x17, 238},
      {"text without serifs", 10, 0x020B, 0, 0, 1, 0x00000014, 10, 0x27, 204},
      {"text of one width", 1000, 0x020B, 9, 0, 8, 0x00000008, 1000, 0x36, 161},
      {"text in a file of one width", 1001, 0x0202, 0, 1, 8, 0x00000010, 1000, 0x36, 162},
      {"one width alone", 400, 0x0000, 0, 1, 8, 0x00000020, 400, 0x36, 177},
      {"handwriting", 400, 0x0300, 0, 0, 8, 0x00000040, 400, 0x47, 178},
      {"ornament", 400, 0x0400, 0, 0, 8, 0x00000080, 400, 0x57, 186},
      {"signs", 400, 0x0500, 0, 0, 8, 0x00000100, 400, 0x57, 163},
      {"text of unknown serifs: the class", 400, 0x0201, 0, 0, 8, 0x00010000, 400, 0x27, 222},
      {"class 1, oldstyle serifs", 400, 0x0000, 0, 0, 1, 0x00020000, 400, 0x17, 128},
      {"class 5, slab serifs", 400, 0x0000, 0, 0, 5, 0x00040000, 400, 0x17, 134},
      {"class 6 is none", 400, 0x0000, 0, 0, 6, 0x00080000, 400, 0x07, 129},
      {"class 7, freeform serifs", 400, 0x0000, 0, 0, 7, 0x00100000, 400, 0x17, 136},
      {"class 9, ornamentals", 400, 0x0000, 0, 0, 9, 0x00200000, 400, 0x57, 130},
      {"class 10, scripts", 400, 0x0000, 0, 0, 10, 0x80000000, 400, 0x47, 0},
      {"class 12, symbols", 400, 0x0000, 0, 0, 12, 0x00200002, 400, 0x57, 238},
  };
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("font.ttf");
  FontFile font = FontFile::Read(kSans);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    font.Put16("OS/2", 4, row.weight);
    font.Put16("OS/2", 30, row.familyClass << 8);
    font.Put16("OS/2", 32, row.panose);
    font.Put16("OS/2", 34, row.proportion);  // behind the digit of the weight
    font.Put16("OS/2", 78, row.codePages >> 16);
    font.Put16("OS/2", 80, row.codePages & 0xFFFF);
    font.Put16("post", 14, row.isFixed);
    std::ofstream(path, std::ios::binary) << font.Bytes();
    OUTLINETEXTMETRICA record{};
    std::string problem;
    ASSERT_EQ(ReadFontTables(path, 0, record, problem), FontTables::kGood) << problem;
    EXPECT_EQ(record.otmTextMetrics.tmWeight, row.tmWeight);
    EXPECT_EQ(record.otmTextMetrics.tmPitchAndFamily, row.tmPitchAndFamily);
    EXPECT_EQ(record.otmTextMetrics.tmCharSet, row.tmCharSet);
  }
}

TEST(OutlineFont, NoDamageToTablesIsMoreThanAFaceThatCantBeRead) {
  const FontFile good = FontFile::Read(kMono);
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("font.ttf");
  const unsigned int seed = std::random_device()();
  std::mt19937 random(seed);
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  for (int turn = 0; turn < 150; ++turn) {
    std::string bytes = good.Bytes();
    const std::size_t reach = turn % 2 == 0 ? 400 : bytes.size();  // half of them in the directory
    for (int i = 0; i < 20; ++i) bytes[random() % reach] = static_cast<char>(random());
    if (turn % 5 == 0) bytes.resize(random() % bytes.size());
    std::ofstream(path, std::ios::binary) << bytes;
    OUTLINETEXTMETRICA record{};
    std::string problem;
    if (ReadFontTables(path, 0, record, problem) == FontTables::kGood) {
      EXPECT_EQ(RecordProblem(record), nullptr);
    }
    const auto font = OutlineFont::Open(path, 0);
    if (!font) continue;
    if (font->FillRecord(record)) {
      EXPECT_EQ(RecordProblem(record), nullptr);
    }
    font->FillCodes(record.otmTextMetrics);
    EXPECT_LE(record.otmTextMetrics.tmDefaultChar, record.otmTextMetrics.tmFirstChar);
    for (unsigned int code = 0; code < 256; ++code) {
      GLYPHMETRICS metrics;
      font->Measure(font->GlyphOfByte(static_cast<unsigned char>(code)), metrics);
    }
  }
}

}  // namespace
}  // namespace vlm::platform
