#include <velum/platform/detail/Registry.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace vlm::platform {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

const RegistryEntry kEntry{0x80000001, "Software\\Plots", "Title"};

std::string Stored(const RegistryEntry& entry = kEntry) {
  std::string value = "none";
  return ReadRegistry(entry, value) ? value : "none";
}

/// What another process gives back that does `work`, as the user nobody if this one may do all.
template <class Work>
int InChild(Work work) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setresuid(kNobody, kNobody, kNobody) != 0) _exit(99);
    _exit(work());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Runs statements on a connection that the registry knows nothing of; the last answer.
std::string RunApart(const std::string& path, const char* sql) {
  sqlite3* connection = nullptr;
  std::string answer;
  const auto keep = [](void* kept, int, char** texts, char**) {
    *static_cast<std::string*>(kept) = texts[0] ? texts[0] : "";
    return 0;
  };
  sqlite3_open(path.c_str(), &connection);
  EXPECT_EQ(sqlite3_exec(connection, sql, keep, &answer, nullptr), SQLITE_OK) << sql;
  sqlite3_close(connection);
  return answer;
}

class Registry : public ::testing::Test {
 protected:
  Registry() { SetRegistryPath(path_); }
  ~Registry() override { SetRegistryPath("/dev/null/none"); }

  testing::TemporaryFolder folder_;
  std::string path_ = folder_.Path("registry.db");
};

TEST_F(Registry, ManyProcessesMayMakeTheFileAtOnce) {
  constexpr int kRounds = 40;
  constexpr int kProcesses = 4;
  for (int round = 0; round < kRounds; ++round) {
    const std::string path = folder_.Path(std::to_string(round));
    SetRegistryPath(path);
    int begin[2];
    ASSERT_EQ(pipe(begin), 0);
    std::vector<pid_t> children;
    for (int number = 0; number < kProcesses; ++number) {
      children.push_back(fork());
      if (children.back() != 0) continue;
      close(begin[1]);
      char byte = 0;
      if (read(begin[0], &byte, 1) != 0) _exit(2);
      const std::string name = std::to_string(number);
      const RegistryEntry mine{1, "p", name};
      _exit(WriteRegistry(mine, name) == RegistryResult::kDone && Stored(mine) == name ? 0 : 1);
    }
    close(begin[0]);
    close(begin[1]);  // All begin now.
    for (const pid_t child : children) {
      int status = -1;
      waitpid(child, &status, 0);
      EXPECT_EQ(status, 0) << "round " << round;
    }
    for (int number = 0; number < kProcesses; ++number) {
      const std::string name = std::to_string(number);
      EXPECT_EQ(Stored({1, "p", name}), name) << "round " << round;
    }
  }
}

