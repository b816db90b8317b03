#include <velum/files/HtmlReport.h>

#include <velum/platform/detail/FileAccess.h>
#include <velum/platform/detail/FileReplacement.h>

#include <locale>
#include <utility>

namespace vlm {

namespace {

constexpr int kDigits = 14;

// For what can't be replaced: a file of several names, a pipe, a device, a file in a folder that
// takes no new one or keeps each user's files.
void WriteInPlace(const char* path, const std::string& text) {
  constexpr unsigned int kEveryone = 0666;  // Less the process's mask.
  platform::OpenWish wish;
  wish.sharing.writes = true;
  wish.creates = true;
  wish.empties = true;
  wish.permissions = kEveryone;
  const int file = platform::OpenFile(path, wish);
  if (file < 0) return;
  static_cast<void>(platform::WriteFile(file, text.data(), text.size()));
  platform::CloseFile(file);
}

}  // namespace

CHtmlReport::CHtmlReport() {
  imbue(std::locale::classic());
  precision(kDigits);
}

CHtmlReport::CHtmlReport(CHtmlReport&& other) : std::ostringstream(std::move(other)) {}

CHtmlReport& CHtmlReport::operator=(CHtmlReport&& other) {
  std::ostringstream::operator=(std::move(other));
  return *this;
}

CHtmlReport::~CHtmlReport() = default;

std::string CHtmlReport::GetReport() const { return str() + "</BODY>\n</HTML>"; }

void CHtmlReport::WriteToFile(const std::string& path) const {
  const std::string text = GetReport() + "\n";
  platform::FileReplacement file;
  const bool hasBegun = file.Begin(path.c_str());
  if (hasBegun && file.OldHasOtherNames()) return WriteInPlace(path.c_str(), text);
  const bool isWritten = hasBegun && file.Append(text);
  if (isWritten && file.Commit()) return;
  // What finds no room beside the old page would find none in its place either.
  if (hasBegun != isWritten || platform::IsDiskInDanger()) return;
  WriteInPlace(path.c_str(), text);
}

}  // namespace vlm
