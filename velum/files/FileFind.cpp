#include <velum/files/FileFind.h>

#include <velum/core/Exception.h>
#include <velum/files/Path.h>
#include <velum/files/detail/PathText.h>
#include <velum/files/detail/WildCards.h>
#include <velum/platform/detail/Folders.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace vlm {

namespace {

bool IsDotsName(std::string_view name) { return name == "." || name == ".."; }

/// The names in a folder that match a name with wild cards, in the order of the search.
std::vector<std::string> MatchingNames(const std::string& folder, const std::string& mask) {
  std::vector<std::string> names;
  if (!platform::ListFolder(folder, names)) return {};
  const detail::WildCards wildCards(mask);
  const bool wantsAll = mask.find_first_not_of("*.") == std::string::npos;
  std::erase_if(names, [&wildCards, wantsAll](const std::string& name) {
    return IsDotsName(name) ? !wantsAll : !wildCards.Match(name);
  });
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return std::tuple(!IsDotsName(a), std::string_view(a)) <
           std::tuple(!IsDotsName(b), std::string_view(b));
  });
  return names;
}

}  // namespace

/// A search that was begun: the names it gives, and how many of them are behind it.
struct CFileFind::Search {
  explicit Search(const std::string& pattern) {
    const std::size_t nameStart = pattern.size() - NameOf(pattern).size();
    folder = pattern.substr(0, nameStart);
    const std::string mask = pattern.substr(nameStart);
    const bool wild = mask.find_first_of("*?") != std::string::npos;
    names = wild ? MatchingNames(folder, mask) : std::vector<std::string>{mask};
  }

  static std::string_view NameOf(std::string_view pattern) {
    const detail::PathParts parts = detail::SplitPath(pattern);
    return pattern.substr(parts.drive.size() + parts.directory.size());
  }

  bool Next(WIN32_FIND_DATAA& found) {
    while (next < names.size()) {
      if (platform::DescribeEntry(folder, names[next++], found)) return true;
    }
    return false;
  }

  std::string folder;
  std::vector<std::string> names;
  std::size_t next = 0;
};

CFileFind::CFileFind(const GString& pattern) { Init(pattern); }

CFileFind::CFileFind(const CFileFind& other)
    : first_(other.first_),
      search_(other.search_ ? std::make_unique<Search>(*other.search_) : nullptr),
      root_(other.root_),
      pattern_(other.pattern_),
      found_(other.found_) {}

CFileFind::CFileFind(CFileFind&& other) noexcept = default;

CFileFind::~CFileFind() = default;

CFileFind& CFileFind::operator=(const CFileFind& other) { return *this = CFileFind(other); }

CFileFind& CFileFind::operator=(CFileFind&& other) noexcept = default;

GString CFileFind::GetFileNameNoExt() const { return CPath(GetFileName()).GetName(); }

GString CFileFind::GetFilePath(bool keepSeparator) const {
  return GetRoot(keepSeparator) + GetFileName();
}

GString CFileFind::GetRoot(bool keepSeparator) const {
  return CPath::AppendDirSeparator(root_, keepSeparator);
}

bool CFileFind::IsDots() const noexcept { return IsDotsName(found_.cFileName); }

void CFileFind::Init(const GString& pattern) {
  if (pattern.empty()) return;
  Close();
  pattern_ = pattern;
}

bool CFileFind::FindNextFileA() {
  if (!first_) {
    if (!search_) ThrowErrorImpl("FileFind", __LINE__, ERR_INTERNAL);
    return search_->Next(found_);
  }
  if (pattern_.empty()) return false;
  auto search = std::make_unique<Search>(std::string(pattern_.c_str()));
  if (!search->Next(found_)) return false;
  const CPath path(pattern_);
  root_ = path.GetDriveAndDirectory(false);
  // The separator of the root is no trailing one: it is the folder.
  if (root_.empty()) root_ = path.GetDriveAndDirectory(true);
  search_ = std::move(search);
  first_ = false;
  return true;
}

void CFileFind::Close() noexcept {
  search_.reset();
  first_ = true;
}

}  // namespace vlm
