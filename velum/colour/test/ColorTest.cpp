#include <velum/colour/Color3f.h>
#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/ColorConvert.h>
#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace vlm {
namespace {

TEST(ColorWords, HaveTheirBytesInOrder) {
  Color4b color(0x11, 0x22, 0x33, 0x44);
  EXPECT_EQ(color.GetARGB(), 0x44112233u);
  EXPECT_EQ(color.GetRGBA(), 0x11223344u);
  EXPECT_EQ(color.GetCOLORREF(), 0x00332211u);
  const Color4f same = color;
  EXPECT_EQ(same.GetARGB(), 0x44112233u);
  EXPECT_EQ(same.GetRGBA(), 0x11223344u);
  EXPECT_EQ(same.GetABGR(), 0x44332211u);
  EXPECT_EQ(same.GetCOLORREF(), 0x00332211u);
  EXPECT_EQ(same.GetRGB(), 0x00112233u);
  EXPECT_EQ(Color3f(0x00332211).GetRGB(), 0x00112233u);
  color.SetARGB(0xFFFFFFFFA1B2C3D4);
  EXPECT_EQ(color, Color4b(0xB2, 0xC3, 0xD4, 0xA1)) << "a word has 32 bits";
  color.SetRGBA(0xA1B2C3D4);
  EXPECT_EQ(color, Color4b(0xA1, 0xB2, 0xC3, 0xD4));
}

TEST(ColorWords, RoundWhereByteColoursTruncate) {
  const Color4f almost(0.999f, 0.999f, 0.999f, 0.999f);
  EXPECT_EQ(almost.GetARGB(), 0xFFFFFFFFu);
  EXPECT_EQ(Color4b(almost), Color4b(254, 254, 254, 254));
  EXPECT_EQ(Color4b(Color4f(1, 1, 1, 1)), Color4b(255, 255, 255, 255));
  EXPECT_EQ(Color4b::ToBYTE(0.999), 254);
}

TEST(ColorWords, KeepTheLowByteOfWhatIsOutside) {
  EXPECT_EQ(Color3f(1.5f, -0.5f, NAN).GetRGB(), 0x007F8100u) << "383, -127 and nothing";
  EXPECT_EQ(Color4b::ToBYTE(2), 0xFE);
  EXPECT_EQ(Color4b::ToBYTE(-0.5), 0x81);
  EXPECT_EQ(Color4b::ToBYTE(1e300), 0);
  EXPECT_EQ(Color4b::ToBYTE(NAN), 0);
}

TEST(Color4b, ComesBackFromFloats) {
  for (int i = 0; i < 256; ++i) {
    const auto byte = static_cast<unsigned char>(i);
    const Color4b color(byte, 0, 255, byte);
    EXPECT_EQ(Color4b(Color4f(color)), color) << i;
    EXPECT_EQ(Color4f(color.GetCOLORREF(), 0).GetCOLORREF(), color.GetCOLORREF()) << i;
  }
  EXPECT_EQ(Color3f(0x00010101).R, 0.003921568859368563f) << "times the float nearest to 1/255";
}

TEST(FloatColors, CalculateWithoutAlpha) {
  EXPECT_EQ(Color3f::Red + Color3f::Blue, Color3f::Magenta);
  EXPECT_EQ(Color3f::White - Color3f::Green, Color3f::Magenta);
  EXPECT_EQ(Color3f(0.3f, 0.6f, 0.9f) * 2, Color3f(0.6f, 1.2f, 1.8f));
  EXPECT_EQ((Color3f(0.1f, 0, 1) / 3).R, 0.1f * (1 / 3.0f)) << "by way of the reciprocal";
  Color4f color(0.25f, 0.5f, 1, 0.5f);
  EXPECT_EQ(color + Color4f::White, Color4f(1.25f, 1.5f, 2, 0.5f)) << "the left one's alpha";
  EXPECT_EQ(Color4f::White - color, Color4f(0.75f, 0.5f, 0, 1));
  (color *= 4) /= 2;
  EXPECT_EQ(color, Color4f(0.5f, 1, 2, 0.5f));
  EXPECT_NE(color, Color4f(0.5f, 1, 2, 1)) << "alpha counts";
}

TEST(FloatColors, ClampEachChannel) {
  Color4f color(-1, 2, 0.5f, 3);
  color.Clamp();
  EXPECT_EQ(color, Color4f(0, 1, 0.5f, 1));
  Color3f three(1.5f, -0.5f, 1);
  three.Clamp();
  EXPECT_EQ(three, Color3f(1, 0, 1));
}

TEST(Intensity, WeighsTheChannels) {
  EXPECT_EQ(Color3f(1, 0, 0).Intensity(), 0.3);
  EXPECT_EQ(Color3f(0, 1, 0).Intensity(), 0.59);
  EXPECT_EQ(Color3f(0, 0, 1).Intensity(), 0.11);
  EXPECT_EQ(Color4f(0, 1, 0, 0.5f).Intensity(), 0.295);
  EXPECT_DOUBLE_EQ(Color4b::White.Intensity(), 1);
  EXPECT_DOUBLE_EQ(Color4b(0, 255, 0, 51).Intensity(), 0.59 / 5);
}

struct HslRow {
  const char* why;
  Color4b color;
  double h;
  double s;
  double l;
};

// Python 3.11, colorsys.rgb_to_hls of the bytes over 255.
const HslRow kHslRows[] = {
    {"red", Color4b::Red, 0, 1, 0.5},
    {"yellow", Color4b::Yellow, 1 / 6.0, 1, 0.5},
    {"lime", Color4b::Lime, 1 / 3.0, 1, 0.5},
    {"cyan", Color4b::Cyan, 0.5, 1, 0.5},
    {"blue", Color4b::Blue, 2 / 3.0, 1, 0.5},
    {"magenta, red is not below blue", Color4b::Magenta, 5 / 6.0, 1, 0.5},
    {"dark", Color4b::Chocolate, 0.06944444444444445, 0.75, 0.47058823529411764},
    {"light", Color4b::Thistle, 0.8333333333333334, 0.2427184466019418, 0.7980392156862746},
    {"gray", Color4b::Gray, 0, 0, 0.5019607843137255},
    {"black", Color4b::Black, 0, 0, 0},
    {"white", Color4b::White, 0, 0, 1},
};

TEST(Hsl, IsFoundFromEveryForm) {
  for (const HslRow& row : kHslRows) {
    SCOPED_TRACE(row.why);
    double h = -1;
    double s = -1;
    double l = -1;
    row.color.GetHSL(h, s, l);
    EXPECT_DOUBLE_EQ(h, row.h);
    EXPECT_DOUBLE_EQ(s, row.s);
    EXPECT_DOUBLE_EQ(l, row.l);
    RGBtoHSL(row.color.GetCOLORREF(), h, s, l);
    EXPECT_DOUBLE_EQ(h, row.h);
    EXPECT_DOUBLE_EQ(s, row.s);
    EXPECT_DOUBLE_EQ(l, row.l);
    Color4f(row.color).GetHSL(h, s, l);
    EXPECT_NEAR(h, row.h, 1e-6) << "float channels";
    EXPECT_NEAR(s, row.s, 1e-6);
    EXPECT_NEAR(l, row.l, 1e-6);
  }
}

TEST(Hsl, ChannelsThatDifferByLessThanTheirPrecisionHaveNoHue) {
  double h = -1;
  double s = -1;
  double l = -1;
  Color3f(0x1p-52f, 0, 0).GetHSL(h, s, l);
  EXPECT_EQ(s, 1);
  Color3f(0x1p-53f, 0, 0).GetHSL(h, s, l);
  EXPECT_EQ(h, 0);
  EXPECT_EQ(s, 0);
}

TEST(Hsl, MakesTheColourAgain) {
  for (const HslRow& row : kHslRows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(HSLtoRGB(row.h, row.s, row.l), row.color.GetCOLORREF());
    Color4f four(0, 0, 0, 0.5f);
    four.SetHSL(row.h, row.s, row.l);
    EXPECT_EQ(four.GetCOLORREF(), row.color.GetCOLORREF());
    EXPECT_EQ(four.A, 0.5f) << "stays";
    four.SetHSL(row.h, row.s, row.l, 0.25);
    EXPECT_EQ(four.A, 0.25f);
  }
  Color4b truncated;
  truncated.SetHSL(0.5, 0, 0.999, 0.999);
  EXPECT_EQ(truncated, Color4b(254, 254, 254, 254));
  EXPECT_EQ(HSLtoRGB(0.5, 0, 0.999), 0x00FFFFFFu) << "rounded";
  Color3f gray;
  gray.SetHSL(0.7, 0, 0.3);
  EXPECT_EQ(gray, Color3f(0.3f, 0.3f, 0.3f)) << "no saturation, whatever the hue";
  EXPECT_EQ(HSLtoRGB(1, 1, 0.5), HSLtoRGB(0, 1, 0.5)) << "hue 1 is red again";
}

TEST(PaletteCopies, CarryAlphaOnDemand) {
  const RGBQUAD quads[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
  Color4b colors[] = {Color4b(), Color4b(), Color4b(9, 9, 9, 9)};
  CopyRGBQUADToColor4b(colors, quads, 2, false);
  EXPECT_EQ(colors[0], Color4b(3, 2, 1, 255));
  EXPECT_EQ(colors[1], Color4b(7, 6, 5, 255));
  CopyRGBQUADToColor4b(colors, quads, 2, true);
  EXPECT_EQ(colors[1], Color4b(7, 6, 5, 8));
  EXPECT_EQ(colors[2], Color4b(9, 9, 9, 9)) << "no more than two";

  RGBQUAD back[2] = {};
  CopyColor4bToRGBQUAD(back, colors, 2, true);
  EXPECT_EQ(std::memcmp(back, quads, sizeof back), 0);
  CopyColor4bToRGBQUAD(back, colors, 1, false);
  EXPECT_EQ(back[0].rgbReserved, 0);
  EXPECT_EQ(back[1].rgbReserved, 8);
  CopyColor4bToRGBQUAD(back, colors, -1, false);
  CopyRGBQUADToColor4b(colors, back, 0, false);
  EXPECT_EQ(colors[0], Color4b(3, 2, 1, 4)) << "nothing is copied";
}

TEST(PaletteCopies, RefuseNullPointers) {
  RGBQUAD quad{};
  Color4b color;
  const auto expectInternalError = [](auto call) {
    try {
      call();
      ADD_FAILURE() << "nothing thrown";
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
      EXPECT_EQ(error.GetSrcFile(), "Color4b");
    }
  };
  expectInternalError([&] { CopyRGBQUADToColor4b(nullptr, &quad, 1, true); });
  expectInternalError([&] { CopyRGBQUADToColor4b(&color, nullptr, 1, true); });
  expectInternalError([&] { CopyColor4bToRGBQUAD(nullptr, &color, 1, true); });
  expectInternalError([&] { CopyColor4bToRGBQUAD(&quad, nullptr, 1, true); });
}

}  // namespace
}  // namespace vlm
