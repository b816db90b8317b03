#pragma once

/// \file
/// What all maps from one plane to another have in common.
///
///     vlm::RPoints from({{0, 0}, {100, 0}, {100, 80}, {0, 80}});
///     vlm::RPoints to({{5, 4}, {105, 6}, {104, 85}, {3, 84}});
///     vlm::CThinPlateSpline warp;
///     if (warp.Calibrate(from, to)) vlm::RPoint p = warp.Transform({50, 40});
///
/// CImageRegistration chooses among them, and needs no check.

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/RVector.h>

#include <cstddef>

namespace vlm {

/// A map of the plane that is fitted to pairs of control points.
///
/// A value behind an interface: `Clone` copies one whose class is not known. A warp is made
/// uncalibrated; `Calibrate` fits it, and anew as often as it is called. The members hold what has
/// been fitted, to be read: most warps work in scaled coordinates, (x - CenterX) / Scale and
/// (y - CenterY) / Scale, in which the control points fill the square from -1 to 1 along its longer
/// side. Whatever is fitted leads from these to the plain coordinates of the other plane.
///
/// Any number of threads may transform points with one warp; `Calibrate` needs it alone.
class VELUM_API CImageWarp {
 public:
  /// Makes an uncalibrated warp.
  CImageWarp();
  /// Copies what has been fitted.
  CImageWarp(const CImageWarp& other);
  /// Takes what has been fitted over; `other` is to be calibrated before it is used again.
  CImageWarp(CImageWarp&& other) noexcept;
  virtual ~CImageWarp();
  /// Copies what has been fitted.
  CImageWarp& operator=(const CImageWarp& other);
  /// Takes what has been fitted over, as the construction does.
  CImageWarp& operator=(CImageWarp&& other) noexcept;

  /// Returns a copy that the caller owns.
  [[nodiscard]] virtual CImageWarp* Clone() const = 0;

  /// Fits the warp to control points: `to[i]` is the image of `from[i]`. Tells whether there is
  /// such a fit; if not, the warp is uncalibrated.
  ///
  /// - Lists of different lengths, or fewer points than the class says: `false`.
  /// - A coordinate that is infinite or NaN, or a fit that is: `false`.
  ///
  /// *Errors*: `std::bad_alloc`; the warp is then uncalibrated.
  [[nodiscard]] virtual bool Calibrate(const RPoints& from, const RPoints& to) = 0;

  /// Returns the image of a point. An uncalibrated warp gives NaN, unless its class says otherwise.
  /// Asks for no memory.
  [[nodiscard]] virtual RPoint Transform(const RPoint& p) const = 0;

  /// Transforms `count` points, each to the bits that `Transform` gives, only faster where the warp
  /// sums over control points. `source` and `target` are apart, or one array.
  void TransformPoints(const RPoint* source, RPoint* target, std::size_t count) const;

  double CenterX = 0;  ///< What is 0 in scaled coordinates.
  double CenterY = 0;  ///< What is 0 in scaled coordinates.
  double Scale = 1;    ///< The length that is 1 in scaled coordinates, along both axes.
  RVector ScaledX;     ///< The control points in scaled coordinates, where `Transform` needs them.
  RVector ScaledY;     ///< The control points in scaled coordinates, where `Transform` needs them.

 protected:
  /// Sets the scaled coordinates by a list of points, and fills `ScaledX` and `ScaledY`.
  ///
  /// - Fewer than two points: the plain coordinates are the scaled ones, and nothing is filled.
  /// - Points that all coincide, within `SUKOSHI`: `Scale` is 1.
  void ScaleControlPoints(const RPoints& points);
};

}  // namespace vlm
