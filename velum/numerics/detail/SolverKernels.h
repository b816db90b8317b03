#pragma once

/// \file
/// The innermost loops of the solvers, for registers of two widths.
///
///     const SolverKernelSet& kernels = SolverKernels();
///     kernels.addMultiple(n, factor, x, y);  // y += factor x
///
/// What lies side by side in a register belongs to different results, each of which has its
/// operations in the order of the plain loops: the bits do not depend on the width.

#include <cstddef>

namespace vlm::detail {

/// The rows of a matrix that lie side by side: of a panel of n columns, element (j, lane) stands at
/// `8 j + lane`.
constexpr std::size_t kPanelRows = 8;

/// The columns that are made orthogonal side by side: of a strip, element (i, lane) stands at
/// `16 i + lane`.
constexpr std::size_t kStripCols = 16;

/// One rotation of u and w: to `cosine u - sine w` and `cosine w + sine u`.
struct Rotation {
  double cosine;      ///< The factor of what stays.
  double sine;        ///< The factor of what comes from the other.
  std::size_t index;  ///< The column of w, or its lane.
};

/// One step of the orthogonalization of a strip: what is subtracted first, and what is made of the
/// result. Null for what there is not.
struct StripStep {
  const double* column = nullptr;      ///< The column that is subtracted.
  const double* factors = nullptr;     ///< Its factors, one for each lane.
  const double* nextColumn = nullptr;  ///< The column whose dot products are wanted.
  double* products = nullptr;          ///< Those, one for each lane.
  double* squares = nullptr;  ///< The sums of squares, one for each lane, where no products are.
};

/// The loops for one width of registers.
struct SolverKernelSet {
  /// y += factor x
  void (*addMultiple)(std::size_t count, double factor, const double* x, double* y);

  /// sums += each row times its factor, one row after the other.
  void (*addMultiples)(std::size_t count, std::size_t rows, const double* factors,
                       const double* first, std::size_t stride, double* sums);

  /// Writes the dot products of the rows and `v`.
  void (*multiplyRows)(std::size_t rows, std::size_t count, const double* first, std::size_t stride,
                       const double* v, double* products);

  /// Writes the product of a symmetric matrix and `v`. What is left of the diagonal is read in
  /// blocks of eight rows only: most of it is taken from the right.
  void (*multiplySymmetric)(std::size_t count, const double* first, std::size_t stride,
                            const double* v, double* products);

  /// Rotates the vector of eight numbers at `u` with one column of the panel after the other.
  void (*rotateColumns)(double* panel, double* u, const Rotation* first, const Rotation* last);

  /// Does the same in two panels.
  void (*rotateColumnsOfTwo)(double* panelA, double* uA, double* panelB, double* uB,
                             const Rotation* first, const Rotation* last);

  /// Rotates a row that lies by itself with one row of a panel after the other, from a column on
  /// that is a multiple of 4 to one before which is one. `first` to `last` name lanes, upwards.
  void (*rotateRows)(double* panel, double* row, std::size_t from, std::size_t to,
                     const Rotation* first, const Rotation* last);

  /// Does a step with the rows of a strip.
  void (*stepStrip)(std::size_t rows, double* strip, const StripStep& step);
};

extern const SolverKernelSet kSolverKernelsTwoWide;   ///< Two doubles to a register.
extern const SolverKernelSet kSolverKernelsFourWide;  ///< Four; only where `platform::HasFourWide`.

/// Returns the loops for this processor.
[[nodiscard]] const SolverKernelSet& SolverKernels() noexcept;

}  // namespace vlm::detail
