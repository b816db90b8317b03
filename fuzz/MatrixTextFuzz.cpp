// Reads any bytes as a matrix and as a vector, and holds both against a reader that splits by hand.
// What was read must come back from what is written of it.
#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <boost/lexical_cast.hpp>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Row = std::vector<double>;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

std::vector<std::string> Split(const std::string& text, const char* separators) {
  std::vector<std::string> parts;
  for (std::size_t end = 0; end != std::string::npos;) {
    const std::size_t begin = text.find_first_not_of(separators, end);
    if (begin == std::string::npos) break;
    end = text.find_first_of(separators, begin);
    parts.push_back(text.substr(begin, end - begin));
  }
  return parts;
}

// Nothing if a token is no number. This program's locale has the point.
std::optional<Row> Numbers(const std::string& text, const char* separators) {
  Row row;
  for (const std::string& token : Split(text, separators)) {
    double number;
    if (!boost::conversion::try_lexical_convert(token, number)) return std::nullopt;
    row.push_back(number);
  }
  return row;
}

bool Same(double x, double y) {
  return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y) ||
         (std::isnan(x) && std::isnan(y));
}

template <class Run>
bool Read(Run& run, const std::string& text) {
  try {
    vlm::Initialize(run, text);
    return true;
  } catch (const boost::bad_lexical_cast&) {
    return false;
  }
}

// Behind the size and the first line's end stand numbers and blanks, and the ends of rows.
template <class Run>
std::string WrittenAsText(const Run& run) {
  std::ostringstream stream;
  stream << std::setprecision(17) << run;
  std::string text = stream.str();
  text.erase(0, text.find('\n'));
  std::replace(text.begin(), text.end(), ' ', ',');
  std::replace(text.begin(), text.end(), '\n', ';');
  return text;
}

void CheckVector(const std::string& text) {
  const std::optional<Row> expected = Numbers(text, ",;");
  vlm::RVector v;
  Require(Read(v, text) == expected.has_value(), "a vector is read if its tokens are numbers");
  if (!expected) return;
  Require(std::equal(v.begin(), v.end(), expected->begin(), expected->end(), Same), "its numbers");
  vlm::RVector again;
  Require(Read(again, WrittenAsText(v)), "what is written is read");
  Require(std::equal(v.begin(), v.end(), again.begin(), again.end(), Same), "and is the same");
}

void CheckMatrix(const std::string& text) {
  std::vector<Row> rows;
  std::size_t cols = 0;
  bool isRead = true;
  for (const std::string& row : Split(text, ";")) {
    const std::optional<Row> numbers = Numbers(row, ",");
    isRead = isRead && numbers;
    if (numbers) cols = std::max(cols, numbers->size());
    rows.push_back(numbers.value_or(Row()));
  }
  vlm::RMatrix a;
  Require(Read(a, text) == isRead, "a matrix is read if its tokens are numbers");
  if (!isRead) return;
  Require(a.nCols() == cols && a.nRows() == (cols == 0 ? 0 : rows.size()), "its size");
  for (unsigned i = 0; i < a.nRows(); ++i) {
    Row& row = rows[i];
    row.resize(cols);
    Require(std::equal(row.begin(), row.end(), a.Base(i, 0), Same), "its numbers");
  }
  vlm::RMatrix again;
  Require(Read(again, WrittenAsText(a)), "what is written is read");
  Require(a.nCols() == again.nCols() &&
              std::equal(a.begin(), a.end(), again.begin(), again.end(), Same),
          "and is the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A matrix takes the square of its text's length.
  const std::string text(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 2048));
  CheckVector(text);
  CheckMatrix(text);
  return 0;
}
