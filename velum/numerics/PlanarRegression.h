#pragma once

/// \file
/// The least-squares plane through points in space.
///
///     vlm::CPlanarRegression plane;
///     vlm::Load(plane, n, meanX, meanY, meanZ, sxx, sxy, sxz, syz, syy, szz);
///     double z = plane.SlopeX * x + plane.SlopeY * y + plane.Intercept;

#include <velum/core/Api.h>

namespace vlm {

/// The plane z = SlopeX x + SlopeY y + Intercept with what can be said of its fit.
///
/// A value. What can't be told is NaN: all that has a divisor or a radicand not above `SUKOSHI`,
/// 2^-126.
class VELUM_API CPlanarRegression {
 public:
  /// Makes an empty record: Count 0, everything else NaN.
  CPlanarRegression() noexcept;

  /// Makes the record empty.
  void Clear() noexcept;

  unsigned int Count;  ///< How many points there are.

  double SlopeX;               ///< The coefficient of x.
  double SlopeXError;          ///< Its standard error.
  double SlopeY;               ///< The coefficient of y.
  double SlopeYError;          ///< Its standard error.
  double Intercept;            ///< The constant term.
  double InterceptError;       ///< Its standard error.
  double SSRegression;         ///< The sum of squares that the plane explains.
  double SSResidual;           ///< The sum of squares that is left.
  double SSTotal;              ///< The sum of squares about the mean of z.
  double MSRegression;         ///< SSRegression by its 2 degrees of freedom.
  double MSResidual;           ///< SSResidual by its n - 3 degrees of freedom; from 4 points on.
  double FRatio;               ///< MSRegression / MSResidual.
  double RSquared;             ///< The coefficient of determination.
  double CorrSlopeXSlopeY;     ///< The correlation of the two slopes.
  double CorrSlopeXIntercept;  ///< The correlation of SlopeX and Intercept.
  double CorrSlopeYIntercept;  ///< The correlation of SlopeY and Intercept.
  double CorrXY;               ///< The correlation of x and y.
  double CorrXZ;               ///< The correlation of x and z.
  double CorrYZ;               ///< The correlation of y and z.
};

/// Fits the plane to `count` points, of which the means and the centred sums are given: sxy is the
/// sum of (x - meanX) (y - meanY), and so on. Note their order.
///
/// - No points: an empty record.
/// - Points on one line of the plane, |sxx syy - sxy^2| not above `SUKOSHI`: only the correlations
/// of
///   the variables.
VELUM_API void Load(CPlanarRegression& regression, unsigned int count, double meanX, double meanY,
                    double meanZ, double sxx, double sxy, double sxz, double syz, double syy,
                    double szz) noexcept;

}  // namespace vlm
