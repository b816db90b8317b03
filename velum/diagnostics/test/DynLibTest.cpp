#include <velum/diagnostics/DynLib.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/test/TestLibraries.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace vlm {
namespace {

using test::IsInProcess;
using test::Native;
using test::TestLibrary;
using testing::TemporaryFolder;

struct DynLib : ::testing::Test {
  DynLib() {
    g_Logger.Enable(true);
    g_Logger.EmptyBuffer();
  }
  ~DynLib() override {
    g_Logger.Enable(false);
    g_Logger.EmptyBuffer();
  }
};

TEST_F(DynLib, LoadsWithTheFirstSymbolAndTellsTheLog) {
  const GString path = TestLibrary("plain");
  {
    CDynLib library(path);
    EXPECT_FALSE(library.IsLoaded());
    EXPECT_FALSE(IsInProcess(path));
    EXPECT_EQ(g_Logger.GetBuffer(), "");
    auto* const count = static_cast<int*>(library.GetSymbol("velumTestCount"));
    auto* const countOn = reinterpret_cast<int (*)()>(library.GetSymbol("VelumTestCountOn"));
    ASSERT_TRUE(count && countOn);
    EXPECT_EQ(countOn(), *count);
    EXPECT_EQ(library.GetSymbol("VelumTestNothing"), nullptr);
    EXPECT_EQ(library.GetSymbol(nullptr), nullptr);
    EXPECT_EQ(GetModuleFilename(library.GetModule()), path);
  }
  EXPECT_FALSE(IsInProcess(path));
  EXPECT_EQ(g_Logger.GetBuffer(), "Loading library " + path + "\nUnloading library " + path + "\n");
}

TEST_F(DynLib, TakesPathsInBothFormsAndNamesThatTheLoaderFinds) {
  CDynLib library;
  EXPECT_TRUE(library.Load(Native(TestLibrary("plain"))));
  EXPECT_TRUE(library.Load(TestLibrary("named")));
  EXPECT_FALSE(IsInProcess(TestLibrary("plain")));
  EXPECT_TRUE(library.Load("libc.so.6"));
  EXPECT_NE(library.GetSymbol("strlen"), nullptr);
  EXPECT_FALSE(library.Load("libvelum_test_that_is_nowhere.so"));
  EXPECT_FALSE(library.IsLoaded());
}

TEST_F(DynLib, WhatIsNoLibraryIsNotLoaded) {
  const TemporaryFolder folder;
  std::ifstream source(Native(TestLibrary("plain")), std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(source), {}};
  std::ofstream(folder.Path("cut.so"), std::ios::binary) << whole.substr(0, 1000);
  std::ofstream(folder.Path("text.so")) << "text";
  const struct {
    const char* why;
    GString name;
  } rows[] = {
      {"no name, which the loader would take for the program", ""},
      {"another system's library", "PSAPI.DLL"},
      {"a drive", "c:\\velum_test_plain.so"},
      {"a drive and no folder", "c:libc.so.6"},
      {"a folder", folder.Path()},
      {"text", folder.Path("text.so")},
      {"a part of a library", folder.Path("cut.so")},
  };
  for (const auto& row : rows) {
    CDynLib library;
    EXPECT_FALSE(library.Load(row.name)) << row.why;
    EXPECT_FALSE(library.IsLoaded()) << row.why;
    EXPECT_EQ(library.GetModule(), nullptr) << row.why;
  }
}

TEST_F(DynLib, CopiesTakeTheNameAlone) {
  const GString path = TestLibrary("plain");
  CDynLib first(path);
  ASSERT_NE(first.GetSymbol("velumTestCount"), nullptr);
  CDynLib second(first);
  EXPECT_FALSE(second.IsLoaded());
  EXPECT_NE(second.GetSymbol("velumTestCount"), nullptr);
  const CDynLib& same = first;
  first = same;
  EXPECT_TRUE(first.IsLoaded());
  first = CDynLib();
  EXPECT_FALSE(first.IsLoaded());
  EXPECT_TRUE(IsInProcess(path)) << "the second one holds it";
  second.Unload();
  second.Unload();
  EXPECT_FALSE(IsInProcess(path));
}

TEST_F(DynLib, ASymbolOfNoLibraryIsMisuse) {
  CDynLib library;
  try {
    (void)library.GetSymbol("strlen");
    FAIL() << "it went through";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetSrcFile(), "DynLib");
  }
}

}  // namespace
}  // namespace vlm
