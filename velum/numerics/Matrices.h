#pragma once

/// \file
/// Vectors and matrices, and all the functions on them but the solvers.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "2,1;1,3");
///     vlm::RVector x;
///     vlm::Initialize(x, "1,1");
///     vlm::RVector y;
///     vlm::Product(a, x, y);  // (3, 4)
///
/// The functions take all operands as arguments and hold for all of these headers:
///
/// - No function checks that the sizes of its operands agree; only the predicates look at sizes.
/// - An argument called `out` is sized first, whatever it held, and must not be another argument of
///   the same call. A form without it changes one operand instead, which may be the other one too.
/// - Sums run in the order of the indices, in one accumulator that begins with 0, without fused
///   multiply-add: they have the same bits on every processor.
/// - Nothing is thrown but `std::bad_alloc` and, from text, `boost::bad_lexical_cast`.
///   Operands that are changed then are what they were, or sized already with contents that are
///   undefined.

// IWYU pragma: begin_exports
#include <velum/numerics/MatrixArithmetic.h>
#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/MatrixNorms.h>
#include <velum/numerics/MatrixParts.h>
#include <velum/numerics/MatrixPredicates.h>
#include <velum/numerics/MatrixProducts.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
// IWYU pragma: end_exports
