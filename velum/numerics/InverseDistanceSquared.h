#pragma once

/// \file
/// An affine map that is bent by what it misses, weighted by distance.
///
///     vlm::CInverseDistanceSquared warp;
///     if (warp.Calibrate(from, to)) vlm::RPoint p = warp.Transform({50, 40});

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/ImageWarp.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

namespace vlm {

/// The affine map of least squares, plus the mean of what it leaves at the control points, each
/// weighted by the inverse of its squared distance.
///
/// It passes through the control points, up to rounding, and is flat at each. Four control points
/// are the least, and they must not be collinear.
///
/// *Cost*: `Transform` takes a division for each control point.
class VELUM_API CInverseDistanceSquared : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CInverseDistanceSquared();
  /// Copies what has been fitted.
  CInverseDistanceSquared(const CInverseDistanceSquared& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CInverseDistanceSquared(CInverseDistanceSquared&& other) noexcept;
  ~CInverseDistanceSquared() override;
  /// Copies what has been fitted.
  CInverseDistanceSquared& operator=(const CInverseDistanceSquared& other);
  /// Takes what has been fitted over, as the construction does.
  CInverseDistanceSquared& operator=(CInverseDistanceSquared&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  /// - Two control points at one place share it: the image is the mean of theirs.
  /// - A place so far away that the square of its distance from all control points is beyond all
  ///   numbers, from 1.4e154 in scaled coordinates on: NaN, since no point has any weight.
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RMatrix Affine;     ///< Constant, factor of x, factor of y, for x and for y of the image; 3 by 2.
  RVector ResidualX;  ///< What the affine map leaves of x at each control point.
  RVector ResidualY;  ///< What the affine map leaves of y at each control point.
};

}  // namespace vlm
