#pragma once

/// \file
/// Two doubles side by side in one register. Each operation on a pair is the operation on its two
/// numbers, rounded alike, so that what is computed in pairs has the bits of the plain loop.

#include <cstring>

namespace vlm::detail {

/// Two doubles, with the arithmetic of the compiler's vectors.
typedef double Pair __attribute__((vector_size(16)));

/// Reads two doubles that follow one another.
[[nodiscard]] inline Pair LoadPair(const double* p) noexcept {
  Pair pair;
  std::memcpy(&pair, p, sizeof pair);
  return pair;
}

/// Writes two doubles that follow one another.
inline void StorePair(double* p, Pair pair) noexcept { std::memcpy(p, &pair, sizeof pair); }

/// Returns the pair of a number and itself.
[[nodiscard]] inline Pair Both(double v) noexcept { return Pair{v, v}; }

}  // namespace vlm::detail
