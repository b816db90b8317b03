#include <velum/diagnostics/ModQuery.h>

#include <velum/diagnostics/DynLib.h>
#include <velum/diagnostics/test/TestLibraries.h>

#include <testing/TemporaryFolder.h>

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>

namespace vlm {
namespace {

using test::Native;
using test::TestLibrary;
using testing::TemporaryFolder;

/// The entry of a path; null if there is none. It must not be there twice.
const CModQuery::CModuleInfo* Find(const CModQuery& modules, const GString& path) {
  const CModQuery::CModuleInfo* found = nullptr;
  for (const auto& module : modules) {
    if (module.GetPath() != path) continue;
    EXPECT_EQ(found, nullptr) << path << " is there twice";
    found = &module;
  }
  return found;
}

/// A native path as the library writes it.
GString Library(std::string native) {
  std::replace(native.begin(), native.end(), '/', '\\');
  return native;
}

/// A library cut so that its tables are whole, but not what the loader would map.
std::string WithoutTheLastLoadedByte(const GString& path) {
  std::ifstream file(Native(path), std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  ElfW(Ehdr) header;
  std::memcpy(&header, bytes.data(), sizeof(header));
  std::size_t end = 0;
  for (std::size_t i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) part;
    std::memcpy(&part, bytes.data() + header.e_phoff + i * sizeof(part), sizeof(part));
    if (part.p_type == PT_LOAD) end = std::max(end, std::size_t{part.p_offset + part.p_filesz});
  }
  return bytes.substr(0, end - 1);
}

/// Leads back to the current folder.
struct CurrentFolder {
  ~CurrentFolder() { std::filesystem::current_path(start); }
  const std::filesystem::path start = std::filesystem::current_path();
};

/// A file, folder or link beside the program, as long as the object lives.
struct Beside {
  explicit Beside(const std::string& name, const std::string& text = "text")
      : path(GetStartupPath(nullptr, true) + name) {
    std::ofstream(Native(path)) << text;
  }
  ~Beside() { unlink(Native(path).c_str()); }
  const GString path;
};

TEST(ModQuery, ModulesInMemoryAreThoseWhoseCodeTheKernelHasMapped) {
  std::set<std::string> mapped;
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    std::string range, rights, offset, device, node, path;
    words >> range >> rights >> offset >> device >> node >> path;
    if (rights.find('x') != std::string::npos && path.rfind('/', 0) == 0) mapped.insert(path);
  }
  const CModQuery modules(1);
  ASSERT_GT(modules.size(), 2u);
  EXPECT_EQ(modules[0].GetPath(), GetModuleFilename(nullptr));
  std::set<std::string> listed;
  for (const auto& module : modules) {
    EXPECT_TRUE(module.GetLoaded());
    EXPECT_EQ(module.GetSize(), GetFileSize(module.GetPath()));
    EXPECT_NE(module.GetTimeStampStr(), "n/a");
    EXPECT_TRUE(listed.insert(Native(module.GetPath())).second) << module.GetPath();
  }
  EXPECT_EQ(listed, mapped);
}

TEST(ModQuery, AModuleKeepsItsPathWhateverBecomesOfFolderAndFile) {
  const TemporaryFolder before;
  const TemporaryFolder after;
  const CurrentFolder current;
  for (const char* const name : {"ours.so", "theirs.so"}) {
    std::filesystem::copy_file(Native(TestLibrary("named")), before.Path(name));
    std::ofstream(after.Path(name)) << "another file";
  }
  std::filesystem::current_path(before.Path());
  CDynLib ours;
  EXPECT_TRUE(ours.Load(".\\ours.so"));
  void* const theirs = dlopen("./theirs.so", RTLD_NOW);
  ASSERT_TRUE(theirs);
  std::filesystem::current_path(after.Path());
  EXPECT_EQ(Native(GetModuleFilename(ours.GetModule())), before.Path("ours.so"));
  EXPECT_EQ(Native(GetModuleFilename(theirs)), before.Path("theirs.so"));
  for (const char* const version : {"3.14.1", "n/a"}) {
    const CModQuery modules(1);
    for (const char* const name : {"ours.so", "theirs.so"}) {
      const auto* const module = Find(modules, Library(before.Path(name)));
      ASSERT_TRUE(module) << name << ' ' << version;
      EXPECT_EQ(module->GetVersion(), version) << name;
      unlink(before.Path(name).c_str());
    }
  }
  dlclose(theirs);
}

TEST(ModQuery, TheProgramIsListedWhenItsFileIsGone) {
  const GString program = GetModuleFilename(nullptr);
  if (GetStartupFilename(nullptr, true) != "velum_gone") {
    const TemporaryFolder folder;
    const std::string copy = folder.Path("velum_gone");
    std::filesystem::copy_file(Native(program), copy);
    const std::string command = "'" + copy + "' --gtest_filter=ModQuery.TheProgram*";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return;
  }
  ASSERT_EQ(unlink(Native(program).c_str()), 0);
  EXPECT_EQ(GetModuleFilename(nullptr), program);
  CModQuery modules(1);
  ASSERT_FALSE(modules.empty());
  EXPECT_EQ(modules[0].GetPath(), program);
  EXPECT_EQ(modules[0].GetTimeStampStr(), "n/a");
  EXPECT_TRUE(modules.AddDiskModules());
}

TEST(ModQuery, LibrariesBesideTheProgramSayWhatTheyAre) {
  const Beside link("velum_mod_link.so.1");
  unlink(Native(link.path).c_str());
  ASSERT_EQ(symlink("velum_test_plain.so", Native(link.path).c_str()), 0);
  const Beside text("velum_mod_text.so.1");
  const Beside old("velum_mod.so_old");
  const Beside other("velum_mod.s.o");
  const Beside cut("velum_mod_cut.so", WithoutTheLastLoadedByte(TestLibrary("named")));
  const CModQuery modules(2);
  const auto* const program = Find(modules, GetModuleFilename(nullptr));
  ASSERT_TRUE(program);
  EXPECT_FALSE(program->GetLoaded());
  const struct {
    GString path;
    const char* version;
    int major;
    int minor;
    const char* description;
  } rows[] = {
      {TestLibrary("plain"), "n/a", 0, 0, "n/a"},
      {TestLibrary("named"), "3.14.1", 3, 14, "libvelum_test.so.3.14.1"},
      {TestLibrary("versioned"), "2.10", 2, 10, "libvelum_test.so.6"},
      {text.path, "n/a", 0, 0, "n/a"},
      {old.path, "n/a", 0, 0, "n/a"},
      {cut.path, "n/a", 0, 0, "n/a"},
  };
  for (const auto& row : rows) {
    const auto* const module = Find(modules, row.path);
    ASSERT_TRUE(module) << row.path;
    EXPECT_FALSE(module->GetLoaded()) << row.path;
    EXPECT_EQ(module->GetVersion(), row.version) << row.path;
    EXPECT_EQ(module->GetVerMajor(), row.major) << row.path;
    EXPECT_EQ(module->GetVerMinor(), row.minor) << row.path;
    EXPECT_EQ(module->GetDescription(), row.description) << row.path;
    EXPECT_EQ(module->GetSize(), GetFileSize(row.path)) << row.path;
  }
  EXPECT_EQ(Find(modules, link.path), nullptr) << "a link counts as the file that it leads to";
  EXPECT_EQ(Find(modules, other.path), nullptr) << "no library's name";
}

TEST(ModQuery, NoPathIsAddedFromTheDiskThatIsThereInAnyCase) {
  const Beside capitals("VELUM_MOD_CASE.SO");
  const Beside small("velum_mod_case.so");
  CModQuery modules(3);
  ASSERT_TRUE(Find(modules, GetModuleFilename(nullptr)));
  EXPECT_TRUE(Find(modules, GetModuleFilename(nullptr))->GetLoaded());
  EXPECT_TRUE(Find(modules, capitals.path));
  EXPECT_FALSE(Find(modules, small.path));
  EXPECT_TRUE(modules.AddDiskModules());
  EXPECT_TRUE(Find(modules, capitals.path)) << "nor once more";
  const std::size_t before = modules.size();
  EXPECT_TRUE(modules.AddMemoryModules());
  EXPECT_GT(modules.size(), before) << "what is in memory is added again";
}

TEST(ModQuery, TimesAreLocalAndNoonIsZero) {
  const struct {
    int hour;
    int minute;
    const char* text;
  } rows[] = {{12, 5, "00:05pm 03/09/2021"},
              {0, 5, "00:05am 03/09/2021"},
              {11, 59, "11:59am 03/09/2021"},
              {23, 0, "11:00pm 03/09/2021"}};
  const Beside dated("velum_mod_dated.so");
  for (const auto& row : rows) {
    std::tm local{};
    local.tm_year = 2021 - 1900;
    local.tm_mon = 3 - 1;
    local.tm_mday = 9;
    local.tm_hour = row.hour;
    local.tm_min = row.minute;
    local.tm_sec = 7;
    local.tm_isdst = -1;
    const timespec times[2] = {{0, UTIME_NOW}, {std::mktime(&local), 250'999'900}};
    ASSERT_EQ(utimensat(AT_FDCWD, Native(dated.path).c_str(), times, 0), 0);
    const CModQuery modules(2);
    const auto* const module = Find(modules, dated.path);
    ASSERT_TRUE(module);
    EXPECT_EQ(module->GetTimeStampStr(), row.text);
    const SYSTEMTIME& time = module->GetTimeStamp();
    EXPECT_EQ(time.wYear, 2021);
    EXPECT_EQ(time.wMonth, 3);
    EXPECT_EQ(time.wDay, 9);
    EXPECT_EQ(time.wDayOfWeek, 2) << "a Tuesday";
    EXPECT_EQ(time.wHour, row.hour);
    EXPECT_EQ(time.wMinute, row.minute);
    EXPECT_EQ(time.wSecond, 7);
    EXPECT_EQ(time.wMilliseconds, 250);
  }
}

TEST(ModQuery, WhatIsNoFileIsListedWithoutSizeAndTime) {
  const Beside pipe("velum_mod_pipe.so");
  unlink(Native(pipe.path).c_str());
  ASSERT_EQ(mkfifo(Native(pipe.path).c_str(), 0600), 0);
  const CModQuery modules(2);
  const auto* const module = Find(modules, pipe.path);
  ASSERT_TRUE(module);
  EXPECT_EQ(module->GetSize(), 0);
  EXPECT_EQ(module->GetVersion(), "n/a");
  EXPECT_EQ(module->GetTimeStampStr(), "n/a");
  EXPECT_EQ(module->GetTimeStamp().wYear, 0);
}

TEST(ModQuery, IsASequenceOfValues) {
  CModQuery modules(0);
  EXPECT_TRUE(modules.empty());
  EXPECT_TRUE(modules.AddMemoryModules());
  const CModQuery copy(modules);
  modules = CModQuery(0);
  EXPECT_EQ(modules.GetCount(), 0u);
  ASSERT_GT(copy.GetCount(), 0u);
  EXPECT_EQ(std::distance(copy.begin(), copy.end()), static_cast<std::ptrdiff_t>(copy.size()));
  EXPECT_EQ(copy.rbegin()->GetPath(), copy[copy.size() - 1].GetPath());
  EXPECT_EQ(std::prev(copy.rend())->GetPath(), copy.begin()->GetPath());
}

}  // namespace
}  // namespace vlm
