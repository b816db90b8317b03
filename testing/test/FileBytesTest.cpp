#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <string>

namespace vlm::testing {
namespace {

TEST(FileBytes, AreAllThatWasPutLast) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  EXPECT_EQ(BytesOfFile(path), "") << "is not there";
  PutFile(path, "something longer than what comes next");
  const std::string bytes("\0\r\n\xFF\n", 5);
  PutFile(path, bytes);
  EXPECT_EQ(BytesOfFile(path), bytes);
}

}  // namespace
}  // namespace vlm::testing
