#include <velum/files/detail/NumberCast.h>

#include <emmintrin.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vlm::detail {

namespace {

template <class T>
T Load(const char* from) {
  T value;
  std::memcpy(&value, from, sizeof(T));
  return value;
}

template <class Src, class Dst>
constexpr bool kLosesFraction = std::is_floating_point_v<Src>&& std::is_integral_v<Dst>;

// The whole part; 0 for NaN and what 64 bits don't hold, for which the processor gives its smallest
// number.
std::int64_t Truncate(double value) {
  constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::min();
  const std::int64_t whole = _mm_cvttsd_si64(_mm_set_sd(value));
  return whole != kNone || value == static_cast<double>(kNone) ? whole : 0;
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
void CastEach(const char* src, char* dst, std::size_t count, std::size_t step) {
  for (std::size_t i = 0; i < count; ++i) {
    const Dst value = CastOne<Src, Dst>(Load<Src>(src + i * step));
    std::memcpy(dst + i * sizeof(Dst), &value, sizeof(Dst));
  }
}

// Sixteen whole numbers of 32 bits; false if one of the sources is NaN or not within. The processor
// gives its smallest number for these, and for that number itself.
template <class Src>
bool TruncateSixteen(const char* src, std::int32_t* whole) {
  __m128i found = _mm_setzero_si128();
  const __m128i kNone = _mm_set1_epi32(std::numeric_limits<std::int32_t>::min());
  for (std::size_t i = 0; i < 16; i += 4) {
    __m128i four;
    if constexpr (sizeof(Src) == 4) {
      four = _mm_cvttps_epi32(_mm_loadu_ps(reinterpret_cast<const float*>(src) + i));
    } else {
      const auto* const from = reinterpret_cast<const double*>(src) + i;
      four = _mm_unpacklo_epi64(_mm_cvttpd_epi32(_mm_loadu_pd(from)),
                                _mm_cvttpd_epi32(_mm_loadu_pd(from + 2)));
    }
    found = _mm_or_si128(found, _mm_cmpeq_epi32(four, kNone));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(whole + i), four);
  }
  return _mm_movemask_epi8(found) == 0;
}

template <class Src, class Dst>
void CastTruncating(const char* src, char* dst, std::size_t count) {
  std::size_t i = 0;
  if constexpr (sizeof(Dst) < 8) {
    for (; i + 16 <= count; i += 16) {
      std::int32_t whole[16];
      if (!TruncateSixteen<Src>(src + i * sizeof(Src), whole)) {
        CastEach<Src, Dst>(src + i * sizeof(Src), dst + i * sizeof(Dst), 16, sizeof(Src));
        continue;
      }
      Dst narrow[16];
      for (std::size_t j = 0; j < 16; ++j) narrow[j] = static_cast<Dst>(whole[j]);
      std::memcpy(dst + i * sizeof(Dst), narrow, sizeof(narrow));
    }
  }
  CastEach<Src, Dst>(src + i * sizeof(Src), dst + i * sizeof(Dst), count - i, sizeof(Src));
}

template <class Src, class Dst>
void Cast(const void* src, void* dst, std::size_t count, std::size_t stride) {
  const auto* const from = static_cast<const char*>(src);
  auto* const to = static_cast<char*>(dst);
  if (stride != 1) {
    CastEach<Src, Dst>(from, to, (count - 1) / stride + 1, stride * sizeof(Src));
  } else if constexpr (kLosesFraction<Src, Dst>) {
    CastTruncating<Src, Dst>(from, to, count);
  } else {
    // The step is a constant here, which lets the compiler take several at a time.
    CastEach<Src, Dst>(from, to, count, sizeof(Src));
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
