// Products of square matrices, and of matrices with vectors, beside plain loops, Eigen and OpenBLAS
// with one thread. Velum and eigen_avx2 have no fused multiply-add, eigen_fma and OpenBLAS have.
// Every peer has its result's room at hand, as Velum has.

#include <velum/numerics/Matrices.h>

#include <bench/EigenProducts.h>

#include <benchmark/benchmark.h>

#include <cblas.h>

#include <cstddef>
#include <random>
#include <string>

namespace {

using vlm::RMatrix;
using vlm::RVector;

template <class Run>
Run Random(Run run, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> number(-1, 1);
  for (double& x : run) x = number(random);
  return run;
}

using MatrixFunction = void(const RMatrix&, const RMatrix&, RMatrix&);
using VectorFunction = void(const RMatrix&, const RVector&, RVector&);
using PeerFunction = EigenProducts::Function;

void Velum(benchmark::State& state, MatrixFunction* product, unsigned n) {
  const RMatrix a = Random(RMatrix(n, n), 1);
  const RMatrix b = Random(RMatrix(n, n), 2);
  RMatrix out(n, n);
  for (auto _ : state) {
    product(a, b, out);
    benchmark::DoNotOptimize(out.Base());
    benchmark::ClobberMemory();
  }
}

void Peer(benchmark::State& state, PeerFunction* product, unsigned n) {
  const RMatrix a = Random(RMatrix(n, n), 1);
  const RMatrix b = Random(RMatrix(n, n), 2);
  RMatrix out(n, n);
  for (auto _ : state) {
    product(n, a.Base(), b.Base(), out.Base());
    benchmark::DoNotOptimize(out.Base());
    benchmark::ClobberMemory();
  }
}

void VelumVector(benchmark::State& state, VectorFunction* product, unsigned n) {
  const RMatrix a = Random(RMatrix(n, n), 1);
  const RVector v = Random(RVector(n), 2);
  RVector out(n);
  for (auto _ : state) {
    product(a, v, out);
    benchmark::DoNotOptimize(out.Base());
    benchmark::ClobberMemory();
  }
}

void PeerVector(benchmark::State& state, PeerFunction* product, unsigned n) {
  const RMatrix a = Random(RMatrix(n, n), 1);
  const RVector v = Random(RVector(n), 2);
  RVector out(n);
  for (auto _ : state) {
    product(n, a.Base(), v.Base(), out.Base());
    benchmark::DoNotOptimize(out.Base());
    benchmark::ClobberMemory();
  }
}

// The loops that the products are defined by.
template <bool kTransposeA, bool kTransposeB>
void PlainLoops(unsigned size, const double* a, const double* b, double* out) {
  const std::size_t n = size;
  for (std::size_t i = 0; i < n; ++i) {
    for (std::size_t j = 0; j < n; ++j) {
      double sum = 0;
      for (std::size_t k = 0; k < n; ++k) {
        sum += a[kTransposeA ? k * n + i : i * n + k] * b[kTransposeB ? j * n + k : k * n + j];
      }
      out[i * n + j] = sum;
    }
  }
}

template <CBLAS_TRANSPOSE kA, CBLAS_TRANSPOSE kB>
void OpenBlas(unsigned size, const double* a, const double* b, double* out) {
  const int n = static_cast<int>(size);
  cblas_dgemm(CblasRowMajor, kA, kB, n, n, n, 1, a, n, b, n, 0, out, n);
}

template <CBLAS_TRANSPOSE kA>
void OpenBlasVector(unsigned size, const double* a, const double* v, double* out) {
  const int n = static_cast<int>(size);
  cblas_dgemv(CblasRowMajor, kA, n, n, 1, a, n, v, 1, 0, out, 1);
}

struct Family {
  const char* name;
  MatrixFunction* velum;
  PeerFunction* plain;
  PeerFunction* eigenAvx2;
  PeerFunction* eigenFma;
  PeerFunction* openBlas;
};

const Family kMatrixFamilies[] = {
    {"MatrixProduct", vlm::Product, PlainLoops<false, false>, eigenAvx2.product, eigenFma.product,
     OpenBlas<CblasNoTrans, CblasNoTrans>},
    {"MatrixInnerProduct", vlm::InnerProduct, PlainLoops<true, false>, eigenAvx2.innerProduct,
     eigenFma.innerProduct, OpenBlas<CblasTrans, CblasNoTrans>},
    {"MatrixOuterProduct", vlm::OuterProduct, PlainLoops<false, true>, eigenAvx2.outerProduct,
     eigenFma.outerProduct, OpenBlas<CblasNoTrans, CblasTrans>},
};

struct VectorFamily {
  const char* name;
  VectorFunction* velum;
  PeerFunction* eigenAvx2;
  PeerFunction* openBlas;
};

const VectorFamily kVectorFamilies[] = {
    {"VectorProduct", vlm::Product, eigenAvx2.productWithVector, OpenBlasVector<CblasNoTrans>},
    {"VectorInnerProduct", vlm::InnerProduct, eigenAvx2.innerProductWithVector,
     OpenBlasVector<CblasTrans>},
};

template <class Row, class Function>
void Register(const std::string& name, Row row, Function* function, unsigned n) {
  benchmark::RegisterBenchmark((name + std::to_string(n)).c_str(), [=](benchmark::State& state) {
    row(state, function, n);
  })->Unit(benchmark::kMicrosecond);
}

const bool isRegistered = [] {
  openblas_set_num_threads(1);
  for (const unsigned n : {10, 50, 200, 500, 1000}) {
    for (const Family& family : kMatrixFamilies) {
      const std::string name = family.name;
      Register(name + "/velum/", Velum, family.velum, n);
      if (n <= 200) Register(name + "/plain/", Peer, family.plain, n);
      Register(name + "/eigen_avx2/", Peer, family.eigenAvx2, n);
      Register(name + "/eigen_fma/", Peer, family.eigenFma, n);
      Register(name + "/openblas/", Peer, family.openBlas, n);
    }
    for (const VectorFamily& family : kVectorFamilies) {
      const std::string name = family.name;
      Register(name + "/velum/", VelumVector, family.velum, n);
      Register(name + "/eigen_avx2/", PeerVector, family.eigenAvx2, n);
      Register(name + "/openblas/", PeerVector, family.openBlas, n);
    }
  }
  return true;
}();

}  // namespace
