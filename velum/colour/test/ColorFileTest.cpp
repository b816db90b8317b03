#include <velum/colour/Color4b.h>
#include <velum/colour/detail/ColorFile.h>
#include <velum/colour/test/reference/CssColors.h>
#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace vlm::detail {
namespace {

std::vector<CColorTableEntry> ColorsOf(const std::string& text) {
  const vlm::testing::TemporaryFolder folder;
  const std::string path = folder.Path("Colors.ini");
  std::ofstream(path) << text;
  return ReadColorFile(path);
}

TEST(ColorFile, EachLineIsANameAndThreeNumbers) {
  const struct {
    const char* why;
    const char* line;
    const char* name;
    unsigned long color;
  } rows[] = {
      {"plain", "a=1 2 3", "a", 0x030201},
      {"blanks around", "  Pale  Sky =\t 10   20\t30  ", "Pale  Sky", 0x1E140A},
      {"the low byte of larger ones", "a=256 511 1000", "a", 0xE8FF00},
      {"many digits", "a=4294967297 1 99999999999999999999", "a", 0xFF0101},
      {"signs", "a=-1 +2 0", "a", 0x0002FF},
      {"missing numbers", "a=7", "a", 0x000007},
      {"what is no number ends the line", "a=1 x 3", "a", 0x000001},
      {"so does a comma", "a=1,2,3", "a", 0x000001},
      {"no number", "a=red", "a", 0},
      {"another sign of equality", "a==1 2 3", "a", 0},
      {"more numbers", "a=1 2 3 4", "a", 0x030201},
      {"no line: nothing behind the sign", "a=", nullptr, 0},
      {"no line: no sign", "a 1 2 3", nullptr, 0},
      {"no line: a comment", "; a=1 2 3", nullptr, 0},
  };
  for (const auto& row : rows) {
    const auto colors =
        ColorsOf(std::string("[other]\nz=1 1 1\n[COLORS]\n") + row.line + "\n[end]\ny=1 1 1\n");
    ASSERT_EQ(colors.size(), row.name ? 1u : 0u) << row.why;
    if (!row.name) continue;
    EXPECT_STREQ(colors[0].Name().c_str(), row.name) << row.why;
    EXPECT_EQ(colors[0].Color(), row.color) << row.why;
  }
  EXPECT_TRUE(ColorsOf("[Colors]\n").empty());
  EXPECT_TRUE(ColorsOf("").empty());
  const auto ordered = ColorsOf("[Colors]\nb=1\na=2\nb=3\n");
  ASSERT_EQ(ordered.size(), 3u) << "also a name that stands twice";
  EXPECT_EQ(ordered[2].Color(), 3u);
}

TEST(ColorFile, OneThatCantBeReadIsToldByItsName) {
  const vlm::testing::TemporaryFolder folder;
  for (const std::string& name : {std::string("NoSuchColors.ini"), folder.Path()}) {
    try {
      static_cast<void>(ReadColorFile(name));
      ADD_FAILURE() << name;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_FIND) << name;
      EXPECT_STREQ(error.GetSrcFile().c_str(), "ColorTable") << name;
      EXPECT_NE(error.GetDescription().find(name.c_str()), GString::npos) << name;
    }
  }
}

// What this tree ships, held against the constants.
TEST(ColorFile, OursHoldsEachNamedColour) {
  std::map<std::string, unsigned long> found;
  for (const CColorTableEntry& entry : ReadColorFile(VELUM_COLORS_INI)) {
    EXPECT_TRUE(found.emplace(entry.Name().c_str(), entry.Color()).second) << entry.Name().c_str();
  }
  for (const test::CssColor& row : test::kCssColors) {
    EXPECT_EQ(found[row.name], row.color.GetCOLORREF()) << row.name;
  }
  EXPECT_EQ(found["Dkgray"], Color4b::Dkgray.GetCOLORREF());
  EXPECT_EQ(found["Ltgray"], Color4b::Ltgray.GetCOLORREF());
}

}  // namespace
}  // namespace vlm::detail
