// Code as a user writes it, outside the library's namespace, with plain literals.

#include <velum/colour/Color3f.h>
#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/ColorConvert.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace vlm;

namespace {

// Static objects of a program may be built from the library's constants.
constinit Color4b thePaper = Color4b::Ivory;
constexpr Color4f kInk = Color4b::Navy;

TEST(ColourUserCode, BuildsByteColoursFromLiterals) {
  EXPECT_EQ(Color4b(0x00FF0000, 255), Color4b::Blue);
  EXPECT_EQ(Color4b(0x00FF0000UL, 255), Color4b::Blue);
  EXPECT_EQ(Color4b(0, 255), Color4b::Black);
  EXPECT_EQ(Color4b(128, 255), Color4b(128, 0, 0, 255)) << "a literal is a word";
  const unsigned char gray = 128;
  EXPECT_EQ(Color4b(gray, 255), Color4b(128, 128, 128, 255));
  EXPECT_EQ(Color4b(0xAB030201UL, 4), Color4b(1, 2, 3, 4)) << "the high byte is ignored";
  EXPECT_EQ(Color4b(RGBQUAD{3, 2, 1, 9}, 4), Color4b(1, 2, 3, 4));
  const unsigned char bytes[] = {1, 2, 3, 4};
  EXPECT_EQ(Color4b(bytes), Color4b(1, 2, 3, 4));
  static_assert(!std::is_constructible_v<Color4b, int>, "a word needs an alpha");

  Color4b color;
  color.Set(0, 255);
  EXPECT_EQ(color, Color4b::Black);
  color.Set(gray, 7);
  EXPECT_EQ(color, Color4b(128, 128, 128, 7));
  color.Set(bytes);
  EXPECT_EQ(color, Color4b(1, 2, 3, 4));
  color.Set(9, 8, 7, 6);
  EXPECT_EQ(color, Color4b(9, 8, 7, 6));
}

TEST(ColourUserCode, BuildsFloatColoursFromLiterals) {
  EXPECT_EQ(Color3f(0), Color3f::Black);
  EXPECT_EQ(Color3f(0x000000FF), Color3f::Red);
  EXPECT_EQ(Color4f(0, 1.0f), Color4f::Black);
  EXPECT_EQ(Color4f(0x00FF0000, 0.5f), Color4f(0, 0, 1, 0.5f));
  const float channels[] = {0.25f, 0.5f, 0.75f, 1};
  EXPECT_EQ(Color3f(channels), Color3f(0.25f, 0.5f, 0.75f));
  EXPECT_EQ(Color4f(channels), Color4f(0.25f, 0.5f, 0.75f, 1));
  static_assert(!std::is_constructible_v<Color3f, float>, "a channel is no word");
  static_assert(!std::is_constructible_v<Color4f, Color3f>, "three channels are not four");
  static_assert(!std::is_convertible_v<Color4f, Color4b>, "what rounds is explicit");

  Color3f three;
  three.Set(0x00FF0000);
  EXPECT_EQ(three, Color3f::Blue);
  three.Set(0);
  three.Set(channels);
  EXPECT_EQ(three, Color3f(0.25f, 0.5f, 0.75f));
  Color4f four;
  four.Set(0x000000FF, 1);
  EXPECT_EQ(four, Color4f::Red);
  four.Set(Color4b(0, 51, 255, 51));
  EXPECT_EQ(four, Color4f(0, 0.2f, 1, 0.2f));
}

TEST(ColourUserCode, HandsColoursOverAsArrays) {
  Color4b color(1, 2, 3, 4);
  unsigned char* bytes = color;
  bytes[3] = 9;
  EXPECT_EQ(color.A, 9);
  EXPECT_EQ(color[2], 3);
  const float* channels = kInk;
  EXPECT_EQ(channels[2], kInk.B);
  EXPECT_EQ(channels[3], 1);
}

TEST(ColourUserCode, BuildsStaticObjectsFromTheConstants) {
  EXPECT_EQ(thePaper.GetARGB(), 0xFFFFFFF0);
  EXPECT_EQ(kInk, Color4f(0, 0, 128 / 255.0f, 1));
}

TEST(ColourUserCode, NamesTheMethodsByAnyClass) {
  const Color4b middle =
      Color4b::Interp(Color4b::Black, Color4b::White, 0.5, Color4b::InterpMethod::Linear);
  EXPECT_EQ(middle.GetCOLORREF(), InterpColor(0, 0x00FFFFFF, 0.5, Color3f::Linear));
}

}  // namespace
