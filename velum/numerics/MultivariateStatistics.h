#pragma once

/// \file
/// Statistics of several variables at once: means, covariances, correlations, principal components.
///
///     vlm::RMatrix x;
///     vlm::Initialize(x, "1,2;2,3.9;3,6.1");  // 3 observations of 2 variables
///     vlm::CMultivariateStatistics stats;
///     vlm::Load(stats, x);
///     double r = stats.Correlation(0, 1);
///
/// A matrix holds one observation in each row and one variable in each column. As with all
/// functions on matrices, sizes that have to agree are not checked.

#include <velum/core/Api.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

namespace vlm {

/// Returns the mean of each column, empty if there are no rows or no columns.
[[nodiscard]] VELUM_API RVector ComputeMean(const RMatrix& x);

/// Returns the covariances of the columns about their means, with divisor n - 1.
///
/// - No rows: zeros. One row: NaN.
///
/// *Cost:* n m^2 / 2 products for n rows and m columns.
[[nodiscard]] VELUM_API RMatrix ComputeCovariance(const RMatrix& x, const RVector& mean);
/// Returns the covariances of the columns about the means that ComputeMean gives.
[[nodiscard]] VELUM_API RMatrix ComputeCovariance(const RMatrix& x);

/// Returns the correlations of the columns by their covariances; 1 on the diagonal.
///
/// - No rows: zeros. A column without variance: NaN beside the diagonal.
[[nodiscard]] VELUM_API RMatrix ComputeCorrelation(const RMatrix& x, const RMatrix& covariance);
/// Returns the correlations of the columns by the covariances that ComputeCovariance gives.
[[nodiscard]] VELUM_API RMatrix ComputeCorrelation(const RMatrix& x);

/// Returns the rank of each element in ascending order, counted from 1; equal ones share the mean
/// of their ranks. NaN is above all, each with a rank of its own, in their order.
///
/// *Cost:* n log n.
[[nodiscard]] VELUM_API RVector ComputeTiedRank(const RVector& v);
/// Returns the rank of each element within its column.
[[nodiscard]] VELUM_API RMatrix ComputeTiedRank(const RMatrix& x);
/// Returns the correlations of the columns' ranks: Spearman's rho, with ties.
///
/// *Source:* C. Spearman, The Proof and Measurement of Association between Two Things (1904).
[[nodiscard]] VELUM_API RMatrix ComputeRankCorrelation(const RMatrix& x);

/// Returns the principal components of a covariance matrix: their directions in columns, as
/// CyclicJacobi of Eigenvectors.h leaves them, and their variances in a last column.
///
/// - CyclicJacobi fails: zeros.
///
/// *Cost:* that of CyclicJacobi.
[[nodiscard]] VELUM_API RMatrix ComputePrincipalComponents(const RMatrix& covariance);

/// What can be said of several variables.
///
/// A value.
class VELUM_API CMultivariateStatistics {
 public:
  /// Makes a record without observations and variables.
  CMultivariateStatistics() noexcept = default;

  /// Sets the counts to 0 and empties the matrices; Mean stays as it is.
  void Clear() noexcept;

  unsigned int Rows = 0;        ///< How many observations there are.
  unsigned int Cols = 0;        ///< How many variables there are.
  RVector Mean;                 ///< What ComputeMean gives.
  RMatrix Covariance;           ///< What ComputeCovariance gives.
  RMatrix Correlation;          ///< What ComputeCorrelation gives.
  RMatrix RankCorrelation;      ///< What ComputeRankCorrelation gives.
  RMatrix PrincipalComponents;  ///< What ComputePrincipalComponents gives.
};

/// Fills the record from the observations in the rows of `x`.
///
/// - No rows or no columns: a cleared record.
VELUM_API void Load(CMultivariateStatistics& stats, const RMatrix& x);

}  // namespace vlm
