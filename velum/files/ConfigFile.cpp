#include <velum/files/ConfigFile.h>

#include <velum/core/Exception.h>
#include <velum/core/SystemError.h>
#include <velum/files/Path.h>
#include <velum/files/detail/ProfileLines.h>
#include <velum/files/detail/ProfileText.h>
#include <velum/files/detail/SettingText.h>
#include <velum/platform/detail/FileReplacement.h>
#include <velum/platform/detail/InputFile.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace vlm {

namespace {

/// The bytes of a file, or none if nothing is open.
class FileSource : public detail::ByteSource {
 public:
  explicit FileSource(const platform::InputFile& file) : file_(file) {}
  std::int64_t Read(char* data, std::size_t count) override {
    return file_.IsOpen() ? file_.Read(data, count) : 0;
  }

 private:
  const platform::InputFile& file_;
};

/// Asks the file at `path` something; false if it can't be read.
template <class Question>
bool Ask(const GString& path, Question question) {
  platform::InputFile file;
  if (!file.Open(path.c_str())) return false;
  FileSource source(file);
  try {
    question(detail::ProfileFile(source));
  } catch (const detail::ProfileReadError&) {
    return false;
  }
  return true;
}

/// The change that `find` gives for the contents of `file`.
template <class Find>
std::optional<detail::ProfileChange> ChangeOf(const platform::InputFile& file, Find find) {
  FileSource source(file);
  return find(detail::ProfileFile(source));
}

/// True if the file at `path` is already as `find` wants it. Nothing is locked or written for that,
/// so that it works where nothing may be written.
template <class Find>
bool IsDone(const GString& path, Find find) {
  platform::InputFile file;
  if (!file.Open(path.c_str()) && errno != ENOENT) throw detail::ProfileReadError();
  return !ChangeOf(file, find);
}

/// Makes the change that `find` gives for the file at `path`; false if the system refuses.
template <class Find>
bool Replace(const GString& path, Find find) {
  platform::FileReplacement file;
  if (!file.Begin(path.c_str())) return false;
  const std::optional<detail::ProfileChange> change = ChangeOf(file.Old(), find);
  return !change || (file.AppendOld(0, change->first) && file.Append(change->bytes) &&
                     file.AppendOld(change->last, file.OldSize()) && file.Commit());
}

/// Makes the change that `find` gives for the file at `path`, if any.
template <class Find>
void Change(const GString& path, Find find) {
  GString reason;
  try {
    if (IsDone(path, find) || Replace(path, find)) return;
    reason = FormatSystemErrorMsg();
  } catch (const detail::ProfileReadError&) {
    reason = FormatSystemErrorMsg();
  } catch (const detail::ProfileRefusal& refusal) {
    reason = refusal.reason;
  }
  ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_WRITE, path.c_str(), reason.c_str());
}

}  // namespace

CConfigFile::CConfigFile(const GString& path) {
  if (path.empty()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  path_ = CPath(path).GetFullPath();
  if (path_.empty()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
}

CConfigFile::~CConfigFile() = default;

bool CConfigFile::Read(const GString& section, const GString& key, GString& value) const {
  constexpr std::size_t kTooLong = 1023;
  std::optional<detail::ProfileValue> found;
  const auto look = [&](detail::ProfileFile file) {
    found = file.Value(section.String(), key.String());
  };
  if (!Ask(path_, look)) found.reset();
  if (found && (found->isCut || found->text.size() >= kTooLong)) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  value = found ? GString(std::move(found->text)) : GString();
  return !value.empty();
}

bool CConfigFile::Read(const GString& section, const GString& key, int& value) const {
  GString text;
  return Read(section, key, text) && text.ToInt(value);
}

bool CConfigFile::Read(const GString& section, const GString& key, unsigned int& value) const {
  GString text;
  return Read(section, key, text) && detail::ScanSetting(text, value);
}

bool CConfigFile::Read(const GString& section, const GString& key, double& value) const {
  GString text;
  return Read(section, key, text) && detail::ReadPlainDouble(text, value);
}

bool CConfigFile::ReadSection(const GString& section, std::vector<GString>& lines) const {
  const auto append = [&](detail::ProfileFile file) {
    file.AppendSection(section.String(), lines);
  };
  static_cast<void>(Ask(path_, append));
  return true;
}

void CConfigFile::Write(const GString& section, const GString& key, const GString& value) const {
  Change(path_, [&](detail::ProfileFile file) {
    return file.ChangeForEntry(section.String(), key.String(), value.String());
  });
}

void CConfigFile::Write(const GString& section, const GString& key, const char* value) const {
  Write(section, key, value ? GString(value) : GString());
}

void CConfigFile::Write(const GString& section, const GString& key, int value) const {
  Write(section, key, detail::SettingText(value));
}

void CConfigFile::Write(const GString& section, const GString& key, unsigned int value) const {
  Write(section, key, detail::SettingText(value));
}

void CConfigFile::Write(const GString& section, const GString& key, double value) const {
  constexpr int kDigits = 14;
  Write(section, key, detail::SettingText(value, kDigits, true));
}

void CConfigFile::RemoveEntry(const GString& section, const GString& key) const {
  Change(path_, [&](detail::ProfileFile file) {
    return file.ChangeToRemoveEntry(section.String(), key.String());
  });
}

void CConfigFile::RemoveSection(const GString& section) const {
  Change(path_,
         [&](detail::ProfileFile file) { return file.ChangeToRemoveSection(section.String()); });
}

}  // namespace vlm
