#include <velum/files/FileUtilities.h>
#include <velum/files/Path.h>

#include <testing/TemporaryFolder.h>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <fstream>
#include <string>

namespace vlm {
namespace {

using testing::TemporaryFolder;

TEST(FileUtilities, TellFilesFoldersAndNothingApart) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("a"), missing = folder.Path("b");
  std::ofstream(file) << "12345";
  const struct {
    const char* why;
    std::string path;
    bool exists, readable, writable;
    std::int64_t size;
  } rows[] = {
      {"a file", file, true, true, true, 5},
      {"a folder", folder.Path(), true, true, false, 0},
      {"nothing", missing, false, false, true, -1},
      {"nothing, in a folder that is not there", missing + "/c", false, false, false, -1},
      {"the empty path", "", false, false, false, -1},
      {"a drive", "c:\\a", false, false, false, -1},
      {"the library's separators", "\\dev\\null", true, true, true, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FileExists(row.path), row.exists) << row.why;
    EXPECT_EQ(PathExists(row.path), row.exists) << row.why;
    EXPECT_EQ(IsFileReadable(row.path), row.readable) << row.why;
    EXPECT_EQ(IsFileWritable(row.path), row.writable) << row.why;
    EXPECT_EQ(GetFileSize(row.path), row.size) << row.why;
  }
  EXPECT_FALSE(FileExists(missing)) << "a trial leaves no file behind";
  EXPECT_EQ(GetFileSize(file), 5) << "nor does it change one";
}

TEST(FileUtilities, RemoveEachTheirOwnKind) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("a"), empty = folder.Path("e");
  std::ofstream(file) << "x";
  mkdir(empty.c_str(), 0755);
  EXPECT_FALSE(RemoveEmptyFolder(folder.Path())) << "not empty";
  EXPECT_FALSE(RemoveEmptyFolder(file));
  EXPECT_FALSE(RemoveFile(empty));
  EXPECT_TRUE(RemoveFile(file));
  EXPECT_FALSE(RemoveFile(file));
  EXPECT_TRUE(RemoveEmptyFolder(empty));
  EXPECT_FALSE(RemoveEmptyFolder(empty));
}

TEST(FileUtilities, KnowWhereTheProcessAndItsModulesLie) {
  char text[PATH_MAX + 1] = {};
  ASSERT_GT(readlink("/proc/self/exe", text, PATH_MAX), 0);
  const GString program = GetModuleFilename(nullptr);
  EXPECT_EQ(CPath(text).GetFullPath(), program);
  EXPECT_EQ(GetStartupPath(nullptr, true) + GetStartupFilename(nullptr, true), program);
  EXPECT_EQ(GetStartupFilename(nullptr, false), CPath(program).GetName());
  static int inProgram = 0;
  EXPECT_EQ(GetModuleFilename(&inProgram), program);

  void* const handle = dlopen("libc.so.6", RTLD_LAZY);
  const GString library = GetModuleFilename(handle);
  EXPECT_EQ(GetStartupFilename(handle, true), "libc.so.6");
  EXPECT_EQ(GetModuleFilename(dlsym(handle, "getpid")), library) << "by an address inside";
  dlclose(handle);
  int nowhere = 0;
  EXPECT_EQ(GetModuleFilename(&nowhere), "") << "neither a module nor inside one";
  EXPECT_EQ(GetStartupPath(&nowhere, true), "");

  ASSERT_NE(getcwd(text, PATH_MAX), nullptr);
  EXPECT_EQ(CPath(text).GetFullPath(), GetCWD(false));
  EXPECT_EQ(CPath::AppendDirSeparator(GetCWD(false), true), GetCWD(true));
  EXPECT_EQ(ConstructModuleName("c:\\bin\\gs.dll"), "c:\\bin\\gs.dll");
}

}  // namespace
}  // namespace vlm
