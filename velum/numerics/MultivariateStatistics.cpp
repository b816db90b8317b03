#include <velum/numerics/MultivariateStatistics.h>

#include <velum/numerics/Eigenvectors.h>
#include <velum/numerics/MatrixParts.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace vlm {

RVector ComputeMean(const RMatrix& x) {
  if (x.nRows() == 0 || x.nCols() == 0) {
    return RVector();
  }
  RVector mean(x.nCols());
  for (unsigned i = 0; i < x.nRows(); ++i) {
    for (unsigned j = 0; j < x.nCols(); ++j) {
      mean(j) += x(i, j);
    }
  }
  for (double& m : mean) {
    m /= x.nRows();
  }
  return mean;
}

RMatrix ComputeCovariance(const RMatrix& x, const RVector& mean) {
  const unsigned cols = x.nCols();
  RMatrix covariance(cols, cols);
  if (x.nRows() == 0 || cols == 0) {
    return covariance;
  }
  RVector d(cols);
  for (unsigned k = 0; k < x.nRows(); ++k) {
    for (unsigned j = 0; j < cols; ++j) {
      d(j) = x(k, j) - mean(j);
    }
    for (unsigned i = 0; i < cols; ++i) {
      for (unsigned j = i; j < cols; ++j) {
        covariance(i, j) += d(i) * d(j);
      }
    }
  }
  const double divisor = x.nRows() - 1.0;
  for (unsigned i = 0; i < cols; ++i) {
    for (unsigned j = i; j < cols; ++j) {
      covariance(i, j) /= divisor;
      covariance(j, i) = covariance(i, j);
    }
  }
  return covariance;
}

RMatrix ComputeCovariance(const RMatrix& x) { return ComputeCovariance(x, ComputeMean(x)); }

RMatrix ComputeCorrelation(const RMatrix& x, const RMatrix& covariance) {
  const unsigned cols = x.nCols();
  RMatrix correlation(cols, cols);
  if (x.nRows() == 0 || cols == 0) {
    return correlation;
  }
  RVector deviation(cols);
  for (unsigned i = 0; i < cols; ++i) {
    deviation(i) = std::sqrt(covariance(i, i));
  }
  for (unsigned i = 0; i < cols; ++i) {
    correlation(i, i) = 1;
    for (unsigned j = i + 1; j < cols; ++j) {
      correlation(i, j) = covariance(i, j) / (deviation(j) * deviation(i));
      correlation(j, i) = correlation(i, j);
    }
  }
  return correlation;
}

RMatrix ComputeCorrelation(const RMatrix& x) { return ComputeCorrelation(x, ComputeCovariance(x)); }

RVector ComputeTiedRank(const RVector& v) {
  const unsigned n = v.Length();
  std::vector<unsigned> order(n);
  for (unsigned i = 0; i < n; ++i) {
    order[i] = i;
  }
  std::sort(order.begin(), order.end(), [&](unsigned a, unsigned b) {
    const bool aIsNaN = std::isnan(v(a));
    const bool bIsNaN = std::isnan(v(b));
    if (aIsNaN || bIsNaN) {
      return aIsNaN == bIsNaN ? a < b : bIsNaN;
    }
    return v(a) != v(b) ? v(a) < v(b) : a < b;
  });
  RVector ranks(n);
  for (unsigned i = 0; i < n;) {
    unsigned j = i + 1;
    while (j < n && v(order[j]) == v(order[i])) {
      ++j;
    }
    for (unsigned k = i; k < j; ++k) {
      ranks(order[k]) = i + (j - i + 1) / 2.0;
    }
    i = j;
  }
  return ranks;
}

RMatrix ComputeTiedRank(const RMatrix& x) {
  RMatrix ranks(x.nRows(), x.nCols());
  RVector column;
  for (unsigned j = 0; j < x.nCols(); ++j) {
    ExtractCol(x, j, column);
    AssignCol(ComputeTiedRank(column), j, ranks);
  }
  return ranks;
}

RMatrix ComputeRankCorrelation(const RMatrix& x) { return ComputeCorrelation(ComputeTiedRank(x)); }

RMatrix ComputePrincipalComponents(const RMatrix& covariance) {
  const unsigned n = covariance.nRows();
  RMatrix directions = covariance;
  RVector variances(n);
  RMatrix components(n, n + 1);
  if (CyclicJacobi(directions, variances)) {
    ConcatenateCols(directions, variances, components);
  }
  return components;
}

void CMultivariateStatistics::Clear() noexcept {
  Rows = 0;
  Cols = 0;
  Covariance.Clear();
  Correlation.Clear();
  RankCorrelation.Clear();
  PrincipalComponents.Clear();
}

void Load(CMultivariateStatistics& stats, const RMatrix& x) {
  stats.Clear();
  if (x.nRows() == 0 || x.nCols() == 0) {
    return;
  }
  stats.Cols = x.nCols();
  stats.Rows = x.nRows();
  stats.Mean = ComputeMean(x);
  stats.Covariance = ComputeCovariance(x, stats.Mean);
  stats.Correlation = ComputeCorrelation(x, stats.Covariance);
  stats.RankCorrelation = ComputeRankCorrelation(x);
  stats.PrincipalComponents = ComputePrincipalComponents(stats.Covariance);
}

}  // namespace vlm
