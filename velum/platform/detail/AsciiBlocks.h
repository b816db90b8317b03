#pragma once

/// \file
/// Bytes of text in blocks, of which most are plain ASCII.
///
///     if (vlm::platform::NotAscii(text) == 0) vlm::platform::WidenBlock(text, out);

#include <emmintrin.h>

#include <cstddef>

namespace vlm::platform {

static_assert(sizeof(wchar_t) == 4);

/// How many bytes a block has.
inline constexpr std::ptrdiff_t kAsciiBlock = 16;

/// Which bytes of a block are not ASCII: a bit for each, the first one's lowest.
inline unsigned int NotAscii(const char* block) noexcept {
  return static_cast<unsigned int>(
      _mm_movemask_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(block))));
}

/// Makes each byte of a block an element of the same number.
inline void WidenBlock(const char* block, wchar_t* out) noexcept {
  const __m128i zero = _mm_setzero_si128();
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
  const __m128i low = _mm_unpacklo_epi8(bytes, zero);
  const __m128i high = _mm_unpackhi_epi8(bytes, zero);
  auto* const to = reinterpret_cast<__m128i*>(out);
  _mm_storeu_si128(to, _mm_unpacklo_epi16(low, zero));
  _mm_storeu_si128(to + 1, _mm_unpackhi_epi16(low, zero));
  _mm_storeu_si128(to + 2, _mm_unpacklo_epi16(high, zero));
  _mm_storeu_si128(to + 3, _mm_unpackhi_epi16(high, zero));
}

}  // namespace vlm::platform
