#include <examples/georeference/ControlPoints.h>
#include <examples/georeference/MapSheet.h>
#include <examples/georeference/Resampling.h>
#include <examples/georeference/Trials.h>

#include <cairo.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace vlm::georeference {
namespace {

ControlPoints PointsOfTheGallery() {
  return ReadControlPointFile(VELUM_EXAMPLES_FOLDER "/data/sheet-points.txt");
}

TEST(Georeference, ControlPointsAreFourNumbersInALine) {
  std::istringstream file("# sheet map\n\n 1 2 3.5 -4e1 \r\n5\t6 7 8\n  # end\n");
  const ControlPoints points = ReadControlPoints(file);
  EXPECT_EQ(points.sheet.Points(), (std::vector<RPoint>{{1, 2}, {5, 6}}));
  EXPECT_EQ(points.map.Points(), (std::vector<RPoint>{{3.5, -40}, {7, 8}}));
}

TEST(Georeference, WhatIsWrongIsToldWithItsLine) {
  for (const char* const line : {"1 2 3", "1 2 3 4 5", "1 2 3 x", "1 2 3 4x", "1,2 3 4 5",
                                 "1 2 3 nan", "1 2 3 inf", "1 2 3 1e999", "-"}) {
    std::istringstream file(std::string("1 2 3 4\n#\n") + line + "\n");
    try {
      (void)ReadControlPoints(file);
      ADD_FAILURE() << line;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "line 3: a control point is four numbers") << line;
    }
  }
}

// They were read off to a tenth of a pixel.
TEST(Georeference, TheControlPointsBelongToTheSheet) {
  const ControlPoints points = PointsOfTheGallery();
  ASSERT_EQ(points.sheet.Points().size(), 35u);
  for (std::size_t i = 0; i < 35; ++i) {
    const RPoint place = PlaceOnSheet(points.map.Points()[i]);
    EXPECT_NEAR(points.sheet.Points()[i].X(), place.X(), 0.0501);
    EXPECT_NEAR(points.sheet.Points()[i].Y(), place.Y(), 0.0501);
  }
}

TEST(Georeference, BetterMethodsAreNearerToTheTruth) {
  const std::vector<Trial> trials = TryAllMethods(PointsOfTheGallery());
  ASSERT_EQ(trials.size(), 13u);
  for (const Trial& trial : trials) {
    SCOPED_TRACE(trial.method);
    EXPECT_EQ(trial.inForce, trial.method);
    EXPECT_LE(trial.elsewhere.rms, trial.elsewhere.worst);
    if (trial.method <= InverseDistanceSquared) {
      EXPECT_LT(trial.atControlPoints.worst, 1e-3);
    }
  }
  const std::size_t byError[] = {ThinPlateSpline, InverseDistanceSquared, GeneralLinear,
                                 LinearConformal, UniformScale,           Translate};
  for (std::size_t i = 1; i < std::size(byError); ++i) {
    EXPECT_LT(trials[byError[i - 1]].elsewhere.rms, trials[byError[i]].elsewhere.rms) << i;
  }
  EXPECT_LT(trials[ThinPlateSpline].elsewhere.rms, 1.5) << "km, of 1000";
}

TEST(Georeference, ResampledPixelsComeFromTheSheet) {
  const examples::SurfacePtr sheet(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 4, 4));
  const examples::ContextPtr context(cairo_create(sheet.get()));
  cairo_set_source_rgb(context.get(), 0, 0, 1);
  cairo_paint(context.get());
  cairo_set_source_rgb(context.get(), 1, 0, 0);
  cairo_rectangle(context.get(), 0, 0, 2, 4);
  cairo_fill(context.get());
  cairo_surface_flush(sheet.get());
  const CImageRegistration toSheet;  // the identity
  const examples::SurfacePtr image = Resampled(sheet.get(), toSheet, {0, 0, 4, 4}, 8);
  ASSERT_EQ(cairo_image_surface_get_height(image.get()), 8);
  const auto* const row = reinterpret_cast<const std::uint32_t*>(
      cairo_image_surface_get_data(image.get()) + 4 * cairo_image_surface_get_stride(image.get()));
  const std::uint32_t expected[] = {0xFFFFFF, 0xFF0000, 0xFF0000, 0xBF0040,
                                    0x4000BF, 0x0000FF, 0x0000FF, 0xFFFFFF};
  for (unsigned i = 0; i < 8; ++i) {
    for (unsigned shift = 0; shift < 24; shift += 8) {
      EXPECT_NEAR((row[i] >> shift) & 0xFF, (expected[i] >> shift) & 0xFF, 1) << i;
    }
  }
}

}  // namespace
}  // namespace vlm::georeference
