#include <velum/files/DeprecatedPath.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/Path.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace vlm {
namespace {

using Old = DeprecatedPath;
using testing::TemporaryFolder;

/// A path of the system in the form of the library.
std::string Windows(std::string native) {
  for (char& c : native) {
    if (c == '/') c = '\\';
  }
  return native;
}

TEST(Path, IsTakenApartByItsText) {
  const struct {
    const char* path;
    const char* drive;
    const char* folder;     ///< `GetDriveAndDirectory(true)`
    const char* directory;  ///< `GetDirectory(true)`
    const char* name;
    const char* extension;
  } rows[] = {
      {"", "", "", "", "", ""},
      {"c:\\data\\a.b.dat", "c:", "c:\\data\\", "\\data\\", "a.b", ".dat"},
      {"a.txt", "", "", "", "a", ".txt"},
      {".profile", "", "", "", "", ".profile"},
      {"name.", "", "", "", "name", ""},
      {"dir.x\\name", "", "dir.x\\", "dir.x\\", "name", ""},
      {"../x/wells", "", "../x\\", "../x/", "wells", ""},
      {"\\a", "", "\\", "\\", "a", ""},
      {"/a", "", "\\", "/", "a", ""},
      {"\\", "", "\\", "\\", "", ""},
      {"c:", "c:", "c:\\", "", "", ""},
      {"c:a", "c:", "c:\\", "", "a", ""},
      {"c:\\", "c:", "c:\\", "\\", "", ""},
      {"dir\\\\a", "", "dir\\", "dir\\\\", "a", ""},
      {"dir\\", "", "dir\\", "dir\\", "", ""},
      {"\\\\server\\share\\a.b", "\\\\server", "\\\\server\\share\\", "\\\\server\\share\\", "a",
       ".b"},
      {"\\\\server\\a", "\\\\server", "\\\\server\\", "\\\\server\\", "a", ""},
      {"..", "", "", "", "..", ""},
      {"x\\.", "", "x\\", "x\\", ".", ""},
      {"a:b:c.d", "a:", "a:\\", "", "b:c", ".d"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    const CPath path(row.path);
    EXPECT_EQ(path.GetPath(), row.path);
    EXPECT_EQ(path.GetDrive(), row.drive);
    EXPECT_EQ(path.GetDriveAndDirectory(true), row.folder);
    std::string folder = row.folder;
    if (!folder.empty()) folder.pop_back();
    EXPECT_EQ(path.GetDriveAndDirectory(false), folder);
    EXPECT_EQ(path.GetDirectory(true), row.directory);
    EXPECT_EQ(path.GetName(), row.name);
    EXPECT_EQ(path.GetExtension(), row.extension);
    EXPECT_EQ(path.GetNameAndExtension(), std::string(row.name) + row.extension);
    EXPECT_EQ(Old::GetDriveAndDirectory(row.path, true) + Old::GetNameAndExtension(row.path),
              row.path)
        << "the parts are the whole";
  }
  EXPECT_EQ(CPath(GString(std::string("a\0b", 3))).GetPath(), "a");
}

TEST(Path, PartsAreReplaced) {
  const struct {
    const char* path;
    const char* name;              ///< After `SetName("x")`.
    const char* nothing;           ///< After `SetName("")`.
    const char* extension;         ///< After `SetExtension("bak")`.
    const char* noExtension;       ///< After `SetExtension("")`.
    const char* nameAndExtension;  ///< After `SetNameAndExtension("y.z")`.
  } rows[] = {
      {"c:\\dir\\a.txt", "c:\\dir\\x.txt", "c:\\dir\\", "c:\\dir\\a.bak", "c:\\dir\\a",
       "c:\\dir\\y.z"},
      {"a.b.c", "x.c", "", "a.b.bak", "a.b", "y.z"},
      {"name.", "x", "", "name.bak", "name", "y.z"},
      {"dir/a", "dir\\x", "dir\\", "dir/a.bak", "dir/a", "dir\\y.z"},
      {"/a", "\\x", "\\", "/a.bak", "/a", "\\y.z"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    const auto changed = [&row](auto change) {
      CPath path(row.path);
      change(path);
      return path.GetPath().String();
    };
    EXPECT_EQ(changed([](CPath& p) { p.SetName("x"); }), row.name);
    EXPECT_EQ(changed([](CPath& p) { p.SetName(""); }), row.nothing);
    EXPECT_EQ(changed([](CPath& p) { p.SetExtension("bak"); }), row.extension);
    EXPECT_EQ(changed([](CPath& p) { p.SetExtension(".bak"); }), row.extension);
    EXPECT_EQ(changed([](CPath& p) { p.SetExtension(""); }), row.noExtension);
    EXPECT_EQ(changed([](CPath& p) { p.SetNameAndExtension("y.z"); }), row.nameAndExtension);
  }
}

TEST(Path, FullFormsAreAbsoluteAndWithoutDots) {
  const std::string here = GetCWD(true);
  const struct {
    std::string path, full;
  } rows[] = {
      {"", GetCWD(false)},
      {"a", here + "a"},
      {"./a/../b/", here + "b\\"},
      {"\\a\\.\\b\\..\\..\\..\\c", "\\c"},
      {"c:\\x//y\\..", "c:\\x"},
      {"c:x", "c:\\x"},
      {"c:", "c:\\"},
      {"//server/a/..", "\\\\server\\"},
      {"\\", "\\"},
      {"\\name.\\..a", "\\name.\\..a"},
      {"\\" + std::string(258, 'a'), "\\" + std::string(258, 'a')},
      {"\\" + std::string(259, 'a'), ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CPath(row.path).GetFullPath(), row.full) << row.path;
    EXPECT_EQ(Old::GetFullPath(row.path.c_str()), row.full);
  }
  EXPECT_TRUE(CPath("A\\b").IsEquivalent(CPath("./a/c/../B")));
  EXPECT_TRUE(Old::PathsEqual("x\\Y", "X\\y"));
  EXPECT_FALSE(CPath("a").IsEquivalent(CPath("a2")));
  const std::string tooLong(300, 'a');
  EXPECT_FALSE(Old::PathsEqual(tooLong.c_str(), (tooLong + "b").c_str()));
  EXPECT_FALSE(Old::PathsEqual(nullptr, nullptr));
}

TEST(DeprecatedPath, PointersLeadIntoTheText) {
  const struct {
    const char* path;
    const char* extension;
    const char* name;
  } rows[] = {
      {"a.b.c", ".c", "a.b.c"},
      {"a.", nullptr, "a."},
      {"dir.x\\name", nullptr, "name"},
      {".profile", ".profile", ".profile"},
      {"c:.x", ".x", ".x"},
      {"a/b", nullptr, "b"},
      {"", nullptr, ""},
      {"a.b.", nullptr, "a.b."},
  };
  for (const auto& row : rows) {
    const char* const extension = Old::GetExtensionPtr(row.path);
    EXPECT_EQ(Old::HasExtension(row.path), row.extension != nullptr) << row.path;
    EXPECT_STREQ(extension, row.extension) << row.path;
    EXPECT_STREQ(Old::GetNamePtr(row.path), row.name);
    if (extension) {
      EXPECT_EQ(extension + std::strlen(extension), row.path + std::strlen(row.path));
    }
  }
  EXPECT_EQ(Old::GetExtensionPtr(nullptr), nullptr);
  EXPECT_EQ(Old::GetNamePtr(nullptr), nullptr);
}

TEST(DeprecatedPath, PathsArePutTogether) {
  EXPECT_EQ(Old::ChangeExtension("a.txt", "bak"), "abak");
  EXPECT_EQ(Old::ChangeExtension("a.txt", ".bak"), "a.bak");
  EXPECT_EQ(Old::ChangeExtension("a.txt", nullptr), "a");
  EXPECT_EQ(Old::ChangeExtension("", ".bak"), "");
  EXPECT_EQ(Old::ChangeExtension(nullptr, ".bak"), "");
  EXPECT_EQ(CPath::ChangeName("c:\\d/a.txt", "b"), "c:\\d/b");
  EXPECT_EQ(Old::CombinePaths("c:", "x"), "c:x");
  EXPECT_EQ(Old::CombinePaths("c:\\x\\", "\\y"), "c:\\x\\\\y");
  EXPECT_EQ(Old::CombinePaths("x", "y"), "x\\y");
  EXPECT_EQ(Old::CombinePaths("x", "/y"), "x/y");
  EXPECT_EQ(Old::CombinePaths("", "y"), "y");
  EXPECT_EQ(Old::CombinePaths("x", ""), "x\\");
  EXPECT_EQ(Old::CombinePaths("x", nullptr), "");
  EXPECT_EQ(Old::Combine("c", "dir", "name", "ext"), "c:dir\\name.ext");
  EXPECT_EQ(Old::Combine("c:", "dir/", "name", ".ext"), "c:dir/name.ext");
  EXPECT_EQ(Old::Combine(nullptr, "", "name", nullptr), "name");
  const std::string name(259, 'a');
  EXPECT_EQ(Old::Combine("", "", name.c_str(), ""), name);
  EXPECT_EQ(Old::Combine("", "d", name.c_str(), ""), "");
}

TEST(DeprecatedPath, PartsWithAndWithoutTheirMarks) {
  EXPECT_EQ(Old::GetDrive("c:\\a", true) + Old::GetDrive("c:\\a", false), "c:c");
  EXPECT_EQ(Old::GetDirectory("c:\\a\\b", false), "\\a");
  EXPECT_EQ(Old::GetDirectory("c:/a/b", false), "/a/") << "a / stays";
  EXPECT_EQ(Old::GetDriveAndDirectory("c:\\a\\b", false), "c:\\a");
  EXPECT_EQ(Old::GetExtension("a."), ".");
  EXPECT_EQ(Old::GetName(nullptr), "");
  EXPECT_TRUE(CPath::HasExtension("a.b\\c.d") && !CPath::HasExtension("a.b\\c"));
  EXPECT_EQ(CPath::ChangeExtension("a.b\\c.d", "e"), Old::ChangeExtension("a.b\\c.d", "e"));
  const std::string fits(255, 'a'), tooLong(256, 'a');
  EXPECT_EQ(CPath(fits).GetName(), fits);
  EXPECT_EQ(CPath(tooLong + ".x").GetName(), "");
  EXPECT_EQ(Old::GetNameAndExtension((tooLong + ".x").c_str()), "");
  EXPECT_EQ(Old::GetDriveAndDirectory(("c:\\" + tooLong + "\\a").c_str(), true), "");
  EXPECT_EQ(std::strlen(Old::GetInvalidPathChars()), 5u);
  EXPECT_EQ(std::strlen(Old::GetInvalidNameChars()), 10u);
  EXPECT_EQ(CPath::AppendDirSeparator("", true), "");
  EXPECT_EQ(CPath::AppendDirSeparator("a\\", true), "a\\");
  EXPECT_EQ(CPath::AppendDirSeparator("a\\\\", false), "a\\");
}

TEST(Path, FoldersAreMadeWithTheirParents) {
  const TemporaryFolder folder;
  const std::string root = Windows(folder.Path());
  EXPECT_TRUE(CPath(root + "\\a\\..\\b\\c\\").CreatePath());
  EXPECT_TRUE(FileExists(folder.Path("b/c")));
  EXPECT_FALSE(FileExists(folder.Path("a")));
  EXPECT_TRUE(CPath(root + "\\b").CreatePath()) << "is there";
  EXPECT_TRUE(Old::CreatePath((folder.Path() + "/d/e").c_str()));
  EXPECT_TRUE(FileExists(folder.Path("d/e")));
  std::ofstream(folder.Path("file")) << "x";
  for (const char* const path : {"\\file", "\\file\\under"}) {
    errno = 0;
    EXPECT_FALSE(CPath(root + path).CreatePath());
    EXPECT_EQ(errno, 80);
  }
  EXPECT_TRUE(Old::CreatePath(""));
  EXPECT_FALSE(Old::CreatePath(nullptr));
  EXPECT_FALSE(Old::CreatePath("c:\\x"));
  EXPECT_FALSE(CPath(std::string(300, 'a')).CreatePath()) << "has no full form";
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "a\\";
  EXPECT_FALSE(Old::CreatePath(deep.c_str()));
}

TEST(Path, TemporaryFilesAreNewAndEmpty) {
  const TemporaryFolder folder;
  const GString directory = Windows(folder.Path());
  const GString a = CPath::GetTempFilename(directory);
  const GString b = Old::GetTempFilename((directory + "\\").c_str());
  EXPECT_NE(a, b);
  for (const GString& path : {a, b}) {
    EXPECT_EQ(CPath(path).GetDriveAndDirectory(false), directory);
    EXPECT_EQ(CPath(path).GetName().substr(0, 2), "kq");
    EXPECT_EQ(GetFileSize(path), 0);
  }
  EXPECT_EQ(CPath::GetTempFilename(directory + "\\none"), "");
  EXPECT_EQ(CPath::GetTempFilename("c:\\"), "");
  EXPECT_EQ(CPath::GetTempFilename(directory + GString(250, '\\')), "") << "too long";
  ASSERT_EQ(setenv("TMPDIR", folder.Path().c_str(), 1), 0);
  EXPECT_EQ(CPath::GetTempPathA(true), directory + "\\");
  const GString c = CPath::GetTempFilename("");
  EXPECT_EQ(CPath(c).GetDriveAndDirectory(false), directory);
  ASSERT_EQ(unsetenv("TMPDIR"), 0);
  EXPECT_EQ(Old::GetTempPathA(false), "\\tmp");
}

}  // namespace
}  // namespace vlm
