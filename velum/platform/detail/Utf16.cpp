#include <velum/platform/detail/Utf16.h>

#include <velum/platform/detail/Utf8.h>

#include <emmintrin.h>

namespace vlm::platform {

namespace {

constexpr std::size_t kBlock = 8;  // units in a vector

__m128i Swapped(__m128i units) noexcept {
  return _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8));
}

bool HasSurrogates(__m128i units) noexcept {
  const __m128i upper = _mm_and_si128(units, _mm_set1_epi16(static_cast<short>(0xF800)));
  return _mm_movemask_epi8(_mm_cmpeq_epi16(upper, _mm_set1_epi16(static_cast<short>(0xD800)))) != 0;
}

void PutUnit(wchar_t unit, bool highFirst, char* out) noexcept {
  const auto low = static_cast<char>(unit & 0xFF);
  const auto high = static_cast<char>(unit >> 8 & 0xFF);
  out[0] = highFirst ? high : low;
  out[1] = highFirst ? low : high;
}

/// Eight elements as units, if they are all units without surrogates.
bool Pack(const wchar_t* text, __m128i& units) noexcept {
  const auto* const elements = reinterpret_cast<const __m128i*>(text);
  const __m128i a = _mm_loadu_si128(elements);
  const __m128i b = _mm_loadu_si128(elements + 1);
  const __m128i upper = _mm_srli_epi32(_mm_or_si128(a, b), 16);
  if (_mm_movemask_epi8(_mm_cmpeq_epi32(upper, _mm_setzero_si128())) != 0xFFFF) return false;
  // The packing saturates signed numbers, so the units are moved to these and back.
  const __m128i shift = _mm_set1_epi32(0x8000);
  units = _mm_xor_si128(_mm_packs_epi32(_mm_sub_epi32(a, shift), _mm_sub_epi32(b, shift)),
                        _mm_set1_epi16(static_cast<short>(0x8000)));
  return !HasSurrogates(units);
}

}  // namespace

void Utf16ToWide(const char* bytes, std::size_t count, bool highFirst, wchar_t* out) noexcept {
  static_assert(sizeof(wchar_t) == 4);
  for (std::size_t i = 0; i < count;) {
    if (count - i >= kBlock) {
      __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 2 * i));
      if (highFirst) units = Swapped(units);
      if (!HasSurrogates(units)) {
        auto* const to = reinterpret_cast<__m128i*>(out + i);
        _mm_storeu_si128(to, _mm_unpacklo_epi16(units, _mm_setzero_si128()));
        _mm_storeu_si128(to + 1, _mm_unpackhi_epi16(units, _mm_setzero_si128()));
        i += kBlock;
        continue;
      }
    }
    const wchar_t unit = UnitAt(bytes + 2 * i, highFirst);
    const wchar_t next = i + 1 < count ? UnitAt(bytes + 2 * i + 2, highFirst) : L'\0';
    if (IsHighSurrogate(unit) && IsLowSurrogate(next)) {
      out[i++] = unit;
      out[i++] = next;
    } else {
      const bool isLone = IsHighSurrogate(unit) || IsLowSurrogate(unit);
      out[i++] = isLone ? static_cast<wchar_t>(kReplacement) : unit;
    }
  }
}

std::size_t WideToUtf16(std::wstring_view text, bool highFirst, char* out) noexcept {
  char* const start = out;
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    __m128i units;
    if (end - at >= static_cast<std::ptrdiff_t>(kBlock) && Pack(at, units)) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), highFirst ? Swapped(units) : units);
      at += kBlock;
      out += 2 * kBlock;
      continue;
    }
    wchar_t pair[2];
    const std::size_t length = PutWide(NextCodePoint(at, end), pair);
    for (std::size_t i = 0; i < length; ++i, out += 2) PutUnit(pair[i], highFirst, out);
  }
  return static_cast<std::size_t>(out - start);
}

}  // namespace vlm::platform
