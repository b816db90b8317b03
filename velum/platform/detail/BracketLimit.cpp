#include <velum/platform/detail/BracketLimit.h>

#include <unicode/uchar.h>

namespace vlm::platform {

namespace {

constexpr char16_t kNeutral = '|';
constexpr std::size_t kDeepest = 60;
constexpr std::size_t kMostInside = 1024;

/// One bracket for each of those that Unicode holds to be the same.
char16_t Canonical(char16_t bracket) {
  if (bracket == 0x2329) return 0x3008;
  return bracket == 0x232A ? 0x3009 : bracket;
}

}  // namespace

char16_t BracketLimit::Pass(char16_t unit) {
  switch (u_charDirection(unit)) {
    case U_BLOCK_SEPARATOR:
      *this = BracketLimit();
      return unit;
    case U_LEFT_TO_RIGHT_EMBEDDING:
    case U_RIGHT_TO_LEFT_EMBEDDING:
    case U_LEFT_TO_RIGHT_OVERRIDE:
    case U_RIGHT_TO_LEFT_OVERRIDE:
      ++sequences_.back().embeddings;
      Nest();
      return unit;
    case U_POP_DIRECTIONAL_FORMAT:
      if (sequences_.back().embeddings != 0) {
        --sequences_.back().embeddings;
        --depth_;
      }
      return unit;
    case U_LEFT_TO_RIGHT_ISOLATE:
    case U_RIGHT_TO_LEFT_ISOLATE:
    case U_FIRST_STRONG_ISOLATE:
      Nest();
      if (!isTooDeep_) sequences_.emplace_back();
      return unit;
    case U_POP_DIRECTIONAL_ISOLATE:
      if (sequences_.size() > 1) {
        depth_ -= 1 + sequences_.back().embeddings;
        sequences_.pop_back();
      }
      return unit;
    case U_OTHER_NEUTRAL: {
      const int type = u_getIntPropertyValue(unit, UCHAR_BIDI_PAIRED_BRACKET_TYPE);
      if (type == U_BPT_NONE) return unit;
      return Admits(unit, type == U_BPT_OPEN) ? unit : kNeutral;
    }
    default:
      return unit;
  }
}

void BracketLimit::Nest() {
  ++depth_;
  isTooDeep_ = isTooDeep_ || depth_ > kDeepest;
}

bool BracketLimit::Admits(char16_t bracket, bool isOpening) {
  Sequence& sequence = sequences_.back();
  if (isTooDeep_ || sequence.isFull) return false;
  if (isOpening) {
    sequence.count = sequence.open == 0 ? 1 : sequence.count + 1;
    if (sequence.open == sequence.closers.size() || sequence.count > kMostInside) {
      sequence.isFull = true;
      return false;
    }
    const auto closer = static_cast<char16_t>(u_getBidiPairedBracket(bracket));
    sequence.closers[sequence.open++] = Canonical(closer);
    return true;
  }
  // A closing bracket closes those inside of its pair as well.
  for (std::size_t i = sequence.open; i-- > 0;) {
    if (sequence.closers[i] != Canonical(bracket)) continue;
    sequence.open = i;
    break;
  }
  return true;
}

}  // namespace vlm::platform
