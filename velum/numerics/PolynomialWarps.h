#pragma once

/// \file
/// Polynomials fitted to control points by least squares.
///
///     vlm::CLinearConformal warp;  // moves, turns and scales
///     if (warp.Calibrate(from, to)) vlm::RPoint p = warp.Transform({50, 40});
///
/// They smooth what is wrong with single control points, and do not pass through them unless there
/// are as few as the polynomial has coefficients. Below, x and y are scaled coordinates; see
/// CImageWarp. Control points that leave a coefficient open, collinear or coincident ones, are no
/// fit. *Cost*: `Calibrate` grows with the number of control points, `Transform` does not.

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/ImageWarp.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

namespace vlm {

/// A polynomial of the second degree for each axis. Six control points are the least.
class VELUM_API CQuadraticPolynomial : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CQuadraticPolynomial();
  /// Copies what has been fitted.
  CQuadraticPolynomial(const CQuadraticPolynomial& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CQuadraticPolynomial(CQuadraticPolynomial&& other) noexcept;
  ~CQuadraticPolynomial() override;
  /// Copies what has been fitted.
  CQuadraticPolynomial& operator=(const CQuadraticPolynomial& other);
  /// Takes what has been fitted over, as the construction does.
  CQuadraticPolynomial& operator=(CQuadraticPolynomial&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RMatrix Coefficients;  ///< Of 1, x, y, xy, x^2, y^2, for x and for y of the image; 6 by 2.
};

/// An affine map. Four control points are the least.
class VELUM_API CGeneralLinear : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CGeneralLinear();
  /// Copies what has been fitted.
  CGeneralLinear(const CGeneralLinear& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CGeneralLinear(CGeneralLinear&& other) noexcept;
  ~CGeneralLinear() override;
  /// Copies what has been fitted.
  CGeneralLinear& operator=(const CGeneralLinear& other);
  /// Takes what has been fitted over, as the construction does.
  CGeneralLinear& operator=(CGeneralLinear&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RMatrix Coefficients;  ///< Of 1, x, y, for x and for y of the image; 3 by 2.
};

/// A map that moves, turns and scales, and keeps angles. Two control points are the least.
class VELUM_API CLinearConformal : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CLinearConformal();
  /// Copies what has been fitted.
  CLinearConformal(const CLinearConformal& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CLinearConformal(CLinearConformal&& other) noexcept;
  ~CLinearConformal() override;
  /// Copies what has been fitted.
  CLinearConformal& operator=(const CLinearConformal& other);
  /// Takes what has been fitted over, as the construction does.
  CLinearConformal& operator=(CLinearConformal&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  /// Gives (c0 + c2 x + c3 y, c1 + c2 y - c3 x).
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RVector Coefficients;  ///< c0 to c3.
};

/// A map that moves and scales, by a factor for each axis. Two control points are the least.
class VELUM_API CMixedScale : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CMixedScale();
  /// Copies what has been fitted.
  CMixedScale(const CMixedScale& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CMixedScale(CMixedScale&& other) noexcept;
  ~CMixedScale() override;
  /// Copies what has been fitted.
  CMixedScale& operator=(const CMixedScale& other);
  /// Takes what has been fitted over, as the construction does.
  CMixedScale& operator=(CMixedScale&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RMatrix Coefficients;  ///< Of 1 and x for x of the image, of 1 and y for y of it; 2 by 2.
};

/// A map that moves and scales, by one factor. Two control points are the least.
class VELUM_API CUniformScale : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CUniformScale();
  /// Copies what has been fitted.
  CUniformScale(const CUniformScale& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CUniformScale(CUniformScale&& other) noexcept;
  ~CUniformScale() override;
  /// Copies what has been fitted.
  CUniformScale& operator=(const CUniformScale& other);
  /// Takes what has been fitted over, as the construction does.
  CUniformScale& operator=(CUniformScale&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  /// Gives (c0 + c2 x, c1 + c2 y).
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RVector Coefficients;  ///< c0 to c2.
};

}  // namespace vlm
