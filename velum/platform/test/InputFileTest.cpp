#include <velum/platform/detail/InputFile.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <string>

#include <sys/stat.h>

namespace vlm::platform {
namespace {

TEST(InputFile, OnlyRegularFilesAreOpened) {
  const testing::TemporaryFolder folder;
  const std::string text = folder.Path("text");
  const std::string pipe = folder.Path("pipe");
  std::ofstream(text) << "some text";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const struct {
    std::string path;
    int error;
  } rows[] = {{folder.Path(), EISDIR}, {pipe, EINVAL}, {folder.Path("none"), ENOENT}};
  for (const auto& row : rows) {
    InputFile file;
    EXPECT_FALSE(file.OpenNative(row.path)) << row.path;
    EXPECT_EQ(errno, row.error) << row.path;
    EXPECT_FALSE(file.IsOpen()) << row.path;
    // What is open stays so.
    ASSERT_TRUE(file.OpenNative(text));
    EXPECT_FALSE(file.OpenNative(row.path)) << row.path;
    char read[20];
    EXPECT_EQ(file.Read(read, sizeof read), 9) << row.path;
  }
  EXPECT_EQ(TextOfFile(text), "some text");
  EXPECT_EQ(TextOfFile(folder.Path()), "");
}

}  // namespace
}  // namespace vlm::platform
