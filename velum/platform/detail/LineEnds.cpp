#include <velum/platform/detail/LineEnds.h>

#include <emmintrin.h>

#include <bit>

namespace vlm::platform {

namespace {

__m128i Load(const char* at) noexcept {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

unsigned int Mask(__m128i lanes) noexcept {
  return static_cast<unsigned int>(_mm_movemask_epi8(lanes));
}

}  // namespace

const char* FindLineEnd(const char* at, const char* end) noexcept {
  const __m128i feed = _mm_set1_epi8('\n');
  const __m128i back = _mm_set1_epi8('\r');
  for (; end - at >= 16; at += 16) {
    const __m128i bytes = Load(at);
    const unsigned int found =
        Mask(_mm_or_si128(_mm_cmpeq_epi8(bytes, feed), _mm_cmpeq_epi8(bytes, back)));
    if (found != 0) return at + std::countr_zero(found);
  }
  while (at != end && *at != '\n' && *at != '\r') ++at;
  return at;
}

const char* FindLineEnd16(const char* at, const char* end, bool highFirst) noexcept {
  const int shift = highFirst ? 8 : 0;
  const __m128i feed = _mm_set1_epi16(static_cast<short>('\n' << shift));
  const __m128i back = _mm_set1_epi16(static_cast<short>('\r' << shift));
  for (; end - at >= 16; at += 16) {
    const __m128i units = Load(at);
    const unsigned int found =
        Mask(_mm_or_si128(_mm_cmpeq_epi16(units, feed), _mm_cmpeq_epi16(units, back)));
    if (found != 0) return at + std::countr_zero(found);
  }
  for (; at != end; at += 2) {
    const char high = at[highFirst ? 0 : 1];
    const char low = at[highFirst ? 1 : 0];
    if (high == 0 && (low == '\n' || low == '\r')) break;
  }
  return at;
}

}  // namespace vlm::platform
