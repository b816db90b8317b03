#pragma once

/// \file
/// Dense decompositions and solvers, all of them.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "4,2;2,3");
///     vlm::RVector x;
///     vlm::Initialize(x, "8,7");
///     if (vlm::CholeskyDecomposition(a)) vlm::CholeskySolve(a, x);  // (1.25, 1.5)
///
/// The functions take all operands as arguments and hold for all of these headers:
///
/// - A decomposition stands where its matrix stood. A right-hand side is overwritten by the
///   solution, unless there is an argument for it; as a matrix, each column is one right-hand side.
/// - `false` tells of a matrix that is singular, or too close to it. What is changed by the call is
///   then changed in part, and of no use.
/// - A pivot is singular when it is less than the epsilon of `double`, 2.220446049250313e-16, in
///   absolute value, whatever the size of the others: scale what is small. NaN is not less: it goes
///   on into the result, unless a function says otherwise.
/// - No function checks that the sizes of its operands agree. With 0 rows nothing is read, and the
///   result is `true`.
/// - Sums run in the order of the indices, in one accumulator that begins with 0, without fused
///   multiply-add: results have the same bits on every processor.
/// - Operands that are changed must not be other arguments too, unless a function says so.
/// - Nothing is thrown but `std::bad_alloc`. What is changed by the call may then be changed in
///   part.

// IWYU pragma: begin_exports
#include <velum/numerics/ConjugateGradients.h>
#include <velum/numerics/Eigenvectors.h>
#include <velum/numerics/GaussSolve.h>
#include <velum/numerics/LeastSquares.h>
#include <velum/numerics/SymmetricFactors.h>
#include <velum/numerics/TriangularSolves.h>
#include <velum/numerics/Tridiagonal.h>
// IWYU pragma: end_exports
