#include <velum/numerics/MatrixParts.h>

#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>
#include <utility>

namespace vlm {

namespace {

// Copies the first `cols` elements of the first `rows` rows, to where `row` and `col` say.
void PutBlock(const RMatrix& block, unsigned rows, unsigned cols, unsigned row, unsigned col,
              RMatrix& out) noexcept {
  for (unsigned i = 0; i < rows; ++i) std::copy_n(block.Base(i, 0), cols, out.Base(row + i, col));
}

void PutBlock(const RMatrix& block, unsigned row, unsigned col, RMatrix& out) noexcept {
  PutBlock(block, block.nRows(), block.nCols(), row, col, out);
}

void PutTransposed(const RMatrix& block, unsigned row, unsigned col, RMatrix& out) noexcept {
  for (unsigned i = 0; i < block.nRows(); ++i) {
    for (unsigned j = 0; j < block.nCols(); ++j) out(row + j, col + i) = block(i, j);
  }
}

void PutColumn(const RVector& v, unsigned rows, unsigned col, RMatrix& out) noexcept {
  for (unsigned i = 0; i < rows; ++i) out(i, col) = v(i);
}

}  // namespace

void ExtractRow(const RMatrix& a, unsigned i, RVector& out) {
  Initialize(out, a.nCols(), a.Base(i, 0));
}

void ExtractCol(const RMatrix& a, unsigned j, RVector& out) {
  out.Resize(a.nRows());
  for (unsigned i = 0; i < a.nRows(); ++i) out(i) = a(i, j);
}

void ExtractDiagonal(const RMatrix& a, RVector& out) {
  out.Resize(std::min(a.nRows(), a.nCols()));
  for (unsigned i = 0; i < out.Length(); ++i) out(i) = a(i, i);
}

void AssignRow(const RVector& v, unsigned i, RMatrix& a) noexcept {
  std::copy_n(v.begin(), a.nCols(), a.Base(i, 0));
}

void AssignCol(const RVector& v, unsigned j, RMatrix& a) noexcept {
  PutColumn(v, v.Length(), j, a);
}

void AssignDiagonal(const RVector& v, RMatrix& a) noexcept {
  for (unsigned i = 0; i < std::min(a.nRows(), a.nCols()); ++i) a(i, i) = v(i);
}

void Concatenate(const RVector& v, const RVector& w, RVector& out) {
  out.Resize(v.Length() + w.Length());
  std::copy(w.begin(), w.end(), std::copy(v.begin(), v.end(), out.begin()));
}

void Concatenate(RVector& v, const RVector& w) {
  if (w.empty()) return;
  RVector joined;
  Concatenate(v, w, joined);
  v = std::move(joined);
}

void ConcatenateCols(const RMatrix& a, const RVector& v, RMatrix& out) {
  out.Resize(a.nRows(), a.nCols() + 1);
  PutBlock(a, 0, 0, out);
  PutColumn(v, a.nRows(), a.nCols(), out);
}

void ConcatenateCols(const RVector& v, const RMatrix& a, RMatrix& out) {
  out.Resize(a.nRows(), a.nCols() + 1);
  PutColumn(v, a.nRows(), 0, out);
  PutBlock(a, 0, 1, out);
}

void ConcatenateCols(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  out.Resize(a.nRows(), a.nCols() + b.nCols());
  PutBlock(a, 0, 0, out);
  PutBlock(b, a.nRows(), b.nCols(), 0, a.nCols(), out);
}

void ConcatenateCols(RMatrix& a, const RVector& v) {
  RMatrix joined;
  ConcatenateCols(a, v, joined);
  a = std::move(joined);
}

void ConcatenateCols(const RVector& v, RMatrix& a) {
  RMatrix joined;
  ConcatenateCols(v, a, joined);
  a = std::move(joined);
}

void ConcatenateCols(RMatrix& a, const RMatrix& b) {
  if (b.empty()) return;
  RMatrix joined;
  ConcatenateCols(a, b, joined);
  a = std::move(joined);
}

void ConcatenateRows(const RMatrix& a, const RVector& v, RMatrix& out) {
  out.Resize(a.nRows() + 1, a.nCols());
  PutBlock(a, 0, 0, out);
  AssignRow(v, a.nRows(), out);
}

void ConcatenateRows(const RVector& v, const RMatrix& a, RMatrix& out) {
  out.Resize(a.nRows() + 1, a.nCols());
  AssignRow(v, 0, out);
  PutBlock(a, 1, 0, out);
}

void ConcatenateRows(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  out.Resize(a.nRows() + b.nRows(), a.nCols());
  PutBlock(a, 0, 0, out);
  PutBlock(b, b.nRows(), a.nCols(), a.nRows(), 0, out);
}

void ConcatenateRows(RMatrix& a, const RVector& v) {
  RMatrix joined;
  ConcatenateRows(a, v, joined);
  a = std::move(joined);
}

void ConcatenateRows(const RVector& v, RMatrix& a) {
  RMatrix joined;
  ConcatenateRows(v, a, joined);
  a = std::move(joined);
}

void ConcatenateRows(RMatrix& a, const RMatrix& b) {
  if (b.empty()) return;
  RMatrix joined;
  ConcatenateRows(a, b, joined);
  a = std::move(joined);
}

void ComposeMatrix(const RMatrix& a, const RMatrix& b, const RMatrix& c, const RMatrix& d,
                   RMatrix& out) {
  out.Resize(a.nRows() + c.nRows(), a.nCols() + b.nCols());
  PutBlock(a, 0, 0, out);
  PutBlock(b, 0, a.nCols(), out);
  PutBlock(c, a.nRows(), 0, out);
  PutBlock(d, b.nRows(), c.nCols(), out);
}

void ComposeMatrix(const RMatrix& a, const RMatrix& b, const RMatrix& c, RMatrix& out) {
  out.Resize(b.nRows() + a.nRows(), a.nCols() + b.nRows());
  PutBlock(a, 0, 0, out);
  PutTransposed(b, 0, a.nCols(), out);
  PutBlock(b, a.nRows(), 0, out);
  PutBlock(c, b.nCols(), b.nCols(), out);
}

}  // namespace vlm
