#include <examples/charts/ChartFiles.h>

#include <velum/diagnostics/SystemInfo.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <testing/PictureComparison.h>

#include <gtest/gtest.h>

#include <cmath>

namespace vlm::charts {
namespace {

bool IsInstalled(const char* family) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  for (unsigned int i = 0; i < faces.GetNumItems(); ++i) {
    if (faces.GetFaceInfo(i)->GetFaceName() == family) return true;
  }
  return false;
}

// Antialiasing of letters differs by a few steps of gray between versions of the libraries below.
TEST(Charts, LookLikeTheStoredPictures) {
  if (!IsInstalled("DejaVu Sans")) GTEST_SKIP() << "the pictures were drawn with DejaVu Sans";
  std::vector<double> values;
  for (int i = 0; i < 500; ++i) values.push_back(std::exp(std::sin(i) + std::sin(i * 0.7)));
  Sample sample("Thickness (µm)", values);
  auto& settings = CSystemInfo::GetInstance();
  settings.DefVariablePitchFace("DejaVu Sans");
  const std::string folder = VELUM_EXAMPLES_DRAWN "/charts";
  WriteCharts(folder, sample);
  settings.ResetToDefaults();
  for (const std::string name : {"histogram-tiny", "histogram-screen", "probability-tiny",
                                 "probability-screen", "box-print"}) {
    EXPECT_TRUE(vlm::testing::MatchesStoredPicture(
        folder + "/" + name + ".png", VELUM_EXAMPLES_FOLDER "/test/charts/" + name + ".png",
        {8, 20}));
  }
}

}  // namespace
}  // namespace vlm::charts
