#include <testing/PictureComparison.h>

#include <testing/TemporaryFolder.h>

#include <cairo.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace vlm::testing {
namespace {

using ::testing::HasSubstr;

class PictureComparison : public ::testing::Test {
 protected:
  [[nodiscard]] std::string Path(const std::string& name) const { return folder_.Path(name); }

  // A gray picture with one rectangle of another gray.
  [[nodiscard]] std::string Write(const std::string& name, int width, int height, double gray,
                                  const cairo_rectangle_t& patch = {0, 0, 0, 0},
                                  cairo_format_t format = CAIRO_FORMAT_ARGB32) const {
    cairo_surface_t* surface = cairo_image_surface_create(format, width, height);
    cairo_t* context = cairo_create(surface);
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
    cairo_set_source_rgb(context, gray, gray, gray);
    cairo_rectangle(context, patch.x, patch.y, patch.width, patch.height);
    cairo_fill(context);
    cairo_destroy(context);
    cairo_surface_write_to_png(surface, Path(name).c_str());
    cairo_surface_destroy(surface);
    return Path(name);
  }

 private:
  TemporaryFolder folder_;
};

constexpr double kTenOf255 = 10.0 / 255.0;

TEST_F(PictureComparison, GivesTheRectangleTheCountAndTheLargestDifference) {
  const std::string plain = Write("plain.png", 20, 10, 0);
  const std::string patched = Write("patched.png", 20, 10, kTenOf255, {3, 4, 5, 2});
  const PictureDifference difference = ComparePictures(patched, plain);
  EXPECT_EQ(difference.count, 10u);
  EXPECT_EQ(difference.left, 3);
  EXPECT_EQ(difference.right, 8);
  EXPECT_EQ(difference.top, 4);
  EXPECT_EQ(difference.bottom, 6);
  EXPECT_EQ(difference.largest, 10);
  EXPECT_EQ(::testing::PrintToString(difference),
            "10 of 200 pixels differ, the largest difference of a byte is 10; "
            "they lie in columns 3 to 7, rows 4 to 5");
}

TEST_F(PictureComparison, ToleranceIsForABytesDifferenceAndForACountOfPixels) {
  const std::string plain = Write("plain.png", 20, 10, 0);
  const std::string patched = Write("patched.png", 20, 10, kTenOf255, {3, 4, 5, 2});
  const struct {
    const char* why;
    PictureTolerance tolerance;
    bool matches;
  } rows[] = {
      {"nothing may differ", {0, 0}, false},         {"one byte too narrow", {9, 0}, false},
      {"as far as the bytes differ", {10, 0}, true}, {"one pixel too few", {0, 9}, false},
      {"as many as differ", {0, 10}, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(static_cast<bool>(MatchesStoredPicture(patched, plain, row.tolerance)), row.matches)
        << row.why;
  }
}

TEST_F(PictureComparison, PicturesOfTwoSizesNeverMatch) {
  const std::string wide = Write("wide.png", 20, 10, 0);
  const std::string tall = Write("tall.png", 10, 20, 0);
  const auto result = MatchesStoredPicture(wide, tall, {255, 1000});
  EXPECT_FALSE(result);
  EXPECT_THAT(result.message(), HasSubstr("20 x 10 pixels and 10 x 20"));
}

TEST_F(PictureComparison, AnOpaquePictureEqualsItselfStoredWithoutAlpha) {
  const cairo_rectangle_t patch{1, 1, 3, 3};
  const std::string withAlpha = Write("argb.png", 8, 8, 0.5, patch);
  const std::string without = Write("rgb.png", 8, 8, 0.5, patch, CAIRO_FORMAT_RGB24);
  EXPECT_TRUE(MatchesStoredPicture(withAlpha, without));
}

TEST_F(PictureComparison, UnreadableFilesThrowWithTheirPath) {
  const std::string picture = Write("picture.png", 4, 4, 0);
  std::ofstream(Path("text.png")) << "no picture";
  for (const std::string& bad : {Path("missing.png"), Path("text.png")}) {
    try {
      static_cast<void>(ComparePictures(picture, bad));
      ADD_FAILURE() << bad << " was read";
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), HasSubstr(bad));
    }
  }
}

TEST_F(PictureComparison, StoredPictureIsRemadeOnlyWhenAsked) {
  const std::string drawn = Write("drawn.png", 4, 4, 0);
  const auto missing = MatchesStoredPicture(drawn, Path("stored.png"));
  EXPECT_FALSE(missing);
  EXPECT_THAT(missing.message(), HasSubstr("no stored picture"));
  EXPECT_FALSE(std::filesystem::exists(Path("stored.png")));

  setenv("VELUM_REMAKE_PICTURES", "1", 1);
  const auto remade = MatchesStoredPicture(drawn, Path("stored.png"));
  unsetenv("VELUM_REMAKE_PICTURES");
  EXPECT_FALSE(remade);
  EXPECT_THAT(remade.message(), HasSubstr("remade"));
  EXPECT_TRUE(MatchesStoredPicture(drawn, Path("stored.png")));
}

}  // namespace
}  // namespace vlm::testing
