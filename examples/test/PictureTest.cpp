#include <examples/common/Picture.h>

#include <testing/TemporaryFolder.h>

#include <cairo.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vlm::examples {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using vlm::testing::TemporaryFolder;

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void DrawNothing(cairo_t*) {}

TEST(Picture, ExtensionDecidesTheFormatInAnyCase) {
  EXPECT_EQ(PictureFormatOf("a.png"), PictureFormat::Png);
  EXPECT_EQ(PictureFormatOf("b.c/a.SVG"), PictureFormat::Svg);
  EXPECT_EQ(PictureFormatOf(".Pdf"), PictureFormat::Pdf);
  for (const char* other : {"", "png", "a.jpeg", "a.png.txt", "a.pn"}) {
    EXPECT_EQ(PictureFormatOf(other), std::nullopt) << other;
  }
}

TEST(Picture, EachFormatBeginsAsItShould) {
  const TemporaryFolder folder;
  const struct {
    const char* name;
    const char* beginning;
    const char* size;
  } rows[] = {
      // 61 x 20 pixels in the first chunk of a PNG: half a pixel too much makes one more.
      {"a.png", "\x89PNG\r\n", "\x3d"},
      {"a.svg", "<?xml", "width=\"30.25pt\" height=\"10pt\""},
      {"a.pdf", "%PDF-", "[ 0 0 30.25 10 ]"},
  };
  for (const auto& row : rows) {
    WritePicture(folder.Path(row.name), 30.25, 10.0, DrawNothing);
    const std::string bytes = ReadBytes(folder.Path(row.name));
    EXPECT_THAT(bytes, StartsWith(row.beginning)) << row.name;
    EXPECT_THAT(bytes, HasSubstr(row.size)) << row.name;
  }
}

TEST(Picture, FailuresNameTheFileAndLeaveNone) {
  const TemporaryFolder folder;
  const std::string missing = folder.Path("missing/a.png");
  try {
    WritePicture(missing, 10.0, 10.0, DrawNothing);
    FAIL() << "was written";
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), HasSubstr("'" + missing + "': No such file or directory"));
  }
  // A singular matrix puts the context into Cairo's error state.
  const auto breakContext = [](cairo_t* context) { cairo_scale(context, 0.0, 0.0); };
  for (const char* name : {"a.png", "a.svg", "a.pdf"}) {
    EXPECT_THROW(WritePicture(folder.Path(name), 10.0, 10.0, breakContext), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(folder.Path(name))) << name;
  }
  EXPECT_THROW(WritePicture(folder.Path("a.gif"), 10.0, 10.0, DrawNothing), std::invalid_argument);
}

}  // namespace
}  // namespace vlm::examples
