#include <velum/files/detail/NumberCast.h>

#include <emmintrin.h>

#include <cstdint>
#include <limits>
#include <type_traits>

namespace vlm::detail {

namespace {

// A number anywhere in memory.
template <class T>
struct [[gnu::packed, gnu::may_alias]] Loose {
  T value;
};

template <class Src, class Dst>
constexpr bool kLosesFraction = std::is_floating_point_v<Src>&& std::is_integral_v<Dst>;

// What the processor gives for NaN and for what 64 bits don't hold, and for that number itself.
constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::min();

std::int64_t TruncateRaw(float value) { return _mm_cvttss_si64(_mm_set_ss(value)); }

std::int64_t TruncateRaw(double value) { return _mm_cvttsd_si64(_mm_set_sd(value)); }

// The whole part; 0 where there is none.
template <class Src>
std::int64_t Truncate(Src value) {
  const std::int64_t whole = TruncateRaw(value);
  return whole != kNone || value == static_cast<Src>(kNone) ? whole : 0;
}

template <class Src, class Dst>
Dst CastOne(Src value) {
  if constexpr (kLosesFraction<Src, Dst>) {
    return static_cast<Dst>(Truncate(value));
  } else {
    return static_cast<Dst>(value);
  }
}

template <class Src, class Dst>
void CastEach(const Loose<Src>* src, Loose<Dst>* dst, std::size_t count, std::size_t stride) {
  for (std::size_t i = 0; i < count; ++i) dst[i].value = CastOne<Src, Dst>(src[i * stride].value);
}

// What the processor gives in the same way where it has 32 bits.
constexpr std::int32_t kNone32 = std::numeric_limits<std::int32_t>::min();

// Four whole numbers of 32 bits, of the sources or of what these are above 2^31.
template <bool kIsUpper>
__m128i TruncateFour(const Loose<float>* src) {
  const void* const place = src;
  __m128 four = _mm_loadu_ps(static_cast<const float*>(place));
  if constexpr (kIsUpper) four = _mm_sub_ps(four, _mm_set1_ps(0x1p31f));
  return _mm_cvttps_epi32(four);
}

template <bool kIsUpper>
__m128i TruncateFour(const Loose<double>* src) {
  const void* const place = src;
  const auto* const from = static_cast<const double*>(place);
  __m128d two[] = {_mm_loadu_pd(from), _mm_loadu_pd(from + 2)};
  if constexpr (kIsUpper) {
    for (__m128d& some : two) some = _mm_sub_pd(some, _mm_set1_pd(0x1p31));
  }
  return _mm_unpacklo_epi64(_mm_cvttpd_epi32(two[0]), _mm_cvttpd_epi32(two[1]));
}

// Sixteen whole numbers of 32 bits; false if one of the sources is none of them.
template <class Src>
bool TruncateSixteen(const Loose<Src>* src, __m128i (&four)[4]) {
  const __m128i none = _mm_set1_epi32(kNone32);
  __m128i found = _mm_setzero_si128();
  for (std::size_t i = 0; i < 4; ++i) {
    four[i] = TruncateFour<false>(src + 4 * i);
    found = _mm_or_si128(found, _mm_cmpeq_epi32(four[i], none));
  }
  return _mm_movemask_epi8(found) == 0;
}

// Gives those of sixteen that were none what they are as numbers without a sign; false if one is
// none of these either.
template <class Src>
bool TruncateUpper(const Loose<Src>* src, __m128i (&four)[4]) {
  const __m128i none = _mm_set1_epi32(kNone32);
  __m128i found = _mm_setzero_si128();
  for (std::size_t i = 0; i < 4; ++i) {
    const __m128i isUpper = _mm_cmpeq_epi32(four[i], none);
    const __m128i upper = _mm_and_si128(TruncateFour<true>(src + 4 * i), isUpper);
    found = _mm_or_si128(found, _mm_cmpeq_epi32(upper, none));
    // What marks a number as none is 2^31 without a sign.
    four[i] = _mm_xor_si128(four[i], upper);
  }
  return _mm_movemask_epi8(found) == 0;
}

// Stores the low bytes of sixteen whole numbers of 32 bits.
template <class Dst>
void StoreLow(const __m128i (&four)[4], void* dst) {
  auto* const to = static_cast<__m128i*>(dst);
  if constexpr (sizeof(Dst) == 4) {
    for (int i = 0; i < 4; ++i) _mm_storeu_si128(to + i, four[i]);
  } else if constexpr (sizeof(Dst) == 2) {
    // A pack saturates, which what fits into 16 bits with its sign does not notice.
    const auto low = [](__m128i whole) { return _mm_srai_epi32(_mm_slli_epi32(whole, 16), 16); };
    _mm_storeu_si128(to, _mm_packs_epi32(low(four[0]), low(four[1])));
    _mm_storeu_si128(to + 1, _mm_packs_epi32(low(four[2]), low(four[3])));
  } else {
    const auto low = [](__m128i whole) { return _mm_and_si128(whole, _mm_set1_epi32(0xFF)); };
    _mm_storeu_si128(to, _mm_packus_epi16(_mm_packs_epi32(low(four[0]), low(four[1])),
                                          _mm_packs_epi32(low(four[2]), low(four[3]))));
  }
}

// Sixteen at a time by way of 32 bits. For NaN and what these don't hold the processor gives their
// smallest number: then, and for that number itself, each goes by way of 64 bits.
template <class Src, class Dst>
std::size_t CastBlocks(const Loose<Src>* src, Loose<Dst>* dst, std::size_t count) {
  std::size_t i = 0;
  for (; i + 16 <= count; i += 16) {
    __m128i four[4];
    bool areWhole = TruncateSixteen(src + i, four);
    if constexpr (std::is_same_v<Dst, std::uint32_t>) {
      areWhole = areWhole || TruncateUpper(src + i, four);
    }
    if (areWhole) {
      StoreLow<Dst>(four, dst + i);
    } else {
      CastEach(src + i, dst + i, 16, 1);
    }
  }
  return i;
}

// The same for 64 bits, four at a time.
template <class Src>
std::size_t CastBlocks(const Loose<Src>* src, Loose<std::int64_t>* dst, std::size_t count) {
  std::size_t i = 0;
  for (; i + 4 <= count; i += 4) {
    bool isFound = false;
    for (std::size_t j = i; j < i + 4; ++j) {
      dst[j].value = TruncateRaw(src[j].value);
      isFound |= dst[j].value == kNone;
    }
    if (isFound) CastEach(src + i, dst + i, 4, 1);
  }
  return i;
}

template <class Src, class Dst>
void Cast(const void* src, void* dst, std::size_t count, std::size_t stride) {
  const auto* const from = static_cast<const Loose<Src>*>(src);
  auto* const to = static_cast<Loose<Dst>*>(dst);
  if (stride != 1) {
    CastEach(from, to, (count - 1) / stride + 1, stride);
  } else if constexpr (kLosesFraction<Src, Dst>) {
    const std::size_t done = CastBlocks(from, to, count);
    CastEach(from + done, to + done, count - done, 1);
  } else {
    // The stride is a constant here, which lets the compiler take several at a time.
    CastEach(from, to, count, 1);
  }
}

template <class Dst>
constexpr CastFunction kTo[9] = {
    Cast<std::int8_t, Dst>,   Cast<std::uint8_t, Dst>, Cast<std::int16_t, Dst>,
    Cast<std::uint16_t, Dst>, Cast<std::int32_t, Dst>, Cast<std::uint32_t, Dst>,
    Cast<std::int64_t, Dst>,  Cast<float, Dst>,        Cast<double, Dst>};

constexpr const CastFunction* kFunctions[9] = {
    kTo<std::int8_t>,   kTo<std::uint8_t>, kTo<std::int16_t>, kTo<std::uint16_t>, kTo<std::int32_t>,
    kTo<std::uint32_t>, kTo<std::int64_t>, kTo<float>,        kTo<double>};

}  // namespace

CastFunction CastFunctionOf(PrimType srcType, PrimType dstType) noexcept {
  return kFunctions[dstType][srcType];
}

}  // namespace vlm::detail
