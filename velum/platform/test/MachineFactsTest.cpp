#include <velum/platform/detail/MachineFacts.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace vlm::platform {
namespace {

TEST(MachineFacts, ReleaseFilesAreReadAsAShellDoes) {
  const struct {
    const char* why;
    std::string text;
    std::string name;
  } rows[] = {
      {"quoted", "ID=a\nPRETTY_NAME=\"A B 1 (c)\"\nID_LIKE=b\n", "A B 1 (c)"},
      {"single quotes", "PRETTY_NAME='A \"B\" \\n'\n", "A \"B\" \\n"},
      {"escapes", "PRETTY_NAME=\"A \\\"B\\\" \\$1 \\\\\"", "A \"B\" $1 \\"},
      {"what a backslash in quotes does not escape", "PRETTY_NAME=\"A\\nB \\'C\"", "A\\nB \\'C"},
      {"bare escapes", "PRETTY_NAME=A\\ B\\nC", "A BnC"},
      {"a line that goes on", "PRETTY_NAME=\"A \\\nB\"\n", "A B"},
      {"a key in another one's quotes", "X=\"\nPRETTY_NAME=B\n\"\nPRETTY_NAME=A", "A"},
      {"a quote in a comment", "# don't\nPRETTY_NAME=A", "A"},
      {"blanks before the key", " \tPRETTY_NAME=A", "A"},
      {"blanks behind the key", "PRETTY_NAME =A", ""},
      {"bare, up to a blank", "PRETTY_NAME=Arch Linux", "Arch"},
      {"pieces", "PRETTY_NAME=\"A \"'B'C", "A BC"},
      {"the last one counts", "PRETTY_NAME=A\nPRETTY_NAME=B\n", "B"},
      {"name and version", "VERSION=\"1 (c)\"\nNAME=A\n", "A 1 (c)"},
      {"name alone", "NAME=\"A\"\nVERSION=\n", "A"},
      {"version alone", "VERSION=1", ""},
      {"another key's end", "XPRETTY_NAME=A\nPRETTY_NAMES=B\n#PRETTY_NAME=C", ""},
      {"no value", "PRETTY_NAME=", ""},
      {"quote left open", "PRETTY_NAME=\"A B\nNAME=C", "A B"},
      {"line end of another system", "PRETTY_NAME=A\r\n", "A"},
      {"control characters", std::string("PRETTY_NAME=\"A\x1b[31mB\""), "A"},
      {"terminator", std::string("PRETTY_NAME=A\0B", 15), "A"},
      {"as long as a name may be", "PRETTY_NAME=" + std::string(256, 'A'), std::string(256, 'A')},
      {"too long", "PRETTY_NAME=" + std::string(257, 'A') + "\nNAME=B", "B"},
      {"nothing", "", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(ReleaseNameIn(row.text), row.name) << row.why;
}

TEST(MachineFacts, KilobytesAreFoundByTheirKey) {
  const struct {
    const char* text;
    bool found;
    std::uint64_t bytes;
  } rows[] = {
      {"MemTotal: 5 kB\nMemFree:   16 kB\n", true, 16384},
      {"XMemFree: 1 kB\nMemFree: 0 kB", true, 0},
      {"MemFree:\n", false, 7},
      {"MemFree: -1 kB\n", false, 7},
      {"MemFree 1 kB\n", false, 7},
      {"MemFree: 99999999999999999999999 kB", true, UINT64_MAX / 1024 * 1024},
      {"", false, 7},
  };
  for (const auto& row : rows) {
    std::uint64_t bytes = 7;
    EXPECT_EQ(FindKilobytes(row.text, "MemFree", bytes), row.found) << row.text;
    EXPECT_EQ(bytes, row.bytes) << row.text;
  }
}

TEST(MachineFacts, FiguresOfThisMachineGoTogether) {
  MemoryFacts memory;
  ASSERT_TRUE(ReadMemoryFacts(memory));
  EXPECT_LE(memory.physicalFree, memory.physical);
  EXPECT_LE(memory.swapFree, memory.swap);
  EXPECT_LT(memory.addressFree, memory.address);
  EXPECT_GE(ProcessorCount(), 1u);
  EXPECT_NE(ProcessorMask(), 0u);
  KernelFacts kernel;
  ASSERT_TRUE(ReadKernelFacts(kernel));
  EXPECT_EQ(kernel.name, "Linux");
}

}  // namespace
}  // namespace vlm::platform
