#pragma once

/// \file
/// Registration: a plane is mapped to another one by control points, whatever they allow.
///
///     vlm::CImageRegistration map;
///     if (map.Calibrate(from, to, vlm::ThinPlateSpline) != vlm::ThinPlateSpline) Warn();
///     vlm::RPoint place = map.Transform({120.5, 88});

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/Forward.h>

#include <cstddef>
#include <memory>

namespace vlm {

/// The ways to map a plane. Each needs a number of control points, and each but the last gives way
/// to another where there are fewer or its fit fails.
enum WarpingMethod : int {
  ThinPlateSpline = 0,          ///< CThinPlateSpline; 4 points, else 5.
  NaturalCubicSpline = 1,       ///< CNaturalCubicSpline; 4 points, else 5.
  MarcovSpline = 2,             ///< CMarcovSpline; 4 points, else 5.
  ExponentialSpline = 3,        ///< CExponentialSpline; 4 points, else 5.
  RationalQuadraticSpline = 4,  ///< CRationalQuadraticSpline; 4 points, else 5.
  InverseDistanceSquared = 5,   ///< CInverseDistanceSquared; 4 points, else 8.
  QuadraticPolynomial = 6,      ///< CQuadraticPolynomial; 6 points, else 7.
  GeneralLinear = 7,            ///< CGeneralLinear; 4 points, else 8.
  LinearConformal = 8,          ///< CLinearConformal; 2 points, else 10.
  MixedScale = 9,               ///< CMixedScale; 2 points, else 10.
  UniformScale = 10,            ///< CUniformScale; 2 points, else 11.
  Translate = 11,               ///< CTranslate; 1 point, else 12.
  IdentityMap = 12              ///< CIdentityMap; any number of points.
};

/// A map of the plane that always works: it owns the warp that the control points allow, the
/// identity at first.
///
/// A value: a copy has a warp of its own. Any number of threads may transform points with one
/// registration; a change needs it alone.
class VELUM_API CImageRegistration {
 public:
  /// Makes the identity.
  CImageRegistration();
  /// Copies the warp.
  CImageRegistration(const CImageRegistration& other);
  ~CImageRegistration();

  /// Returns the image of a point. Asks for no memory.
  [[nodiscard]] RPoint Transform(const RPoint& p) const;
  /// Transforms `count` points, each to the bits that `Transform` gives. `source` and `target` are
  /// apart, or one array.
  void TransformPoints(const RPoint* source, RPoint* target, std::size_t count) const;

  /// Fits a warp to control points, `to[i]` the image of `from[i]`, and returns the method that is
  /// in force: `method`, or the first one on the way down from it that has a fit.
  ///
  /// - No control points: `IdentityMap`, whatever is asked for. One: `Translate`, unless
  ///   `IdentityMap` is.
  /// - Lists of different lengths, or a coordinate that is infinite or NaN: `IdentityMap`.
  /// - Collinear control points, or all at one place: splines have a fit, but it may take the whole
  ///   plane to a line or a point, or shear it. Ask for `LinearConformal` instead.
  /// - A number that is no method: it is returned, and the warp stays.
  ///
  /// *Errors*: `std::bad_alloc`; the warp stays.
  WarpingMethod Calibrate(const RPoints& from, const RPoints& to, WarpingMethod method);

  /// Copies the warp. If memory for that is missing, throws `std::bad_alloc`, and this one stays.
  CImageRegistration& operator=(const CImageRegistration& other);

 private:
  std::unique_ptr<CImageWarp> warp_;  // never null
};

}  // namespace vlm
