// Compiled once for each instruction set: VELUM_PEER is the name of its functions. Eigen's own
// namespace has another name each time, so that the linker can't mix the two.
#include <bench/EigenProducts.h>

#include <Eigen/Core>

namespace {

using Matrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

auto MatrixAt(const double* m, unsigned n) { return Eigen::Map<const Matrix>(m, n, n); }

auto MatrixAt(double* m, unsigned n) { return Eigen::Map<Matrix>(m, n, n); }

auto VectorAt(const double* v, unsigned n) { return Eigen::Map<const Eigen::VectorXd>(v, n); }

auto VectorAt(double* v, unsigned n) { return Eigen::Map<Eigen::VectorXd>(v, n); }

void Product(unsigned n, const double* a, const double* b, double* out) {
  MatrixAt(out, n).noalias() = MatrixAt(a, n) * MatrixAt(b, n);
}

void InnerProduct(unsigned n, const double* a, const double* b, double* out) {
  MatrixAt(out, n).noalias() = MatrixAt(a, n).transpose() * MatrixAt(b, n);
}

void OuterProduct(unsigned n, const double* a, const double* b, double* out) {
  MatrixAt(out, n).noalias() = MatrixAt(a, n) * MatrixAt(b, n).transpose();
}

void ProductWithVector(unsigned n, const double* a, const double* v, double* out) {
  VectorAt(out, n).noalias() = MatrixAt(a, n) * VectorAt(v, n);
}

void InnerProductWithVector(unsigned n, const double* a, const double* v, double* out) {
  VectorAt(out, n).noalias() = MatrixAt(a, n).transpose() * VectorAt(v, n);
}

}  // namespace

constinit const EigenProducts VELUM_PEER = {Product, InnerProduct, OuterProduct, ProductWithVector,
                                            InnerProductWithVector};
