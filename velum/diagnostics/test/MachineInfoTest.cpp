#include <velum/diagnostics/MachineInfo.h>

#include <velum/diagnostics/SystemInfo.h>

#include <gtest/gtest.h>
#include <sys/sysinfo.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

namespace vlm {
namespace {

/// What a shell prints.
std::string Shell(const char* command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command, "r"), &pclose);
  std::string text;
  for (int c = std::getc(pipe.get()); c != EOF; c = std::getc(pipe.get())) {
    text += static_cast<char>(c);
  }
  return text;
}

TEST(MachineInfo, NamesTheSystemAsAShellReadsItsReleaseFile) {
  const std::string expected =
      Shell("[ -r /etc/os-release ] && . /etc/os-release; printf %s \"$PRETTY_NAME\"");
  if (expected.empty()) GTEST_SKIP() << "this system has no release file with a name";
  EXPECT_EQ(GetOSName(), expected);
  unsigned numbers[3] = {};
  std::sscanf(Shell("uname -r").c_str(), "%u.%u.%u", &numbers[0], &numbers[1], &numbers[2]);
  EXPECT_EQ(GetOSNameAndVersion(), expected + ", Version " + std::to_string(numbers[0]) + "." +
                                       std::to_string(numbers[1]) + ", build " +
                                       std::to_string(numbers[2]));
  EXPECT_EQ(CSystemInfo::GetInstance().OSVersion(), std::pair(numbers[0], numbers[1]));
}

TEST(MachineInfo, FreeMemoryIsWhatProgramsCanGet) {
  struct sysinfo info {};
  ASSERT_EQ(sysinfo(&info), 0);
  const std::uint64_t total = std::uint64_t{info.totalram} * info.mem_unit;
  EXPECT_GT(GetPhysicalMemory(), total / 1000);
  EXPECT_LE(GetPhysicalMemory(), total);
}

TEST(MachineInfo, FeaturesAreThoseThatTheKernelLists) {
  struct Row {
    unsigned bit;
    const char* flag;
    const char* name;
  };
  std::ifstream file("/proc/cpuinfo");
  std::string line;
  while (std::getline(file, line) && line.rfind("flags", 0) != 0) {
  }
  if (line.rfind("flags", 0) != 0) GTEST_SKIP() << "the kernel lists no flags of this processor";
  for (const Row& row : {Row{0, "fpu", "x87 FPU On Chip"}, Row{4, "tsc", "Time Stamp Counter"},
                         Row{15, "cmov", "Conditional Move/Compare Instruction"},
                         Row{18, "pn", "Processor Serial Number"}, Row{23, "mmx", "MMX Technology"},
                         Row{25, "sse", "SSE Extensions"}, Row{26, "sse2", "SSE2 Extensions"},
                         Row{30, "ia64", "Unknown4"}}) {
    GString name;
    EXPECT_EQ(CPUHasFeature(1ul << row.bit, &name),
              (line + ' ').find(std::string(" ") + row.flag + ' ') != std::string::npos)
        << row.flag;
    EXPECT_EQ(name, row.name);
  }
}

TEST(MachineInfo, TheHighestFeatureOfAMaskIsNamed) {
  GString name("as it was");
  EXPECT_FALSE(CPUHasFeature(0, &name));
  EXPECT_FALSE(CPUHasFeature(1ul << 40, &name)) << "no bit of the register";
  EXPECT_EQ(name, "as it was");
  EXPECT_FALSE(CPUHasFeature(0, nullptr));
  EXPECT_EQ(CPUHasFeature(0x06000000, &name),
            CPUHasFeature(0x02000000, nullptr) || CPUHasFeature(0x04000000, nullptr));
  EXPECT_EQ(name, "SSE2 Extensions");
  CPUHasFeature(0xFFFFFFFF, &name);
  EXPECT_EQ(name, "Pend. Brk. EN.");
}

}  // namespace
}  // namespace vlm
