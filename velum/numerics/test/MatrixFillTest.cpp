#include <velum/numerics/MatrixFill.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <boost/lexical_cast.hpp>

#include <iomanip>
#include <locale>
#include <new>
#include <sstream>
#include <string>
#include <vector>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;

RMatrix Rows(unsigned rows, unsigned cols, const std::vector<double>& elements) {
  RMatrix a;
  Initialize(a, rows, cols, elements.data());
  return a;
}

template <class Run>
std::string Written(const Run& run, int width = 0) {
  std::ostringstream stream;
  stream << std::setw(width) << run;
  return stream.str();
}

TEST(MatrixFill, SetsElementsAndSizes) {
  RMatrix a = MatrixOf("5,5;5,5");
  Fill(a, 2);
  EXPECT_TRUE(SameBits(Rows(2, 2, {2, 2, 2, 2}), a));
  Ones(a, 1, 2);
  EXPECT_TRUE(SameBits(Rows(1, 2, {1, 1}), a));
  Zeros(a, 2, 1);
  EXPECT_TRUE(SameBits(Rows(2, 1, {0, 0}), a));
  Eye(a, 2, 3);
  EXPECT_TRUE(SameBits(Rows(2, 3, {1, 0, 0, 0, 1, 0}), a));
  Eye(a, 3, 2);
  EXPECT_TRUE(SameBits(Rows(3, 2, {1, 0, 0, 1, 0, 0}), a));
  Eye(a, 0, 3);
  EXPECT_TRUE(a.empty());
  Initialize(a, 4, 0, nullptr);
  EXPECT_TRUE(a.empty());

  RVector v;
  Fill(v, 3);
  EXPECT_TRUE(v.empty());
  Unit(v, 3, 1);
  EXPECT_TRUE(v(0) == 0 && v(1) == 1 && v(2) == 0);
  Ones(v, 2);
  EXPECT_TRUE(v.Length() == 2 && v(0) == 1 && v(1) == 1);
  Zeros(v, 1);
  EXPECT_TRUE(v.Length() == 1 && v(0) == 0);
  const double elements[] = {4, 5};
  Initialize(v, 2, elements);
  EXPECT_TRUE(v.Length() == 2 && v(0) == 4 && v(1) == 5);
}

TEST(MatrixText, RowsAreReadAndFilledUpWithZeros) {
  const struct {
    const char* text;
    RMatrix matrix;
    const char* why;
  } rows[] = {
      {"1,2;3,4,5", Rows(2, 3, {1, 2, 0, 3, 4, 5}), "a short row ends in zeros"},
      {"1,2;3", Rows(2, 2, {1, 2, 3, 0}), "a short last row"},
      {"", RMatrix(), "no text"},
      {";;", RMatrix(), "no row"},
      {",,", RMatrix(), "a row without an element"},
      {"1,,2", Rows(1, 2, {1, 2}), "missing elements leave no gap"},
      {";1;;2;", Rows(2, 1, {1, 2}), "nor do missing rows"},
      {",;1,2", Rows(2, 2, {0, 0, 1, 2}), "but a row of nothing but commas is one"},
      {"+1.5,-.5,5.,1e3", Rows(1, 4, {1.5, -0.5, 5, 1000}), "forms of numbers"},
      {"1E-2,-0,1e-400", Rows(1, 3, {0.01, -0.0, 0}), "what is too small is 0"},
      {"inf,-Infinity,NaN", Rows(1, 3, {INFINITY, -INFINITY, NAN}), "words"},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(SameBits(row.matrix, MatrixOf(row.text))) << row.why;
  }
}

TEST(MatrixText, VectorsTakeBothSeparators) {
  RVector v;
  for (const char* text : {"1,2;3", "1;2;3", ";,1,;2,3;"}) {
    Initialize(v, text);
    EXPECT_EQ(Written(v), "[3]\n1 2 3\n") << text;
  }
  Initialize(v, ";,");
  EXPECT_TRUE(v.empty());
}

TEST(MatrixText, WhatIsNoNumberIsRefusedWithTheElementsBeforeIt) {
  const std::string tokens[] = {
      " 2", "2 ", "\t2",   "0x10", "1e",      "1e400", "--1",
      "e",  "1f", "1.2.3", "1d5",  "infinit", "n",     std::string("2\0", 2)};
  for (const std::string& token : tokens) {
    RVector v;
    RMatrix a;
    try {
      Initialize(v, "7," + token + ",8");
      ADD_FAILURE() << "read: '" << token << "'";
    } catch (const boost::bad_lexical_cast& error) {
      EXPECT_STREQ(error.what(),
                   "bad lexical cast: source type value could not be interpreted as target");
    }
    EXPECT_EQ(v.Length(), 3u);
    EXPECT_EQ(v(0), 7);
    EXPECT_THROW(Initialize(a, "7;" + token + ",8"), boost::bad_lexical_cast);
    EXPECT_TRUE(SameBits(Rows(2, 2, {7, 0, 0, 0}), a)) << token;
  }
}

TEST(MatrixText, TooManyElementsForOneMatrixAreRefused) {
  std::string text(60000, ',');
  for (std::size_t i = 0; i < text.size(); i += 2) text[i] = '1';
  for (int i = 0; i < 30000; ++i) text += ";1";
  RMatrix a = MatrixOf("1");
  EXPECT_THROW(Initialize(a, text), std::bad_alloc) << "30001 rows of 30000";
  EXPECT_TRUE(SameBits(MatrixOf("1"), a));
}

class CommaForPoint : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(MatrixText, HasThePointWhateverTheLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new CommaForPoint));
  EXPECT_NO_THROW(
      EXPECT_TRUE(SameBits(Rows(1, 3, {1.5, 1234.5, INFINITY}), MatrixOf("1.5,1234.5,inf"))));
  std::locale::global(before);
}

TEST(MatrixText, IsWrittenRowByRowInTheStreamsFormat) {
  const struct {
    RMatrix matrix;
    int width;
    const char* text;
  } rows[] = {
      {MatrixOf("1,0;0,1"), 0, "[2,2]\n1 0\n0 1\n"},
      {MatrixOf("1,0;0,1"), 3, "[2,2]\n  1  0\n  0  1\n"},
      {MatrixOf("0.25,123456789"), 2, "[1,2]\n0.251.23457e+08\n"},
      {RMatrix(), 0, "[0,0]\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(Written(row.matrix, row.width), row.text);
  RVector v;
  EXPECT_EQ(Written(v), "[0]\n\n");
  Ones(v, 2);
  EXPECT_EQ(Written(v), "[2]\n1 1\n");
  EXPECT_EQ(Written(v, 4), "[2]\n   1   1\n");

  std::ostringstream stream;
  stream << std::fixed << std::setprecision(2) << std::setw(6) << v << 7;
  EXPECT_EQ(stream.str(), "[2]\n  1.00  1.00\n7") << "the width is used up";
}

}  // namespace
}  // namespace vlm
