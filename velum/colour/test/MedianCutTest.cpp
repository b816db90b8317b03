#include <velum/colour/MedianCut.h>
#include <velum/colour/test/reference/PlainMedianCut.h>
#include <velum/core/Exception.h>
#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace vlm {

bool operator==(const ColorCount& a, const ColorCount& b) {
  return a.GetColor() == b.GetColor() && a.GetCount() == b.GetCount();
}
bool operator==(const RGBQUAD& a, const RGBQUAD& b) {
  return a.rgbBlue == b.rgbBlue && a.rgbGreen == b.rgbGreen && a.rgbRed == b.rgbRed &&
         a.rgbReserved == b.rgbReserved;
}

namespace {

using Colors = std::vector<ColorCount>;
using Palette = std::vector<RGBQUAD>;

RGBQUAD Quad(unsigned long color) {
  RGBQUAD quad{};
  ColorCount(color, 0).GetColor(quad);
  return quad;
}

Palette Cut(Colors colors, unsigned most) {
  Palette palette = {Quad(1)};
  MedianCut(colors, palette, most);
  return palette;
}

TEST(ColorCount, ReachesItsChannelsAndItsNumber) {
  ColorCount color(0x00102030, 5);
  EXPECT_EQ(color.GetRed(), 0x30);
  EXPECT_EQ(color.GetGreen(), 0x20);
  EXPECT_EQ(color.GetBlue(), 0x10);
  color.SetRed(1);
  color.SetGreen(2);
  color.SetBlue(3);
  EXPECT_EQ(color.GetColor(), 0x00030201u);
  RGBQUAD quad{7, 8, 9, 10};
  color.SetColor(quad);
  EXPECT_EQ(color.GetColor(), 0x00070809u) << "red in the low byte";
  color.GetColor(quad);
  EXPECT_EQ(quad, (RGBQUAD{7, 8, 9, 0}));
  color.SetColor(1, 2, 3);
  color.IncrementCount();
  color.IncrementCount();
  color.DecrementCount();
  EXPECT_EQ(color, ColorCount(0x00030201, 6));
  EXPECT_EQ(ColorCount(), ColorCount(0, 0));
}

TEST(MedianCut, CutsWhereHalfOfThePixelsLie) {
  const struct {
    const char* why;
    Colors colors;
    unsigned most;
    Palette palette;
  } rows[] = {
      {"one is the mean", {{0x000000, 1}, {0xFFFFFF, 3}}, 1, {Quad(0xBFBFBF)}},
      {"none acts as one", {{0x000000, 1}, {0xFFFFFF, 3}}, 0, {Quad(0xBFBFBF)}},
      {"two colours, few pixels in the lower one",
       {{0x10, 1}, {0x20, 999}},
       2,
       {Quad(0x10), Quad(0x20)}},
      {"and in the upper one", {{0x10, 999}, {0x20, 1}}, 2, {Quad(0x10), Quad(0x20)}},
      {"fewer colours than asked", {{3, 1}, {1, 1}, {2, 1}}, 7, {Quad(1), Quad(2), Quad(3)}},
      {"blue before red among equals",
       {{0x0000FF, 1}, {0xFF0000, 1}},
       2,
       {Quad(0x0000FF), Quad(0xFF0000)}},
      {"green before red", {{0x0000FF, 1}, {0x00FF00, 1}}, 2, {Quad(0x0000FF), Quad(0x00FF00)}},
      {"blue before green", {{0x00FF00, 1}, {0xFF0000, 1}}, 2, {Quad(0x00FF00), Quad(0xFF0000)}},
      {"the second cut goes to the first box of more than one colour",
       {{0, 4}, {0x80, 1}, {0xA0, 1}, {0xF0, 2}},
       3,
       {Quad(0), Quad(0x90), Quad(0xF0)}},
      {"no pixels, no part", {{0x00, 0}, {0x40, 2}, {0xFF, 0}}, 2, {Quad(0x40)}},
      {"no pixels at all", {{0x00, 0}, {0x40, 0}}, 2, {}},
      {"no colours", {}, 2, {}},
      {"the mean adds up in the order given: the ones get lost beside 2^24",
       {{1, 1 << 24}, {1, 1}, {1, 1}},
       1,
       {Quad(0)}},
      {"the ones come first", {{1, 1}, {1, 1}, {1, 1 << 24}}, 1, {Quad(1)}},
      {"counts beyond 32 bits together",
       {{0x10, 0xFFFFFFFF}, {0x20, 0xFFFFFFFF}, {0x30, 0xFFFFFFFF}},
       2,
       {Quad(0x18), Quad(0x30)}},
      {"the same colour again", {{7, 1}, {7, 2}, {7, 3}}, 2, {Quad(7), Quad(7)}},
  };
  for (const auto& row : rows) EXPECT_EQ(Cut(row.colors, row.most), row.palette) << row.why;
}

TEST(MedianCut, DoesWhatThePlainOneDoesInAnyOrderOfTheColours) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int round = 0; round < 60; ++round) {
    // Few values make many ties; large rounds are sorted in another way.
    const unsigned long mask = round % 3 == 0 ? 0x070707 : round % 3 == 1 ? 0xFFFFFF : 0xFF00FFFF;
    Colors colors(1 + random() % (round % 2 ? 60 : 4000));
    for (ColorCount& color : colors)
      color = ColorCount(random() & mask, static_cast<unsigned>(1 + random() % 9));
    const auto most = static_cast<unsigned>(2 + random() % 255);
    Colors expectedColors = colors;
    Palette expected;
    test::PlainMedianCut(expectedColors, expected, most);
    Palette palette;
    Colors inOrder = colors;
    MedianCut(inOrder, palette, most);
    ASSERT_EQ(palette, expected) << "round " << round << ", seed " << seed;
    std::shuffle(colors.begin(), colors.end(), random);
    MedianCut(colors, palette, most);
    ASSERT_EQ(palette, expected) << "shuffled, round " << round << ", seed " << seed;
    ASSERT_EQ(colors, inOrder) << "round " << round << ", seed " << seed;
  }
}

