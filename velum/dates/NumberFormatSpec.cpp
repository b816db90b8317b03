#include <velum/dates/NumberFormatSpec.h>

#include <velum/core/StringFormat.h>

namespace vlm {

void NumberFormatSpec::SetType(Type type) noexcept {
  if (type == Exponential || type == Fixed || type == General) {
    type_ = type;
  }
}

GString NumberFormatSpec::GetFormat() const {
  const char* const form = type_ == Exponential ? "%%.%de" : type_ == Fixed ? "%%.%df" : "%%.%dg";
  GString format;
  FormatString(format, form, static_cast<int>(digits_));
  return format;
}

}  // namespace vlm
