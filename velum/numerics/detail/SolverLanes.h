#pragma once

/// \file
/// The innermost loops of the solvers for a width of registers that the including source gives.
///
///     constinit const SolverKernelSet kSolverKernelsTwoWide = KernelsOf<TwoLanes>();
///
/// `Lanes` has the type `Real`, a vector of doubles, the constant `kCount`, and the functions
/// `Load`, `Store` and `Transpose`, which turns as many registers as they have lanes.

#include <velum/numerics/detail/SolverKernels.h>

#include <cstddef>
#include <utility>

namespace vlm::detail {

/// Rotates two registers.
template <class Lanes>
inline void Rotate(const Rotation& rotation, typename Lanes::Real& u,
                   typename Lanes::Real& w) noexcept {
  const typename Lanes::Real before = u;
  u = rotation.cosine * u - rotation.sine * w;
  w = rotation.cosine * w + rotation.sine * before;
}

/// Is addMultiple.
template <class Lanes>
void AddMultiple(std::size_t count, double factor, const double* x, double* y) {
  constexpr std::size_t kStep = 2 * Lanes::kCount;
  std::size_t i = 0;
  for (; i + kStep <= count; i += kStep) {
    Lanes::Store(y + i, Lanes::Load(y + i) + factor * Lanes::Load(x + i));
    Lanes::Store(y + i + Lanes::kCount,
                 Lanes::Load(y + i + Lanes::kCount) + factor * Lanes::Load(x + i + Lanes::kCount));
  }
  for (; i < count; ++i) y[i] += factor * x[i];
}

/// Is addMultiples: of four rows at a time, so that the sums are seldom taken from memory.
template <class Lanes>
void AddMultiples(std::size_t count, std::size_t rows, const double* factors, const double* first,
                  std::size_t stride, double* sums) {
  for (; rows >= 4; rows -= 4, factors += 4, first += 4 * stride) {
    const double* const second = first + stride;
    const double* const third = second + stride;
    const double* const fourth = third + stride;
    const double f[] = {factors[0], factors[1], factors[2], factors[3]};
    std::size_t j = 0;
    for (; j + Lanes::kCount <= count; j += Lanes::kCount) {
      typename Lanes::Real sum = Lanes::Load(sums + j);
      sum = sum + f[0] * Lanes::Load(first + j);
      sum = sum + f[1] * Lanes::Load(second + j);
      sum = sum + f[2] * Lanes::Load(third + j);
      sum = sum + f[3] * Lanes::Load(fourth + j);
      Lanes::Store(sums + j, sum);
    }
    for (; j < count; ++j) {
      sums[j] = sums[j] + f[0] * first[j] + f[1] * second[j] + f[2] * third[j] + f[3] * fourth[j];
    }
  }
  for (; rows > 0; --rows, ++factors, first += stride) {
    AddMultiple<Lanes>(count, *factors, first, sums);
  }
}

/// Is multiplyRows: eight rows at a time, turned so that their sums lie side by side.
template <class Lanes>
void MultiplyRows(std::size_t rows, std::size_t count, const double* first, std::size_t stride,
                  const double* v, double* products) {
  constexpr std::size_t kCount = Lanes::kCount;
  constexpr std::size_t kParts = 8 / kCount;
  std::size_t i = 0;
  for (; i + 8 <= rows; i += 8, first += 8 * stride) {
    typename Lanes::Real sums[kParts] = {};
    std::size_t k = 0;
    for (; k + kCount <= count; k += kCount) {
#pragma GCC unroll 4
      for (std::size_t p = 0; p < kParts; ++p) {
        typename Lanes::Real part[kCount];
#pragma GCC unroll 4
        for (std::size_t l = 0; l < kCount; ++l) {
          part[l] = Lanes::Load(first + (p * kCount + l) * stride + k);
        }
        Lanes::Transpose(part);
#pragma GCC unroll 4
        for (std::size_t l = 0; l < kCount; ++l) sums[p] = sums[p] + part[l] * v[k + l];
      }
    }
#pragma GCC unroll 4
    for (std::size_t p = 0; p < kParts; ++p) Lanes::Store(products + i + p * kCount, sums[p]);
    for (; k < count; ++k) {
      for (std::size_t r = 0; r < 8; ++r) products[i + r] += first[r * stride + k] * v[k];
    }
  }
  for (; i < rows; ++i, first += stride) {
    double sum = 0;
    for (std::size_t k = 0; k < count; ++k) sum += first[k] * v[k];
    products[i] = sum;
  }
}

/// Eight rows of multiplySymmetric, from the block on the diagonal: their own sums go on to the
/// right, and those of the rows that lie below get eight more products each.
template <class Lanes>
inline void MultiplyEightSymmetric(std::size_t count, const double* first, std::size_t stride,
                                   const double* v, double* products) noexcept {
  constexpr std::size_t kCount = Lanes::kCount;
  constexpr std::size_t kParts = 8 / kCount;
  for (std::size_t r = 0; r < 8; ++r) {
    for (std::size_t k = 0; k < 8; ++k) products[r] += first[r * stride + k] * v[k];
  }
  typename Lanes::Real sums[kParts];
#pragma GCC unroll 4
  for (std::size_t p = 0; p < kParts; ++p) sums[p] = Lanes::Load(products + p * kCount);
  std::size_t k = 8;
  for (; k + kCount <= count; k += kCount) {
    typename Lanes::Real below = Lanes::Load(products + k);
#pragma GCC unroll 4
    for (std::size_t p = 0; p < kParts; ++p) {
      typename Lanes::Real part[kCount];
#pragma GCC unroll 4
      for (std::size_t l = 0; l < kCount; ++l) {
        part[l] = Lanes::Load(first + (p * kCount + l) * stride + k);
        below = below + part[l] * v[p * kCount + l];
      }
      Lanes::Transpose(part);
#pragma GCC unroll 4
      for (std::size_t l = 0; l < kCount; ++l) sums[p] = sums[p] + part[l] * v[k + l];
    }
    Lanes::Store(products + k, below);
  }
#pragma GCC unroll 4
  for (std::size_t p = 0; p < kParts; ++p) Lanes::Store(products + p * kCount, sums[p]);
  for (; k < count; ++k) {
    for (std::size_t r = 0; r < 8; ++r) {
      products[k] += first[r * stride + k] * v[r];
      products[r] += first[r * stride + k] * v[k];
    }
  }
}

/// Is multiplySymmetric.
template <class Lanes>
void MultiplySymmetric(std::size_t count, const double* first, std::size_t stride, const double* v,
                       double* products) {
  for (std::size_t i = 0; i < count; ++i) products[i] = 0;
  for (; count >= 8; count -= 8, first += 8 * stride + 8, v += 8, products += 8) {
    MultiplyEightSymmetric<Lanes>(count, first, stride, v, products);
  }
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < count; ++k) products[i] += first[i * stride + k] * v[k];
  }
}

