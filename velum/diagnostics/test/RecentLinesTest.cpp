#include <velum/diagnostics/RecentLines.h>

#include <velum/core/GString.h>
#include <velum/diagnostics/Logger.h>

#include <gtest/gtest.h>
#include <signal.h>

#include <string>

namespace vlm {
namespace {

std::string Recent(std::size_t size = kRecentLogBytes) {
  std::string text(size + 1, '?');
  const std::size_t used = CopyRecentLogLines(text.data(), size);
  EXPECT_LT(used, size);
  EXPECT_EQ(text[used], '\0');
  EXPECT_EQ(text.back(), '?');
  return text.substr(0, used);
}

TEST(RecentLines, AreTheLastHundredOfAllLoggers) {
  CLogger first;
  CLogger second("/dev/null");
  CLogger disabled("", 31, false);
  std::string lines;
  for (int i = 0; i < 250; ++i) {
    const std::string line = "line " + std::to_string(i);
    (i % 2 ? first : second).Send(4, line);
    disabled.Send(4, "not kept");
    if (i >= 150) lines += line + "\n";
  }
  EXPECT_EQ(Recent(), lines);

  EXPECT_EQ(Recent(10), "line 249\n") << "just enough for one";
  EXPECT_EQ(Recent(9), "");
  EXPECT_EQ(Recent(1), "");
  EXPECT_EQ(Recent(20), "line 248\nline 249\n") << "whole lines only";
  EXPECT_EQ(CopyRecentLogLines(nullptr, 100), 0u);
  char none = 'x';
  EXPECT_EQ(CopyRecentLogLines(&none, 0), 0u);
  EXPECT_EQ(none, 'x');

  for (int i = 0; i < 100; ++i) first.Send(4, GString(2000, 'x'));
  EXPECT_EQ(Recent().size(), kRecentLogBytes - 1) << "as much as there can be";
}

TEST(RecentLines, LongLinesAreCutAtACharacter) {
  struct Row {
    std::string line;
    std::string kept;
    const char* why;
  };
  const auto x = [](std::size_t count) { return std::string(count, 'x'); };
  for (const Row& row : {Row{"", "", "an empty line"}, Row{x(7), x(7), "less than a word"},
                         Row{x(1023), x(1023), "short enough"}, Row{x(1024), x(1024), "just fits"},
                         Row{x(1025), x(1021) + "...", "one too many"},
                         Row{x(1020) + "é" + x(9), x(1020) + "...", "a character of two"},
                         Row{x(1019) + "é" + x(9), x(1019) + "é...", "which fits"},
                         Row{x(1019) + "€" + x(9), x(1019) + "...", "of three"},
                         Row{x(1018) + "😀" + x(9), x(1018) + "...", "of four"},
                         Row{x(10) + std::string(2000, '\x80'),
                             x(10) + std::string(1011, '\x80') + "...", "no UTF-8"}}) {
    CLogger log;
    log.Send(4, "before");
    log.Send(4, row.line);
    const std::string all = Recent();
    const std::string end = "before\n" + row.kept + "\n";
    ASSERT_GE(all.size(), end.size());
    EXPECT_EQ(all.substr(all.size() - end.size()), end) << row.why;
  }
}

TEST(RecentLines, HoldALineWhoseFileCannotBeOpened) {
  CLogger log("/dev/null/a.log");
  EXPECT_ANY_THROW(log.Send(4, "why it ended"));
  const std::string all = Recent();
  EXPECT_EQ(all.substr(all.size() - 13), "why it ended\n");
}

char theLines[kRecentLogBytes];
volatile std::size_t theSize = 0;

TEST(RecentLines, AreReadInASignalHandlerWhoseThreadHoldsTheLock) {
  const auto old =
      ::signal(SIGUSR1, [](int) { theSize = CopyRecentLogLines(theLines, sizeof(theLines)); });
  CLogger log;
  log.SetOutputCallback([](int, const GString&, void*) { ::raise(SIGUSR1); }, nullptr);
  log.Send(4, "the crash");
  ::signal(SIGUSR1, old);
  EXPECT_EQ(std::string(theLines, theSize).substr(theSize - 10), "the crash\n");
}

}  // namespace
}  // namespace vlm
