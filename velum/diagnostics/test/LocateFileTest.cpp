#include <velum/diagnostics/LocateFile.h>

#include <velum/diagnostics/SystemInfo.h>
#include <velum/files/FileUtilities.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>

namespace vlm {
namespace {

using testing::TemporaryFolder;

/// A native path as the library writes it.
GString Path(std::string native) {
  std::replace(native.begin(), native.end(), '/', '\\');
  return native;
}

struct LocateFile : ::testing::Test {
  LocateFile() {
    Settings().ResetToDefaults();
    std::ofstream(folder.Path("wells.dat"));
    mkdir(folder.Path("maps").c_str(), 0777);
    std::ofstream(folder.Path("maps/wells.dat"));
    EXPECT_EQ(chdir("/"), 0);
  }
  ~LocateFile() override {
    EXPECT_EQ(chdir(start.c_str()), 0);
    setenv("PATH", path.c_str(), 1);
    Settings().ResetToDefaults();
  }
  static CSystemInfo& Settings() { return CSystemInfo::GetInstance(); }

  const std::string start = [] {
    char text[4096];
    return std::string(getcwd(text, sizeof(text)));
  }();
  const std::string path = std::getenv("PATH") ? std::getenv("PATH") : "";
  const TemporaryFolder folder;
};

TEST_F(LocateFile, TakesTheFirstOfTheSearchPathsAsItWasGiven) {
  EXPECT_EQ(vlm::LocateFile("wells.dat"), "");
  Settings().AddExtraSearchPath(folder.Path("nowhere"));
  Settings().AddExtraSearchPath(folder.Path());
  Settings().AddExtraSearchPath(folder.Path("maps"));
  const GString first = folder.Path() + '\\';
  EXPECT_EQ(vlm::LocateFile("wells.dat"), first + "wells.dat");
  EXPECT_EQ(vlm::LocateFile("maps/wells.dat"), first + "maps/wells.dat");
  EXPECT_EQ(vlm::LocateFile("maps\\..\\wells.dat"), first + "maps\\..\\wells.dat");
  EXPECT_EQ(vlm::LocateFile("maps"), first + "maps") << "a folder is found, too";
  EXPECT_EQ(vlm::LocateFile(std::string("wells.dat\0.bak", 14)), first + "wells.dat");
  EXPECT_EQ(vlm::LocateFile("Wells.dat"), "") << "names open as they are spelt";
  std::ofstream(folder.Path("c:wells.dat"));
  EXPECT_EQ(vlm::LocateFile("c:wells.dat"), "") << "a drive";
  ASSERT_EQ(chdir(folder.Path().c_str()), 0);
  EXPECT_EQ(vlm::LocateFile("c:wells.dat"), "") << "a drive, in the current folder";
  EXPECT_EQ(vlm::LocateFile(""), "");
}

TEST_F(LocateFile, LooksBesideTheProgramThenHereThenInPath) {
  const GString program = GetStartupFilename(nullptr, true);
  EXPECT_EQ(vlm::LocateFile(program), GetModuleFilename(nullptr));
  std::ofstream(folder.Path(program));
  setenv("PATH", ("nowhere::" + folder.Path("maps")).c_str(), 1);
  EXPECT_EQ(vlm::LocateFile("wells.dat"), Path(folder.Path("maps/wells.dat")));
  ASSERT_EQ(chdir(folder.Path().c_str()), 0);
  EXPECT_EQ(vlm::LocateFile("wells.dat"), Path(folder.Path("wells.dat")));
  EXPECT_EQ(vlm::LocateFile(program), GetModuleFilename(nullptr));
  ASSERT_EQ(unlink(folder.Path("wells.dat").c_str()), 0);
  for (const char* const entry : {"maps", "maps/"}) {
    setenv("PATH", entry, 1);
    EXPECT_EQ(vlm::LocateFile("wells.dat"), Path(folder.Path("maps/wells.dat"))) << entry;
  }
  unsetenv("PATH");
  EXPECT_EQ(vlm::LocateFile("wells.dat"), "");
  ASSERT_EQ(chdir("/"), 0);
}

TEST_F(LocateFile, ANameThatBeginsWithASeparatorIsThatFile) {
  EXPECT_EQ(vlm::LocateFile(folder.Path("wells.dat")), folder.Path("wells.dat"));
  EXPECT_EQ(vlm::LocateFile(Path(folder.Path("wells.dat"))), Path(folder.Path("wells.dat")));
  EXPECT_EQ(vlm::LocateFile(folder.Path("nothing.dat")), "");
}

TEST_F(LocateFile, OnlySearchPathsGiveLongPaths) {
  const std::string here = folder.Path();
  const auto fileOf = [&](std::size_t length) {
    const std::string name(length - here.size() - 1, 'x');
    std::ofstream(here + '/' + name);
    return name;
  };
  const std::string fits = fileOf(262);
  const std::string isLong = fileOf(263);
  setenv("PATH", here.c_str(), 1);
  EXPECT_EQ(vlm::LocateFile(fits), Path(here + '/' + fits));
  EXPECT_EQ(vlm::LocateFile(isLong), "");
  Settings().AddExtraSearchPath(here);
  EXPECT_EQ(vlm::LocateFile(isLong), here + '\\' + isLong);
}

}  // namespace
}  // namespace vlm
