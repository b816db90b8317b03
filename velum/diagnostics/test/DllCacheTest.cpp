#include <velum/diagnostics/DllCache.h>

#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/test/TestLibraries.h>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using test::IsInProcess;
using test::TestLibrary;

using Lines = std::vector<std::pair<int, std::string>>;

struct DllCache : ::testing::Test {
  ~DllCache() override {
    g_Logger.Enable(false);
    g_Logger.SetOutputCallback(nullptr, nullptr);
    g_Logger.EmptyBuffer();
    cache.Flush(true);
  }
  CDllCache& cache = CDllCache::GetInstance();
};

/// The path with the letters of its name, not of its folder, as capitals.
GString InCapitals(GString path) {
  for (unsigned i = path.find_last_of('\\'); i < path.size(); ++i) {
    path[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(path[i])));
  }
  return path;
}

TEST_F(DllCache, GivesTheSameModuleForANameInAnyCaseAndCounts) {
  const GString path = TestLibrary("plain");
  const HINSTANCE module = cache.Load(path);
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(cache.Load(InCapitals(path)), module);
  EXPECT_EQ(&CDllCache::Instance(), &cache);
  EXPECT_TRUE(cache.AddRef(module));
  for (int references = 3; references > 0; --references) {
    cache.Flush(false);
    EXPECT_TRUE(IsInProcess(path)) << references;
    EXPECT_TRUE(cache.DecRef(module)) << references;
  }
  EXPECT_FALSE(cache.DecRef(module));
  EXPECT_TRUE(IsInProcess(path)) << "only a flush unloads";
  EXPECT_EQ(cache.Load(path), module) << "without a reference it is still there";
  EXPECT_TRUE(cache.DecRef(module));
  cache.Flush(false);
  EXPECT_FALSE(IsInProcess(path));
  EXPECT_FALSE(cache.AddRef(module)) << "it is forgotten";
  EXPECT_FALSE(cache.DecRef(module));
}

TEST_F(DllCache, FlushesOnlyWhatIsFreeUnlessItIsToFlushAll) {
  const GString kept = TestLibrary("plain");
  const GString freed = TestLibrary("named");
  ASSERT_NE(cache.Load(kept), nullptr);
  EXPECT_TRUE(cache.DecRef(cache.Load(freed)));
  cache.Flush(false);
  EXPECT_TRUE(IsInProcess(kept));
  EXPECT_FALSE(IsInProcess(freed));
  cache.Flush(true);
  EXPECT_FALSE(IsInProcess(kept));
  cache.Flush(true);
}

TEST_F(DllCache, KnowsOnlyItsOwnModules) {
  EXPECT_FALSE(cache.AddRef(nullptr));
  EXPECT_FALSE(cache.DecRef(nullptr));
  EXPECT_EQ(cache.Load(""), nullptr);
  EXPECT_EQ(cache.Load("PSAPI.DLL"), nullptr);
  EXPECT_FALSE(cache.AddRef(nullptr)) << "a failure is not kept";
}

TEST_F(DllCache, TellsTheLogWhatItLoadsInWhichVersion) {
  static Lines lines;
  lines.clear();
  g_Logger.SetOutputCallback(
      [](int type, const GString& text, void*) { lines.emplace_back(type, text.String()); },
      nullptr);
  g_Logger.Enable(true);
  const std::string plain = TestLibrary("plain");
  const std::string named = TestLibrary("named");
  const std::string versioned = TestLibrary("versioned");
  cache.Load(plain);
  cache.Load(plain);
  cache.Load(named);
  cache.Load(versioned);
  cache.Load("PSAPI.DLL");
  cache.Flush(true);
  EXPECT_EQ(lines, (Lines{{4, "Loading module '" + plain + "'"},
                          {4, "Loading module '" + named + "' (ver 3.14.1)"},
                          {4, "Loading module '" + versioned + "' (ver 2.10)"},
                          {4, "Loading module 'PSAPI.DLL'"},
                          {2, "DLL cache failed to load 'PSAPI.DLL'"}}));
  lines.clear();
  cache.Load("libc.so.6");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].second.rfind("Loading module 'libc.so.6' (ver 2.", 0), 0u)
      << lines[0].second << ": the process has it already, so that its file is known";
  lines.clear();
  ASSERT_EQ(dlopen("libanl.so.1", RTLD_LAZY | RTLD_NOLOAD), nullptr);
  cache.Load("libanl.so.1");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].second.rfind("Loading module 'libanl.so.1' (ver 2.", 0), 0u)
      << lines[0].second << ": it lies in one of the loader's folders";
}

TEST(DllEntryLess, FoldsAsciiLettersAndNothingElse) {
  const struct {
    const char* why;
    const char* a;
    const char* b;
    int order;
  } rows[] = {
      {"same", "libz.so", "LIBZ.SO", 0},
      {"shorter", "lib", "libz", -1},
      {"empty", "", "a", -1},
      {"between the cases", "a_b", "aZb", -1},
      {"high bytes are no letters", "\xc4", "\xe4", -1},
      {"high bytes come last", "z", "\xe4", -1},
  };
  const DllEntryLess less;
  for (const auto& row : rows) {
    const DllEntry a{nullptr, 0, row.a};
    const DllEntry b{nullptr, 0, row.b};
    EXPECT_EQ(less(a, b), row.order < 0) << row.why;
    EXPECT_EQ(less(GString(row.b), a), row.order > 0) << row.why;
  }
}

}  // namespace
}  // namespace vlm
