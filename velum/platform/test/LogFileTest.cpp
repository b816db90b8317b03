#include <velum/platform/detail/LogFile.h>

#include <testing/Sanitized.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <string>

namespace vlm::platform {
namespace {

std::size_t HeldMemory() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
}

TEST(LogFile, ALongLineKeepsNoMemory) {
  if (testing::kIsSanitized) GTEST_SKIP() << "the sanitizers keep malloc to themselves";
  constexpr std::size_t kLong = 8 << 20;
  const testing::TemporaryFolder folder;
  const std::string line(kLong, 'x');
  LogFile log;
  ASSERT_TRUE(log.Open(folder.Path("log").c_str(), false));
  const std::size_t before = HeldMemory();
  EXPECT_TRUE(log.Append(line));
  EXPECT_LT(HeldMemory(), before + kLong / 2);
}

}  // namespace
}  // namespace vlm::platform
