#include "Scenarios.h"

#include <velum/core/ErrorCodes.h>
#include <velum/numerics/ConjugateGradients.h>
#include <velum/numerics/Eigenvectors.h>
#include <velum/numerics/GaussSolve.h>
#include <velum/numerics/Histogram.h>
#include <velum/numerics/ImageRegistration.h>
#include <velum/numerics/LeastSquares.h>
#include <velum/numerics/Matrices.h>
#include <velum/numerics/MultivariateStatistics.h>
#include <velum/numerics/SpatialStatistics.h>
#include <velum/numerics/SymmetricFactors.h>
#include <velum/numerics/Tridiagonal.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace vlm::faults {
namespace {

/// A matrix without a pattern, of full rank.
RMatrix Mixed(unsigned rows, unsigned cols) {
  RMatrix a(rows, cols);
  for (unsigned i = 0; i < rows; ++i) {
    for (unsigned j = 0; j < cols; ++j)
      a(i, j) = std::sin(7.0 * i + 3.0 * j * j) + (i == j ? 5 : 0);
  }
  return a;
}

RMatrix Symmetric(unsigned n) {
  RMatrix a = Mixed(n, n);
  for (unsigned i = 0; i < n; ++i) {
    for (unsigned j = 0; j < i; ++j) a(i, j) = a(j, i);
    a(i, i) += 4 * n;
  }
  return a;
}

RVector Ramp(unsigned n) {
  RVector v(n);
  for (unsigned i = 0; i < n; ++i) v(i) = i + 1.0;
  return v;
}

template <class... Values>
std::string Told(const Values&... values) {
  std::ostringstream out;
  out.precision(17);
  ((out << values << " "), ...);
  if (!out) throw Refused();  // so a stream tells of missing memory
  return out.str();
}

std::vector<double> Sample(int count) {
  std::vector<double> sample;
  for (int i = 0; i < count; ++i) sample.push_back(50 + 10 * std::sin(i * 1.7) + i % 7);
  return sample;
}

const Scenario kScenarios[] = {
    {"MatricesInText",
     [] {
       RMatrix a;
       Initialize(a, "1,1,8;2,4,6;3,9,7");
       RVector v;
       Initialize(v, "1,2,3");
       return Told(a, v);
     }},
    {"MatricesThatAreMultiplied",
     [] {
       const RMatrix a = Mixed(70, 90);
       RMatrix product, inner, outer, turned;
       Product(a, Mixed(90, 80), product);
       InnerProduct(a, Mixed(70, 20), inner);
       OuterProduct(a, Mixed(30, 90), outer);
       Transpose(a, turned);
       Product(turned, a);
       RVector v = Ramp(90);
       Product(a, v);
       return Told(product(69, 79), inner(3, 4), outer(5, 6), turned(7, 8), v(9));
     }},
    {"EquationsThatAreSolved",
     [] {
       RMatrix a = Mixed(12, 12);
       RVector b = Ramp(12);
       if (!GaussSolve(a, b)) throw Refused();
       RMatrix tall = Mixed(12, 5);
       RVector x(5), right = Ramp(12);
       if (!MGSLeastSquares(tall, x, right)) throw Refused();
       RMatrix factors = Symmetric(12);
       RVector c = Ramp(12);
       if (!CholeskyDecomposition(factors)) throw Refused();
       CholeskySolve(factors, c);
       return Told(b, x, c);
     }},
    {"SymmetricMatricesThatAreFactored",
     [] {
       RMatrix a = Symmetric(12), aasen = Symmetric(12);
       if (!SymmetricDecomposition(a)) throw Refused();
       RVector v = Ramp(12);
       SymmetricSolve(a, v);
       AasenDecomposition(aasen);
       return Told(v, aasen(3, 2));
     }},
    {"EigenvectorsAndLeastSolutions",
     [] {
       RMatrix a = Symmetric(8);
       RVector s;
       if (!CyclicJacobi(a, s)) throw Refused();
       RVector x = Ramp(8);
       SVDSolve(a, s, x);
       RVector general;
       if (!GeneralizedSolve(Mixed(8, 3), Ramp(8), general)) throw Refused();
       return Told(s, x, general);
     }},
    {"EquationsWithConstraints",
     [] {
       RMatrix c(2, 8);
       Zeros(c, 2, 8);
       c(0, 0) = c(1, 3) = 1;
       RVector x(8), work;
       Zeros(x, 8);
       const bool isSolved = CPDSolve(Symmetric(8), c, Ramp(8), x, work);
       return Told(isSolved, x);
     }},
    {"ASample",
     [] {
       auto sample = Sample(300);
       CUnivariateStatistics stats;
       Load(stats, sample.begin(), sample.end());
       const CUnivariateStatistics copy = stats;
       return Told(copy, stats.Histogram.size());
     }},
    {"ALargeSample",
     [] {
       auto sample = Sample(30000);
       CUnivariateStatistics stats;
       Load(stats, sample.begin(), sample.end());
       return Told(stats);
     }},
    {"ASampleOfManyVariables",
     [] {
       CMultivariateStatistics stats;
       Load(stats, Mixed(30, 4));
       return Told(stats.Mean, stats.Covariance, stats.RankCorrelation, stats.PrincipalComponents);
     }},
    {"ASampleInThePlane",
     [] {
       std::vector<boost::tuple<double, double, double>> points;
       for (int i = 0; i < 500; ++i) {
         points.emplace_back(std::sin(i * 1.1) * 50, std::cos(i * 2.3) * 40, i);
       }
       CSpatialStatistics stats;
       Load(stats, points.begin(), points.end());
       return Told(stats.ClarkEvansRatio, stats.NearestDistance.Mean);
     }},
    {"CountsInBins",
     [] {
       CHistogram bins(0, 8, 16);
       bins.Add(4.3);
       CHistogram copy = bins;
       copy.Add(4.4);
       bins.Init(0, 1, 50);
       return Told(copy[8], bins.GetBinCount());
     },
     ERR_OUT_OF_MEMORY},
    {"AMapThatIsStraightened",
     [] {
       const RPoints sheet({{102, 98}, {903, 110}, {1710, 95}, {95, 810}, {910, 795}, {1702, 818}});
       const RPoints land({{20, 70}, {30, 70}, {40, 70}, {20, 60}, {30, 60}, {40, 60}});
       std::ostringstream out;
       for (int method = ThinPlateSpline; method <= IdentityMap; ++method) {
         CImageRegistration map;
         out << map.Calibrate(sheet, land, WarpingMethod(method)) << " ";
         const CImageRegistration copy = map;
         std::vector<RPoint> points(300, RPoint(500, 400));
         copy.TransformPoints(points.data(), points.data(), points.size());
         out << points[299].X() << " " << copy.Transform({1, 2}).Y() << " ";
       }
       return out.str();
     }},
};

}  // namespace

std::span<const Scenario> NumericScenarios() { return kScenarios; }

}  // namespace vlm::faults
