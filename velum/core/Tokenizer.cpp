#include <velum/core/Tokenizer.h>

#include <velum/core/detail/FieldScan.h>

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace vlm {

using detail::SkipComma;
using detail::SkipSpace;

CTokenizer::Status CTokenizer::Parse(GString& token, bool allowQuotes) {
  token.clear();
  if (!position_) return TokenEnd;
  position_ = SkipSpace(position_);
  if (!*position_) return TokenEnd;

  const auto store = [&token](char c) { token += c; };
  if (allowQuotes && *position_ == '"') {
    position_ = detail::ScanQuoted(position_, store);
    if (!*position_) return TokenError;
    ++position_;
  } else if (*position_ == ',') {
    ++position_;
    return TokenEmpty;
  } else {
    position_ = detail::ScanPlain(position_, store);
  }
  position_ = SkipComma(SkipSpace(position_));
  return TokenOK;
}

template <class Number, class Convert>
CTokenizer::Status CTokenizer::ParseNumber(Number& value, Convert convert) {
  const char* const before = position_;
  GString token;
  const Status status = Parse(token, false);
  if (status != TokenOK) return status;
  char* end = nullptr;
  const Number number = convert(token.c_str(), &end);
  if (end == token.c_str()) {
    position_ = before;
    return TokenError;
  }
  value = number;
  return TokenOK;
}

CTokenizer::Status CTokenizer::Parse(int& value) {
  return ParseNumber(value, [](const char* text, char** end) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<long>(std::strtol(text, end, 10), Limits::min(), Limits::max()));
  });
}

CTokenizer::Status CTokenizer::Parse(double& value) {
  return ParseNumber(value, [](const char* text, char** end) { return std::strtod(text, end); });
}

CTokenizer::Status CTokenizer::Parse(bool& value) {
  int number = 0;
  const Status status = Parse(number);
  if (status == TokenOK) value = number != 0;
  return status;
}

}  // namespace vlm
