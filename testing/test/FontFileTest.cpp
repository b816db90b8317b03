#include <testing/FontFile.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>

namespace vlm::testing {
namespace {

TEST(FontFile, PutTogetherHasTheTablesThatItWasTakenApartInto) {
  FontFile font = FontFile::Read("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  ASSERT_EQ(font.tables.count("OS/2"), 1u) << "fonts-dejavu-core is not installed";
  font.Put16("head", 18, 4096);
  font.tables["odd "] = "a length that needs filling";
  font.tables.erase("GPOS");
  const TemporaryFolder folder;
  const std::string path = folder.Path("font.ttf");
  std::ofstream(path, std::ios::binary) << font.Bytes();
  const FontFile again = FontFile::Read(path);
  EXPECT_TRUE(again.tables == font.tables);
  EXPECT_EQ(again.S16("head", 18), 4096);
}

}  // namespace
}  // namespace vlm::testing
