// Decompositions and solvers beside the plain loops that define them and Eigen, with AVX2 and with
// fused multiply-add as well. Each run begins with a copy of the same matrix. What stands beside
// each other solves the same task, but not always in the same way: Eigen's least squares have
// reflections, its eigenvectors come from a tridiagonal matrix, and the peer of Aasen's
// decomposition is its pivoted one with a diagonal.

#include <velum/numerics/Matrices.h>
#include <velum/numerics/Solvers.h>

#include <bench/EigenSolvers.h>

#include <velum/numerics/test/reference/PlainSolvers.h>

#include <benchmark/benchmark.h>

#include <random>
#include <string>

namespace {

using vlm::RMatrix;
using vlm::RVector;
using Function = EigenSolvers::Function;
using VelumFunction = void(RMatrix& a, RVector& b);

template <class Run>
Run Random(Run run, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> number(-1, 1);
  for (double& x : run) x = number(random);
  return run;
}

RMatrix Any(unsigned rows, unsigned cols) { return Random(RMatrix(rows, cols), 1); }

RMatrix Symmetric(unsigned n, unsigned) {
  RMatrix a = Any(n, n);
  for (unsigned i = 0; i < n; ++i) {
    for (unsigned j = 0; j < i; ++j) a(i, j) = a(j, i);
  }
  return a;
}

RMatrix Definite(unsigned n, unsigned) {
  const RMatrix b = Any(n, n);
  RMatrix a;
  vlm::OuterProduct(b, b, a);
  for (unsigned i = 0; i < n; ++i) a(i, i) += n;
  return a;
}

using Maker = RMatrix(unsigned rows, unsigned cols);

void Velum(benchmark::State& state, Maker* maker, VelumFunction* solve, unsigned rows,
           unsigned cols) {
  const RMatrix a = maker(rows, cols);
  const RVector b = Random(RVector(rows), 2);
  RMatrix matrix;
  RVector right;
  for (auto _ : state) {
    matrix = a;
    right = b;
    solve(matrix, right);
    benchmark::DoNotOptimize(matrix.Base());
    benchmark::ClobberMemory();
  }
}

void Peer(benchmark::State& state, Maker* maker, Function* solve, unsigned rows, unsigned cols) {
  const RMatrix a = maker(rows, cols);
  const RVector b = Random(RVector(rows), 2);
  RMatrix matrix;
  RVector right;
  for (auto _ : state) {
    matrix = a;
    right = b;
    solve(rows, cols, matrix.Base(), right.Base());
    benchmark::DoNotOptimize(matrix.Base());
    benchmark::ClobberMemory();
  }
}

template <bool (*kSolve)(RMatrix&)>
void WithoutRightHandSide(RMatrix& a, RVector&) {
  benchmark::DoNotOptimize(kSolve(a));
}

void Aasen(RMatrix& a, RVector&) { vlm::AasenDecomposition(a); }

void PlainAasen(RMatrix& a, RVector&) { vlm::reference::PlainAasen(a); }

template <bool (*kSolve)(RMatrix&, RVector&)>
void WithVector(RMatrix& a, RVector& b) {
  benchmark::DoNotOptimize(kSolve(a, b));
}

template <bool (*kSolve)(RMatrix&, RVector&, RVector&)>
void LeastSquares(RMatrix& a, RVector& b) {
  RVector x(a.nCols());
  benchmark::DoNotOptimize(kSolve(a, x, b));
}

void Tridiagonal(RMatrix& a, RVector&) {
  RVector d, e;
  vlm::TridiagonalDecomposition(a, d, e);
}

void PlainTridiagonal(RMatrix& a, RVector&) {
  RVector d, e;
  vlm::reference::PlainTridiagonal(a, d, e);
}

struct Family {
  const char* name;
  Maker* maker;
  unsigned rowsPerColumn;
  unsigned sizes[3];
  VelumFunction* velum;
  VelumFunction* plain;
  Function* EigenSolvers::*eigen;
  unsigned mostPlain;
};

const Family kFamilies[] = {
    {"Cholesky",
     Definite,
     1,
     {50, 200, 1000},
     WithoutRightHandSide<vlm::CholeskyDecomposition>,
     WithoutRightHandSide<vlm::reference::PlainCholesky>,
     &EigenSolvers::cholesky,
     1000},
    {"SymmetricDecomposition",
     Definite,
     1,
     {50, 200, 1000},
     WithoutRightHandSide<vlm::SymmetricDecomposition>,
     WithoutRightHandSide<vlm::reference::PlainSymmetric>,
     &EigenSolvers::symmetric,
     1000},
    {"AasenDecomposition",
     Symmetric,
     1,
     {50, 200, 1000},
     Aasen,
     PlainAasen,
     &EigenSolvers::symmetric,
     1000},
    {"GaussSolve",
     Any,
     1,
     {50, 200, 1000},
     WithVector<vlm::GaussSolve>,
     WithVector<vlm::reference::PlainGauss>,
     &EigenSolvers::gauss,
     1000},
    {"LeastSquares4to1",
     Any,
     4,
     {10, 50, 200},
     LeastSquares<vlm::MGSLeastSquares>,
     LeastSquares<vlm::reference::PlainLeastSquares>,
     &EigenSolvers::leastSquares,
     200},
    {"TridiagonalDecomposition",
     Symmetric,
     1,
     {50, 200, 500},
     Tridiagonal,
     PlainTridiagonal,
     &EigenSolvers::tridiagonal,
     500},
    {"CyclicJacobi",
     Symmetric,
     1,
     {50, 200, 500},
     WithVector<vlm::CyclicJacobi>,
     WithVector<vlm::reference::PlainJacobi>,
     &EigenSolvers::eigenvectors,
     500},
};

const bool isRegistered = [] {
  const auto add = [](const Family& family, const char* peer, unsigned n, auto row,
                      auto* function) {
    const std::string name = std::string(family.name) + "/" + peer + "/" + std::to_string(n);
    const unsigned rows = family.rowsPerColumn * n;
    Maker* const maker = family.maker;
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      row(state, maker, function, rows, n);
    })->Unit(benchmark::kMicrosecond);
  };
  for (const Family& family : kFamilies) {
    for (const unsigned n : family.sizes) {
      add(family, "velum", n, Velum, family.velum);
      if (n <= family.mostPlain) add(family, "plain", n, Velum, family.plain);
      add(family, "eigen_avx2", n, Peer, solversAvx2.*family.eigen);
      add(family, "eigen_fma", n, Peer, solversFma.*family.eigen);
    }
  }
  return true;
}();

}  // namespace
