#include <velum/dates/NumberFormatSpec.h>

#include <velum/core/StringFormat.h>

namespace vlm {

void NumberFormatSpec::SetType(Type type) noexcept {
  if (type == Exponential || type == Fixed || type == General) {
    type_ = type;
  }
}

GString NumberFormatSpec::GetFormat() const {
  const char* const form = type_ == Exponential ? "%%.%ue" : type_ == Fixed ? "%%.%uf" : "%%.%ug";
  GString format;
  FormatString(format, form, digits_);
  return format;
}

}  // namespace vlm
