#include <velum/files/Path.h>

#include <velum/files/DeprecatedPath.h>
#include <velum/files/detail/PathText.h>
#include <velum/platform/detail/FileSystem.h>

#include <string>

namespace vlm {

CPath::CPath(const GString& path) { SetPath(path); }

CPath::~CPath() = default;

GString CPath::GetDrive() const { return std::string(detail::RootName(path_.String())); }

GString CPath::GetDirectory(bool keepSeparator) const {
  return DeprecatedPath::GetDirectory(path_.c_str(), keepSeparator);
}

GString CPath::GetDriveAndDirectory(bool keepSeparator) const {
  return AppendDirSeparator(detail::ParentOf(path_), keepSeparator);
}

GString CPath::GetName() const { return DeprecatedPath::GetName(path_.c_str()); }

GString CPath::GetExtension() const {
  const std::string extension(detail::SplitPath(path_.String()).extension);
  return extension == "." ? std::string() : extension;
}

GString CPath::GetNameAndExtension() const { return GetName() + GetExtension(); }

GString CPath::GetFullPath() const { return detail::FullPath(path_.c_str()); }

bool CPath::IsEquivalent(const CPath& other) const {
  return DeprecatedPath::PathsEqual(path_.c_str(), other.path_.c_str());
}

bool CPath::SetPath(const GString& path) {
  path_ = GString(path.c_str());
  return true;
}

void CPath::SetName(const GString& name) {
  GString path = GetDriveAndDirectory(true);
  if (!name.empty()) path += name + GetExtension();
  SetPath(path);
}

void CPath::SetExtension(const GString& extension) {
  const auto kept =
      path_.size() - static_cast<unsigned int>(detail::SplitPath(path_.String()).extension.size());
  GString path = path_.substr(0, kept);
  if (!extension.empty() && extension[0] != ExtSeparator()) path += ExtSeparator();
  SetPath(path + extension);
}

void CPath::SetNameAndExtension(const GString& name) { SetPath(GetDriveAndDirectory(true) + name); }

bool CPath::CreatePath() const {
  const GString full = GetFullPath();
  return !full.empty() && detail::MakeFolders(full.String());
}

GString CPath::AppendDirSeparator(const GString& text, bool add) {
  GString result(text);
  add ? DeprecatedPath::AppendDirectorySeparator(result)
      : DeprecatedPath::RemoveTrailingDirectorySeparator(result);
  return result;
}

GString CPath::GetTempPathA(bool keepSeparator) {
  return AppendDirSeparator(platform::TemporaryFolder(), keepSeparator);
}

GString CPath::GetTempFilename(const GString& directory) {
  const GString folder =
      directory.empty() ? GetTempPathA(true) : AppendDirSeparator(directory.c_str(), true);
  return platform::MakeTemporaryFile(folder, "kq", detail::kLongestPath);
}

GString CPath::ChangeExtension(const char* path, const char* extension) {
  return DeprecatedPath::ChangeExtension(path, extension);
}

GString CPath::ChangeName(const char* path, const char* name) {
  return DeprecatedPath::ChangeName(path, name);
}

bool CPath::HasExtension(const char* path) noexcept { return DeprecatedPath::HasExtension(path); }

}  // namespace vlm
