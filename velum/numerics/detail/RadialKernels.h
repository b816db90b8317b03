#pragma once

/// \file
/// The functions of the distance that splines are made of, for many distances at once.
///
///     detail::RadialKernels().row(RadialForm::kThinPlate, x, y, xs, ys, count, phi);
///
/// Logarithm and exponential are the library's own, so that the results have the same bits on every
/// machine, whatever the width of its registers and the edition of its libm. They are within 1 unit
/// in the last place of the true value.

#include <cstddef>

namespace vlm::detail {

/// The functions, of the distance r.
enum class RadialForm {
  kThinPlate,         ///< r^2 ln(r^2) / 2; 0 for a square not above `SUKOSHI`
  kNaturalCubic,      ///< r^3
  kMarcov,            ///< -r
  kExponential,       ///< exp(-r)
  kRationalQuadratic  ///< -r^2 / (1 + r^2)
};

/// A calibrated spline, as arrays that are someone else's.
struct RadialSpline {
  RadialForm form;
  std::size_t count;      ///< The number of control points.
  const double* xs;       ///< Their coordinates.
  const double* ys;       ///< Their coordinates.
  const double* weights;  ///< For each of them, two.
  const double* affine;   ///< Constant, factor of x, factor of y, two each.
};

/// Sets `phi[i]` to the function of the distance from (xs[i], ys[i]) to (x, y), for `count` of
/// them.
using RadialRow = void(RadialForm form, double x, double y, const double* xs, const double* ys,
                       std::size_t count, double* phi) noexcept;

/// Replaces the scaled coordinates of a point by its image, as RadialSums does.
using RadialSum = void(const RadialSpline& spline, double& x, double& y) noexcept;

/// Replaces the scaled coordinates of `count` points, a multiple of 4, by their images. Each is one
/// sum: the affine map, then the control points in order.
using RadialSums = void(const RadialSpline& spline, double* x, double* y,
                        std::size_t count) noexcept;

/// The kernels for one width of registers.
struct RadialKernelSet {
  RadialRow* row;
  RadialSum* sum;
  RadialSums* sums;
};

/// Two doubles to a register.
extern const RadialKernelSet kRadialKernelsTwoWide;

/// Four doubles to a register; only for processors with AVX2.
extern const RadialKernelSet kRadialKernelsFourWide;

/// Returns the kernels for this processor.
[[nodiscard]] const RadialKernelSet& RadialKernels() noexcept;

}  // namespace vlm::detail
