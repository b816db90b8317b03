#include <velum/colour/Color3f.h>
#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/test/reference/CssColors.h>

#include <gtest/gtest.h>

#include <iterator>

namespace vlm {
namespace {

TEST(NamedColors, AreThoseOfCss) {
  EXPECT_EQ(std::size(test::kCssColors), 140u);
  for (const test::CssColor& row : test::kCssColors) {
    EXPECT_EQ(row.color.GetARGB(), 0xFF000000 | row.rgb) << row.name;
  }
}

TEST(NamedColors, HoldThreeMore) {
  EXPECT_EQ(Color4b::Dkgray, Color4b(64, 64, 64, 255));
  EXPECT_EQ(Color4b::Ltgray, Color4b(191, 191, 191, 255));
  EXPECT_EQ(Color4b::TransparentWhite, Color4b(255, 255, 255, 0));
  EXPECT_NE(Color4b::TransparentWhite, Color4b::White);
}

TEST(NamedColors, DifferBetweenBytesAndFloats) {
  EXPECT_EQ(Color4b::Green, Color4b(0, 128, 0, 255));
  EXPECT_EQ(Color4f::Green, Color4f(0, 1, 0, 1));
}

TEST(NamedColors, OfFloatsAreTwelve) {
  struct Row {
    Color3f three;
    Color4f four;
    Color3f expected;
  };
  const Row rows[] = {
      {Color3f::Black, Color4f::Black, Color3f(0, 0, 0)},
      {Color3f::Blue, Color4f::Blue, Color3f(0, 0, 1)},
      {Color3f::Cyan, Color4f::Cyan, Color3f(0, 1, 1)},
      {Color3f::Dkgray, Color4f::Dkgray, Color3f(0.25f, 0.25f, 0.25f)},
      {Color3f::Gray, Color4f::Gray, Color3f(0.5f, 0.5f, 0.5f)},
      {Color3f::Green, Color4f::Green, Color3f(0, 1, 0)},
      {Color3f::Ltgray, Color4f::Ltgray, Color3f(0.75f, 0.75f, 0.75f)},
      {Color3f::Magenta, Color4f::Magenta, Color3f(1, 0, 1)},
      {Color3f::Orange, Color4f::Orange, Color3f(1, 0.65f, 0)},
      {Color3f::Red, Color4f::Red, Color3f(1, 0, 0)},
      {Color3f::White, Color4f::White, Color3f(1, 1, 1)},
      {Color3f::Yellow, Color4f::Yellow, Color3f(1, 1, 0)},
  };
  for (const Row& row : rows) {
    const Color3f& c = row.expected;
    EXPECT_EQ(row.three, c) << c.GetRGB();
    EXPECT_EQ(row.four, Color4f(c.R, c.G, c.B, 1)) << c.GetRGB();
  }
}

}  // namespace
}  // namespace vlm
