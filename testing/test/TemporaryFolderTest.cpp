#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vlm::testing {
namespace {

TEST(TemporaryFolder, IsGoneWithAllThatItHeld) {
  std::string path;
  {
    const TemporaryFolder folder;
    path = folder.Path();
    std::filesystem::create_directory(folder.Path("inner"));
    std::ofstream(folder.Path("inner/file")) << "text";
    EXPECT_TRUE(std::filesystem::exists(path + "/inner/file"));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TemporaryFolder, TwoNeverShareAFolder) {
  const TemporaryFolder first;
  const TemporaryFolder second;
  EXPECT_NE(first.Path(), second.Path());
}

}  // namespace
}  // namespace vlm::testing
