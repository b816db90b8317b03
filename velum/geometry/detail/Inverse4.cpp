#include <velum/geometry/detail/Inverse4.h>

#include <velum/geometry/detail/InverseFourWide.h>
#include <velum/geometry/detail/Pair.inl.h>
#include <velum/platform/detail/VectorUnit.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace vlm::detail {
namespace {

void StoreHalfRow(double* half, Pair pair) noexcept { StorePair(half, pair); }

void StoreHalfRow(float* half, Pair pair) noexcept {
  half[0] = static_cast<float>(pair[0]);
  half[1] = static_cast<float>(pair[1]);
}

template <class T>
bool InvertAffineOf(const T* m, T* out) noexcept {
  const double a00 = m[0];
  const double a01 = m[1];
  const double a02 = m[2];
  const double a10 = m[4];
  const double a11 = m[5];
  const double a12 = m[6];
  const double a20 = m[8];
  const double a21 = m[9];
  const double a22 = m[10];

  // The products of the first two rows serve the determinant and the last column.
  const double p0 = a00 * a11;
  const double p1 = a01 * a12;
  const double p2 = a02 * a10;
  const double n0 = a02 * a11;
  const double n1 = a01 * a10;
  const double n2 = a00 * a12;
  const Pair terms[] = {{p0 * a22, p1 * a20}, {p2 * a21, -(n0 * a20)}, {-(n1 * a22), -(n2 * a21)}};
  // The positive and the negative sum. Pairs select without branches, which random signs would
  // mislead; NaN counts as negative.
  Pair sums = Both(0);
  for (const Pair term : terms) {
    const Pair positive = term > Both(0) ? term : Both(0);
    const Pair negative = term > Both(0) ? Both(0) : term;
    sums += Pair{positive[0], negative[0]};
    sums += Pair{positive[1], negative[1]};
  }
  const double determinant = sums[0] + sums[1];
  const double range = sums[0] - sums[1];
  constexpr double kSmallest = 2.220446049250313e-16;
  // Most matrices are so far from singular that it is seen without a division.
  const bool isFar = std::abs(determinant) > range * (2 * kSmallest);
  if (!isFar && !(std::abs(determinant / range) >= kSmallest)) {
    return false;
  }

  // Cofactors of the first two columns of the result, with the sign of the second in its factors.
  const Pair c0{a10, -a00};
  const Pair c1{a11, -a01};
  const Pair c2{a12, -a02};
  const Pair r = Both(1 / determinant);
  const Pair row0 = (c1 * Both(a22) - c2 * Both(a21)) * r;
  const Pair row1 = (c2 * Both(a20) - c0 * Both(a22)) * r;
  const Pair row2 = (c0 * Both(a21) - c1 * Both(a20)) * r;
  const double z0 = (p1 - n0) * r[0];
  const double z1 = (p2 - n2) * r[0];
  const double z2 = (p0 - n1) * r[0];
  const double x = m[12];
  const double y = m[13];
  const double z = m[14];
  const Pair offset = -(Both(x) * row0 + Both(y) * row1 + Both(z) * row2);
  const double offsetZ = -(x * z0 + y * z1 + z * z2);
  StoreHalfRow(out, row0);
  StoreHalfRow(out + 2, Pair{z0, 0});
  StoreHalfRow(out + 4, row1);
  StoreHalfRow(out + 6, Pair{z1, 0});
  StoreHalfRow(out + 8, row2);
  StoreHalfRow(out + 10, Pair{z2, 0});
  StoreHalfRow(out + 12, offset);
  StoreHalfRow(out + 14, Pair{offsetZ, 1});
  return true;
}

// Whether a determinant can be divided by; an infinite one can't.
bool IsRegular(double determinant, double smallest) noexcept {
  return std::abs(determinant) >= smallest && std::isfinite(determinant);
}

// A 2x2 block as its two rows.
struct Block {
  Pair row0;
  Pair row1;
};

double Determinant(const Block& b) noexcept {
  return b.row0[0] * b.row1[1] - b.row0[1] * b.row1[0];
}

Block Inverted(const Block& b, double determinant) noexcept {
  const double r = 1 / determinant;
  return {Pair{b.row1[1], -b.row0[1]} * r, Pair{-b.row1[0], b.row0[0]} * r};
}

Block operator*(const Block& a, const Block& b) noexcept {
  return {a.row0[0] * b.row0 + a.row0[1] * b.row1, a.row1[0] * b.row0 + a.row1[1] * b.row1};
}

Block operator-(const Block& a, const Block& b) noexcept {
  return {a.row0 - b.row0, a.row1 - b.row1};
}

Block operator-(const Block& a) noexcept { return {-a.row0, -a.row1}; }

Block LoadBlock(const double* m) noexcept { return {LoadPair(m), LoadPair(m + 4)}; }

void StoreBlock(double* m, const Block& b) noexcept {
  StorePair(m, b.row0);
  StorePair(m + 4, b.row1);
}

// A row of floats in one register; an operation on it is the operation on each of its numbers.
typedef float Row __attribute__((vector_size(16)));
typedef std::int32_t IntRow __attribute__((vector_size(16)));

Row All(float v) noexcept { return Row{v, v, v, v}; }

float SumOfMagnitudes(Row row) noexcept {
  return std::abs(row[0]) + std::abs(row[1]) + std::abs(row[2]) + std::abs(row[3]);
}

}  // namespace

bool InvertAffine(const double* m, double* out) noexcept {
  return platform::HasFourWide() ? InvertAffineFourWide(m, out) : InvertAffineInPairs(m, out);
}

