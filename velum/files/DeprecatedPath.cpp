#include <velum/files/DeprecatedPath.h>

#include <velum/files/Path.h>
#include <velum/files/detail/PathText.h>

#include <cstring>
#include <string>
#include <string_view>

namespace vlm {

namespace {

constexpr char kSeparator = '\\';

/// The parts of a terminated path, which may be null.
detail::PathParts Split(const char* path) {
  return path ? detail::SplitPath(path) : detail::PathParts();
}

GString Limited(std::string_view part) {
  return part.size() <= detail::kLongestPart ? std::string(part) : std::string();
}

bool EndsWith(const GString& text, char c) { return !text.empty() && text[text.size() - 1] == c; }

bool IsAnyOf(char c, const char* set) { return c && std::strchr(set, c); }

}  // namespace

char* DeprecatedPath::GetExtensionPtr(const char* path) noexcept {
  if (!path) return nullptr;
  const char* const name = GetNamePtr(path);
  const char* const point = std::strrchr(name, '.');
  return point && point[1] ? const_cast<char*>(point) : nullptr;
}

char* DeprecatedPath::GetNamePtr(const char* path) noexcept {
  if (!path) return nullptr;
  const std::size_t start = std::string_view(path).find_last_of(":\\/") + 1;  // npos + 1 is 0.
  return const_cast<char*>(path + start);
}

bool DeprecatedPath::HasExtension(const char* path) noexcept {
  return GetExtensionPtr(path) != nullptr;
}

GString DeprecatedPath::ChangeExtension(const char* path, const char* extension) {
  if (!path) return {};
  GString changed(path);
  if (changed.empty()) return changed;
  if (const char* const old = GetExtensionPtr(path)) {
    changed.erase(static_cast<unsigned int>(old - path));
  }
  return extension ? changed += extension : changed;
}

GString DeprecatedPath::ChangeName(const char* path, const char* name) {
  return GetDriveAndDirectory(path, true) + (name ? name : "");
}

GString DeprecatedPath::Combine(const char* drive, const char* directory, const char* name,
                                const char* extension) {
  GString path;
  if (drive && *drive) (path += *drive) += GetDriveSeparator();
  if (directory && *directory) {
    path += directory;
    if (!IsAnyOf(path[path.size() - 1], "\\/")) path += kSeparator;
  }
  if (name) path += name;
  if (extension && *extension) {
    if (*extension != '.') path += '.';
    path += extension;
  }
  return path.size() <= detail::kLongestPath ? path : GString();
}

GString DeprecatedPath::CombinePaths(const char* a, const char* b) {
  if (!a || !b) return {};
  GString path(a);
  const bool joins = path.empty() || IsAnyOf(path[path.size() - 1], ":\\/") || IsAnyOf(*b, "\\/");
  if (!joins) path += kSeparator;
  return path += b;
}

GString DeprecatedPath::GetDrive(const char* path, bool keepColon) {
  const std::string_view drive = Split(path).drive;
  return std::string(keepColon || drive.empty() ? drive : drive.substr(0, 1));
}

GString DeprecatedPath::GetDirectory(const char* path, bool keepSeparator) {
  GString directory = Limited(Split(path).directory);
  if (!keepSeparator) RemoveTrailingDirectorySeparator(directory);
  return directory;
}

GString DeprecatedPath::GetName(const char* path) { return Limited(Split(path).name); }

GString DeprecatedPath::GetExtension(const char* path) { return Limited(Split(path).extension); }

GString DeprecatedPath::GetDriveAndDirectory(const char* path, bool keepSeparator) {
  if (Split(path).directory.size() > detail::kLongestPart) return {};
  return GetDrive(path, true) + GetDirectory(path, keepSeparator);
}

GString DeprecatedPath::GetNameAndExtension(const char* path) {
  const detail::PathParts parts = Split(path);
  const bool fits =
      parts.name.size() <= detail::kLongestPart && parts.extension.size() <= detail::kLongestPart;
  return fits ? GetName(path) + GetExtension(path) : GString();
}

GString DeprecatedPath::GetFullPath(const char* path) { return detail::FullPath(path ? path : ""); }

bool DeprecatedPath::PathsEqual(const char* a, const char* b) {
  if (!a || !b) return false;
  if (detail::FoldAscii(a) == detail::FoldAscii(b)) return true;
  const GString full = GetFullPath(a);  // Empty for a path that is too long: it equals no other.
  return !full.empty() && detail::FoldAscii(full) == detail::FoldAscii(GetFullPath(b));
}

GString DeprecatedPath::GetTempPathA(bool keepSeparator) {
  return CPath::GetTempPathA(keepSeparator);
}

GString DeprecatedPath::GetTempFilename(const char* directory) {
  return CPath::GetTempFilename(directory ? directory : "");
}

bool DeprecatedPath::CreatePath(const char* path) { return path && detail::MakeFolders(path); }

void DeprecatedPath::AppendDirectorySeparator(GString& text) {
  if (!text.empty() && !EndsWith(text, kSeparator)) text += kSeparator;
}

void DeprecatedPath::RemoveTrailingDirectorySeparator(GString& text) {
  if (EndsWith(text, kSeparator)) text.resize(text.size() - 1);
}

}  // namespace vlm
