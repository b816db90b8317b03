#include <velum/diagnostics/RemoteLogger.h>
#include <examples/logview/Listener.h>
#include <examples/logview/ReceivedLine.h>
#include <examples/logview/Sheet.h>

#include <gtest/gtest.h>
#include <signal.h>

#include <ctime>
#include <optional>
#include <string>

namespace vlm::logview {
namespace {

TEST(LogviewLine, IsTakenFromADatagramWhateverItHolds) {
  struct Row {
    std::string bytes;
    const char* severity;
    const char* prefix;
    const char* text;
  };
  for (const Row& row :
       {Row{"<6> gridder: 12 wells", "info", "gridder", "12 wells"},
        Row{"<14>gridder: a: b\n", "info", "gridder", "a: b"}, Row{"<191> x", "debug", "", "x"},
        Row{"<0> ", "emerg", "", ""}, Row{"", "", "", ""}, Row{"<6", "", "", "<6"},
        Row{"<x> a", "", "", "<x> a"}, Row{"<> a", "", "", "<> a"},
        Row{"<99999999999> a", "", "", "<99999999999> a"},
        Row{"<6> two words: a", "info", "", "two words: a"}, Row{"<6> : a", "info", "", ": a"},
        Row{"<6> " + std::string(32, 'x') + ": a", "info", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "a"},
        Row{std::string("\x1b[2J\0\x7f", 6), "", "", "\\x1b[2J\\x00\\x7f"},
        Row{"\xc2\x9b"
            "31m\xc2\xa0é€😀",
            "", "", "\\xc2\\x9b31m\xc2\xa0é€😀"},
        Row{"\x9b"
            "31m\xff\xc0\x80",
            "", "", "\\x9b31m\\xff\\xc0\\x80"},
        Row{"\xe0\x82\x9b", "", "", "\\xe0\\x82\\x9b"},
        Row{"\xed\xa0\x80", "", "", "\\xed\\xa0\\x80"},
        Row{"\xf4\x90\x80\x80", "", "", "\\xf4\\x90\\x80\\x80"},
        Row{"<6> \xc3: \xe2\x82", "info", "\\xc3", "\\xe2\\x82"}}) {
    const ReceivedLine line = ReadDatagram(row.bytes, 1.5);
    EXPECT_STREQ(line.severity, row.severity) << row.bytes;
    EXPECT_EQ(line.prefix, row.prefix) << row.bytes;
    EXPECT_EQ(line.text, row.text) << row.bytes;
    EXPECT_EQ(line.time, 1.5);
  }
  EXPECT_EQ(ReadDatagram(std::string(33, 'x') + ": a", 0).prefix, "");
}

TEST(LogviewListener, EndsThoughDatagramsWait) {
  sigset_t before;
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGINT);
  pthread_sigmask(SIG_BLOCK, nullptr, &before);
  {
    Listener listener("127.0.0.1", 0);
    CRemoteLogger remote("127.0.0.1", listener.Port(), 0);
    for (const char* line : {"a", "b", "c"}) ASSERT_TRUE(remote.Send(line));
    EXPECT_EQ(listener.Next(), "<6> a");
    ::raise(SIGINT);
    EXPECT_EQ(listener.Next(), std::nullopt);
    const timespec noTime{};
    EXPECT_EQ(sigtimedwait(&stop, nullptr, &noTime), SIGINT);
    EXPECT_EQ(listener.Next(), "<6> b");
    listener.StopAfter(0);
    EXPECT_EQ(listener.Next(), std::nullopt);
  }
  for (const int signal : {SIGINT, SIGTERM}) ::signal(signal, SIG_DFL);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(LogviewSheet, CountsAllAndKeepsTheLast) {
  Sheet sheet;
  EXPECT_EQ(sheet.Summary(), "0 lines");
  for (int i = 0; i < 100; ++i) {
    ReceivedLine line;
    line.time = 0.5 + 0.01 * i;
    line.prefix = i % 5 == 4 ? "p" + std::to_string(i) : i % 5 == 3 ? "" : "often";
    const std::size_t lane = sheet.Add(line);
    EXPECT_LT(lane, 12u);
    EXPECT_EQ(lane == 0, line.prefix == "often");
  }
  EXPECT_EQ(sheet.Summary(),
            "100 lines in 0.99 s: often 60, - 20, p4 1, p9 1, p14 1, p19 1, p24 1, p29 1, p34 1, "
            "p39 1, p44 1, (others) 11");
  EXPECT_EQ(sheet.LastLines().size(), 60u);
  EXPECT_EQ(sheet.LastLines().back().line.prefix, "p99");
}

}  // namespace
}  // namespace vlm::logview
