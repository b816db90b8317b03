#include <velum/colour/Color3f.h>
#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>

#include <gtest/gtest.h>

#include <iterator>

namespace vlm {
namespace {

TEST(NamedColors, AreThoseOfCss) {
  struct Row {
    Color4b color;
    unsigned long rgb;
  };
  // The values as Pango 1.50 parses the same keywords (pango_color_parse).
  const Row rows[] = {
      {Color4b::AliceBlue, 0xF0F8FF},
      {Color4b::AntiqueWhite, 0xFAEBD7},
      {Color4b::Aqua, 0x00FFFF},
      {Color4b::Aquamarine, 0x7FFFD4},
      {Color4b::Azure, 0xF0FFFF},
      {Color4b::Beige, 0xF5F5DC},
      {Color4b::Bisque, 0xFFE4C4},
      {Color4b::Black, 0x000000},
      {Color4b::BlanchedAlmond, 0xFFEBCD},
      {Color4b::Blue, 0x0000FF},
      {Color4b::BlueViolet, 0x8A2BE2},
      {Color4b::Brown, 0xA52A2A},
      {Color4b::BurlyWood, 0xDEB887},
      {Color4b::CadetBlue, 0x5F9EA0},
      {Color4b::Chartreuse, 0x7FFF00},
      {Color4b::Chocolate, 0xD2691E},
      {Color4b::Coral, 0xFF7F50},
      {Color4b::CornflowerBlue, 0x6495ED},
      {Color4b::Cornsilk, 0xFFF8DC},
      {Color4b::Crimson, 0xDC143C},
      {Color4b::Cyan, 0x00FFFF},
      {Color4b::DarkBlue, 0x00008B},
      {Color4b::DarkCyan, 0x008B8B},
      {Color4b::DarkGoldenrod, 0xB8860B},
      {Color4b::DarkGray, 0xA9A9A9},
      {Color4b::DarkGreen, 0x006400},
      {Color4b::DarkKhaki, 0xBDB76B},
      {Color4b::DarkMagenta, 0x8B008B},
      {Color4b::DarkOliveGreen, 0x556B2F},
      {Color4b::DarkOrange, 0xFF8C00},
      {Color4b::DarkOrchid, 0x9932CC},
      {Color4b::DarkRed, 0x8B0000},
      {Color4b::DarkSalmon, 0xE9967A},
      {Color4b::DarkSeaGreen, 0x8FBC8F},
      {Color4b::DarkSlateBlue, 0x483D8B},
      {Color4b::DarkSlateGray, 0x2F4F4F},
      {Color4b::DarkTurquoise, 0x00CED1},
      {Color4b::DarkViolet, 0x9400D3},
      {Color4b::DeepPink, 0xFF1493},
      {Color4b::DeepSkyBlue, 0x00BFFF},
      {Color4b::DimGray, 0x696969},
      {Color4b::DodgerBlue, 0x1E90FF},
      {Color4b::Firebrick, 0xB22222},
      {Color4b::FloralWhite, 0xFFFAF0},
      {Color4b::ForestGreen, 0x228B22},
      {Color4b::Fuchsia, 0xFF00FF},
      {Color4b::Gainsboro, 0xDCDCDC},
      {Color4b::GhostWhite, 0xF8F8FF},
      {Color4b::Gold, 0xFFD700},
      {Color4b::Goldenrod, 0xDAA520},
      {Color4b::Gray, 0x808080},
      {Color4b::Green, 0x008000},
      {Color4b::GreenYellow, 0xADFF2F},
      {Color4b::Honeydew, 0xF0FFF0},
      {Color4b::HotPink, 0xFF69B4},
      {Color4b::IndianRed, 0xCD5C5C},
      {Color4b::Indigo, 0x4B0082},
      {Color4b::Ivory, 0xFFFFF0},
      {Color4b::Khaki, 0xF0E68C},
      {Color4b::Lavender, 0xE6E6FA},
      {Color4b::LavenderBlush, 0xFFF0F5},
      {Color4b::LawnGreen, 0x7CFC00},
      {Color4b::LemonChiffon, 0xFFFACD},
      {Color4b::LightBlue, 0xADD8E6},
      {Color4b::LightCoral, 0xF08080},
      {Color4b::LightCyan, 0xE0FFFF},
      {Color4b::LightGoldenrodYellow, 0xFAFAD2},
      {Color4b::LightGray, 0xD3D3D3},
      {Color4b::LightGreen, 0x90EE90},
      {Color4b::LightPink, 0xFFB6C1},
      {Color4b::LightSalmon, 0xFFA07A},
      {Color4b::LightSeaGreen, 0x20B2AA},
      {Color4b::LightSkyBlue, 0x87CEFA},
      {Color4b::LightSlateGray, 0x778899},
      {Color4b::LightSteelBlue, 0xB0C4DE},
      {Color4b::LightYellow, 0xFFFFE0},
      {Color4b::Lime, 0x00FF00},
      {Color4b::LimeGreen, 0x32CD32},
      {Color4b::Linen, 0xFAF0E6},
      {Color4b::Magenta, 0xFF00FF},
      {Color4b::Maroon, 0x800000},
      {Color4b::MediumAquamarine, 0x66CDAA},
      {Color4b::MediumBlue, 0x0000CD},
      {Color4b::MediumOrchid, 0xBA55D3},
      {Color4b::MediumPurple, 0x9370DB},
      {Color4b::MediumSeaGreen, 0x3CB371},
      {Color4b::MediumSlateBlue, 0x7B68EE},
      {Color4b::MediumSpringGreen, 0x00FA9A},
      {Color4b::MediumTurquoise, 0x48D1CC},
      {Color4b::MediumVioletRed, 0xC71585},
      {Color4b::MidnightBlue, 0x191970},
      {Color4b::MintCream, 0xF5FFFA},
      {Color4b::MistyRose, 0xFFE4E1},
      {Color4b::Moccasin, 0xFFE4B5},
      {Color4b::NavajoWhite, 0xFFDEAD},
      {Color4b::Navy, 0x000080},
      {Color4b::OldLace, 0xFDF5E6},
      {Color4b::Olive, 0x808000},
      {Color4b::OliveDrab, 0x6B8E23},
      {Color4b::Orange, 0xFFA500},
      {Color4b::OrangeRed, 0xFF4500},
      {Color4b::Orchid, 0xDA70D6},
      {Color4b::PaleGoldenrod, 0xEEE8AA},
      {Color4b::PaleGreen, 0x98FB98},
      {Color4b::PaleTurquoise, 0xAFEEEE},
      {Color4b::PaleVioletRed, 0xDB7093},
      {Color4b::PapayaWhip, 0xFFEFD5},
      {Color4b::PeachPuff, 0xFFDAB9},
      {Color4b::Peru, 0xCD853F},
      {Color4b::Pink, 0xFFC0CB},
      {Color4b::Plum, 0xDDA0DD},
      {Color4b::PowderBlue, 0xB0E0E6},
      {Color4b::Purple, 0x800080},
      {Color4b::Red, 0xFF0000},
      {Color4b::RosyBrown, 0xBC8F8F},
      {Color4b::RoyalBlue, 0x4169E1},
      {Color4b::SaddleBrown, 0x8B4513},
      {Color4b::Salmon, 0xFA8072},
      {Color4b::SandyBrown, 0xF4A460},
      {Color4b::SeaGreen, 0x2E8B57},
      {Color4b::SeaShell, 0xFFF5EE},
      {Color4b::Sienna, 0xA0522D},
      {Color4b::Silver, 0xC0C0C0},
      {Color4b::SkyBlue, 0x87CEEB},
      {Color4b::SlateBlue, 0x6A5ACD},
      {Color4b::SlateGray, 0x708090},
      {Color4b::Snow, 0xFFFAFA},
      {Color4b::SpringGreen, 0x00FF7F},
      {Color4b::SteelBlue, 0x4682B4},
      {Color4b::Tan, 0xD2B48C},
      {Color4b::Teal, 0x008080},
      {Color4b::Thistle, 0xD8BFD8},
      {Color4b::Tomato, 0xFF6347},
      {Color4b::Turquoise, 0x40E0D0},
      {Color4b::Violet, 0xEE82EE},
      {Color4b::Wheat, 0xF5DEB3},
      {Color4b::White, 0xFFFFFF},
      {Color4b::WhiteSmoke, 0xF5F5F5},
      {Color4b::Yellow, 0xFFFF00},
      {Color4b::YellowGreen, 0x9ACD32},
  };
  EXPECT_EQ(std::size(rows), 140u);
  for (const Row& row : rows) {
    EXPECT_EQ(row.color.GetARGB(), 0xFF000000 | row.rgb) << std::hex << row.rgb;
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
