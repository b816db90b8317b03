#include <velum/core/GString.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/RecentLines.h>
#include <velum/diagnostics/test/Receiver.h>

#include <testing/Sanitized.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using testing::TemporaryFolder;

constexpr int kThreads = 16;
constexpr int kLines = testing::Rounds(100'000);

/// A line whose length depends on its number, and which shows where it ends.
std::string LineOf(int thread, int number) {
  return std::to_string(thread) + " " + std::to_string(number) + " " +
         std::string(static_cast<std::size_t>(number % 60), static_cast<char>('a' + thread)) + ".";
}

void LogLines(CLogger& log, int thread) {
  for (int i = 0; i < kLines; ++i) {
    const int type = i % 2 ? LogInformation : LogInformation | LogRemote;
    if (i % 3) {
      log.Send(type, LineOf(thread, i));
    } else {
      log.SendVA(type, "%s", LineOf(thread, i).c_str());
    }
  }
}

/// True for "<6> " and a line of a thread.
bool IsWholeDatagram(const std::string& bytes) {
  int thread = 0;
  int number = 0;
  return std::sscanf(bytes.c_str(), "<6> %d %d", &thread, &number) == 2 &&
         bytes == "<6> " + LineOf(thread, number);
}

/// Takes datagrams as they come, each of which must be a whole line.
class Listener {
 public:
  explicit Listener(CLogger& log) {
    EXPECT_TRUE(log.SetRemoteLogger("", "127.0.0.1", receiver_.Port(), 0));
  }
  /// How many came.
  int End() {
    ends_ = true;
    thread_.join();
    return arrived_;
  }

 private:
  void Run() {
    while (const auto bytes = receiver_.Next(!ends_)) {
      ++arrived_;
      EXPECT_TRUE(IsWholeDatagram(*bytes)) << *bytes;
    }
  }

  const test::Receiver receiver_;
  std::atomic<bool> ends_{false};
  int arrived_ = 0;
  std::thread thread_{[this] { Run(); }};
};

void LogFromAllThreads(CLogger& log) {
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) threads.emplace_back([&log, t] { LogLines(log, t); });
  for (std::thread& thread : threads) thread.join();
}

/// Expects every line of every thread in `lines`, whole, and in the order of its thread.
void ExpectAllLines(std::istream& lines, int threads = kThreads) {
  std::array<int, 2 * kThreads> next{};
  for (std::string line; std::getline(lines, line);) {
    const int thread = std::atoi(line.c_str());
    ASSERT_TRUE(thread >= 0 && thread < threads) << line;
    ASSERT_EQ(line, LineOf(thread, next[static_cast<unsigned>(thread)]++));
  }
  for (int t = 0; t < threads; ++t) EXPECT_EQ(next[static_cast<unsigned>(t)], kLines) << t;
}

TEST(LoggerThreads, TearAndLoseNoLineOfTheBufferAndSendWholeDatagrams) {
  CLogger log;
  Listener listener(log);
  LogFromAllThreads(log);
  EXPECT_GT(listener.End(), 0);
  std::istringstream lines(log.GetBuffer());
  ExpectAllLines(lines);
}

TEST(LoggerThreads, TearAndLoseNoLineOfTheFileAndSendWholeDatagrams) {
  const TemporaryFolder folder;
  CLogger log(folder.Path("a.log"));
  Listener listener(log);
  LogFromAllThreads(log);
  EXPECT_GT(listener.End(), 0);
  std::ifstream lines(folder.Path("a.log"));
  ExpectAllLines(lines);
}

TEST(LoggerThreads, TwoProcessesTearNoLineOfTheirFile) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a.log");
  const auto logFrom = [&path](int first) {
    CLogger log(path);
    for (int t = first; t < first + 4; ++t) LogLines(log, t);
  };
  const pid_t child = ::fork();
  ASSERT_NE(child, -1);
  if (child == 0) {
    logFrom(4);
    ::_exit(0);
  }
  logFrom(0);
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  std::ifstream lines(path);
  ExpectAllLines(lines, 8);
}

TEST(LoggerThreads, SwitchesMayChangeMeanwhile) {
  CLogger log;
  std::atomic<bool> ends{false};
  std::thread switches([&] {
    for (int i = 0; !ends; ++i) {
      log.Enable(i % 2 == 0);
      log.SetType(i % 3 == 0 ? LogScope : LogAll);
    }
  });
  std::thread other([&] { LogLines(log, 1); });
  LogLines(log, 0);
  other.join();
  ends = true;
  switches.join();
  std::istringstream lines(log.GetBuffer());
  for (std::string line; std::getline(lines, line);) {
    int thread = 0;
    int number = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "%d %d", &thread, &number), 2);
    ASSERT_EQ(line, LineOf(thread, number));
  }
}

TEST(LoggerThreads, RecentLinesAreWholeWhileOthersAreWritten) {
  std::atomic<bool> ends{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < 2; ++t) {
    threads.emplace_back([&, t] {
      CLogger mine;
      for (int i = 0; !ends; ++i) {
        mine.Send(4, LineOf(t, i));
        if (i % 1000 == 0) mine.EmptyBuffer();
      }
    });
  }
  std::string text(kRecentLogBytes, '\0');
  std::size_t read = 0;
  for (int round = 0; round < 2000; ++round) {
    std::istringstream lines(text.substr(0, CopyRecentLogLines(text.data(), text.size())));
    for (std::string line; std::getline(lines, line); ++read) {
      int thread = 0;
      int number = 0;
      if (std::sscanf(line.c_str(), "%d %d", &thread, &number) != 2) continue;
      if (thread > 1) continue;  // What an earlier test has left.
      ASSERT_EQ(line, LineOf(thread, number));
    }
  }
  ends = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_GT(read, 0u);
}

TEST(LoggerAtExit, ThreadsThatStillLogDoNoHarm) {
  const TemporaryFolder folder;
  EXPECT_EXIT(
      {
        g_Logger.SetOutputFile(folder.Path("a.log"), true);
        g_Logger.Enable(true);
        for (int t = 0; t < 4; ++t) {
          std::thread([t] {
            for (int i = 0;; ++i) g_Logger.SendVA(LogAll, "%s", LineOf(t, i).c_str());
          }).detach();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
  std::ifstream lines(folder.Path("a.log"));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    if (line == "late") continue;
    int thread = 0;
    int number = 0;
    ASSERT_EQ(std::sscanf(line.c_str(), "%d %d", &thread, &number), 2) << line;
    ASSERT_EQ(line, LineOf(thread, number));
  }
  EXPECT_GT(count, 0);
}

TEST(LoggerAtExit, CallbackThatWaitsForEverIsNotWaitedFor) {
  EXPECT_EXIT(
      {
        g_Logger.Enable(true);
        static std::atomic<bool> isInside{false};
        g_Logger.SetOutputCallback(
            [](int, const GString&, void*) {
              isInside = true;
              for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
            },
            nullptr);
        std::thread([] { g_Logger.Send(LogAlert, "a"); }).detach();
        while (!isInside) std::this_thread::yield();
        g_Logger.Enable(false);
        g_Logger.Separator(LogAlert, "not waited for either");
        std::exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vlm
