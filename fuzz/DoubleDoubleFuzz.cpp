// Any bytes read as a double-double number: what the text says as strtod has it, and a number that
// comes back when it is written and read again.

#include <velum/numerics/DoubleDouble.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>
#include <string>

namespace {

using vlm::doubledouble;

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Takes a sign and digits from `text` at `at`, with one point among them if that is allowed.
std::string TakeNumber(const std::string& text, std::size_t& at, bool mayHavePoint) {
  std::string number;
  while (at < text.size() && IsSpace(text[at])) ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) number += text[at++];
  for (; at < text.size(); ++at) {
    if (text[at] == '.' && mayHavePoint) {
      mayHavePoint = false;
    } else if (!IsDigit(text[at])) {
      break;
    }
    number += text[at];
  }
  return number;
}

// The number in the form that strtod takes.
std::string Usual(const std::string& text) {
  std::size_t at = 0;
  std::string number = TakeNumber(text, at, true);
  if (at < text.size() && (text[at] == 'd' || text[at] == 'D')) {
    const std::string exponent = TakeNumber(text, ++at, false);
    if (exponent.find_first_of("0123456789") != std::string::npos) number += "e" + exponent;
  }
  return number;
}

void Require(bool holds, const char* what, const std::string& text, const doubledouble& x) {
  if (holds) return;
  std::fprintf(stderr, "%s: %s gives %a %a\n", what, text.c_str(), x.hi, x.lo);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  text = text.c_str();  // up to the first terminator
  const doubledouble x = vlm::atodd(text.c_str());
  Require(!std::isnan(x.hi) && !std::isnan(x.lo), "no number", text, x);
  const double expected = std::strtod(Usual(text).c_str(), nullptr);
  if (std::isinf(x.hi) || std::isinf(expected)) {
    // Close to the end of the range the two may differ.
    Require(std::signbit(x.hi) == std::signbit(expected) && std::abs(x.hi) > 0x1.fffffffffffp1023 &&
                std::abs(expected) > 0x1.fffffffffffp1023,
            "out of range", text, x);
    return 0;
  }
  Require(std::abs(x.hi - expected) <= std::max(0x1p-51 * std::abs(expected), 0x1p-1073),
          "another number", text, x);
  Require(x.hi + x.lo == x.hi, "not normalised", text, x);

  std::ostringstream out;
  out << std::setprecision(static_cast<int>(size % 3) * 1000 + 35) << x;
  const doubledouble back = vlm::atodd(out.str().c_str());
  const bool isBack =
      std::isinf(back.hi)
          ? std::abs(x.hi) > 0x1.fffffffffffp1023
          : std::abs((back - x).hi) <= std::max(128 * 0x1p-106 * std::abs(x.hi), 0x1p-1073);
  Require(isBack, out.str().c_str(), text, x);
  return 0;
}
