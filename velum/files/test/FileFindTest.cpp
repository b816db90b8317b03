#include <velum/core/ErrorCodes.h>
#include <velum/files/FileFind.h>
#include <velum/files/test/FileErrors.h>

#include <testing/TemporaryFolder.h>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <ctime>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> Rest(CFileFind& find) {
  std::vector<std::string> names;
  while (find.FindNextFileA()) names.push_back(find.GetFileName());
  return names;
}

class FileFind : public ::testing::Test {
 protected:
  FileFind() {
    for (const char* const name : {"b.TXT", "a10.txt", "a9.txt", "!x", "back\\slash", "noext"}) {
      std::ofstream(folder_.Path(name)) << "12345";
    }
    mkdir(folder_.Path("sub.txt").c_str(), 0755);
    std::ofstream(folder_.Path(".hidden")) << "1";
    chmod(folder_.Path("b.TXT").c_str(), 0444);
    for (char& c : pattern_) {
      if (c == '/') c = '\\';
    }
  }

  testing::TemporaryFolder folder_;
  std::string pattern_ = folder_.Path("");
};

TEST_F(FileFind, GivesTheNamesThatMatchInTheOrderOfTheirBytes) {
  const auto found = [this](const char* pattern) {
    CFileFind find(pattern_ + pattern);
    return Rest(find);
  };
  const auto all = ElementsAre(".", "..", "!x", ".hidden", "a10.txt", "a9.txt", "b.TXT",
                               "back\\slash", "noext", "sub.txt");
  EXPECT_THAT(found("*"), all);
  EXPECT_THAT(found("*.*"), all) << "every name, also those without a point";
  EXPECT_THAT(found("*.txt"), ElementsAre("a10.txt", "a9.txt", "b.TXT", "sub.txt"));
  EXPECT_THAT(found("A?.TXT"), ElementsAre("a9.txt"));
  EXPECT_THAT(found("noext"), ElementsAre("noext"));
  EXPECT_THAT(found("NOEXT"), IsEmpty()) << "a name is looked for as it is spelt";
  EXPECT_THAT(found("none*"), IsEmpty());
  EXPECT_THAT(found(""), IsEmpty());
  EXPECT_THAT(found("noext\\*"), IsEmpty()) << "a file where a folder is meant";
  EXPECT_THAT(found("back\\slash"), IsEmpty()) << "names no file of the folder `back`";
  CFileFind drive("c:\\*"), none;
  EXPECT_FALSE(drive.FindNextFileA());
  EXPECT_FALSE(none.FindNextFileA());
}

TEST(FileFindWildCards, AreThoseOfTheSystemThatThePathsComeFrom) {
  const testing::TemporaryFolder folder;
  for (const char* const name : {"abc", "abcd.txt", "a.txt", "ab.txt", "noext", "x.y.z"}) {
    std::ofstream(folder.Path(name)) << "1";
  }
  struct Row {
    const char* pattern;
    std::vector<std::string> names;
    const char* why;
  };
  const Row rows[] = {
      {"a*.*", {"a.txt", "ab.txt", "abc", "abcd.txt"}, "a point before a star may be the end"},
      {"ABC.*", {"abc"}, "the same, and letters fold"},
      {"*.", {".", "..", "abc", "noext"}, "no point"},
      {"*.z", {"x.y.z"}, "a star goes over points"},
      {"x.*", {"x.y.z"}, "a star goes over points"},
      {"ab?.txt", {"ab.txt"}, "no byte before a point"},
      {"a???.txt", {"a.txt", "ab.txt", "abcd.txt"}, "up to three bytes before a point"},
      {"no????", {"noext"}, "no byte at the end"},
      {"no??", {}, "but bytes that are there need theirs"},
      {"?.txt", {"a.txt"}, "one byte"},
      {"a*t*x*", {"a.txt", "ab.txt", "abcd.txt"}, "stars find their way back"},
  };
  for (const Row& row : rows) {
    CFileFind find(folder.Path(row.pattern));
    EXPECT_EQ(Rest(find), row.names) << row.pattern << ": " << row.why;
  }
}

