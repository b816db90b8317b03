#include <velum/colour/Color4b.h>
#include <velum/colour/ColorTable.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace vlm {
namespace {

TEST(ColorTable, HoldsTheNamedColours) {
  const CColorTable& table = CColorTable::Instance();
  ASSERT_GT(table.size(), 140u);
  EXPECT_FALSE(table.empty());
  EXPECT_EQ(table.end() - table.begin(), static_cast<std::ptrdiff_t>(table.size()));
  EXPECT_EQ(&*table.rbegin(), &table[table.size() - 1]);
  EXPECT_EQ(table.rend() - table.rbegin(), table.end() - table.begin());
  EXPECT_STREQ(table[0].Name().c_str(), "AliceBlue");
  EXPECT_STREQ(table[139].Name().c_str(), "YellowGreen");
  // The 140 keywords are checked one by one where the file is read.
  const struct {
    const char* name;
    Color4b color;
  } rows[] = {{"Green", Color4b::Green},
              {"DARKslateGRAY", Color4b::DarkSlateGray},
              {"darkslategrey", Color4b::DarkSlateGray},
              {"gray 50%", Color4b::Gray},
              {"ltgray", Color4b::Ltgray}};
  for (const auto& row : rows) {
    unsigned int index = 0;
    ASSERT_TRUE(table.IndexFromColor(row.name, index)) << row.name;
    EXPECT_EQ(table[index].Color(), row.color.GetCOLORREF()) << row.name;
  }
}

TEST(ColorTable, FindsTheFirstOfAColour) {
  const CColorTable& table = CColorTable::GetInstance();
  unsigned int index = 0;
  ASSERT_TRUE(table.IndexFromColor(Color4b::Cyan.GetCOLORREF(), index));
  EXPECT_STREQ(table[index].Name().c_str(), "Aqua");
  ASSERT_TRUE(table.IndexFromColor(Color4b::Gray.GetCOLORREF(), index));
  EXPECT_STREQ(table[index].Name().c_str(), "Gray") << "an English one comes later";
  EXPECT_TRUE(table.IndexFromColor(0x100000000UL | Color4b::Red.GetCOLORREF(), index));
  EXPECT_STREQ(table[index].Name().c_str(), "Red") << "words have 32 bits";
  index = 7;
  EXPECT_FALSE(table.IndexFromColor(0xFF000000, index)) << "the whole word counts";
  EXPECT_FALSE(table.IndexFromColor("Gree", index));
  EXPECT_FALSE(table.IndexFromColor("", index));
  EXPECT_EQ(index, 7u);
}

}  // namespace
}  // namespace vlm
