#include <velum/files/RegParamList.h>

#include <velum/files/FileUtilities.h>
#include <velum/files/test/FileErrors.h>

#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using testing::BytesOfFile;
using testing::TemporaryFolder;

const char kKey[] = "Software\\Plots";

/// Waits for a child; true if it ended well.
bool EndedWell(pid_t child) {
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Each test has a registry of its own; the user's is never touched.
class RegParamList : public ::testing::Test {
 protected:
  RegParamList() { SetRegistryFile(path_); }
  ~RegParamList() override { SetRegistryFile("/dev/null/none"); }

  /// The value as the registry has it, past all caches.
  static std::string Stored(const GString& name, const GString& key = kKey,
                            HKEY root = HKEY_CURRENT_USER) {
    return CRegParamList(root, key).GetDef(name, "none", true);
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.Path("registry.db");
  CRegParamList list_{HKEY_CURRENT_USER, kKey};
};

TEST_F(RegParamList, ValuesOfEveryTypeStay) {
  list_.Set("text", "literal", true);
  list_.Set("int", -1, true);
  list_.Set("unsigned", 4294967295u, true);
  list_.Set("long", 4294967295ul, true);
  list_.Set("wide", std::int64_t{-9223372036854775807} - 1, true);
  list_.Set("double", 0.1 + 0.2, true);
  list_.Set("bool", true, true);
  const CRegParamList again(HKEY_CURRENT_USER, kKey);
  EXPECT_EQ(again.GetDef("text", "x", true), "literal");
  EXPECT_EQ(again.GetDef("text", GString("x"), true), "literal");
  EXPECT_EQ(again.GetDef("int", 0, true), -1);
  EXPECT_EQ(again.GetDef("unsigned", 0u, true), 4294967295u);
  EXPECT_EQ(again.GetDef("wide", std::int64_t{0}, true), std::int64_t{-9223372036854775807} - 1);
  EXPECT_EQ(again.GetDef("double", 0.0, true), 0.30000000000000004);
  EXPECT_EQ(again.GetDef("bool", false, true), true);
  EXPECT_EQ(again.GetDef("text", 5, true), 5) << "no number";
  EXPECT_EQ(again.GetDef("none", "x", true), "x");
  unsigned long number = 0;
  EXPECT_TRUE(again.Get("long", number, true) && number == 4294967295ul);
  EXPECT_EQ(test::CodeOf([&] { list_.Set("long", 4294967296ul, true); }), ERR_INVALID_PARAMETER);
  EXPECT_EQ(Stored("long"), "4294967295");
  EXPECT_EQ(list_.GetRootKey(), HKEY_CURRENT_USER);
  EXPECT_EQ(list_.GetRootSubKey(), kKey);
  EXPECT_EQ(CRegParamList().GetRootSubKey(), "");
}

TEST_F(RegParamList, NamesAreThoseOfARegistry) {
  list_.Set("Name", "v", true);
  const struct {
    const char* why;
    HKEY root;
    const char* key;
    const char* name;
    const char* value;
  } rows[] = {
      {"the same", HKEY_CURRENT_USER, "Software\\Plots", "Name", "v"},
      {"another case", HKEY_CURRENT_USER, "SOFTWARE\\plots", "NAME", "v"},
      {"separators at the ends", HKEY_CURRENT_USER, "\\Software\\Plots\\", "Name", "v"},
      {"another root", HKEY_LOCAL_MACHINE, "Software\\Plots", "Name", "none"},
      {"another key", HKEY_CURRENT_USER, "Software", "Name", "none"},
      {"no key", HKEY_CURRENT_USER, "", "Name", "none"},
      {"another name", HKEY_CURRENT_USER, "Software\\Plots", "Name ", "none"},
      {"no statement", HKEY_CURRENT_USER, "Software\\Plots", "' OR '1'='1", "none"},
  };
  for (const auto& row : rows) EXPECT_EQ(Stored(row.name, row.key, row.root), row.value) << row.why;
  const std::string awkward("'); DROP TABLE entries; --\0 \xFF", 29);
  CRegParamList(HKEY_USERS, awkward).Set(awkward, awkward, true);
  EXPECT_EQ(Stored(awkward, awkward, HKEY_USERS), awkward);
  EXPECT_EQ(Stored("Name"), "v");
}

TEST_F(RegParamList, TheCacheComesFirst) {
  CRegParamList other(HKEY_CURRENT_USER, kKey);
  EXPECT_EQ(list_.GetDef("miss", "none", true), "none");
  other.Set("miss", "v", true);
  EXPECT_EQ(list_.GetDef("miss", "none", true), "none") << "a miss is remembered";
  EXPECT_EQ(CRegParamList(list_).GetDef("miss", "none", true), "none") << "copies have the cache";
  list_.SetRoot(HKEY_CURRENT_USER, kKey);
  EXPECT_EQ(list_.GetDef("miss", "none", true), "v") << "a new root empties the cache";

  EXPECT_EQ(list_.GetDef("miss2", "none", false), "none");
  other.Set("miss2", "v", true);
  EXPECT_EQ(list_.GetDef("miss2", "none", true), "none") << "also where only the cache was asked";

  list_.Set("here", "v", false);
  list_.Set("here", "v", true);
  EXPECT_EQ(Stored("here"), "none") << "an equal value is not written";
  list_.Set("here", "w", true);
  EXPECT_EQ(Stored("here"), "w");
  list_.Set("here", "", true);
  EXPECT_EQ(list_.GetDef("here", "none", true), "none") << "an empty value is none";

  list_.Set("gone", "v", true);
  list_.Remove("gone", false);
  EXPECT_EQ(list_.GetDef("gone", "none", true), "v") << "removed from the cache only";
  list_.Remove("gone", true);
  EXPECT_EQ(Stored("gone"), "none");
  list_.Remove("gone", true);
}

TEST_F(RegParamList, TheFileIsWhereTheUserWantsIt) {
  SetRegistryFile("");
  const std::string named = folder_.Path("a/b/named.db");
  setenv("VELUM_REGISTRY", named.c_str(), 1);
  EXPECT_EQ(Stored("k"), "none");
  EXPECT_FALSE(FileExists(folder_.Path("a"))) << "reading makes nothing";
  list_.Set("k", "env", true);
  EXPECT_EQ(BytesOfFile(named).substr(0, 6), "SQLite");
  unsetenv("VELUM_REGISTRY");

  const std::string home = getenv("HOME") ? getenv("HOME") : "";
  SetRegistryFile("");
  setenv("HOME", folder_.Path("home").c_str(), 1);
  setenv("XDG_CONFIG_HOME", "relative", 1);
  list_.Set("k", "home", true);
  EXPECT_TRUE(FileExists(folder_.Path("home/.config/velum/registry.db")));
  struct stat status {};
  stat(folder_.Path("home/.config/velum").c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0700u);

  SetRegistryFile("");
  setenv("XDG_CONFIG_HOME", folder_.Path("xdg").c_str(), 1);
  list_.Set("k", "xdg", true);
  EXPECT_TRUE(FileExists(folder_.Path("xdg/velum/registry.db")));
  SetRegistryFile(named);
  EXPECT_EQ(Stored("k"), "env");
  unsetenv("XDG_CONFIG_HOME");
  setenv("HOME", home.c_str(), 1);
}

TEST_F(RegParamList, AFileThatIsSomethingElseStaysAsItIs) {
  SetRegistryFile(path_);
  list_.Set("k", "v", true);
  SetRegistryFile("");
  SetRegistryFile(path_);
  std::string cut = BytesOfFile(path_);
  ASSERT_GT(cut.size(), 5000u);
  std::fill(cut.begin() + 4096, cut.end(), '\xA5');
  // What SQLite calls an empty table of somebody else's.
  std::string foreign = BytesOfFile(path_);
  foreign[68] = 'X';
  const struct {
    const char* why;
    std::string bytes;
    int code;
  } rows[] = {
      {"no database", std::string(8192, 'x'), ERR_OPEN_REGISTRY_KEY},
      {"a damaged page", cut, ERR_WRITE_REGISTRY_KEY},
      {"another application's", foreign, ERR_OPEN_REGISTRY_KEY},
  };
  int number = 0;
  for (const auto& row : rows) {
    const std::string path = folder_.Path(std::to_string(number++));
    testing::PutFile(path, row.bytes);
    SetRegistryFile(path);
    EXPECT_EQ(Stored("k"), "none") << row.why;
    EXPECT_EQ(test::CodeOf([&] { list_.Set("k", row.why, true); }), row.code) << row.why;
    list_.Remove("k", true);
    SetRegistryFile(path_);
    EXPECT_EQ(BytesOfFile(path), row.bytes) << row.why;
  }
  EXPECT_EQ(Stored("k"), "v");
  SetRegistryFile("/dev/null/registry.db");
  EXPECT_EQ(test::ErrorOf([&] { list_.Set("other", "v", true); }),
            "16: Unable to open registry key 'Software\\Plots'.");
  // A file that was taken away is made anew, and what is in its place is not damaged.
  SetRegistryFile(path_);
  list_.Set("k", "w", true);
  std::remove(path_.c_str());
  usleep(150'000);
  list_.Set("k", "x", true);
  EXPECT_EQ(Stored("k"), "x");
  SetRegistryFile(path_);
  EXPECT_EQ(Stored("k"), "x");
}

TEST_F(RegParamList, KilledProcessesKeepEveryCompletedWrite) {
  constexpr int kKills = 100;
  std::mt19937 random(1);
  int written = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    int told[2];
    ASSERT_EQ(pipe(told), 0);
    const pid_t child = fork();
    if (child == 0) {
      for (int i = written;; ++i) {
        list_.Set("k" + std::to_string(i), i, true);
        if (write(told[1], &i, sizeof(i)) != sizeof(i)) _exit(1);
      }
    }
    close(told[1]);
    // Some are killed while they open the file, some after many writes, however fast they are.
    int i = 0;
    for (auto left = random() % 6; left > 0; --left) {
      if (read(told[0], &i, sizeof(i)) == sizeof(i)) written = i + 1;
    }
    usleep(static_cast<useconds_t>(random() % 5000));
    ::kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(told[0], &i, sizeof(i)) == sizeof(i)) written = i + 1;
    close(told[0]);
    for (i = std::max(0, written - 20); i < written; ++i) {
      ASSERT_EQ(Stored("k" + std::to_string(i)), std::to_string(i)) << kill;
    }
  }
  EXPECT_GT(written, kKills) << "the children had time to write";
  for (int i = 0; i < written; ++i) {
    ASSERT_EQ(Stored("k" + std::to_string(i)), std::to_string(i));
  }
}

TEST_F(RegParamList, ProcessesWriteAndReadAtOnce) {
  constexpr int kProcesses = 4;
  constexpr int kWrites = 200;
  std::vector<pid_t> children;
  for (int number = 0; number < kProcesses; ++number) {
    children.push_back(fork());
    if (children.back() != 0) continue;
    // All make the file at the same moment.
    for (int i = 0; i < kWrites; ++i) {
      const GString name = ToString("p%d.%d", number, i);
      const bool isWritten = test::CodeOf([&] { list_.Set(name, i, true); }) == -1;
      if (!isWritten || Stored(name) != std::to_string(i)) _exit(1);
    }
    _exit(0);
  }
  for (const pid_t child : children) EXPECT_TRUE(EndedWell(child));
  for (int number = 0; number < kProcesses; ++number) {
    for (int i = 0; i < kWrites; ++i) {
      ASSERT_EQ(Stored(ToString("p%d.%d", number, i)), std::to_string(i));
    }
  }
}

TEST_F(RegParamList, AForkGivesBothSidesTheirOwnConnection) {
  list_.Set("before", 1, true);
  int parentIsGone[2];
  ASSERT_EQ(pipe(parentIsGone), 0);
  const pid_t child = fork();
  if (child == 0) {
    list_.Set("child", 2, true);
    char byte = 0;
    close(parentIsGone[1]);
    if (read(parentIsGone[0], &byte, 1) != 0) _exit(1);
    // The parent has closed its connection in order, as the last one if it did not know of this.
    list_.Set("child", 3, true);
    _exit(Stored("parent") == "4" ? 0 : 1);
  }
  list_.Set("parent", 4, true);
  while (Stored("child") != "2") usleep(1000);
  SetRegistryFile("/dev/null/none");
  close(parentIsGone[1]);
  close(parentIsGone[0]);
  EXPECT_TRUE(EndedWell(child));
  SetRegistryFile(path_);
  EXPECT_EQ(Stored("child"), "3");
  EXPECT_EQ(Stored("before"), "1");
}

TEST_F(RegParamList, ThreadsUseListsOfTheirOwn) {
  constexpr int kThreads = 4;
  constexpr int kWrites = 100;
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([number] {
      CRegParamList mine(HKEY_CURRENT_USER, kKey);
      for (int i = 0; i < kWrites; ++i) {
        const GString name = ToString("t%d.%d", number, i);
        mine.Set(name, i, true);
        EXPECT_EQ(Stored(name), std::to_string(i));
        mine.Set("shared", name, true);
        if (i % 10 == 0) mine.Remove(name, true);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Stored("t3.99"), "99");
  EXPECT_EQ(Stored("t3.90"), "none");
}

}  // namespace
}  // namespace vlm
