#pragma once

/// \file
/// Inverses of 4x4 matrices, given as sixteen numbers row by row. `m` and `out` may be one array.
/// Where there is no inverse the answer is `false`, and `out` stays as it was.

namespace vlm::detail {

/// Inverts a matrix with the last column (0, 0, 0, 1) by cofactors of its 3x3 block, in `double`.
///
/// - The determinant below 2.220446049250313e-16 of the sum of the magnitudes of its terms, that
///   sum 0, or NaN in either: no inverse.
bool InvertAffine(const double* m, double* out) noexcept;
/// The same, as it is computed where registers hold two doubles.
bool InvertAffineInPairs(const double* m, double* out) noexcept;
/// Does the same for `float`: computed in `double`, and each element rounded once.
bool InvertAffine(const float* m, float* out) noexcept;

/// Inverts a matrix by way of its upper left 2x2 block and that block's Schur complement.
///
/// - A determinant of one of the two below 1e-11 in magnitude, infinite or NaN: no inverse.
bool InvertByBlocks(const double* m, double* out) noexcept;

/// Inverts a matrix by Laplace's expansion over 2x2 minors of the upper and the lower two rows.
///
/// - A determinant below 1e-14 in magnitude, infinite or NaN: no inverse.
bool InvertByMinors(const double* m, double* out) noexcept;

/// Inverts a matrix by Gauss and Jordan's elimination in place, with rows exchanged for the pivot
/// that is largest beside the magnitudes of its row.
///
/// - No pivot but 0, or NaN: no inverse.
bool InvertByElimination(const float* m, float* out) noexcept;

}  // namespace vlm::detail
