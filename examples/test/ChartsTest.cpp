#include <examples/charts/ChartFiles.h>

#include <velum/diagnostics/SystemInfo.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/Handles.h>

#include <testing/PictureComparison.h>

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

namespace vlm::charts {
namespace {

constexpr char kFolder[] = VELUM_EXAMPLES_DRAWN "/charts/";

bool IsInstalled(const char* family) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  for (unsigned int i = 0; i < faces.GetNumItems(); ++i) {
    if (faces.GetFaceInfo(i)->GetFaceName() == family) return true;
  }
  return false;
}

Sample Thickness() {
  std::vector<double> values;
  for (int i = 0; i < 500; ++i) values.push_back(std::exp(std::sin(i) + std::sin(i * 0.7)));
  return Sample("Thickness (µm)", values);
}

class Charts : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!IsInstalled("DejaVu Sans")) GTEST_SKIP() << "the pictures were drawn with DejaVu Sans";
    CSystemInfo::GetInstance().DefVariablePitchFace("DejaVu Sans");
    WriteCharts(kFolder, sample_);
  }
  void TearDown() override { CSystemInfo::GetInstance().ResetToDefaults(); }

  Sample sample_ = Thickness();
};

// Antialiasing of letters differs by a few steps of gray between versions of the libraries below.
TEST_F(Charts, LookLikeTheStoredPictures) {
  for (const Kind kind : kKinds) {
    for (const char* size : {"-tiny.png", "-screen.png", "-print.png"}) {
      const std::string name = NameOf(kind) + std::string(size);
      EXPECT_TRUE(vlm::testing::MatchesStoredPicture(
          kFolder + name, VELUM_EXAMPLES_FOLDER "/test/charts/" + name, {8, 20}));
    }
  }
}

// The texts of pixels stand on whole rows, half a pixel off at most.
TEST_F(Charts, VectorsShowWhatPixelsShow) {
  for (const Kind kind : kKinds) {
    const int height = kind == Kind::Box ? 60 : 600;
    const cairo_rectangle_t extents = {0, 0, 400, height / 2.0};
    const examples::SurfacePtr page(
        cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
    {
      const examples::ContextPtr context(cairo_create(page.get()));
      cairo_scale(context.get(), 0.5, 0.5);
      Gdiplus::Graphics graphics(context.get());
      Draw(kind, graphics, {0, 0, 800, height}, sample_);
    }
    const examples::SurfacePtr image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 800, height));
    const examples::ContextPtr context(cairo_create(image.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    cairo_scale(context.get(), 2, 2);
    cairo_set_source_surface(context.get(), page.get(), 0, 0);
    cairo_paint(context.get());
    const std::string name = kFolder + std::string(NameOf(kind));
    const std::string replayed = name + "-replayed.png";
    ASSERT_EQ(cairo_surface_write_to_png(image.get(), replayed.c_str()), CAIRO_STATUS_SUCCESS);
    const auto difference = vlm::testing::ComparePictures(replayed, name + "-screen.png", 128);
    EXPECT_TRUE(difference.SameSize());
    EXPECT_LE(difference.count, 30u) << name << ": " << difference;

    std::ifstream svg(name + "-screen.svg");
    const std::string text(std::istreambuf_iterator<char>(svg), {});
    EXPECT_NE(text.find("<path"), std::string::npos) << name;
    EXPECT_EQ(text.find("<image"), std::string::npos) << name << " holds pixels";
  }
}

}  // namespace
}  // namespace vlm::charts
