#include <velum/diagnostics/ModQuery.h>

#include <velum/files/FileFind.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/detail/PathText.h>
#include <velum/platform/detail/Modules.h>
#include <velum/platform/detail/NativePath.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>
#include <unordered_set>

namespace vlm {

namespace {

GString TimeText(const SYSTEMTIME& time) {
  GString text;
  (void)text.FormatString("%02d:%02d%s %02d/%02d/%04d", time.wHour % 12, time.wMinute,
                          time.wHour < 12 ? "am" : "pm", time.wMonth, time.wDay, time.wYear);
  return text;
}

/// The whole numbers that a version begins with, up to two; 0 in place of one that is missing.
struct Numbers {
  explicit Numbers(const std::string& version) {
    const char* const end = version.data() + version.size();
    const auto first = std::from_chars(version.data(), end, major);
    if (first.ec == std::errc() && first.ptr != end && *first.ptr == '.') {
      std::from_chars(first.ptr + 1, end, minor);
    }
  }
  int major = 0;
  int minor = 0;
};

}  // namespace

CModQuery::CModQuery(int which) {
  if (which & 1) AddMemoryModules();
  if (which & 2) AddDiskModules();
}

CModQuery::CModQuery(const CModQuery& other) = default;
CModQuery::~CModQuery() = default;
CModQuery& CModQuery::operator=(const CModQuery& other) = default;

bool CModQuery::AddMemoryModules() {
  constexpr std::size_t kMost = 1024;
  const std::vector<std::string> modules = platform::LoadedModules(kMost);
  modules_.reserve(modules_.size() + modules.size());
  for (const std::string& module : modules) {
    if (module.size() <= detail::kLongestPath) AddEntry(platform::PathFromNative(module), true);
  }
  return !modules.empty();
}

bool CModQuery::AddDiskModules() {
  const GString program = GetModuleFilename(nullptr);
  if (program.empty()) return false;
  // A folder may hold thousands of libraries, so that no path is compared with all of them.
  std::unordered_set<std::string> listed;
  for (const CModuleInfo& module : modules_) listed.insert(detail::FoldAscii(module.GetPath()));
  const auto add = [&](const GString& path) {
    if (listed.insert(detail::FoldAscii(path)).second) AddEntry(path, false);
  };
  add(program);
  CFileFind find(GetStartupPath(nullptr, true) + "*.so*");
  while (find.FindNextFileA()) {
    if (find.IsDirectory()) continue;
    const GString path = platform::PathFromNative(
        platform::RealPath(platform::NativePath(find.GetFilePath(true).c_str())));
    if (!path.empty()) add(path);
  }
  return true;
}

void CModQuery::AddEntry(const GString& path, bool loaded) {
  CModuleInfo module(loaded);
  module.SetPath(path);
  platform::ModuleFile file;
  if (platform::ReadModuleFile(platform::NativePath(path.c_str()), file)) {
    if (!file.version.empty()) {
      const Numbers numbers(file.version);
      module.SetVersion(file.version);
      module.SetVerMajor(numbers.major);
      module.SetVerMinor(numbers.minor);
    }
    if (!file.soname.empty()) module.SetDescription(file.soname);
    if (file.hasTime) {
      module.SetTimeStamp(file.written);
      module.SetTimeStampStr(TimeText(file.written));
    }
    constexpr std::int64_t kLargest = std::numeric_limits<int>::max();
    module.SetSize(static_cast<int>(std::min(file.size, kLargest)));
  }
  modules_.push_back(module);
}

}  // namespace vlm
