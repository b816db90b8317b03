#include <velum/files/FilenameCompare.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace vlm {
namespace {

TEST(FilenameCompare, ComparesTwoNamesNaturally) {
  const struct {
    const char* a;
    const char* b;
    int order;   ///< Of `FilenameCompare`: -1 for `a` before `b`, 0 for neither.
    int strict;  ///< Of `CFilenameCompare`.
  } rows[] = {
      {"file9", "file10", -1, -1},
      {"File2", "file10", -1, -1},
      {"a", "a", 0, 0},
      {"", "a", -1, -1},
      {"a1", "a01", 0, 1},  // The same number; then the bytes.
      {"a007b", "a7c", -1, -1},
      {"A", "a", 0, -1},
      {"1", "010", -1, -1},
      {"010", "0a", -1, 1},  // With the two rows around it: no order of three names.
      {"0a", "1", -1, -1},
      {"a12", "a1b", -1, 1},  // '2' before 'b', but 12 behind 1.
      {"z", "\xE4", -1, -1},
      {"\xC4", "\xE4", -1, -1},  // Only ASCII letters are folded.
      {"a2147483646", "a99999999999999999999", -1, -1},
      {"a2147483647", "a99999999999999999999", 0, -1},
      {"a18446744073709551617", "a18446744073709551616", 1, 1},
      {"a[", "aB", -1, -1},  // Folded to the small letter, which stands behind.
  };
  const auto order = [](auto before, const GString& a, const GString& b) {
    return before(a, b) ? -1 : before(b, a) ? 1 : 0;
  };
  for (const auto& row : rows) {
    EXPECT_EQ(order(FilenameCompare, row.a, row.b), row.order) << row.a << " " << row.b;
    EXPECT_EQ(order(CFilenameCompare(), row.a, row.b), row.strict) << row.a << " " << row.b;
  }
  const GString a(std::string("a\0b", 3)), b(std::string("a\0c", 3));
  EXPECT_EQ(order(FilenameCompare, a, b), 0);
  EXPECT_EQ(order(CFilenameCompare(), a, b), -1);
}

TEST(CFilenameCompare, IsAStrictOrderOfAllNames) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::string alphabet("0019aAb.\xE4\0", 10);
  std::vector<GString> names(250);
  for (GString& name : names) {
    std::string text(random() % 6, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    name = text;
  }
  const CFilenameCompare before;
  for (const GString& a : names) {
    for (const GString& b : names) {
      ASSERT_EQ(before(a, b) + before(b, a), a != b) << a << "|" << b;
      if (!before(a, b)) continue;
      for (const GString& c : names) {
        ASSERT_TRUE(!before(b, c) || before(a, c)) << a << "|" << b << "|" << c;
      }
    }
  }
}

}  // namespace
}  // namespace vlm
