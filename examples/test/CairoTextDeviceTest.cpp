#include <examples/common/CairoTextDevice.h>

#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTDirectTextIF.h>
#include <velum/mathtext/MTTextIF.h>
#include <examples/common/Handles.h>
#include <examples/labels/LabelFile.h>

#include <gtest/gtest.h>

#include <limits>

namespace vlm::examples {
namespace {

constexpr double kHeight = 40.0;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class CairoTextDeviceTest : public ::testing::Test {
 protected:
  [[nodiscard]] Box2d Bounds(const GString& text) {
    Box2d box;
    device_.GetBounds(text, box);
    return box;
  }
  [[nodiscard]] Vec2d Extent(const GString& text) {
    Vec2d extent;
    device_.GetExtent(text, extent);
    return extent;
  }
  [[nodiscard]] KQTextIF::_TXTMETRICS Metrics() {
    KQTextIF::_TXTMETRICS metrics;
    device_.GetMetrics(metrics);
    return metrics;
  }
  // The box of what has been drawn so far, as Cairo sees it.
  [[nodiscard]] Box2d Ink() const {
    double x, y, width, height;
    cairo_recording_surface_ink_extents(surface_.get(), &x, &y, &width, &height);
    return {x, y, x + width, y + height};
  }
  // A page before the present one is gone with its ink.
  void NewPage() {
    surface_.reset(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    context_.reset(cairo_create(surface_.get()));
  }

  SurfacePtr surface_{cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr)};
  ContextPtr context_{cairo_create(surface_.get())};
  CairoTextDevice device_{context_.get(), kHeight};
};

// The numbers are those of the font's tables head and hhea, in version 2 of the Liberation fonts.
TEST_F(CairoTextDeviceTest, MetricsAreThoseOfTheFontFile) {
  device_.SetFace("Liberation Sans");
  device_.SetHeight(2048.0);
  const KQTextIF::_TXTMETRICS metrics = Metrics();
  EXPECT_EQ(metrics.emSquare, 2048u);
  EXPECT_DOUBLE_EQ(metrics.ascent, 1854.0);
  EXPECT_DOUBLE_EQ(metrics.descent, 434.0);
  EXPECT_DOUBLE_EQ(metrics.height, 2288.0);
  EXPECT_DOUBLE_EQ(metrics.internalLeading, 240.0);
  EXPECT_DOUBLE_EQ(metrics.externalLeading, 67.0);
}

TEST_F(CairoTextDeviceTest, EverythingGrowsWithTheHeight) {
  const Box2d box = Bounds("Ångström");
  const Vec2d extent = Extent("Ångström");
  const double width = Metrics().aveCharWidth;
  for (const double factor : {1e-5, 0.25, 3.0, 1e4}) {
    device_.SetHeight(kHeight * factor);
    EXPECT_NEAR(Bounds("Ångström").xMax(), box.xMax() * factor, 1e-12 * factor);
    EXPECT_NEAR(Extent("Ångström").x, extent.x * factor, 1e-12 * factor);
    EXPECT_NEAR(Metrics().aveCharWidth, width * factor, 1e-12 * factor);
  }
}

TEST_F(CairoTextDeviceTest, BoundsAreInkAcrossAndTheFaceDown) {
  const double ascent = Metrics().ascent;
  const double descent = Metrics().descent;
  for (const char* text : {"x", "Å", "gy", " ", ""}) {
    EXPECT_DOUBLE_EQ(Bounds(text).yMin(), -ascent) << text;
    EXPECT_DOUBLE_EQ(Bounds(text).yMax(), descent) << text;
  }
  EXPECT_DOUBLE_EQ(Bounds(" x").xMax(), Bounds(" x  ").xMax());
  EXPECT_GT(Extent(" x  ").x, Extent(" x").x);
  EXPECT_EQ(Bounds("  ").xRange(), 0.0);
  EXPECT_GT(Extent("  ").x, 0.0);
}

TEST_F(CairoTextDeviceTest, UnderlinedBlanksHaveABox) {
  device_.SetStyle(TEXT_STYLE_UNDERLINE);
  EXPECT_DOUBLE_EQ(Bounds("  ").xMax(), Extent("  ").x);
}

// Cairo's record of the ink is the independent measure. It rounds outwards to whole units.
TEST_F(CairoTextDeviceTest, InkLiesWithinTheBounds) {
  const struct {
    const char* why;
    const char* face;
    unsigned int weight;
    unsigned int style;
    const char* text;
  } rows[] = {
      {"plain", "Arial", 4, 0, "Hamburg"},
      {"overhangs on both sides", "Times New Roman", 4, TEXT_STYLE_ITALIC, "fjf"},
      {"bold, with descenders", "Arial", 7, 0, "gyp"},
      {"strokes", "Arial", 4, TEXT_STYLE_UNDERLINE | TEXT_STYLE_STRIKEOUT, " x "},
      {"letters of another face", "Arial", 4, 0, "⟨ψ⟩"},
      {"malformed bytes", "Arial", 4, 0, "a\xE9\xFFz"},
  };
  for (const auto& row : rows) {
    NewPage();
    CairoTextDevice device(context_.get(), kHeight);
    device.SetFace(row.face);
    device.SetWeight(row.weight);
    device.SetStyle(row.style);
    Box2d box;
    device.GetBounds(row.text, box);
    EXPECT_TRUE(device.Draw(Vec2d(100.0, 200.0), row.text)) << row.why;
    EXPECT_NEAR(Ink().xMin(), 100.0 + box.xMin(), 1.5) << row.why;
    EXPECT_NEAR(Ink().xMax(), 100.0 + box.xMax(), 1.5) << row.why;
    EXPECT_GE(Ink().yMin(), 200.0 + box.yMin() - 1.5) << row.why;
    EXPECT_LE(Ink().yMax(), 200.0 + box.yMax() + 1.5) << row.why;
  }
}

TEST_F(CairoTextDeviceTest, ItalicsLeanToTheRightDrawnOrSimulated) {
  device_.SetFace("Liberation Sans");
  EXPECT_EQ(Metrics().italicAngle, 0.0);
  device_.SetStyle(TEXT_STYLE_ITALIC);
  EXPECT_NEAR(Metrics().italicAngle, -0.2094, 1e-4);  // 12 degrees
  EXPECT_EQ(Metrics().simulatedItalicAngle, 0.0);
  // Slanted by 11 degrees if the package with the oblique faces is installed, else by atan(0.2).
  device_.SetFace("DejaVu Sans");
  EXPECT_NEAR(Metrics().italicAngle + Metrics().simulatedItalicAngle, -0.195, 0.004);
}

TEST_F(CairoTextDeviceTest, HasAStackOfItsOwn) {
  device_.RestoreState();  // with nothing on it: no effect
  EXPECT_EQ(device_.GetHeight(), kHeight);
  device_.SetColor(Color4b::Red);
  device_.PreserveState();
  device_.SetColor(Color4b::Blue);
  device_.SetFace("Courier New");
  device_.SetHeight(1.0);
  device_.RestoreState();
  EXPECT_EQ(device_.GetColor(), Color4b::Red);
  EXPECT_EQ(device_.GetFace(), GString("Arial"));
  EXPECT_EQ(device_.GetHeight(), kHeight);
}

TEST_F(CairoTextDeviceTest, WhatCannotBeShownLeavesTheContextUsable) {
  for (const double height : {0.0, -1.0, 1e-300, 1e300, kNan, kInfinity}) {
    device_.SetHeight(height);
    EXPECT_TRUE(device_.Draw(Vec2d(0.0, 0.0), "x")) << height;
    EXPECT_TRUE(device_.DrawLine(Vec2d(0.0, 0.0), Vec2d(1.0, 0.0))) << height;
  }
  device_.SetHeight(kHeight);
  for (const double x : {kNan, kInfinity}) {
    EXPECT_TRUE(device_.Draw(Vec2d(x, 0.0), "x")) << x;
    EXPECT_TRUE(device_.DrawLine(Vec2d(x, 0.0), Vec2d(1.0, 0.0))) << x;
  }
  EXPECT_EQ(Ink().xRange(), 0.0);
  EXPECT_TRUE(device_.Draw(Vec2d(0.0, 0.0), "x"));
  EXPECT_GT(Ink().xRange(), 0.0);
}

TEST_F(CairoTextDeviceTest, ServesBothTextInterfacesAlike) {
  for (const Label& label : ReadLabelFile(VELUM_EXAMPLES_FOLDER "/data/labels.txt")) {
    const auto boxOn = [&](CMTTextIF&& textIF) {
      CMTContext context(textIF, 8.0);
      auto block = std::make_shared<CMTMultiLineElement>(textIF);
      static_cast<void>(context.Parse(label.text, block));
      return block->GetBBoxUsingTextIF(textIF, Vec2d(7.0, 9.0));
    };
    device_.PreserveState();
    const Box2d box = boxOn(CMTTextIF(device_));
    device_.RestoreState();
    CairoTextDevice other(context_.get(), kHeight);
    EXPECT_EQ(boxOn(CMTDirectTextIF(other)), box) << label.name;
  }
}

}  // namespace
}  // namespace vlm::examples
