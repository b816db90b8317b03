#include <velum/colour/Color3f.h>
#include <velum/colour/Color4b.h>
#include <velum/colour/Color4f.h>
#include <velum/colour/ColorConvert.h>

#include <gtest/gtest.h>

#include <cmath>

namespace vlm {
namespace {

using Method = ColorInterpolation::InterpMethod;

// What holds outside 0 to 1, and for equal colours, is the same for all classes.
template <class Color>
void CheckEnds(const Color& a, const Color& b) {
  for (unsigned number = 0; number < 12; ++number) {
    SCOPED_TRACE(number);
    const auto method = static_cast<Method>(number);
    const bool reversed = number == 1;
    EXPECT_EQ(Color::Interp(a, b, 0, method), reversed ? b : a);
    EXPECT_EQ(Color::Interp(a, b, -INFINITY, method), reversed ? b : a);
    EXPECT_EQ(Color::Interp(a, b, 1, method), reversed ? a : b);
    EXPECT_EQ(Color::Interp(a, b, 7, method), reversed ? a : b);
    EXPECT_EQ(Color::Interp(a, a, 0.3, method), a) << "not even rounded";
    Color stored;
    stored.Interpolate(a, b, 0.3, method);
    EXPECT_EQ(stored, Color::Interp(a, b, 0.3, method));
  }
  EXPECT_EQ(Color::Interp(a, b, 0.3, Method::First), a);
  EXPECT_EQ(Color::Interp(a, b, 1e-9, Method::Last), b);
  EXPECT_EQ(Color::Interp(a, b, 0.3, static_cast<Method>(10)), a);
  EXPECT_EQ(Color::Interp(a, b, 0.3, Method::LinearReversed),
            Color::Interp(b, a, 0.3, Method::Linear));
}

TEST(Interp, AgreesAtTheEnds) {
  CheckEnds(Color3f(0.1f, 0.2f, 0.3f), Color3f(0.9f, 0.1f, 0.4f));
  CheckEnds(Color4f(0.1f, 0.2f, 0.3f, 0.4f), Color4f(0.9f, 0.1f, 0.4f, 1));
  CheckEnds(Color4b(1, 20, 30, 40), Color4b(200, 10, 40, 255));
}

TEST(Interp, BlendsEachChannel) {
  const double t = 0.3;
  const double eased = (1 - std::cos(t * 3.141592653589793)) * 0.5;
  const Color4f a(0.1f, 0.2f, 0.3f, 0.4f);
  const Color4f b(0.9f, 0.1f, 0.4f, 1);
  const auto blend = [&](double u) {
    const auto channel = [u](float x, float y) { return static_cast<float>(x * (1 - u) + y * u); };
    return Color4f(channel(a.R, b.R), channel(a.G, b.G), channel(a.B, b.B), channel(a.A, b.A));
  };
  EXPECT_EQ(Color4f::Interp(a, b, t, Method::Linear), blend(t));
  EXPECT_EQ(Color4f::Interp(a, b, t, Method::Cosine), blend(eased));
  EXPECT_EQ(Color4f::Interp(Color4f::Black, Color4f(1, 0.5f, 0, 0), t, Method::Mean),
            Color4f(0.5f, 0.25f, 0, 0.5f));
  EXPECT_EQ(Color3f::Interp(Color3f::Black, Color3f::Orange, 0.5, Method::Linear),
            Color3f(0.5f, 0.325f, 0));
}

TEST(Interp, RoundsBytesHalfUp) {
  const Color4b a(0, 255, 10, 0);
  const Color4b b(255, 0, 13, 1);
  EXPECT_EQ(Color4b::Interp(a, b, 0.5, Method::Linear), Color4b(128, 128, 12, 1));
  EXPECT_EQ(Color4b::Interp(a, b, 0.25, Method::Linear), Color4b(64, 191, 11, 0));
  EXPECT_EQ(Color4b::Interp(a, b, 0.25, Method::LinearReversed), Color4b(191, 64, 12, 1));
  EXPECT_EQ(Color4b::Interp(a, b, 0.25, Method::Cosine), Color4b(37, 218, 10, 0));
  EXPECT_EQ(Color4b::Interp(a, b, 0.9, Method::Mean), Color4b(128, 128, 12, 1));
}

TEST(Interp, GoesRoundTheCircleOfHues) {
  struct Row {
    const char* why;
    Method method;
    double hueA;
    double hueB;
    double middle;
  };
  const Row rows[] = {
      {"short, through red", Method::HueShort, 0.9, 0.1, 0.0},
      {"short, the other way", Method::HueShort, 0.1, 0.9, 0.0},
      {"short, direct", Method::HueShort, 0.2, 0.5, 0.35},
      {"long, direct", Method::HueLong, 0.9, 0.1, 0.5},
      {"long, through red", Method::HueLong, 0.2, 0.5, 0.85},
      {"up, direct", Method::HueUp, 0.1, 0.9, 0.5},
      {"up, through red", Method::HueUp, 0.9, 0.1, 0.0},
      {"down, direct", Method::HueDown, 0.9, 0.1, 0.5},
      {"down, through red", Method::HueDown, 0.2, 0.5, 0.85},
      {"long, between equal hues", Method::HueLong, 0, 0, 0.5},
      {"up, between equal hues", Method::HueUp, 0, 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    Color4f a;
    Color4f b;
    a.SetHSL(row.hueA, 1, 0.4, 0.2);
    b.SetHSL(row.hueB, 0.6, 0.6, 0.8);
    double h = 0;
    double s = 0;
    double l = 0;
    const Color4f middle = Color4f::Interp(a, b, 0.5, row.method);
    middle.GetHSL(h, s, l);
    // The channels in between are floats; hue 1 is hue 0.
    EXPECT_NEAR(std::remainder(h - row.middle, 1.0), 0, 1e-6);
    EXPECT_NEAR(s, 0.8, 1e-6);
    EXPECT_NEAR(l, 0.5, 1e-6);
    EXPECT_NEAR(middle.A, 0.5, 1e-6) << "alpha is blended";
    Color3f::Interp(Color3f(a.R, a.G, a.B), Color3f(b.R, b.G, b.B), 0.5, row.method)
        .GetHSL(h, s, l);
    EXPECT_NEAR(std::remainder(h - row.middle, 1.0), 0, 1e-6);
  }
  // From a Python transcription of the steps: the channels truncated, alpha rounded half up.
  EXPECT_EQ(Color4b::Interp(Color4b(255, 0, 0, 0), Color4b(0, 255, 0, 255), 0.5, Method::HueShort),
            Color4b(254, 255, 0, 128));
  EXPECT_EQ(Color4b::Interp(Color4b(200, 40, 30, 9), Color4b(20, 60, 180, 9), 0.3, Method::HueUp),
            Color4b(166, 194, 26, 9));
}

TEST(InterpColor, WorksOnWords) {
  EXPECT_EQ(InterpColor(0x00000000, 0x00FF00FF, 0.5, 0), 0x00800080u);
  EXPECT_EQ(InterpColor(0x00000000, 0x00FF00FF, 0.25, 1), 0x00BF00BFu);
  EXPECT_EQ(InterpColor(0x00000000, 0x00FF00FF, 0.25, 2), 0x00250025u);
  EXPECT_EQ(InterpColor(0x00000000, 0x00FF00FF, 0.25, 3), 0x00000000u);
  EXPECT_EQ(InterpColor(0x00000001, 0x00FF0002, 0.25, 4), 0x00800002u);
  EXPECT_EQ(InterpColor(0x00000000, 0x00FF00FF, 0.25, 5), 0x00FF00FFu);
  for (const unsigned method : {6u, 7u, 8u, 9u, 10u, 0xFFFFFFFFu}) {
    EXPECT_EQ(InterpColor(0x00000011, 0x00FF00FF, 0.5, method), 0x00000011u) << method;
    EXPECT_EQ(InterpColor(0x00000011, 0x00FF00FF, 1, method), 0x00FF00FFu) << method;
  }
}

}  // namespace
}  // namespace vlm
