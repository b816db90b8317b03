#include <velum/mathtext/detail/RealText.h>

#include <charconv>
#include <cmath>
#include <limits>
#ifndef __cpp_lib_to_chars
#include <locale>
#include <sstream>
#include <string>
#include <system_error>
#endif

namespace vlm::detail {
namespace {

bool SkipSign(const char*& first) {
  const bool negative = *first == '-';
  if (negative || *first == '+') ++first;
  return negative;
}

// Tells numbers that are too small from those that are too large, by the power of ten of the first
// digit that isn't 0.
bool IsBelowOne(const char* first, const char* last) {
  long long power = 0;
  bool significant = false;
  bool point = false;
  for (; first != last && *first != 'e' && *first != 'E'; ++first) {
    if (*first == '.') {
      point = true;
      continue;
    }
    significant = significant || *first != '0';
    if (significant && !point) ++power;
    if (!significant && point) --power;
  }
  if (!significant) return true;
  if (first == last || ++first == last) return power <= 0;
  const bool negative = SkipSign(first);
  constexpr long long kEnough = 1'000'000'000'000'000;
  long long exponent = 0;
  for (; first != last && exponent < kEnough; ++first) exponent = exponent * 10 + (*first - '0');
  return power + (negative ? -exponent : exponent) <= 0;
}

}  // namespace

bool ReadReal(const char* first, const char* last, double& value) {
  const bool negative = SkipSign(first);
  double magnitude = 0.0;
#ifdef __cpp_lib_to_chars
  if (std::from_chars(first, last, magnitude).ec == std::errc::result_out_of_range) {
    if (!IsBelowOne(first, last)) return false;
    magnitude = 0.0;
  }
#else
  std::istringstream stream(std::string(first, last));
  stream.imbue(std::locale::classic());
  stream >> magnitude;
  if (IsBelowOne(first, last)) {
    if (!(magnitude < 1.0)) magnitude = 0.0;
  } else if (stream.fail() || std::isinf(magnitude)) {
    return false;
  }
#endif
  value = negative ? -magnitude : magnitude;
  return true;
}

double ReadRealWord(const char* word) {
  const bool negative = SkipSign(word);
  const double value = *word == 'n' || *word == 'N' ? std::numeric_limits<double>::quiet_NaN()
                                                    : std::numeric_limits<double>::infinity();
  return negative ? -value : value;
}

}  // namespace vlm::detail
