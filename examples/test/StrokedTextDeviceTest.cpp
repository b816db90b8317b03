#include <examples/common/StrokedTextDevice.h>

#include <examples/common/Handles.h>
#include <examples/common/LabelLayout.h>
#include <examples/common/StrokedText.h>

#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace vlm::examples {
namespace {

using ::testing::HasSubstr;

class StrokedTextDeviceTest : public ::testing::Test {
 protected:
  double Advance(const GString& text) {
    Vec2d extent;
    device.GetExtent(text, extent);
    return extent.x;
  }
  static int CellOf(const char* set, unsigned int code) {
    return FindSymbolSet(set)->GetGlyphInfo(code).metrics.gmCellIncX;
  }

  SurfacePtr surface{cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr)};
  ContextPtr context{cairo_create(surface.get())};
  // One unit of the grid is one of the context.
  double em = FindSymbolSet("KQ Roman")->GetEmSize();
  StrokedTextDevice device{context.get(), em, "kq roman"};
};

TEST_F(StrokedTextDeviceTest, AdvancesAreThoseOfTheSets) {
  const struct {
    const char* text;
    double advance;
    const char* why;
  } rows[] = {
      {"", 0.0, "nothing"},
      {"Av ", 1.0 * CellOf("KQ Roman", 'A') + CellOf("KQ Roman", 'v') + CellOf("KQ Roman", ' '),
       "blanks count"},
      {"é", 1.0 * CellOf("KQ Roman", 0xE9), "a western letter by its code"},
      {"Δσ", 1.0 * CellOf("KQ Symbol", 'D') + CellOf("KQ Symbol", 's'), "Greek letters"},
      {"ά", 1.0 * CellOf("KQ Symbol", 'a'), "one with an accent"},
      {"−", 26.0, "a sign of the device's own"},
      {"中", 18.0, "the box of what is missing"},
      {"😀", 18.0, "a pair of surrogates is one character"},
  };
  for (const auto& row : rows) EXPECT_NEAR(Advance(row.text), row.advance, 1e-9) << row.why;
  device.SetFace("KQ SET8");
  const auto script = FindSymbolSet("KQ SET8");
  EXPECT_NEAR(Advance("é"), em / script->GetEmSize() * CellOf("KQ Roman", 0xE9), 1e-9)
      << "a letter that the set lacks comes from another";
}

TEST_F(StrokedTextDeviceTest, OtherFacesStandForTheFirst) {
  const double advance = Advance("Depth");
  device.SetFace("Courier New");
  EXPECT_EQ(device.GetFace(), "Courier New");
  EXPECT_EQ(Advance("Depth"), advance);
  device.SetFace("KQ SET1FS");
  EXPECT_NE(Advance("Depth"), advance);
}

TEST_F(StrokedTextDeviceTest, HeightScalesAndStateComesBack) {
  const double advance = Advance("Depth");
  device.PreserveState();
  device.SetHeight(2.0 * em);
  EXPECT_NEAR(Advance("Depth"), 2.0 * advance, 1e-9);
  device.RestoreState();
  EXPECT_EQ(Advance("Depth"), advance);
  device.RestoreState();
  EXPECT_EQ(device.GetHeight(), em);
}

TEST_F(StrokedTextDeviceTest, InkLiesWithinTheBounds) {
  for (const unsigned int style : {0U, 1U, 2U, 4U, 7U}) {
    device.SetStyle(style);
    device.SetWeight(7);
    Box2d box;
    device.GetBounds("jagged Ångström", box);
    const SurfacePtr drawn(cairo_recording_surface_create(CAIRO_CONTENT_ALPHA, nullptr));
    const ContextPtr over(cairo_create(drawn.get()));
    StrokedTextDevice other(over.get(), em, "KQ Roman");
    other.SetStyle(style);
    other.SetWeight(7);
    EXPECT_TRUE(other.Draw(Vec2d(0.0, 0.0), "jagged Ångström"));
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    cairo_recording_surface_ink_extents(drawn.get(), &x, &y, &width, &height);
    // Extents are of whole units.
    EXPECT_NEAR(x, box.xMin(), 1.5) << style;
    EXPECT_NEAR(x + width, box.xMax(), 1.5) << style;
    EXPECT_GT(y, box.yMin() - 2.5) << style;
    EXPECT_LT(y + height, box.yMax() + 2.5) << style;
  }
}

TEST_F(StrokedTextDeviceTest, LabelsAreLaidOutOnIt) {
  const LabelLayout label(device, "CO\\dn15 {\\fs65 2}");
  ASSERT_FALSE(label.Fault());
  EXPECT_GT(label.Box().xRange(), Advance("CO"));
  label.Draw(device, Vec2d(0.0, 0.0));
  EXPECT_EQ(cairo_status(context.get()), CAIRO_STATUS_SUCCESS);
  EXPECT_EQ(device.GetFace(), "KQ Roman");
}

TEST_F(StrokedTextDeviceTest, WhatIsNoStrokedFaceIsToldWithTheNames) {
  try {
    const StrokedTextDevice none(context.get(), 12.0, "Arial");
    FAIL() << "was made";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("no stroked face 'Arial' among KQ Helv, KQ Roman"));
  }
  EXPECT_THROW(StrokedTextDevice(nullptr, 12.0, "KQ Roman"), std::invalid_argument);
}

}  // namespace
}  // namespace vlm::examples
