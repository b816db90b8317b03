#include <velum/core/GString.h>
#include <velum/core/StringCompare.h>

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <random>

namespace vlm {
namespace {

std::wstring Widened(const std::string& text) { return {text.begin(), text.end()}; }

int Sign(const std::string& a, const std::string& b) {
  EXPECT_EQ(StringLess()(a, b), StringLess()(Widened(a), Widened(b)));
  EXPECT_EQ(StringEquivalent()(a, b), StringEquivalent()(Widened(a), Widened(b)));
  EXPECT_EQ(StringEquivalent()(a, b), !StringLess()(a, b) && !StringLess()(b, a));
  return StringLess()(a, b) ? -1 : StringLess()(b, a) ? 1 : 0;
}

TEST(StringLess, FoldsBeforeItCompares) {
  EXPECT_EQ(Sign("abc", "ABD"), -1);
  EXPECT_FALSE(std::less<GString>()("abc", "ABD"));
  EXPECT_EQ(Sign("a_b", "aZb"), -1) << "the underscore is below the folded letter only";
  EXPECT_EQ(Sign("Depth", "dEPTH"), 0);
  EXPECT_EQ(Sign("ab", "abc"), -1);
  EXPECT_EQ(Sign("", "a"), -1);
}

TEST(StringLess, StopsAtATerminator) {
  EXPECT_EQ(Sign(std::string("a\0x", 3), std::string("A\0y", 3)), 0);
  EXPECT_EQ(Sign(std::string("a\0x", 3), "a"), 0);
}

TEST(StringLess, TakesBytesAsUnsigned) {
  EXPECT_TRUE(StringLess()(std::string("\x7F"), std::string("\x80")));
  EXPECT_TRUE(StringLess()(std::string("z"), std::string("\xFF")));
}

TEST(StringLess, AgreesWithFoldingByteByByteOnRandomTexts) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto text = [&random] {
    std::string made(random() % 40, '\0');
    for (char& c : made) c = static_cast<char>("aAbB_Z\x80"[random() % 7]);
    return made;
  };
  for (int i = 0; i < 20000; ++i) {
    const std::string a = text();
    std::string b = random() % 2 ? a : text();
    if (!b.empty() && random() % 2) b[random() % b.size()] ^= 0x20;
    std::basic_string<unsigned char> x, y;
    for (const char c : a)
      x += static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(c)));
    for (const char c : b)
      y += static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(c)));
    x = x.c_str();
    y = y.c_str();
    ASSERT_EQ(StringLess()(a, b), x < y) << a << "|" << b;
    ASSERT_EQ(StringEquivalent()(a, b), x == y) << a << "|" << b;
  }
}

}  // namespace
}  // namespace vlm
