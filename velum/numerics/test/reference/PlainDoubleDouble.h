#pragma once

/// \file
/// Double-double arithmetic written out step by step in plain doubles, one statement a rounding. It
/// is compiled with contraction off; the library's operations must give the same bits.

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

namespace vlm::test {

struct Plain {
  double hi = 0;
  double lo = 0;
};

constexpr double kC = 134217729.0;

inline Plain QuickTwoSum(double a, double b) {
  const double s = a + b;
  const double e = a - s + b;
  return {s, e};
}

inline Plain TwoSum(double a, double b) {
  const double s = a + b;
  const double v = s - a;
  const double e = (b - v) + (a - (s - v));
  return {s, e};
}

inline Plain Split(double a) {
  const double t = a * kC;
  const double h = t - (t - a);
  return {h, a - h};
}

inline double TwoProductError(double a, double b, double p) {
  const auto [ah, al] = Split(a);
  const auto [bh, bl] = Split(b);
  return (ah * bl) + ((bh * ah) - p) + (bh * al) + (al * bl);
}

inline Plain Negate(Plain a) { return QuickTwoSum(-a.hi, -a.lo); }

inline Plain Add(Plain a, Plain b) {
  auto [s, e] = TwoSum(a.hi, b.hi);
  const auto [t, f] = TwoSum(a.lo, b.lo);
  const Plain middle = QuickTwoSum(s, e + t);
  return QuickTwoSum(middle.hi, middle.lo + f);
}

inline Plain Subtract(Plain a, Plain b) { return Add(a, Negate(b)); }

inline Plain Multiply(Plain a, Plain b) {
  const double p = a.hi * b.hi;
  const double e = TwoProductError(a.hi, b.hi, p) + (b.lo * a.hi + a.lo * b.hi);
  return QuickTwoSum(p, e);
}

inline Plain Divide(Plain a, Plain b) {
  const double q = a.hi / b.hi;
  const double p = b.hi * q;
  const double r = (a.hi - p) - TwoProductError(b.hi, q, p) + a.lo;
  const double d = (r - b.lo * q) / b.hi;
  const double hi = d + q;
  return {hi, q - hi + d};
}

inline Plain Recip(Plain x) {
  const Plain q = Divide({1, 0}, x);
  return QuickTwoSum(q.hi, q.lo);
}

inline Plain SquareOnce(Plain x) {
  const double p = x.hi * x.hi;
  const auto [h, l] = Split(x.hi);
  const double e = l * l + (h * h - p + 2 * h * l) + 2 * x.hi * x.lo;
  return QuickTwoSum(p, e);
}

inline Plain Square(Plain x) {
  const Plain once = SquareOnce(x);
  return QuickTwoSum(once.hi, once.lo);
}

inline Plain Sqrt(Plain x) {
  if (x.hi == 0) return {};
  const double y = std::sqrt(x.hi);
  const double u = kC * y;
  const double h = u + (y - u);
  const double l = y - h;
  const double hh = h * h;
  const double hl2 = 2 * (h * l);
  const double p = hl2 + hh;
  const double d = ((x.hi - p) - (l * l + (hl2 + (hh - p))) + x.lo) / (y + y);
  const Plain once = QuickTwoSum(y, d);
  return QuickTwoSum(once.hi, once.lo);
}

inline Plain Floor(Plain x) {
  const double f = std::floor(x.hi);
  if (f != x.hi) return {f, 0};
  const Plain once = QuickTwoSum(f, std::floor(x.lo));
  return QuickTwoSum(once.hi, once.lo);
}

inline Plain Normalize(Plain x) {
  const Plain once = QuickTwoSum(x.hi, x.lo);
  const double hi = once.lo + once.hi;
  return {hi, once.hi - hi + once.lo};
}

inline Plain MultiplyDoubles(double a, double b) {
  const double p = a * b;
  const Plain once = QuickTwoSum(p, TwoProductError(a, b, p));
  return QuickTwoSum(once.hi, once.lo);
}

inline Plain Pow(Plain x, int n) {
  Plain r{1, 0};
  for (int m = std::abs(n); m != 0; m /= 2) {
    if (m % 2 == 1) r = Multiply(r, x);
    x = SquareOnce(x);
  }
  return n > 0 ? r : Recip(r);
}

inline Plain Hypot(Plain a, Plain b) {
  Plain p = a.hi < 0 ? Negate(a) : a;
  Plain q = b.hi < 0 ? Negate(b) : b;
  if (p.hi < q.hi || (p.hi == q.hi && p.lo < q.lo)) std::swap(p, q);
  if (q.hi == 0) return p;
  for (;;) {
    Plain r = Square(Divide(q, p));
    const Plain s = Add(r, {4, 0});
    if (s.hi == 4 && s.lo == 0) return p;
    r = Divide(r, s);
    p = Add(p, Multiply(Multiply({2, 0}, r), p));
    q = Multiply(q, r);
  }
}

// For exponents that stay inside the range of products; the exponent letter is "d".
inline Plain Read(const char* text) {
  const bool isNegative = *text == '-';
  text += *text == '-' || *text == '+';
  Plain acc;
  int e = 0;
  bool isFraction = false;
  for (; (*text >= '0' && *text <= '9') || *text == '.'; ++text) {
    if (*text == '.') {
      isFraction = true;
      continue;
    }
    acc = Add(Multiply(acc, {10, 0}), {static_cast<double>(*text - '0'), 0});
    e -= isFraction ? 1 : 0;
  }
  if (*text == 'd') e += std::atoi(text + 1);
  for (; e > 0; --e) acc = Multiply(acc, {10, 0});
  for (; e < 0; ++e) acc = Divide(acc, {10, 0});
  return isNegative ? Negate(acc) : acc;
}

// The digits of a positive number without its exponent.
inline std::string Digits(Plain x, int precision) {
  const int e = static_cast<int>(std::floor(std::log10(x.hi)));
  Plain y = Divide(x, Pow({10, 0}, e));
  std::string text;
  for (int i = 1; i <= precision && y.hi > 0; ++i) {
    if (i == 2) text += '.';
    const int d = static_cast<int>(Floor(y).hi);
    text += std::to_string(d);
    y = Multiply(Subtract(y, {static_cast<double>(d), 0}), {10, 0});
  }
  return text;
}

}  // namespace vlm::test
