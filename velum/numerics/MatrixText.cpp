#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <boost/lexical_cast.hpp>
#include <boost/tokenizer.hpp>

#include <algorithm>
#include <cstddef>
#include <istream>
#include <limits>
#include <locale>
#include <new>
#include <ostream>
#include <string>
#include <typeinfo>

namespace vlm {

namespace {

using Separators = boost::char_separator<char>;
using Tokens = boost::tokenizer<Separators>;

// A number of digits as lexical_cast reads it, but with the point whatever the locale.
struct PlainNumber {
  double value;

  friend std::istream& operator>>(std::istream& stream, PlainNumber& number) {
    stream.imbue(std::locale::classic());
    return stream >> number.value;
  }
};

double ToNumber(const std::string& token) {
  // Infinity and NaN are words, the same in every locale.
  if (token.find_first_of("nN") != std::string::npos) return boost::lexical_cast<double>(token);
  PlainNumber number;
  if (token.find_first_not_of("0123456789+-.eE") != std::string::npos ||
      !boost::conversion::try_lexical_convert(token, number)) {
    throw boost::bad_lexical_cast(typeid(std::string), typeid(double));
  }
  return number.value;
}

std::size_t Count(const Tokens& tokens) {
  std::size_t count = 0;
  for (auto token = tokens.begin(); token != tokens.end(); ++token) ++count;
  return count;
}

unsigned ToSize(std::size_t count) {
  if (count > std::numeric_limits<unsigned>::max()) throw std::bad_alloc();
  return static_cast<unsigned>(count);
}

void WriteElements(std::ostream& stream, std::streamsize width, const double* first,
                   const double* last) {
  for (const double* element = first; element != last; ++element) {
    if (width == 0 && element != first) stream << ' ';
    stream.width(width);
    stream << *element;
  }
  stream << '\n';
}

}  // namespace

void Initialize(RVector& v, const std::string& text) {
  const Tokens tokens(text, Separators(";,"));
  v.Resize(ToSize(Count(tokens)));
  double* out = v.begin();
  for (const std::string& token : tokens) *out++ = ToNumber(token);
}

void Initialize(RMatrix& a, const std::string& text) {
  const Tokens rows(text, Separators(";"));
  const Separators comma(",");
  std::size_t cols = 0;
  for (const std::string& row : rows) cols = std::max(cols, Count(Tokens(row, comma)));
  a.Resize(ToSize(Count(rows)), ToSize(cols));
  Fill(a, 0);
  unsigned i = 0;
  for (const std::string& row : rows) {
    unsigned j = 0;
    for (const std::string& token : Tokens(row, comma)) a(i, j++) = ToNumber(token);
    ++i;
  }
}

std::ostream& operator<<(std::ostream& stream, const RVector& v) {
  const std::streamsize width = stream.width(0);
  stream << '[' << v.Length() << "]\n";
  WriteElements(stream, width, v.begin(), v.end());
  return stream;
}

std::ostream& operator<<(std::ostream& stream, const RMatrix& m) {
  const std::streamsize width = stream.width(0);
  stream << '[' << m.nRows() << ',' << m.nCols() << "]\n";
  for (unsigned i = 0; i < m.nRows(); ++i) {
    WriteElements(stream, width, m.Base(i, 0), m.Base(i, 0) + m.nCols());
  }
  return stream;
}

}  // namespace vlm
