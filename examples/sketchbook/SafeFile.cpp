#include <examples/sketchbook/SafeFile.h>

#include <velum/files/File.h>
#include <velum/files/Path.h>
#include <examples/sketchbook/Refuse.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace vlm::sketchbook {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RefuseToWrite(const fs::path& path, const std::error_code& error) {
  Refuse("Unable to write '" + GString(path.string()) + "'.\n" + error.message());
}

// The library gives paths with "\"; the standard library wants those of the system.
fs::path Native(const GString& path) {
  std::string native = path;
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

// An empty file of its own, which is removed unless it was moved away.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& folder) : name_(CPath::GetTempFilename(folder.string())) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    if (!name_.empty()) fs::remove(Native(name_), ignored);
  }

  const GString& Name() const { return name_; }
  void MoveTo(const fs::path& target, std::error_code& error) {
    fs::rename(Native(name_), target, error);
    if (!error) name_.clear();
  }

 private:
  GString name_;
};

}  // namespace

void ReplaceFile(const GString& path, const std::string& bytes) {
  std::error_code error;
  // A link stays a link: it is the file behind it that is replaced.
  const fs::path target = fs::weakly_canonical(fs::absolute(Native(path)), error);
  if (error) RefuseToWrite(Native(path), error);
  const fs::file_status old = fs::status(target, error);
  if (fs::is_directory(old)) RefuseToWrite(target, std::make_error_code(std::errc::is_a_directory));
  if (fs::exists(old) && !fs::is_regular_file(old)) {
    // A device or a pipe has no contents that could be lost: it is written, never replaced.
    CFile device(GString(target.string()), CFile::AccessWrite, CFile::ModeOpenExisting,
                 CFile::ShareDenyNone);
    device.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    device.Close();
    return;
  }

  TemporaryFile temporary(target.parent_path());
  if (temporary.Name().empty()) RefuseToWrite(target, {errno, std::generic_category()});
  CFile file(temporary.Name(), CFile::AccessWrite, CFile::ModeTruncateExisting,
             CFile::ShareDenyAll);
  file.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
  file.Flush();  // to the disk: a name must not come to stand for bytes that are not there yet
  file.Close();
  if (fs::exists(old)) fs::permissions(Native(temporary.Name()), old.permissions(), error);
  temporary.MoveTo(target, error);
  if (error) RefuseToWrite(target, error);
}

}  // namespace vlm::sketchbook
