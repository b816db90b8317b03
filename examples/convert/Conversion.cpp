#include <examples/convert/Conversion.h>

#include <velum/core/WideText.h>
#include <velum/files/EncodedBufferedFile.h>
#include <velum/files/File.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unordered_map>

namespace vlm::convert {
namespace {

[[noreturn]] void Refuse(const std::string& path) {
  throw std::runtime_error("cannot write '" + path +
                           "': " + std::generic_category().message(errno));
}

// A new file beside the one that it is to replace; gone with this object unless it did.
class NewFile {
 public:
  explicit NewFile(const std::string& path) : path_(path) {
    std::error_code none;
    const auto real = std::filesystem::canonical(path, none);
    if (!none) path_ = real.string();
    struct stat old {};
    const bool isThere = stat(path_.c_str(), &old) == 0;
    if (isThere && !S_ISREG(old.st_mode)) {
      throw std::runtime_error("cannot write '" + path + "': it is no ordinary file");
    }
    name_ = path_ + ".XXXXXX";
    const int file = mkstemp(name_.data());
    if (file == -1) {
      name_.clear();
      Refuse(path);
    }
    const mode_t mask = umask(0);
    umask(mask);
    const mode_t mode = isThere ? old.st_mode & 07777 : 0666 & ~mask;
    const bool isSet = fchmod(file, mode) == 0;
    close(file);
    if (!isSet) {
      unlink(name_.c_str());
      Refuse(path);
    }
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!name_.empty()) unlink(name_.c_str());
  }

  [[nodiscard]] const std::string& Name() const { return name_; }

  void Replace() {
    CFile file(name_, CFile::AccessReadWrite, CFile::ModeOpenExisting, CFile::ShareDenyNone);
    file.Flush();
    file.Close();
    if (std::rename(name_.c_str(), path_.c_str()) != 0) Refuse(path_);
    name_.clear();
  }

 private:
  std::string path_;
  std::string name_;
};

// Which characters a code page lacks: those that do not come back.
class Losses {
 public:
  explicit Losses(const Encoding& encoding) : encoding_(encoding) {}

  void Look(const std::wstring& line, std::map<char32_t, std::uint64_t>& lost) {
    if (encoding_.kind != EncodingANSI) return;
    for (std::size_t i = 0; i < line.size(); ++i) {
      std::wstring character(1, line[i]);
      auto code = static_cast<char32_t>(line[i]);
      if (code >= 0xD800 && code <= 0xDBFF && i + 1 < line.size()) {
        character += line[++i];
        code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<char32_t>(line[i]) - 0xDC00);
      }
      if (IsLost(code, character)) ++lost[code];
    }
  }

 private:
  bool IsLost(char32_t code, const std::wstring& character) {
    if (code < 0x20) return false;
    const auto known = known_.find(code);
    if (known != known_.end()) return known->second;
    const WtoA narrow(character.c_str(), encoding_.page);
    const AtoW back(narrow, encoding_.page);
    const bool isLost = character != static_cast<const wchar_t*>(back);
    known_.emplace(code, isLost);
    return isLost;
  }

  Encoding encoding_;
  std::unordered_map<char32_t, bool> known_;
};

const wchar_t* EndText(LineEnd end, LineEnds wish) {
  if (end == LineEnd::None) return L"";
  if (wish == LineEnds::Feed) return L"\n";
  if (wish == LineEnds::ReturnFeed) return L"\r\n";
  return end == LineEnd::Feed ? L"\n" : end == LineEnd::Return ? L"\r" : L"\r\n";
}

}  // namespace

Conversion ConvertFile(const std::string& from, const Encoding& encoding, const std::string& to,
                       const Target& target) {
  NewFile file(to);
  // A file that is there gets no mark, unless it is emptied.
  CEncodedBufferedFile out(file.Name(), target.mark ? "w" : "r+",
                           CEncodedBufferedFile::ShareDenyAll, target.encoding.kind,
                           target.encoding.page, true, false);
  Conversion done;
  Losses losses(target.encoding);
  done.survey = TakeSurvey(from, encoding, [&](const std::wstring& line, LineEnd end) {
    losses.Look(line, done.lost);
    out.WriteString(line + EndText(end, target.lineEnds));
  });
  out.Close();
  file.Replace();
  return done;
}

}  // namespace vlm::convert
