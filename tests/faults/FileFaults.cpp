// What replaces a whole file meets a full disk, a broken one, a short write and its own end, at
// each of its calls in turn: the old file or the new one is there, and nothing else.

#include "TracedRun.h"

#include <velum/colour/Dib.h>
#include <velum/core/Exception.h>
#include <velum/diagnostics/SystemInfo.h>
#include <velum/files/ConfigFile.h>
#include <velum/files/HtmlReport.h>
#include <velum/files/HtmlTags.h>
#include <velum/files/RegParamList.h>
#include <velum/numerics/DrawStats.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/sketchbook/SafeFile.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace vlm::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kDone = 0;
constexpr const char* kOld = "; the old file\n[Axes]\nTicks=7\n";

/// Does something; gives 0, or the code of the error that it was told of.
template <class T>
int CodeOf(T action) {
  try {
    action();
    return kDone;
  } catch (const Exception& error) {
    return error.GetErrCode() == ERR_CUSTOM ? 99 : error.GetErrCode();
  } catch (const std::exception&) {
    return 100;
  }
}

std::string Contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

CRegParamList Parameters(const std::string& folder) {
  SetRegistryFile(folder + "/registry.db");
  return CRegParamList(HKEY_CURRENT_USER, "Plots");
}

/// Something that replaces a file.
struct Replacing {
  const char* name;
  int (*work)(const std::string& folder);
  std::set<int> codes;  ///< What it may say when the old file stays; 0 if it says nothing.
  bool isRegistry = false;
};

void PrintTo(const Replacing& row, std::ostream* out) { *out << row.name; }

const Replacing kReplacing[] = {
    {"Settings",
     [](const std::string& folder) {
       return CodeOf([&] { CConfigFile(folder + "/file").Write("Axes", "Ticks", 8); });
     },
     {ERR_WRITE}},
    {"Bitmaps",
     [](const std::string& folder) {
       return CodeOf([&] { CDib(30, 20, 24, 0).Save(folder + "/file"); });
     },
     {ERR_WRITE, ERR_OPEN}},
    {"Reports",
     [](const std::string& folder) {
       return CodeOf([&] {
         CHtmlReport report;
         report << Heading(1, "Depths");
         report.WriteToFile(folder + "/file");
       });
     },
     {kDone}},
    {"Charts",
     [](const std::string& folder) {
       return CodeOf([&] {
         std::vector<double> sample;
         for (int i = 0; i < 60; ++i) sample.push_back(12 + 3 * std::sin(i));
         CUnivariateStatistics stats;
         Load(stats, sample.begin(), sample.end());
         CSystemInfo::GetInstance().DefVariablePitchFace("DejaVu Sans");
         CDrawStats("Thickness", 0)
             .DrawHistogram(120, 90, folder + "/file", CDrawStats::kEverything, stats);
       });
     },
     {kDone}},
    {"Sketches",
     [](const std::string& folder) {
       return CodeOf([&] { sketchbook::ReplaceFile(folder + "/file", std::string(5000, 'x')); });
     },
     {ERR_WRITE, ERR_OPEN, ERR_CLOSE, 99}},
    {"Registries",
     [](const std::string& folder) {
       return CodeOf([&] { Parameters(folder).Set("Ticks", "8", true); });
     },
     {ERR_WRITE_REGISTRY_KEY, ERR_OPEN_REGISTRY_KEY},
     true},
};

/// A folder with the old file.
class Case {
 public:
  explicit Case(const Replacing& row) : row_(row) {
    if (row.isRegistry) {
      EXPECT_EQ(RunTraced(Folder(),
                          [](const std::string& folder) {
                            return CodeOf([&] { Parameters(folder).Set("Ticks", "7", true); });
                          },
                          {})
                    .result,
                kDone);
    } else {
      std::ofstream(folder_.Path("file")) << kOld;
    }
  }

  const std::string& Folder() const { return folder_.Path(); }

  /// What is in the file: of a registry, whether it is sound and which value it has.
  std::string Read() const {
    if (!row_.isRegistry) return Contents(folder_.Path("file"));
    const TracedRun run = RunTraced(
        Folder(),
        [](const std::string& folder) { return Parameters(folder).GetDef("Ticks", 0, true); }, {});
    return std::to_string(run.result);
  }

  /// The names of files that should not be there.
  std::string Strays() const {
    std::string strays;
    for (const auto& entry : fs::directory_iterator(Folder())) {
      const std::string name = entry.path().filename();
      const bool isMeant = row_.isRegistry ? name.starts_with("registry.db") : name == "file";
      if (!isMeant) strays += name + " ";
    }
    return strays;
  }

 private:
  testing::TemporaryFolder folder_;
  const Replacing& row_;
};

class FileReplacing : public ::testing::TestWithParam<Replacing> {};

TEST_P(FileReplacing, LeavesTheOldFileOrTheNewOne) {
  const Replacing& row = GetParam();
  const Case quiet(row);
  const std::string oldContents = quiet.Read();
  const TracedRun run = RunTraced(quiet.Folder(), row.work, {});
  if (!run.canTrace) GTEST_SKIP() << "no process may be traced here";
  const std::string newContents = quiet.Read();
  ASSERT_EQ(run.result, kDone);
  ASSERT_NE(newContents, oldContents);
  EXPECT_EQ(quiet.Strays(), "");
  ASSERT_GE(run.calls.size(), 4u);

  for (int call = 0; call < static_cast<int>(run.calls.size()); ++call) {
    const std::string& name = run.calls[static_cast<std::size_t>(call)];
    for (const auto fault : {FileFault::kNoSpace, FileFault::kStaysFull, FileFault::kBroken,
                             FileFault::kShort, FileFault::kKilled}) {
      if (fault == FileFault::kShort && name != "write") continue;
      const Case disturbed(row);
      const TracedRun ended = RunTraced(disturbed.Folder(), row.work, {call, fault});
      SCOPED_TRACE(name + ", call " + std::to_string(call) + ", fault " +
                   std::to_string(static_cast<int>(fault)));
      ASSERT_EQ(ended.isKilled, fault == FileFault::kKilled);
      const std::string contents = disturbed.Read();
      EXPECT_TRUE(contents == oldContents || contents == newContents) << contents.substr(0, 200);
      if (ended.isKilled) {
        // The next one goes on where this one has ended.
        EXPECT_EQ(RunTraced(disturbed.Folder(), row.work, {}).result, kDone);
        EXPECT_EQ(disturbed.Read(), newContents);
      } else if (contents == oldContents) {
        EXPECT_TRUE(row.codes.contains(ended.result)) << ended.result;
      }
      // Of a sketch that was being written nobody knows any more.
      const bool mayLeave = ended.isKilled && row.name == std::string("Sketches");
      if (!mayLeave) {
        EXPECT_EQ(disturbed.Strays(), "");
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, FileReplacing, ::testing::ValuesIn(kReplacing),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vlm::faults