/// Is rotateColumns, or rotateColumnsOfTwo: their rotations wait for each other, so two panels keep
/// the processor busier than one.
template <class Lanes, unsigned kPanels>
inline void RotateColumnsOf(double* const* panels, double* const* us, const Rotation* first,
                            const Rotation* last) noexcept {
  constexpr std::size_t kParts = kPanelRows / Lanes::kCount;
  typename Lanes::Real u[kPanels][kParts];
#pragma GCC unroll 2
  for (unsigned p = 0; p < kPanels; ++p) {
#pragma GCC unroll 4
    for (std::size_t v = 0; v < kParts; ++v) u[p][v] = Lanes::Load(us[p] + v * Lanes::kCount);
  }
  for (; first != last; ++first) {
    const Rotation rotation = *first;
#pragma GCC unroll 2
    for (unsigned p = 0; p < kPanels; ++p) {
      double* const column = panels[p] + kPanelRows * rotation.index;
#pragma GCC unroll 4
      for (std::size_t v = 0; v < kParts; ++v) {
        typename Lanes::Real w = Lanes::Load(column + v * Lanes::kCount);
        Rotate<Lanes>(rotation, u[p][v], w);
        Lanes::Store(column + v * Lanes::kCount, w);
      }
    }
  }
#pragma GCC unroll 2
  for (unsigned p = 0; p < kPanels; ++p) {
#pragma GCC unroll 4
    for (std::size_t v = 0; v < kParts; ++v) Lanes::Store(us[p] + v * Lanes::kCount, u[p][v]);
  }
}

/// Is rotateColumns.
template <class Lanes>
void RotateColumns(double* panel, double* u, const Rotation* first, const Rotation* last) {
  RotateColumnsOf<Lanes, 1>(&panel, &u, first, last);
}

/// Is rotateColumnsOfTwo.
template <class Lanes>
void RotateColumnsOfTwo(double* panelA, double* uA, double* panelB, double* uB,
                        const Rotation* first, const Rotation* last) {
  double* const panels[] = {panelA, panelB};
  double* const us[] = {uA, uB};
  RotateColumnsOf<Lanes, 2>(panels, us, first, last);
}

/// Rotates a row with those of a panel's rows whose bit is set, of as many as a register has lanes.
/// They stand upright, so as many columns are turned, rotated and turned back.
template <class Lanes, unsigned kMask>
void RotateSomeRows(double* panel, double* row, std::size_t from, std::size_t to,
                    const Rotation* rotations) {
  constexpr std::size_t kCount = Lanes::kCount;
  Rotation local[kCount] = {};  // a copy, which no store below can change
  for (std::size_t l = 0, r = 0; l < kCount; ++l) {
    if (kMask & (1u << l)) local[l] = rotations[r++];
  }
  for (std::size_t k = from; k < to; k += kCount) {
    double* const columns = panel + kPanelRows * k;
    typename Lanes::Real w[kCount];
#pragma GCC unroll 4
    for (std::size_t l = 0; l < kCount; ++l) w[l] = Lanes::Load(columns + kPanelRows * l);
    Lanes::Transpose(w);
    typename Lanes::Real u = Lanes::Load(row + k);
#pragma GCC unroll 4
    for (std::size_t l = 0; l < kCount; ++l) {
      if (kMask & (1u << l)) Rotate<Lanes>(local[l], u, w[l]);
    }
    Lanes::Store(row + k, u);
    Lanes::Transpose(w);
#pragma GCC unroll 4
    for (std::size_t l = 0; l < kCount; ++l) Lanes::Store(columns + kPanelRows * l, w[l]);
  }
}

