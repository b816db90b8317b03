#pragma once

/// \file
/// Values for vectors and matrices: constants, arrays, and text.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "1,2;3,4,5");  // (1 2 0) over (3 4 5)
///     vlm::Eye(a, 3, 3);
///
/// What holds for all functions on matrices is told in Matrices.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

#include <string>

namespace vlm {

/// Sets all elements to `x`.
VELUM_API void Fill(RVector& v, double x) noexcept;
/// Sets all elements to `x`.
VELUM_API void Fill(RMatrix& a, double x) noexcept;

/// Resizes the vector and sets all its elements to 1.
VELUM_API void Ones(RVector& v, unsigned length);
/// Resizes the matrix and sets all its elements to 1.
VELUM_API void Ones(RMatrix& a, unsigned rows, unsigned cols);
/// Resizes the vector and sets all its elements to 0.
VELUM_API void Zeros(RVector& v, unsigned length);
/// Resizes the matrix and sets all its elements to 0.
VELUM_API void Zeros(RMatrix& a, unsigned rows, unsigned cols);

/// Makes a unit vector: resizes it, and sets element `i` to 1 and the others to 0.
VELUM_API void Unit(RVector& v, unsigned length, unsigned i);
/// Resizes the matrix, and sets the elements on the main diagonal to 1 and the others to 0.
VELUM_API void Eye(RMatrix& a, unsigned rows, unsigned cols);

/// Resizes the vector and copies `length` elements, which are not its own.
VELUM_API void Initialize(RVector& v, unsigned length, const double* elements);
/// Resizes the matrix and copies its elements row by row; they are not its own.
VELUM_API void Initialize(RMatrix& a, unsigned rows, unsigned cols, const double* elements);

/// Reads a vector from text: numbers with `,` or `;` between them.
///
/// - Empty elements are passed over: `1,,2;` is a vector of 2 elements.
/// - No element at all: the empty vector.
///
/// A number is what `boost::lexical_cast` takes for a `double`, with the point whatever the locale.
/// Blanks belong to no number.
///
/// *Errors:* `boost::bad_lexical_cast` for an element that is no number. The vector has its size
/// then, and the elements before that one.
VELUM_API void Initialize(RVector& v, const std::string& text);
/// Reads a matrix from text: rows with `;` between them, numbers with `,` between them.
///
/// - Empty elements and empty rows are passed over: `1,,2;;3` has the rows (1 2) and (3 0).
/// - A row that is shorter than the longest one ends in zeros; one of commas alone is all zeros.
/// - No element at all: the empty matrix.
///
/// A number is what `boost::lexical_cast` takes for a `double`, with the point whatever the locale.
/// Blanks belong to no number.
///
/// *Errors:* `boost::bad_lexical_cast` for an element that is no number; the matrix has its size
/// then, the elements before that one, and zeros. `std::bad_alloc` if the rows and the longest one
/// of them make 2^29 elements or more; the matrix is as it was then.
///
/// *Cost:* the memory grows with the number of rows times the length of the longest one, which may
/// be the square of the text's length.
VELUM_API void Initialize(RMatrix& a, const std::string& text);

}  // namespace vlm
