#include <velum/files/detail/WildCards.h>

#include <velum/files/detail/PathText.h>

#include <cstddef>

namespace vlm::detail {

WildCards::WildCards(std::string_view mask) {
  const bool endsInPoint = !mask.empty() && mask.back() == '.';
  while (!mask.empty() && mask.back() == '.') mask.remove_suffix(1);
  for (std::size_t i = 0; i < mask.size(); ++i) {
    const bool isLast = i + 1 == mask.size();
    const bool wildFollows = !isLast && (mask[i + 1] == '*' || mask[i + 1] == '?');
    Kind kind = Kind::Byte;
    if (mask[i] == '*') kind = isLast && endsInPoint ? Kind::AnyButPoint : Kind::Any;
    if (mask[i] == '?') kind = Kind::OneOrEnd;
    if (mask[i] == '.' && wildFollows) kind = Kind::PointOrEnd;
    steps_.push_back({kind, FoldAscii(mask[i])});
  }
}

bool WildCards::Match(std::string_view name) const {
  // For each step, whether what comes before it can have matched the name up to here.
  std::vector<bool> now(steps_.size() + 1);
  now[0] = true;
  for (std::size_t at = 0;; ++at) {
    const bool atEnd = at == name.size();
    const bool atPoint = !atEnd && name[at] == '.';
    const char c = atEnd ? '\0' : FoldAscii(name[at]);
    std::vector<bool> next(steps_.size() + 1);
    for (std::size_t s = 0; s < steps_.size(); ++s) {
      if (!now[s]) continue;
      const Kind kind = steps_[s].kind;
      const bool isRun = kind == Kind::Any || kind == Kind::AnyButPoint;
      // What matches nothing here leads to the next step at once.
      if (isRun || (kind == Kind::OneOrEnd && (atEnd || atPoint)) ||
          (kind == Kind::PointOrEnd && atEnd)) {
        now[s + 1] = true;
      }
      if (atEnd) continue;
      if (kind == Kind::Any || (kind == Kind::AnyButPoint && !atPoint)) next[s] = true;
      if ((kind == Kind::Byte && c == steps_[s].byte) || (kind == Kind::OneOrEnd && !atPoint) ||
          (kind == Kind::PointOrEnd && atPoint)) {
        next[s + 1] = true;
      }
    }
    if (atEnd) return now.back();
    now = next;
  }
}

}  // namespace vlm::detail