std::uint64_t Ticks(const FILETIME& time) {
  return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

TEST_F(FileFind, DescribesWhatItFinds) {
  CFileFind find(pattern_ + "b.TXT");
  ASSERT_TRUE(find.FindNextFileA());
  const std::string root = pattern_.substr(0, pattern_.size() - 1);
  EXPECT_EQ(find.GetRoot(false), root);
  EXPECT_EQ(find.GetFilePath(true), pattern_ + "b.TXT");
  EXPECT_EQ(find.GetFileNameNoExt(), "b");
  EXPECT_EQ(find.GetLength(), 5u);
  EXPECT_EQ(find.GetFindData().cAlternateFileName[0], '\0');
  const std::uint64_t ticks = Ticks(find.GetFindData().ftLastWriteTime);
  // 1 January 1601 to 1 January 1970: 369 years with 89 leap days.
  const auto seconds = static_cast<std::time_t>(ticks / 10000000) - (369 * 365 + 89) * 86400ll;
  EXPECT_NEAR(static_cast<double>(seconds), static_cast<double>(std::time(nullptr)), 60);

  const struct {
    const char* name;
    unsigned long attributes;
  } rows[] = {
      {"b.TXT", FILE_ATTRIBUTE_READONLY},    {".hidden", FILE_ATTRIBUTE_HIDDEN},
      {"sub.txt", FILE_ATTRIBUTE_DIRECTORY}, {"noext", FILE_ATTRIBUTE_NORMAL},
      {"..", FILE_ATTRIBUTE_DIRECTORY},
  };
  for (const auto& row : rows) {
    find.Init(pattern_ + row.name);
    ASSERT_TRUE(find.FindNextFileA()) << row.name;
    EXPECT_EQ(find.GetFindData().dwFileAttributes, row.attributes) << row.name;
    EXPECT_EQ(find.IsReadOnly(), row.attributes == FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(find.IsHidden(), row.attributes == FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(find.IsDirectory(), row.attributes == FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(find.IsNormal(), row.attributes == FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(find.IsSystem() || find.IsArchived() || find.IsTemporary() || find.IsCompressed());
    EXPECT_EQ(find.IsDots(), row.name == std::string(".."));
    EXPECT_TRUE(find.MatchesMask(0xFFFF) && !find.MatchesMask(0));
  }
}

TEST(FileFindTimes, ThatTheRecordCantHoldAreZero) {
  // This file system keeps every time that it is given, where others cut it.
  const std::string name = "/dev/shm/velum-" + std::to_string(getpid());
  const std::ofstream file(name);
  if (!file) GTEST_SKIP() << "there is no file system in memory";
  constexpr std::uint64_t kSecondsFrom1601 = 11'644'473'600;
  const struct {
    const char* why;
    std::int64_t seconds;
    std::uint64_t ticks;
  } rows[] = {
      {"before 1601", -11'644'473'601, 0},
      {"1601", -11'644'473'600, 0},
      {"a second later", -11'644'473'599, 10'000'000},
      {"30,000 years on", 900'000'000'000, (900'000'000'000 + kSecondsFrom1601) * 10'000'000},
      {"beyond 63 bits", 1'000'000'000'000, 0},
      {"beyond 64 bits", 2'000'000'000'000, 0},
  };
  for (const auto& row : rows) {
    const timespec times[] = {{row.seconds, 0}, {row.seconds, 0}};
    struct stat status {};
    ASSERT_EQ(utimensat(AT_FDCWD, name.c_str(), times, 0), 0) << row.why;
    ASSERT_EQ(stat(name.c_str(), &status), 0);
    if (status.st_mtime != row.seconds) continue;
    CFileFind find(name);
    EXPECT_TRUE(find.FindNextFileA()) << row.why;
    EXPECT_EQ(Ticks(find.GetFindData().ftLastWriteTime), row.ticks) << row.why;
  }
  unlink(name.c_str());
}

TEST_F(FileFind, ALargeFileAndADanglingLinkAreFound) {
  ASSERT_EQ(truncate(folder_.Path("a9.txt").c_str(), 5'000'000'000), 0);
  CFileFind find(pattern_ + "a9*");
  ASSERT_TRUE(find.FindNextFileA());
  EXPECT_EQ(find.GetLength(), 5'000'000'000u);
  ASSERT_EQ(symlink("/none", folder_.Path("link").c_str()), 0);
  find.Init(pattern_ + "l*");
  EXPECT_THAT(Rest(find), ElementsAre("link"));
}

TEST_F(FileFind, ASearchBeginsAgainOnlyWhenItIsToldTo) {
  CFileFind find(pattern_ + "a*");
  ASSERT_TRUE(find.FindNextFileA());
  find.Init("");
  EXPECT_THAT(Rest(find), ElementsAre("a9.txt")) << "an empty pattern leaves it open";
  EXPECT_FALSE(find.FindNextFileA());
  find.Close();
  EXPECT_THAT(Rest(find), ElementsAre("a10.txt", "a9.txt"));
  find.Init(pattern_ + "zz*");
  EXPECT_FALSE(find.FindNextFileA());
  std::ofstream(folder_.Path("zz")) << "";
  EXPECT_TRUE(find.FindNextFileA()) << "what found nothing is tried again";
}

TEST_F(FileFind, ACopyReadsOnByItself) {
  CFileFind find(pattern_ + "*.txt");
  ASSERT_TRUE(find.FindNextFileA());
  CFileFind copy(find);
  EXPECT_EQ(copy.GetFilePath(true), find.GetFilePath(true));
  EXPECT_THAT(Rest(find), ElementsAre("a9.txt", "b.TXT", "sub.txt"));
  ASSERT_EQ(unlink(folder_.Path("b.TXT").c_str()), 0);
  EXPECT_THAT(Rest(copy), ElementsAre("a9.txt", "sub.txt")) << "what is gone is passed over";
  copy = find;
  EXPECT_FALSE(copy.FindNextFileA());
  CFileFind taken(std::move(copy));
  EXPECT_EQ(test::CodeOf([&] { copy.FindNextFileA(); }), ERR_INTERNAL);  // NOLINT: moved from.
  copy.Init(pattern_ + "!*");
  EXPECT_THAT(Rest(copy), ElementsAre("!x"));
}

TEST(FileFindAtTheRoot, PathsBeginWithASeparator) {
  CFileFind find("/*");
  while (find.FindNextFileA() && find.GetFileName() != "tmp") {
  }
  EXPECT_EQ(find.GetFilePath(true), "\\tmp");
}

}  // namespace
}  // namespace vlm
