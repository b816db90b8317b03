#include <velum/files/detail/PathText.h>

#include <velum/platform/detail/FileSystem.h>
#include <velum/platform/detail/NativePath.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace vlm::detail {

using platform::IsSeparator;

PathParts SplitPath(std::string_view path) noexcept {
  PathParts parts;
  if (platform::HasDrive(path)) parts.drive = path.substr(0, 2);
  const std::string_view rest = path.substr(parts.drive.size());
  const std::size_t nameStart = rest.find_last_of(kSeparators) + 1;  // npos + 1 is 0.
  parts.directory = rest.substr(0, nameStart);
  parts.name = rest.substr(nameStart);
  const std::size_t point = parts.name.rfind('.');
  if (point != std::string_view::npos && parts.name != "." && parts.name != "..") {
    parts.extension = parts.name.substr(point);
    parts.name = parts.name.substr(0, point);
  }
  return parts;
}

std::string_view RootName(std::string_view path) noexcept {
  if (platform::HasDrive(path)) return path.substr(0, 2);
  const bool server =
      path.size() > 2 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2]);
  return server ? path.substr(0, path.find_first_of(kSeparators, 2)) : std::string_view();
}

GString ParentOf(const GString& path) {
  const std::string_view text = path.String();
  const std::string_view root = RootName(text);
  const std::string_view rest = text.substr(root.size());
  std::size_t end = rest.find_last_of(kSeparators);
  GString parent = GString(std::string(root));
  if (end == std::string_view::npos) return parent;
  while (end > 0 && IsSeparator(rest[end - 1])) --end;
  return end == 0 ? parent + '\\' : parent + std::string(rest.substr(0, end));
}

GString FullPath(const char* path) {
  std::string text(path);
  if (RootName(text).empty() && (text.empty() || !IsSeparator(text[0]))) {
    std::string current = platform::CurrentFolder();
    if (current.empty()) return {};
    if (!text.empty() && current.back() != '\\') current += '\\';
    text = current + text;
  }
  const std::string_view root = RootName(text);
  std::string_view rest = std::string_view(text).substr(root.size());
  std::vector<std::string_view> folders;
  while (!rest.empty()) {
    const std::string_view folder = rest.substr(0, rest.find_first_of(kSeparators));
    if (folder == "..") {
      if (!folders.empty()) folders.pop_back();
    } else if (!folder.empty() && folder != ".") {
      folders.push_back(folder);
    }
    rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
  }
  std::string full(root);
  std::replace(full.begin(), full.end(), '/', '\\');
  for (const std::string_view folder : folders) (full += '\\') += folder;
  if (folders.empty() || IsSeparator(text.back())) full += '\\';
  return full.size() <= kLongestPath ? GString(std::move(full)) : GString();
}

bool MakeFolders(std::string_view path) {
  if (!path.empty() && IsSeparator(path.back())) path.remove_suffix(1);
  if (path.empty()) return true;
  const std::string folder(path);
  switch (platform::KindOf(folder.c_str())) {
    case platform::FileKind::kFolder:
      return true;
    case platform::FileKind::kFile:
      platform::SetFileExistsError();
      return false;
    default:
      break;
  }
  if (errno == ENAMETOOLONG) return false;
  const std::size_t separator = path.find_last_of(kSeparators);
  if (separator != std::string_view::npos && !MakeFolders(path.substr(0, separator))) return false;
  // Somebody else may have made it in between.
  return platform::MakeFolder(folder.c_str()) ||
         platform::KindOf(folder.c_str()) == platform::FileKind::kFolder;
}

GString FoldAscii(GString text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char c) { return FoldAscii(c); });
  return text;
}

}  // namespace vlm::detail
