#include <velum/files/detail/StreamMode.h>

namespace vlm::detail {

bool ReadStreamMode(std::string_view mode, platform::OpenWish& wish) {
  constexpr std::string_view kWithoutEffect = "btcen";
  const char first = mode[0];
  bool updates = false;
  for (const char letter : mode.substr(1)) {
    if (letter == '+' && !updates) {
      updates = true;
    } else if (letter == 'x' && !wish.mustBeNew && first != 'r') {
      wish.mustBeNew = true;
    } else if (kWithoutEffect.find(letter) == std::string_view::npos) {
      return false;
    }
  }
  wish.sharing.reads = first == 'r' || updates;
  wish.sharing.writes = first != 'r' || updates;
  wish.creates = first != 'r';
  wish.empties = first == 'w';
  wish.appends = first == 'a';
  return first == 'r' || first == 'w' || first == 'a';
}

}  // namespace vlm::detail