bool InvertAffineInPairs(const double* m, double* out) noexcept { return InvertAffineOf(m, out); }

bool InvertAffine(const float* m, float* out) noexcept { return InvertAffineOf(m, out); }

bool InvertByBlocks(const double* m, double* out) noexcept {
  constexpr double kSmallest = 1e-11;
  const Block a = LoadBlock(m);
  const Block b = LoadBlock(m + 2);
  const Block c = LoadBlock(m + 8);
  const Block d = LoadBlock(m + 10);
  const double determinant = Determinant(a);
  if (!IsRegular(determinant, kSmallest)) {
    return false;
  }
  const Block inverseA = Inverted(a, determinant);
  const Block across = inverseA * b;
  const Block schur = d - c * across;
  const double schurDeterminant = Determinant(schur);
  if (!IsRegular(schurDeterminant, kSmallest)) {
    return false;
  }
  const Block lowerRight = Inverted(schur, schurDeterminant);
  const Block lowerLeft = -(lowerRight * (c * inverseA));
  StoreBlock(out, inverseA - across * lowerLeft);
  StoreBlock(out + 2, -(across * lowerRight));
  StoreBlock(out + 8, lowerLeft);
  StoreBlock(out + 10, lowerRight);
  return true;
}

bool InvertByMinors(const double* m, double* out) noexcept {
  // Minors of the upper rows (u) and of the lower rows (l), by their columns.
  const auto minor = [m](std::size_t row, std::size_t c0, std::size_t c1) noexcept {
    return m[4 * row + c0] * m[4 * row + 4 + c1] - m[4 * row + c1] * m[4 * row + 4 + c0];
  };
  const double u01 = minor(0, 0, 1);
  const double u02 = minor(0, 0, 2);
  const double u03 = minor(0, 0, 3);
  const double u12 = minor(0, 1, 2);
  const double u13 = minor(0, 1, 3);
  const double u23 = minor(0, 2, 3);
  const double l01 = minor(2, 0, 1);
  const double l02 = minor(2, 0, 2);
  const double l03 = minor(2, 0, 3);
  const double l12 = minor(2, 1, 2);
  const double l13 = minor(2, 1, 3);
  const double l23 = minor(2, 2, 3);
  const double determinant = u01 * l23 - u02 * l13 + u03 * l12 + u12 * l03 - u13 * l02 + u23 * l01;
  if (!IsRegular(determinant, 1e-14)) {
    return false;
  }
  const double r = 1 / determinant;
  const double inverse[] = {
      (m[5] * l23 - m[6] * l13 + m[7] * l12) * r,     (-m[1] * l23 + m[2] * l13 - m[3] * l12) * r,
      (m[13] * u23 - m[14] * u13 + m[15] * u12) * r,  (-m[9] * u23 + m[10] * u13 - m[11] * u12) * r,
      (-m[4] * l23 + m[6] * l03 - m[7] * l02) * r,    (m[0] * l23 - m[2] * l03 + m[3] * l02) * r,
      (-m[12] * u23 + m[14] * u03 - m[15] * u02) * r, (m[8] * u23 - m[10] * u03 + m[11] * u02) * r,
      (m[4] * l13 - m[5] * l03 + m[7] * l01) * r,     (-m[0] * l13 + m[1] * l03 - m[3] * l01) * r,
      (m[12] * u13 - m[13] * u03 + m[15] * u01) * r,  (-m[8] * u13 + m[9] * u03 - m[11] * u01) * r,
      (-m[4] * l12 + m[5] * l02 - m[6] * l01) * r,    (m[0] * l12 - m[1] * l02 + m[2] * l01) * r,
      (-m[12] * u12 + m[13] * u02 - m[14] * u01) * r, (m[8] * u12 - m[9] * u02 + m[10] * u01) * r};
  std::memcpy(out, inverse, sizeof inverse);
  return true;
}

bool InvertByElimination(const float* m, float* out) noexcept {
  Row a[4];
  std::memcpy(a, m, sizeof a);
  std::size_t pivotRow[4];
  for (std::size_t k = 0; k < 4; ++k) {
    float best = 0;
    std::size_t chosen = k;
    for (std::size_t r = k; r < 4; ++r) {
      const float ratio = std::abs(a[r][k]) / SumOfMagnitudes(a[r]);
      chosen = ratio > best ? r : chosen;
      best = ratio > best ? ratio : best;
    }
    if (best == 0) {
      return false;
    }
    pivotRow[k] = chosen;
    std::swap(a[k], a[chosen]);

    // Rows are written whole: a single number written into one holds up who reads the row next.
    const auto column = static_cast<std::int32_t>(k);
    const IntRow isPivot = IntRow{0, 1, 2, 3} == IntRow{column, column, column, column};
    const Row pivot = (isPivot ? All(1) : a[k]) * All(1 / a[k][k]);
    for (std::size_t r = 0; r < 4; ++r) {
      const Row factor = All(a[r][k]);
      a[r] = r == k ? pivot : (isPivot ? All(0) : a[r]) - factor * pivot;
    }
  }
  float inverse[4][4];
  std::memcpy(inverse, a, sizeof inverse);
  for (std::size_t k = 4; k-- > 0;) {
    if (pivotRow[k] != k) {
      for (auto& row : inverse) {
        std::swap(row[k], row[pivotRow[k]]);
      }
    }
  }
  std::memcpy(out, inverse, sizeof inverse);
  return true;
}

}  // namespace vlm::detail
