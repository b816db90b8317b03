#include <velum/files/detail/NumberCast.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace vlm::detail {

namespace {

// Blocks are small enough that a second pass finds them in the first-level cache.
constexpr std::size_t kBlock = 1024;

template <class T>
T Load(const char* from) {
  T value;
  std::memcpy(&value, from, sizeof(T));
  return value;
}

template <class Src, class Dst>
constexpr bool kLosesFraction = std::is_floating_point_v<Src>&& std::is_integral_v<Dst>;

template <class Src, class Dst>
Dst CastOne(Src value) {
  if constexpr (kLosesFraction<Src, Dst>) {
    return static_cast<Dst>(TruncateToWide(value));
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

// Whether all of a block fit into `Middle`, so that a plain cast of each is defined and can go
// several at a time. NaN fits nowhere.
template <class Src, class Middle>
bool AllFit(const char* src, std::size_t count) {
  constexpr Src kBound = sizeof(Middle) == 4 ? Src(2147483648.0) : Src(9223372036854775808.0);
  int outside = 0;
  for (std::size_t i = 0; i < count; ++i) {
    outside |= !(std::fabs(Load<Src>(src + i * sizeof(Src))) < kBound);
  }
  return outside == 0;
}

template <class Src, class Dst>
void CastTruncating(const char* src, char* dst, std::size_t count) {
  using Middle = std::conditional_t<sizeof(Dst) == 8, std::int64_t, std::int32_t>;
  for (std::size_t i = 0; i < count; i += kBlock) {
    const std::size_t size = std::min(kBlock, count - i);
    const char* const from = src + i * sizeof(Src);
    char* const to = dst + i * sizeof(Dst);
    if (!AllFit<Src, Middle>(from, size)) {
      CastEach<Src, Dst>(from, to, size, sizeof(Src));
      continue;
    }
    for (std::size_t j = 0; j < size; ++j) {
      const auto value = static_cast<Dst>(static_cast<Middle>(Load<Src>(from + j * sizeof(Src))));
      std::memcpy(to + j * sizeof(Dst), &value, sizeof(Dst));
    }
  }
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
