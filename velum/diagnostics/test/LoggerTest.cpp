#include <velum/diagnostics/Logger.h>

#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>
#include <velum/core/GString.h>
#include <velum/diagnostics/MessageHook.h>
#include <velum/diagnostics/ScopedLogMessage.h>
#include <velum/diagnostics/test/Receiver.h>

#include <testing/TemporaryFolder.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vlm {
namespace {

using testing::TemporaryFolder;

std::string Got(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

/// What an object of the program that is made before `main` could log.
const std::string theEarlyLines = [] {
  g_Logger.Enable(true);
  g_Logger.Send(LogInformation, "early");
  g_Logger.Enable(false);
  std::string lines = g_Logger.GetBuffer();
  g_Logger.EmptyBuffer();
  return lines;
}();

/// Logs when the program's objects are gone.
struct LastWords {
  ~LastWords() { g_Logger.Send(LogInformation, "late"); }
} theLastWords;

/// Has the global logger as it is at the start of a program, and gives it back so.
struct FreshGlobalLogger : ::testing::Test {
  FreshGlobalLogger() { Reset(); }
  ~FreshGlobalLogger() override { Reset(); }
  static void Reset() {
    g_Logger.Enable(false);
    g_Logger.SetType(LogAll);
    g_Logger.SetOutputCallback(nullptr, nullptr);
    g_Logger.EmptyBuffer();
  }
};

TEST_F(FreshGlobalLogger, IsDisabledAndTakesEverythingAndWorksBeforeMain) {
  EXPECT_FALSE(g_Logger.IsEnabled());
  EXPECT_EQ(g_Logger.GetType(), 31);
  EXPECT_FALSE(g_Logger.IsRemoteLoggerEnabled());
  g_Logger.Send(4, "dropped");
  g_Logger.SendVA(4, "%d", 1);
  g_Logger.Separator(4, "dropped");
  EXPECT_EQ(g_Logger.GetBuffer(), "");
  EXPECT_EQ(theEarlyLines, "early\n");
}

TEST(Logger, MaskHoldsForFormattedLinesOnly) {
  struct Row {
    int mask;
    int type;
    const char* lines;
    const char* why;
  };
  for (const Row& row : {Row{31, 4, "v%\nva\nsend\n\ntitle\n-----\n", "all types"},
                         Row{4, 1, "send\n\ntitle\n-----\n", "another type"},
                         Row{4, 5, "v%\nva\nsend\n\ntitle\n-----\n", "one bit of two is enough"},
                         Row{0, 31, "send\n\ntitle\n-----\n", "no type at all"},
                         Row{-1, 1 << 30, "v%\nva\nsend\n\ntitle\n-----\n", "bits of the caller's"},
                         Row{31, 0, "send\n\ntitle\n-----\n", "a line without a type"}}) {
    CLogger log("", row.mask);
    log.SendVA(static_cast<LogType>(row.type), "v%%");
    log.SendVA(row.type, "%s", "va");
    log.Send(row.type, "send");
    log.Separator(row.type, "title");
    EXPECT_EQ(log.GetBuffer(), row.lines) << row.why;
    EXPECT_EQ(log.GetType(), row.mask);
  }
}

TEST(Logger, SeparatorPutsOneEmptyLineWhereNoneIs) {
  struct Row {
    std::vector<const char*> lines;
    const char* title;
    const char* result;
  };
  for (const Row& row :
       {Row{{"a"}, "Memory", "a\n\nMemory\n------\n"}, Row{{}, "Memory", "Memory\n------\n"},
        Row{{"a", ""}, "Memory", "a\n\nMemory\n------\n"}, Row{{"a"}, "", "a\n\n"},
        Row{{"a", ""}, "", "a\n\n"}, Row{{}, "", ""}}) {
    CLogger log;
    for (const char* line : row.lines) log.Send(4, line);
    log.Separator(4, row.title);
    EXPECT_EQ(log.GetBuffer(), row.result);
  }
}

TEST(Logger, LinesOfEveryKindAreKeptAsTheyAre) {
  const GString nul(std::string("a\0b", 3));
  const GString huge(9000, 'x');
  CLogger log;
  log.Send(4, nul);
  log.Send(4, huge);
  log.SendVA(4, "%I64d %u%%", std::int64_t{1} << 40, 7u);
  log.SendVA(4, "%s", huge.c_str());  // More than can be formatted.
  log.SendVA(4, "%n", nullptr);
  EXPECT_EQ(log.GetBuffer().String(),
            nul.String() + "\n" + huge.String() + "\n1099511627776 7%\n%s\n%n\n");
  log.EmptyBuffer();
  log.Send(4, "again");
  log.Send(4, log.GetBuffer());
  EXPECT_EQ(log.GetBuffer(), "again\nagain\n\n") << "a buffer may be sent to itself";
  log.EmptyBuffer();
  log.Send(4, "again");
  log.Separator(4, log.GetBuffer());
  EXPECT_EQ(log.GetBuffer(), "again\n\nagain\n\n------\n") << "and be its title";
  EXPECT_THROW(log.SendVA(4, nullptr), Exception);
}

TEST(Logger, FileIsKeptOrEmptiedAtTheFirstLine) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a.log");
  for (const bool append : {true, false}) {
    Put(path, "old\n");
    CLogger log;
    log.SetOutputFile(path, append);
    EXPECT_EQ(Got(path), "old\n") << "nothing happens before the first line";
    log.Send(4, "first");
    EXPECT_EQ(Got(path), append ? "old\nfirst\n" : "\nfirst\n");
    log.SetOutputFile(folder.Path("b.log"), append);
    log.Separator(4, "T");
    EXPECT_EQ(Got(path), append ? "old\nfirst\n\nT\n-\n" : "\nfirst\n\nT\n-\n") << "stays in use";
    EXPECT_EQ(log.GetBuffer(), "");
  }
  EXPECT_NE(::access(folder.Path("b.log").c_str(), F_OK), 0);
  { const CLogger unused(folder.Path("c.log")); }
  EXPECT_NE(::access(folder.Path("c.log").c_str(), F_OK), 0);
  CLogger log;
  EXPECT_THROW(log.SetOutputFile("", true), Exception);
}

TEST(Logger, ReplacedFileStaysWithItsReadersAndALinkStaysALink) {
  const TemporaryFolder folder;
  Put(folder.Path("a.log"), "old\n");
  ASSERT_EQ(::symlink(folder.Path("a.log").c_str(), folder.Path("link").c_str()), 0);
  std::ifstream reader(folder.Path("a.log"));
  for (const char* name : {"a.log", "link"}) {
    CLogger log;
    log.SetOutputFile(folder.Path(name), false);
    log.Send(4, name);
    EXPECT_EQ(Got(folder.Path("a.log")), std::string("\n") + name + "\n");
  }
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old\n");
}

TEST(Logger, FileThatCannotBeOpenedDisablesTheLogger) {
  const TemporaryFolder folder;
  for (const std::string& path :
       {folder.Path("none/a.log"), folder.Path(), std::string("c:\\a.log")}) {
    for (const bool append : {true, false}) {
      CLogger log;
      log.SetOutputFile(path, append);
      try {
        log.SendVA(4, "a");
        ADD_FAILURE() << path;
      } catch (const Exception& error) {
        EXPECT_EQ(error.GetErrCode(), ERR_OPEN);
        EXPECT_EQ(error.GetSrcFile(), "Logger");
        EXPECT_NE(error.GetDescription().find(path), GString::npos);
      }
      EXPECT_FALSE(log.IsEnabled());
      log.Send(4, "dropped");
      log.Enable(true);
      log.SetOutputFile(folder.Path("a.log"), false);
      log.Send(4, "works again");
      EXPECT_EQ(Got(folder.Path("a.log")), "\nworks again\n");
    }
  }
}

TEST(Logger, FullDiskLosesLinesQuietly) {
  CLogger log;
  log.SetOutputFile("/dev/full", false);
  log.Send(4, "lost");
  log.Send(4, GString(100'000, 'x'));
  EXPECT_TRUE(log.IsEnabled());
  EXPECT_EQ(::access("/dev/full", W_OK), 0) << "the device is not deleted";
}

/// Lets no file of the process grow beyond a size, as a disk that fills up does.
void LimitFileSize(rlim_t size) {
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  limit.rlim_cur = std::min(size, limit.rlim_max);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(Logger, DiskThatFillsUpTearsNoLine) {
  struct Row {
    rlim_t room;
    const char* result;
    const char* why;
  };
  const auto old = ::signal(SIGXFSZ, SIG_IGN);
  for (const Row& row :
       {Row{6, "12345\n(3 lines lost: File too large)\nafter\n", "full at the end of a line"},
        Row{10, "12345\n(3 lines lost: File too large)\nafter\n", "full within a line"},
        Row{14, "12345\n(3 lines lost: File too large)\nafter\n", "but for the line feed"},
        Row{15 + 4, "12345\nabcdefgh\n(2 lines lost: File too large)\nafter\n", "full again"},
        Row{0, "(4 lines lost: File too large)\nafter\n", "full from the start"}}) {
    const TemporaryFolder folder;
    CLogger log(folder.Path("a.log"));
    LimitFileSize(row.room);
    for (const char* line : {"12345", "abcdefgh", "lost", "lost"}) log.Send(4, line);
    LimitFileSize(std::numeric_limits<rlim_t>::max());
    log.Send(4, "after");
    EXPECT_EQ(Got(folder.Path("a.log")), row.result) << row.why;
  }
  {
    const TemporaryFolder folder;
    auto log = std::make_unique<CLogger>(folder.Path("a.log"));
    LimitFileSize(20);
    for (const char* line : {"0123456789", "abcdefghijklmnop", "lost"}) log->Send(4, line);
    CLogger other(folder.Path("a.log"));
    other.Send(4, "between");
    LimitFileSize(std::numeric_limits<rlim_t>::max());
    log.reset();
    CLogger(folder.Path("a.log")).Send(4, "next process");
    EXPECT_EQ(Got(folder.Path("a.log")),
              "0123456789\nbetween\n(2 lines lost: File too large)\nnext process\n")
        << "nobody meets a torn line, and the end tells of the loss";
  }
  // Each time there is a little more room: notes are cut, too, and yet every line is told of.
  const TemporaryFolder folder;
  CLogger log(folder.Path("a.log"));
  for (rlim_t room = 3; room < 100; room += 7) {
    LimitFileSize(room);
    log.Send(4, "abcdefgh");
  }
  LimitFileSize(std::numeric_limits<rlim_t>::max());
  log.Send(4, "abcdefgh");
  std::ifstream file(folder.Path("a.log"));
  int told = 0;
  for (std::string line; std::getline(file, line);) {
    told += line == "abcdefgh" ? 1 : std::stoi(line.substr(1));
  }
  EXPECT_EQ(told, 15);
  ::signal(SIGXFSZ, old);
}

TEST(Logger, PipeIsOpenedAndLostWithoutWaitingOrASignal) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("pipe");
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  CLogger log(path);
  EXPECT_THROW(log.Send(4, "nobody reads"), Exception);
  int reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
  log.Enable(true);
  log.Send(4, "first");
  char bytes[100];
  EXPECT_EQ(std::string(bytes, static_cast<std::size_t>(::read(reader, bytes, 100))), "first\n");
  ::close(reader);
  log.Send(4, "lost");
  log.Send(4, "lost");
  reader = ::open(path.c_str(), O_RDONLY | O_NONBLOCK);
  log.Send(4, "after");
  EXPECT_EQ(std::string(bytes, static_cast<std::size_t>(::read(reader, bytes, 100))),
            "(2 lines lost: Broken pipe)\nafter\n");
  ::close(reader);
}

/// What a callback was told.
struct Told {
  std::vector<std::string> lines;
  CLogger* log = nullptr;
  static void Keep(int type, const GString& text, void* user) {
    static_cast<Told*>(user)->lines.push_back(std::to_string(type) + " " + text.String());
  }
  static void KeepAndLog(int type, const GString& text, void* user) {
    Keep(type, text, user);
    static_cast<Told*>(user)->log->Send(2, text + "!");
  }
  static void Throw(int, const GString&, void*) { throw std::runtime_error("callback"); }
};

TEST(Logger, CallbackGetsEachLineAfterTheBuffer) {
  CLogger log;
  Told told;
  log.SetOutputCallback(&Told::Keep, &told);
  log.SendVA(5, "%d", 1);
  log.Send(0, "");
  log.SetOutputCallback(nullptr, nullptr);
  log.Send(4, "alone");
  EXPECT_EQ(told.lines, (std::vector<std::string>{"5 1", "0 "}));
  EXPECT_EQ(log.GetBuffer(), "1\n\nalone\n");
}

TEST(Logger, CallbackThatLogsEachLineComesToAnEnd) {
  CLogger log;
  Told told;
  told.log = &log;
  log.SetOutputCallback(&Told::KeepAndLog, &told);
  for (const int round : {1, 2}) {
    log.Send(4, "a");
    ASSERT_EQ(told.lines.size(), 32u * static_cast<unsigned>(round)) << "no depth is left over";
  }
  EXPECT_EQ(told.lines[0], "4 a");
  EXPECT_EQ(told.lines[31], "2 a" + std::string(31, '!'));
  EXPECT_NE(log.GetBuffer().find(GString("a") + GString(32, '!') + "\n"), GString::npos)
      << "the last line is logged all the same";
}

TEST(Logger, CallbackThatThrowsLeavesTheLogUsable) {
  CLogger log;
  log.SetOutputCallback(&Told::Throw, nullptr);
  for (int i = 0; i < 40; ++i) EXPECT_THROW(log.Send(4, "a"), std::runtime_error);
  log.EmptyBuffer();
  Told told;
  log.SetOutputCallback(&Told::Keep, &told);
  log.Separator(4, "");
  EXPECT_EQ(log.GetBuffer(), "\n") << "the line before was not empty";
  EXPECT_EQ(told.lines.size(), 1u);
}

TEST(Logger, CallbackMayChangeTheLogger) {
  const TemporaryFolder folder;
  struct Change {
    CLogger log;
    std::string path;
  } change;
  change.path = folder.Path("a.log");
  change.log.SetOutputCallback(
      [](int, const GString&, void* user) {
        auto& c = *static_cast<Change*>(user);
        c.log.EmptyBuffer();
        c.log.SetOutputFile(c.path, true);
        c.log.SetRemoteLogger("", "", 0, 0);
        c.log.SetOutputCallback(nullptr, nullptr);
        c.log.Send(4, "from the callback");
      },
      &change);
  change.log.Send(16, "first");
  change.log.Send(16, "second");
  EXPECT_EQ(change.log.GetBuffer(), "");
  EXPECT_EQ(Got(change.path), "from the callback\nsecond\n");
}

TEST(Logger, RemoteLinesAreThoseWithTheirBit) {
  const test::Receiver receiver;
  CLogger log;
  log.Send(31, "no remote logger, no error");
  log.EnableRemoteLogger(true);
  ASSERT_TRUE(log.SetRemoteLogger("probe: ", "127.0.0.1", receiver.Port(), 0));
  log.Send(15, "local");
  log.Send(16, "first");
  log.EnableRemoteLogger(false);
  EXPECT_FALSE(log.IsRemoteLoggerEnabled());
  log.Send(16, "not sent");
  log.EnableRemoteLogger(true);
  log.Send(20, std::string(65'497, 'x'));  // With the prefix longer than a datagram.
  log.Send(20, std::string(65'496, 'x'));
  log.SendVA(31, "%s", "last");
  EXPECT_EQ(receiver.Next(), "<6> probe: first");
  EXPECT_EQ(receiver.Next(), "<6> probe: " + std::string(65'496, 'x'));
  EXPECT_EQ(receiver.Next(), "<6> probe: last");
  EXPECT_EQ(receiver.Next(false), std::nullopt);
  EXPECT_FALSE(log.SetRemoteLogger("", "256.0.0.1.example.invalid", -1, 0));
  EXPECT_FALSE(log.IsRemoteLoggerEnabled()) << "the old one is gone";
}

using Scopes = FreshGlobalLogger;

TEST_F(Scopes, TellOfTheirBeginAndTheirEnd) {
  g_Logger.Enable(true);
  {
    const ScopedLogMessage outer("outer");
    auto inner = std::make_unique<ScopedLogMessage>("inner");
    const ScopedLogMessage copy(*inner);
    inner.reset();
  }
  EXPECT_EQ(g_Logger.GetBuffer(), "Enter outer\nEnter inner\nExit inner\nExit inner\nExit outer\n");
  g_Logger.EmptyBuffer();
  try {
    const ScopedLogMessage scope("unwound");
    throw 1;
  } catch (int) {
    const ScopedLogMessage scope("handler");
  }
  EXPECT_EQ(g_Logger.GetBuffer(), "Enter unwound\nEnter handler\nExit handler\n");
  g_Logger.EmptyBuffer();
  g_Logger.SetType(31 & ~8);
  { const ScopedLogMessage scope("masked"); }
  EXPECT_EQ(g_Logger.GetBuffer(), "");
  g_Logger.SetType(8);
  const GString longest(9000, 'x');
  { const ScopedLogMessage scope(longest.c_str()); }
  EXPECT_EQ(g_Logger.GetBuffer(), "Enter " + longest + "\nExit " + longest + "\n");
  EXPECT_THROW(ScopedLogMessage(nullptr), Exception);
}

TEST_F(Scopes, EndsThatCannotBeLoggedAreSwallowed) {
  {
    const ScopedLogMessage scope("scope");
    g_Logger.Enable(true);
    g_Logger.SetOutputCallback(&Told::Throw, nullptr);
  }
  EXPECT_EQ(g_Logger.GetBuffer(), "Exit scope\n");
}

TEST(MessageHook, GetsTheTitleAndTheFormattedText) {
  static std::vector<std::string> shown;
  const MessageHook mine = [](const GString& title, const GString& text) {
    shown.push_back(title.String() + "|" + text.String());
  };
  EXPECT_EQ(SetMessageHook(mine), nullptr);
  dprintf("%d of %s", 3, "them");
  dprintf("%s", std::string(8192, 'x').c_str());
  EXPECT_EQ(shown, (std::vector<std::string>{"Error|3 of them", "Error|%s"}));
  EXPECT_THROW(dprintf(nullptr), Exception);

  EXPECT_EQ(SetMessageHook([](const GString&, const GString&) { throw 1; }), mine);
  EXPECT_THROW(dprintf("a"), int);
  EXPECT_NE(SetMessageHook(nullptr), mine);
  ::testing::internal::CaptureStderr();
  dprintf("%s", "plain");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Error: plain\n");
}

TEST(LoggerAtExit, ObjectsThatEndLateStillLog) {
  const TemporaryFolder folder;
  EXPECT_EXIT(
      {
        g_Logger.SetOutputFile(folder.Path("a.log"), true);
        g_Logger.Enable(true);
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  EXPECT_EQ(Got(folder.Path("a.log")), "late\n");
}

}  // namespace
}  // namespace vlm
