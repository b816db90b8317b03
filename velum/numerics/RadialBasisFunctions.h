#pragma once

/// \file
/// Splines through control points: an affine map, and a function of the distance about each point.
///
///     vlm::CThinPlateSpline spline;
///     if (spline.Calibrate(from, to)) spline.TransformPoints(pixels, places, count);
///
/// They pass through the control points and differ in how they bend between and beyond them.
///
/// *Source*: J. Duchon (1977), the thin plate; C. A. Micchelli (1986), for which functions there is
/// exactly one spline.

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/ImageWarp.h>
#include <velum/numerics/RMatrix.h>

#include <cstddef>

namespace vlm {

/// A spline with one function `Phi` of the distance, which a derived class gives.
///
/// The image of a point is an affine map of its scaled coordinates plus, for each control point,
/// `Phi` times a weight. Four control points are the least. An affine map is reproduced, and where
/// the fit succeeds without its fallback, what is left at the control points is 1e-9 of the length
/// of all `to` coordinates at most, or what `Phi` rounds to. The fallback, for doubled or collinear
/// control points and for systems too hard for the first way, drops what is below 1e-9 of the
/// system's largest eigenvalue; the spline then passes near the control points, by up to 2e-7 of
/// that length where the map is gently bent, and 5e-5 where it swings to and fro.
///
/// *Cost*: `Calibrate` keeps a matrix of n by n for n control points, and its time grows with n^3;
/// the fallback takes the eigenvectors of such a matrix besides. `Transform` takes one `Phi` for
/// each control point.
class VELUM_API CRadialBasisFunction : public CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CRadialBasisFunction();
  /// Copies what has been fitted.
  CRadialBasisFunction(const CRadialBasisFunction& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CRadialBasisFunction(CRadialBasisFunction&& other) noexcept;
  ~CRadialBasisFunction() override;
  /// Copies what has been fitted.
  CRadialBasisFunction& operator=(const CRadialBasisFunction& other);
  /// Takes what has been fitted over, as the construction does.
  CRadialBasisFunction& operator=(CRadialBasisFunction&& other) noexcept;

  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  RMatrix Weights;  ///< Of each control point, for x and for y of the image; n by 2.
  RMatrix Affine;   ///< Constant, factor of x, factor of y, for x and for y of the image; 3 by 2.

 protected:
  /// Returns the function of the distance whose coordinates, scaled, these are.
  [[nodiscard]] virtual double Phi(double dx, double dy) const = 0;

 private:
  friend class CImageWarp;

  [[gnu::visibility("hidden")]] void FillPhi(double x, double y, unsigned count, double* phi) const;
  [[gnu::visibility("hidden")]] void TransformRun(const RPoint* source, RPoint* target,
                                                  std::size_t count) const;
  [[gnu::visibility("hidden")]] bool SolveForWeights(const RPoints& to, RMatrix& weights,
                                                     RMatrix& affine) const;
};

/// The spline of least bending, as of a thin plate: half of r^2 ln r^2.
class VELUM_API CThinPlateSpline : public CRadialBasisFunction {
 public:
  /// Makes an uncalibrated warp.
  CThinPlateSpline();
  /// Copies what has been fitted.
  CThinPlateSpline(const CThinPlateSpline& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CThinPlateSpline(CThinPlateSpline&& other) noexcept;
  ~CThinPlateSpline() override;
  /// Copies what has been fitted.
  CThinPlateSpline& operator=(const CThinPlateSpline& other);
  /// Takes what has been fitted over, as the construction does.
  CThinPlateSpline& operator=(CThinPlateSpline&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;

 protected:
  /// - A square of the distance not above `SUKOSHI`: 0.
  [[nodiscard]] double Phi(double dx, double dy) const override;
};

/// The natural cubic spline: r^3. From 50 to 200 control points on, by how they lie, it comes from
/// the fallback.
class VELUM_API CNaturalCubicSpline : public CRadialBasisFunction {
 public:
  /// Makes an uncalibrated warp.
  CNaturalCubicSpline();
  /// Copies what has been fitted.
  CNaturalCubicSpline(const CNaturalCubicSpline& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CNaturalCubicSpline(CNaturalCubicSpline&& other) noexcept;
  ~CNaturalCubicSpline() override;
  /// Copies what has been fitted.
  CNaturalCubicSpline& operator=(const CNaturalCubicSpline& other);
  /// Takes what has been fitted over, as the construction does.
  CNaturalCubicSpline& operator=(CNaturalCubicSpline&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;

 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override;
};

/// The spline of a Markov process: -r, with a cone at each control point.
class VELUM_API CMarcovSpline : public CRadialBasisFunction {
 public:
  /// Makes an uncalibrated warp.
  CMarcovSpline();
  /// Copies what has been fitted.
  CMarcovSpline(const CMarcovSpline& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CMarcovSpline(CMarcovSpline&& other) noexcept;
  ~CMarcovSpline() override;
  /// Copies what has been fitted.
  CMarcovSpline& operator=(const CMarcovSpline& other);
  /// Takes what has been fitted over, as the construction does.
  CMarcovSpline& operator=(CMarcovSpline&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;

 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override;
};

/// The spline whose influence falls off with the distance: exp(-r).
class VELUM_API CExponentialSpline : public CRadialBasisFunction {
 public:
  /// Makes an uncalibrated warp.
  CExponentialSpline();
  /// Copies what has been fitted.
  CExponentialSpline(const CExponentialSpline& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CExponentialSpline(CExponentialSpline&& other) noexcept;
  ~CExponentialSpline() override;
  /// Copies what has been fitted.
  CExponentialSpline& operator=(const CExponentialSpline& other);
  /// Takes what has been fitted over, as the construction does.
  CExponentialSpline& operator=(CExponentialSpline&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;

 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override;
};

/// The smooth spline -r^2 / (1 + r^2). Its systems are the hardest: from 20 to 60 control points
/// on, by how they lie, it comes from the fallback.
class VELUM_API CRationalQuadraticSpline : public CRadialBasisFunction {
 public:
  /// Makes an uncalibrated warp.
  CRationalQuadraticSpline();
  /// Copies what has been fitted.
  CRationalQuadraticSpline(const CRationalQuadraticSpline& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CRationalQuadraticSpline(CRationalQuadraticSpline&& other) noexcept;
  ~CRationalQuadraticSpline() override;
  /// Copies what has been fitted.
  CRationalQuadraticSpline& operator=(const CRationalQuadraticSpline& other);
  /// Takes what has been fitted over, as the construction does.
  CRationalQuadraticSpline& operator=(CRationalQuadraticSpline&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;

 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override;
};

}  // namespace vlm
