#include <velum/platform/detail/Utf8.h>

#include <velum/platform/detail/AsciiBlocks.h>

#include <emmintrin.h>

#include <bit>
#include <cstdint>
#include <cstring>

namespace vlm::platform {

namespace {

__m128i Load(const void* at) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(at)); }

void Store(void* at, __m128i lanes) noexcept { _mm_storeu_si128(static_cast<__m128i*>(at), lanes); }

bool IsAscii(const wchar_t* block) noexcept {
  const __m128i all = _mm_or_si128(_mm_or_si128(Load(block), Load(block + 4)),
                                   _mm_or_si128(Load(block + 8), Load(block + 12)));
  const __m128i upper = _mm_and_si128(all, _mm_set1_epi32(~0x7F));
  return _mm_movemask_epi8(_mm_cmpeq_epi32(upper, _mm_setzero_si128())) == 0xFFFF;
}

void CopyAscii(const wchar_t* block, char* out) noexcept {
  const __m128i low = _mm_packs_epi32(Load(block), Load(block + 4));
  const __m128i high = _mm_packs_epi32(Load(block + 8), Load(block + 12));
  Store(out, _mm_packus_epi16(low, high));
}

/// Four characters of two bytes each, as the words of small scripts have them; false for others.
bool CopyFour(const char* at, wchar_t* out) noexcept {
  std::uint64_t bytes;
  std::memcpy(&bytes, at, sizeof(bytes));
  if ((bytes & 0xC0E0C0E0C0E0C0E0u) != 0x80C080C080C080C0u) return false;
  // A first byte of C0 or C1 is a longer form than needed.
  const std::uint64_t first = bytes & 0x001E001E001E001Eu;
  constexpr std::uint64_t kOnes = 0x0001000100010001u;
  if (((first - kOnes) & ~first & (kOnes << 15)) != 0) return false;
  const std::uint64_t codes =
      (bytes & 0x001F001F001F001Fu) << 6 | (bytes >> 8 & 0x003F003F003F003Fu);
  Store(out,
        _mm_unpacklo_epi16(_mm_cvtsi64_si128(static_cast<long long>(codes)), _mm_setzero_si128()));
  return true;
}

/// The same in the other direction.
bool CopyFour(const wchar_t* at, char* out) noexcept {
  const __m128i codes = Load(at);
  const __m128i isShort = _mm_cmplt_epi32(codes, _mm_set1_epi32(0x80));  // or negative
  const __m128i isLong = _mm_cmpgt_epi32(codes, _mm_set1_epi32(0x7FF));
  if (_mm_movemask_epi8(_mm_or_si128(isShort, isLong)) != 0) return false;
  const __m128i first = _mm_srli_epi32(codes, 6);
  const __m128i second = _mm_slli_epi32(_mm_and_si128(codes, _mm_set1_epi32(0x3F)), 8);
  const __m128i both = _mm_or_si128(_mm_or_si128(first, second), _mm_set1_epi32(0x80C0));
  // The packing saturates signed numbers, so that the sign must be the upper bit.
  const __m128i sign = _mm_srai_epi32(_mm_slli_epi32(both, 16), 16);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packs_epi32(sign, sign));
  return true;
}

constexpr std::ptrdiff_t kBlock = kAsciiBlock;

constexpr std::size_t Count(char32_t code, const wchar_t*) noexcept {
  return code > 0xFFFF ? 2 : 1;
}
constexpr std::size_t Count(char32_t code, const char*) noexcept {
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

/// How many elements `Convert` writes.
template <class From, class To>
std::size_t CountAll(const From* at, const From* end, const To* out) noexcept {
  std::size_t count = 0;
  while (at != end) {
    const From* blockEnd = end;
    if (end - at >= kBlock) {
      blockEnd = at + kBlock;
      bool isAscii;
      if constexpr (sizeof(From) == 1) {
        isAscii = NotAscii(at) == 0;
      } else {
        isAscii = IsAscii(at);
      }
      if (isAscii) {
        count += static_cast<std::size_t>(kBlock);
        at = blockEnd;
        continue;
      }
    }
    while (at < blockEnd) count += Count(NextCodePoint(at, end), out);
  }
  return count;
}

std::size_t Convert(const char* at, const char* end, wchar_t* out) noexcept {
  wchar_t* to = out;
  while (end - at >= kBlock) {
    const unsigned int others = NotAscii(at);
    if (others == 0) {
      WidenBlock(at, to);
      at += kBlock;
      to += kBlock;
      continue;
    }
    const char* const blockEnd = at + kBlock;
    for (int ascii = std::countr_zero(others); ascii > 0; --ascii) {
      *to++ = static_cast<wchar_t>(*at++);
    }
    while (at < blockEnd) {
      const auto lead = static_cast<unsigned char>(*at);
      if (lead < 0x80) {
        *to++ = static_cast<wchar_t>(lead);
        ++at;
      } else if (lead < 0xE0 && end - at >= 8 && CopyFour(at, to)) {
        at += 8;
        to += 4;
      } else {
        to += PutWide(NextCodePoint(at, end), to);
      }
    }
  }
  while (at != end) to += PutWide(NextCodePoint(at, end), to);
  return static_cast<std::size_t>(to - out);
}

std::size_t Convert(const wchar_t* at, const wchar_t* end, char* out) noexcept {
  char* to = out;
  while (end - at >= kBlock) {
    if (IsAscii(at)) {
      CopyAscii(at, to);
      at += kBlock;
      to += kBlock;
      continue;
    }
    const wchar_t* const blockEnd = at + kBlock;
    while (at < blockEnd) {
      const auto unit = static_cast<char32_t>(*at);
      if (unit < 0x80) {
        *to++ = static_cast<char>(unit);
        ++at;
      } else if (unit < 0x800) {
        if (end - at >= 4 && CopyFour(at, to)) {
          at += 4;
          to += 8;
        } else {
          to += PutUtf8(unit, to);
          ++at;
        }
      } else {
        to += PutUtf8(NextCodePoint(at, end), to);
      }
    }
  }
  while (at != end) to += PutUtf8(NextCodePoint(at, end), to);
  return static_cast<std::size_t>(to - out);
}

}  // namespace

std::size_t Utf8ToWide(std::string_view text, wchar_t* out) noexcept {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  return out ? Convert(begin, end, out) : CountAll(begin, end, out);
}

std::size_t WideToUtf8(std::wstring_view text, char* out) noexcept {
  const wchar_t* const begin = text.data();
  const wchar_t* const end = begin + text.size();
  return out ? Convert(begin, end, out) : CountAll(begin, end, out);
}

std::string WideToUtf8(std::wstring_view text) {
  std::string narrow(WideToUtf8(text, nullptr), '\0');
  WideToUtf8(text, narrow.data());
  return narrow;
}

}  // namespace vlm::platform
