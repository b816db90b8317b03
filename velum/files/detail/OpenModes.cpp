#include <velum/files/detail/OpenModes.h>

#include <velum/files/File.h>

#include <cerrno>

namespace vlm::detail {

void Deny(int sharing, platform::OpenWish& wish) noexcept {
  wish.sharing.deniesRead = sharing == CFile::ShareDenyAll || sharing == CFile::ShareDenyRead;
  wish.sharing.deniesWrite = sharing == CFile::ShareDenyAll || sharing == CFile::ShareDenyWrite;
}

std::optional<platform::OpenWish> ReadStreamMode(std::string_view mode, int sharing) {
  constexpr unsigned int kAllReadAndWrite = 0666;
  constexpr std::string_view kWithoutEffect = "btcen";
  const char first = mode[0];
  bool isMode = first == 'r' || first == 'w' || first == 'a';
  bool updates = false;
  platform::OpenWish wish;
  for (const char letter : mode.substr(1)) {
    if (letter == '+' && !updates) {
      updates = true;
    } else if (letter == 'x' && !wish.mustBeNew && first != 'r') {
      wish.mustBeNew = true;
    } else if (kWithoutEffect.find(letter) == std::string_view::npos) {
      isMode = false;
    }
  }
  if (!isMode) {
    errno = EINVAL;
    return std::nullopt;
  }
  wish.permissions = kAllReadAndWrite;
  wish.sharing.reads = first == 'r' || updates;
  wish.sharing.writes = first != 'r' || updates;
  wish.creates = first != 'r';
  wish.empties = first == 'w';
  wish.appends = first == 'a';
  Deny(sharing, wish);
  return wish;
}

}  // namespace vlm::detail
