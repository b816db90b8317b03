#include <velum/files/FilenameCompare.h>

#include <velum/files/detail/PathText.h>
#include <velum/platform/detail/Ascii.h>

#include <algorithm>
#include <cstdint>
#include <tuple>

namespace vlm {

namespace {

using platform::IsDigit;

/// A byte's rank: folded, and those above 127 behind all others.
unsigned char Rank(char c) { return static_cast<unsigned char>(detail::FoldAscii(c)); }

/// Reads a number and steps over its digits.
std::int64_t TakeNumber(const char*& at) {
  constexpr std::int64_t kLargest = INT32_MAX;
  std::int64_t number = 0;
  for (; IsDigit(*at); ++at) {
    if (number <= kLargest) number = number * 10 + (*at - '0');
  }
  return number < kLargest ? number : kLargest;
}

/// Compares the numbers whose digits, none of them a leading zero, begin or go on in two terminated
/// texts: below, at or above 0. Steps over the digits.
int CompareDigits(const char*& left, const char*& right) {
  int order = 0;  // Of the first digits that differ: it decides between numbers of the same length.
  for (; IsDigit(*left) && IsDigit(*right); ++left, ++right) {
    if (order == 0) order = *left - *right;
  }
  return IsDigit(*left) ? 1 : IsDigit(*right) ? -1 : order;
}

}  // namespace

bool FilenameCompare(const GString& a, const GString& b) noexcept {
  const char* left = a.c_str();
  const char* right = b.c_str();
  for (;;) {
    if (Rank(*left) == Rank(*right)) {
      if (!*left) return false;
      ++left;
      ++right;
    } else if (IsDigit(*left) && IsDigit(*right)) {
      const std::int64_t leftNumber = TakeNumber(left);
      const std::int64_t rightNumber = TakeNumber(right);
      if (leftNumber != rightNumber) return leftNumber < rightNumber;
    } else {
      return Rank(*left) < Rank(*right);
    }
  }
}

bool CFilenameCompare::operator()(const std::string& a, const std::string& b) const noexcept {
  const char* left = a.c_str();
  const char* right = b.c_str();
  const char* const leftEnd = left + a.size();
  const char* const rightEnd = right + b.size();
  // Names in one folder begin alike. What they share is passed over, but for the zeros of numbers
  // that differ behind them.
  std::tie(left, right) = std::mismatch(left, leftEnd, right, rightEnd);
  if (IsDigit(*left) || IsDigit(*right)) {
    const char* number = left;
    while (number != a.c_str() && IsDigit(number[-1])) --number;
    if (std::any_of(number, left, [](char c) { return c != '0'; })) {
      return CompareDigits(left, right) < 0;
    }
    right -= left - number;
    left = number;
  }
  while (left != leftEnd && right != rightEnd) {
    if (IsDigit(*left) && IsDigit(*right)) {
      while (*left == '0') ++left;
      while (*right == '0') ++right;
      const int order = CompareDigits(left, right);
      if (order != 0) return order < 0;
    } else if (*left == *right || Rank(*left) == Rank(*right)) {
      ++left;
      ++right;
    } else {
      return Rank(*left) < Rank(*right);
    }
  }
  if (left != leftEnd || right != rightEnd) return left == leftEnd;
  return a < b;
}

}  // namespace vlm