TEST(MedianCut, OneColourLeavesTheOrder) {
  Colors colors = {{3, 1}, {9, 0}, {1, 1}};
  const Colors before = colors;
  Palette palette;
  for (const unsigned most : {0u, 1u}) {
    MedianCut(colors, palette, most);
    EXPECT_EQ(palette, Palette{Quad(2)});
    EXPECT_EQ(colors, before);
  }
}

TEST(MedianCut, MoreThan256ColoursAreNotGiven) {
  Colors colors;
  for (unsigned i = 0; i < 300; ++i) colors.emplace_back(i * 17, 1);
  EXPECT_EQ(Cut(colors, 300).size(), 256u);
  colors.front().SetCount(0);
  Palette palette;
  MedianCut(colors, palette, 300);
  EXPECT_EQ(palette.size(), 256u);
  EXPECT_EQ(colors.back(), ColorCount(0, 0)) << "without pixels, last";
}

TEST(MedianCut, WithoutMemoryTheColoursStay) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  Colors colors = {{3, 1}, {1, 1}, {2, 1}};
  const Colors before = colors;
  for (std::size_t succeeding = 0; succeeding < 4; ++succeeding) {
    Palette palette = {Quad(1)};
    int code = 0;
    GString source;
    try {
      const testing::FailingAllocations none(succeeding, 1);
      MedianCut(colors, palette, 3);
    } catch (const Exception& error) {
      code = error.GetErrCode();
      source = error.GetSrcFile();
    }
    EXPECT_EQ(code, ERR_OUT_OF_MEMORY) << succeeding;
    EXPECT_STREQ(source.c_str(), "MedianCut");
    EXPECT_EQ(colors, before) << succeeding;
    EXPECT_TRUE(palette.empty()) << succeeding;
    if (palette.capacity() > 1) break;
  }
}

}  // namespace
}  // namespace vlm