TEST_F(Registry, AWaitingWriteHoldsUpNeitherReadersNorForks) {
  ASSERT_EQ(WriteRegistry(kEntry, "before"), RegistryResult::kDone);
  // Another process has a transaction open until it is told to go.
  int ready[2];
  int leave[2];
  ASSERT_TRUE(pipe(ready) == 0 && pipe(leave) == 0);
  const pid_t other = fork();
  if (other == 0) {
    close(leave[1]);
    sqlite3* connection = nullptr;
    sqlite3_open(path_.c_str(), &connection);
    const bool isLocked =
        sqlite3_exec(connection, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
    char byte = isLocked ? 'y' : 'n';
    if (write(ready[1], &byte, 1) != 1) _exit(1);
    _exit(read(leave[0], &byte, 1) == 0 ? 0 : 1);
  }
  close(leave[0]);
  char byte = 0;
  ASSERT_TRUE(read(ready[0], &byte, 1) == 1 && byte == 'y');

  std::atomic<bool> isWritten = false;
  std::thread writer([&] {
    EXPECT_EQ(WriteRegistry(kEntry, "after"), RegistryResult::kDone);
    isWritten = true;
  });
  std::this_thread::sleep_for(milliseconds(100));
  const Clock::time_point begin = Clock::now();
  EXPECT_EQ(Stored(), "before");
  EXPECT_EQ(InChild([] { return 0; }), 0);
  EXPECT_EQ(Stored(), "before");
  EXPECT_FALSE(isWritten) << "it waits all the time";
  EXPECT_LT(Clock::now() - begin, milliseconds(3000));
  close(leave[1]);
  writer.join();
  waitpid(other, nullptr, 0);
  EXPECT_EQ(Stored(), "after");

  // Who does not go is waited for no longer than promised.
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(path_.c_str(), &connection), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(connection, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  const Clock::time_point second = Clock::now();
  EXPECT_EQ(WriteRegistry(kEntry, "never"), RegistryResult::kNotWritten);
  EXPECT_GE(Clock::now() - second, milliseconds(5000));
  sqlite3_close(connection);
  EXPECT_EQ(Stored(), "after");
}

TEST_F(Registry, ATextThatIsTooLongForSqliteIsNotWritten) {
  ASSERT_EQ(WriteRegistry(kEntry, "old"), RegistryResult::kDone);
  // Nobody looks at the bytes, so that no memory stands behind them.
  constexpr std::size_t kSize = 1'000'000'001;
  void* const bytes =
      mmap(nullptr, kSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(bytes, MAP_FAILED);
  const std::string_view text(static_cast<const char*>(bytes), kSize);
  EXPECT_EQ(WriteRegistry(kEntry, text), RegistryResult::kNotWritten);
  munmap(bytes, kSize);
  EXPECT_EQ(Stored(), "old");
}

TEST_F(Registry, AVariableNamesOneFileWhateverTheCurrentFolder) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::create_directory(folder_.Path("a"));
  std::filesystem::create_directory(folder_.Path("b"));
  for (const char* const name : {"here.db", ":memory:", "file:x?mode=memory"}) {
    setenv("VELUM_REGISTRY", name, 1);
    SetRegistryPath("");
    std::filesystem::current_path(folder_.Path("a"));
    EXPECT_EQ(WriteRegistry(kEntry, name), RegistryResult::kDone);
    std::filesystem::current_path(folder_.Path("b"));
    // A fork makes the connection a new one.
    EXPECT_EQ(InChild([] { return 0; }), 0);
    EXPECT_EQ(Stored(), name);
    EXPECT_TRUE(std::filesystem::exists(folder_.Path("a/") + name)) << name;
  }
  EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("b")));
  unsetenv("VELUM_REGISTRY");
  std::filesystem::current_path(before);
}

TEST_F(Registry, IsReadWhereNothingMayBeWritten) {
  const std::string folder = folder_.Path("a % b?c#");
  const std::string path = folder + "/registry.db";
  SetRegistryPath(path);
  ASSERT_EQ(WriteRegistry(kEntry, "v"), RegistryResult::kDone);
  SetRegistryPath("/dev/null/none");
  SetRegistryPath(path);
  chmod(folder_.Path().c_str(), 0755);
  for (const mode_t mode : {0444u, 0666u}) {
    chmod(path.c_str(), mode);
    chmod(folder.c_str(), 0555);
    const int result = InChild([] {
      const bool isRead = Stored() == "v" && Stored({1, "", ""}) == "none";
      const bool isRefused = WriteRegistry(kEntry, "w") == RegistryResult::kNotOpened;
      return isRead && isRefused && Stored() == "v" ? 0 : 1;
    });
    EXPECT_EQ(result, 0) << mode;
    chmod(folder.c_str(), 0755);
  }
  // With a log beside it the file alone may be an old state.
  std::ofstream(path + "-wal") << "x";
  chmod(folder.c_str(), 0555);
  EXPECT_EQ(InChild([] { return Stored() == "none" ? 0 : 1; }), 0);
  chmod(folder.c_str(), 0755);
}

TEST_F(Registry, AWriteBringsTheLogBack) {
  ASSERT_EQ(WriteRegistry(kEntry, "v"), RegistryResult::kDone);
  SetRegistryPath("/dev/null/none");
  ASSERT_EQ(RunApart(path_, "PRAGMA journal_mode = DELETE"), "delete");
  SetRegistryPath(path_);
  EXPECT_EQ(Stored(), "v");
  EXPECT_EQ(RunApart(path_, "PRAGMA journal_mode"), "delete") << "reading changes nothing";
  ASSERT_EQ(WriteRegistry(kEntry, "w"), RegistryResult::kDone);
  EXPECT_EQ(RunApart(path_, "PRAGMA journal_mode"), "wal");
}

}  // namespace
}  // namespace vlm::platform
