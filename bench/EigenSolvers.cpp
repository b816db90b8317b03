// Compiled once for each instruction set: VELUM_PEER is the name of its functions. Eigen's own
// namespace has another name each time, so that the linker can't mix the two.
#include <bench/EigenSolvers.h>

#include <Eigen/Cholesky>
#include <Eigen/Eigenvalues>
#include <Eigen/LU>
#include <Eigen/QR>

namespace {

// By columns, Eigen's own order: that of a symmetric matrix is the same either way.
using Matrix = Eigen::MatrixXd;
using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using Vector = Eigen::Map<Eigen::VectorXd>;

Eigen::Map<Matrix> Symmetric(double* a, unsigned n) { return {a, n, n}; }

void Cholesky(unsigned n, unsigned, double* a, double*) {
  Eigen::Map<Matrix> matrix = Symmetric(a, n);
  Eigen::LLT<Eigen::Ref<Matrix>> factor(matrix);
}

void Gauss(unsigned n, unsigned, double* a, double* b) {
  Eigen::Map<RowMajor> matrix(a, n, n);
  Vector x(b, n);
  x = Eigen::PartialPivLU<Eigen::Ref<RowMajor>>(matrix).solve(x).eval();
}

void LeastSquares(unsigned rows, unsigned cols, double* a, double* b) {
  const Matrix matrix = Eigen::Map<RowMajor>(a, rows, cols);
  const Eigen::VectorXd x = Eigen::HouseholderQR<Matrix>(matrix).solve(Vector(b, rows));
  Vector(b, cols) = x;
}

void SymmetricFactor(unsigned n, unsigned, double* a, double*) {
  Eigen::Map<Matrix> matrix = Symmetric(a, n);
  Eigen::LDLT<Eigen::Ref<Matrix>> factor(matrix);
}

void Tridiagonal(unsigned n, unsigned, double* a, double*) {
  const Eigen::Tridiagonalization<Matrix> form(Symmetric(a, n));
  const Matrix q = form.matrixQ();
  Symmetric(a, n) = q;
}

void Eigenvectors(unsigned n, unsigned, double* a, double*) {
  const Eigen::SelfAdjointEigenSolver<Matrix> solver(Symmetric(a, n));
  Symmetric(a, n) = solver.eigenvectors();
}

}  // namespace

constinit const EigenSolvers VELUM_PEER = {Cholesky,        Gauss,       LeastSquares,
                                           SymmetricFactor, Tridiagonal, Eigenvectors};
