#pragma once

/// \file
/// Jacobi's sweeps, arranged so that eight numbers are rotated at a time.
///
///     JacobiSweeps sweeps(a, SolverKernels());
///     const bool isDone = sweeps.Run();
///     sweeps.Give(a, s);

#include <velum/numerics/Forward.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <cstddef>
#include <vector>

namespace vlm::detail {

/// The row-cyclic sweeps over the upper triangle of a symmetric matrix. Every element has the
/// rotations of the plain loops in their order; but those that do not choose a rotation wait.
///
/// In the step of row p, which meets one q after the other, an element of row k is rotated with one
/// of row p. For a q that is not k yet this decides about later rotations of the step and is done
/// at once. For a q beyond k it is done when the step's rotations are known: its rows lie side by
/// side in panels of eight, and all have the same rotations. Rows above p, and those of the
/// eigenvectors, wait longer, so that a panel is rotated many times while it is in the cache.
class JacobiSweeps {
 public:
  /// Takes the upper triangle of `a`, which has elements.
  ///
  /// *Errors:* `std::bad_alloc`.
  JacobiSweeps(const RMatrix& a, const SolverKernelSet& kernels);

  /// Rotates until what is off the diagonal is small. False if it never is.
  [[nodiscard]] bool Run() noexcept;

  /// Gives the eigenvalues, by decreasing absolute value, and their vectors.
  ///
  /// *Errors:* `std::bad_alloc`; `a` and `s` are then as they were.
  void Give(RMatrix& a, RVector& s) const;

 private:
  struct Step {
    std::size_t p;      // the row
    std::size_t first;  // its rotations
    std::size_t last;
  };
  // The rotations of a step whose columns are those of a panel's own rows, and all after them.
  struct Range {
    const Rotation* first;
    const Rotation* last;
  };

  double* EntriesOf(std::size_t panel) noexcept { return entries_.data() + panel * panelSize_; }
  double* VectorsOf(std::size_t panel) noexcept { return vectors_.data() + panel * panelSize_; }
  double& Entry(std::size_t i, std::size_t j) noexcept {
    return EntriesOf(i / kPanelRows)[kPanelRows * j + i % kPanelRows];
  }

  [[nodiscard]] double OffDiagonal() noexcept;
  [[nodiscard]] bool Sweep(double limit) noexcept;
  void FinishStep(std::size_t p, double limit) noexcept;
  void TakeRow(std::size_t p) noexcept;
  void PutRow(std::size_t p) noexcept;
  void ChooseRotations(std::size_t p, std::size_t panel, double limit) noexcept;
  void RotateOwnColumns(std::size_t p, std::size_t panel, Range range) noexcept;
  const Rotation* RotateRowsBelow(std::size_t p, std::size_t panel, Range range) noexcept;
  void RotateWhatWaits() noexcept;

  const SolverKernelSet* kernels_;
  std::size_t n_;
  std::size_t panelCount_;
  std::size_t width_;  // of rows: n, and zeros up to whole panels
  std::size_t panelSize_;
  std::vector<double> entries_;  // the triangle above the diagonal, in panels
  std::vector<double> vectors_;  // the eigenvectors, in panels
  std::vector<double> diagonal_;
  std::vector<double> row_;          // row p of the step in hand, to the left as far as its panel
  std::vector<double> previous_;     // the row before, which its panel waits for
  std::size_t first_ = 0;            // the first rotation of row p
  std::vector<Rotation> rotations_;  // those that some panels wait for
  std::vector<Step> steps_;
};

}  // namespace vlm::detail
