// Compiled once for each peer, with its instruction set: VELUM_PEER is its namespace, and Eigen's
// own namespace has another name in each, so that the linker can't mix the two.
#include "EigenProducts.h"

#include <Eigen/Core>

namespace VELUM_PEER {

namespace {

using Matrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

auto In(const double* m, unsigned n) { return Eigen::Map<const Matrix>(m, n, n); }

auto Out(double* m, unsigned n) { return Eigen::Map<Matrix>(m, n, n); }

auto In(unsigned n, const double* v) { return Eigen::Map<const Eigen::VectorXd>(v, n); }

auto Out(unsigned n, double* v) { return Eigen::Map<Eigen::VectorXd>(v, n); }

}  // namespace

void Product(unsigned n, const double* a, const double* b, double* out) {
  Out(out, n).noalias() = In(a, n) * In(b, n);
}

void InnerProduct(unsigned n, const double* a, const double* b, double* out) {
  Out(out, n).noalias() = In(a, n).transpose() * In(b, n);
}

void OuterProduct(unsigned n, const double* a, const double* b, double* out) {
  Out(out, n).noalias() = In(a, n) * In(b, n).transpose();
}

void ProductWithVector(unsigned n, const double* a, const double* v, double* out) {
  Out(n, out).noalias() = In(a, n) * In(n, v);
}

void InnerProductWithVector(unsigned n, const double* a, const double* v, double* out) {
  Out(n, out).noalias() = In(a, n).transpose() * In(n, v);
}

}  // namespace VELUM_PEER
