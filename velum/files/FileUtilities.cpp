#include <velum/files/FileUtilities.h>

#include <velum/files/File.h>
#include <velum/files/Path.h>
#include <velum/files/detail/PathText.h>
#include <velum/platform/detail/FileSystem.h>
#include <velum/platform/detail/Modules.h>

#include <string>
#include <utility>

namespace vlm {

namespace {

/// What a buffer of the platform's interface would hold: nothing if the path is too long.
GString Limited(std::string path) {
  return path.size() <= detail::kLongestPath ? GString(std::move(path)) : GString();
}

}  // namespace

bool FileExists(const GString& path) {
  return platform::KindOf(path.c_str()) != platform::FileKind::kNothing;
}

bool PathExists(const GString& path) { return FileExists(path); }

bool IsFileReadable(const GString& path) { return platform::MayRead(path.c_str()); }

bool IsFileWritable(const GString& path) {
  const bool exists = FileExists(path);
  CFile file;
  if (!file.OpenNoThrow(path, CFile::AccessWrite,
                        exists ? CFile::ModeOpenExisting : CFile::ModeCreateNew,
                        CFile::ShareDenyNone)) {
    return false;
  }
  file.Abort(!exists);
  return true;
}

std::int64_t GetFileSize(const GString& path) { return platform::SizeOf(path.c_str()); }

bool RemoveFile(const GString& path) { return platform::RemoveFile(path.c_str()); }

bool RemoveEmptyFolder(const GString& path) { return platform::RemoveFolder(path.c_str()); }

GString GetCWD(bool keepSeparator) {
  return CPath::AppendDirSeparator(Limited(platform::CurrentFolder()), keepSeparator);
}

GString GetModuleFilename(void* module) { return Limited(platform::ModulePath(module)); }

GString GetStartupFilename(void* module, bool withExtension) {
  const CPath path(GetModuleFilename(module));
  return withExtension ? path.GetNameAndExtension() : path.GetName();
}

GString GetStartupPath(void* module, bool keepSeparator) {
  return CPath(GetModuleFilename(module)).GetDriveAndDirectory(keepSeparator);
}

GString ConstructModuleName(const GString& name) {
  const CPath path(name);
  return path.GetDriveAndDirectory(true) + path.GetName() + path.GetExtension();
}

}  // namespace vlm