/// Is rotateRows.
template <class Lanes, unsigned... kMasks>
void RotateRowsBy(double* panel, double* row, std::size_t from, std::size_t to,
                  const Rotation* first, const Rotation* last,
                  std::integer_sequence<unsigned, kMasks...>) {
  constexpr decltype(&RotateSomeRows<Lanes, 0>) kForms[] = {RotateSomeRows<Lanes, kMasks>...};
  while (first != last) {
    const std::size_t lane = first->index / Lanes::kCount * Lanes::kCount;
    const Rotation* const rotations = first;
    unsigned mask = 0;
    for (; first != last && first->index < lane + Lanes::kCount; ++first) {
      mask |= 1u << (first->index - lane);
    }
    kForms[mask](panel + lane, row, from, to, rotations);
  }
}

/// Is rotateRows.
template <class Lanes>
void RotateRows(double* panel, double* row, std::size_t from, std::size_t to, const Rotation* first,
                const Rotation* last) {
  RotateRowsBy<Lanes>(panel, row, from, to, first, last,
                      std::make_integer_sequence<unsigned, 1u << Lanes::kCount>());
}

/// What a step makes of a strip when it has subtracted.
enum class StripSums { kNone, kProducts, kSquares };

/// Is stepStrip for one kind of step. A part of the strip at a time stays in registers.
template <class Lanes, bool kSubtracts, StripSums kSums>
inline void StepStripOf(std::size_t rows, double* strip, const StripStep& step) noexcept {
  constexpr std::size_t kParts = 4;
  constexpr std::size_t kWidth = kParts * Lanes::kCount;
  double* const out = kSums == StripSums::kProducts ? step.products : step.squares;
  for (std::size_t first = 0; first < kStripCols; first += kWidth) {
    typename Lanes::Real factors[kParts] = {};
    typename Lanes::Real sums[kParts] = {};
#pragma GCC unroll 4
    for (std::size_t v = 0; kSubtracts && v < kParts; ++v) {
      factors[v] = Lanes::Load(step.factors + first + v * Lanes::kCount);
    }
    for (std::size_t i = 0; i < rows; ++i) {
      double* const run = strip + kStripCols * i + first;
      const double subtracted = kSubtracts ? step.column[i] : 0;
      const double multiplied = kSums == StripSums::kProducts ? step.nextColumn[i] : 0;
#pragma GCC unroll 4
      for (std::size_t v = 0; v < kParts; ++v) {
        typename Lanes::Real value = Lanes::Load(run + v * Lanes::kCount);
        if constexpr (kSubtracts) {
          value = value - factors[v] * subtracted;
          Lanes::Store(run + v * Lanes::kCount, value);
        }
        if constexpr (kSums == StripSums::kProducts) sums[v] = sums[v] + multiplied * value;
        if constexpr (kSums == StripSums::kSquares) sums[v] = sums[v] + value * value;
      }
    }
#pragma GCC unroll 4
    for (std::size_t v = 0; kSums != StripSums::kNone && v < kParts; ++v) {
      Lanes::Store(out + first + v * Lanes::kCount, sums[v]);
    }
  }
}

/// Is stepStrip.
template <class Lanes>
void StepStrip(std::size_t rows, double* strip, const StripStep& step) {
  if (step.column && step.nextColumn) {
    StepStripOf<Lanes, true, StripSums::kProducts>(rows, strip, step);
  } else if (step.column && step.squares) {
    StepStripOf<Lanes, true, StripSums::kSquares>(rows, strip, step);
  } else if (step.column) {
    StepStripOf<Lanes, true, StripSums::kNone>(rows, strip, step);
  } else if (step.nextColumn) {
    StepStripOf<Lanes, false, StripSums::kProducts>(rows, strip, step);
  }
}

/// Returns all the loops for a width.
template <class Lanes>
constexpr SolverKernelSet KernelsOf() noexcept {
  return {AddMultiple<Lanes>,       AddMultiples<Lanes>,  MultiplyRows<Lanes>,
          MultiplySymmetric<Lanes>, RotateColumns<Lanes>, RotateColumnsOfTwo<Lanes>,
          RotateRows<Lanes>,        StepStrip<Lanes>};
}

}  // namespace vlm::detail
