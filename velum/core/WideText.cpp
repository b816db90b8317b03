#include <velum/core/WideText.h>

#include <velum/core/Exception.h>
#include <velum/core/StringFormat.h>
#include <velum/platform/detail/CodePages.h>

#include <cstdarg>
#include <cstring>
#include <memory>
#include <string_view>

namespace vlm {

namespace {

/// Converts a terminated text, null for null, in two steps: the size and the text, which must
/// agree.
template <class To, class From>
const To* Convert(const From* text, unsigned int codePage,
                  std::size_t (*convert)(std::basic_string_view<From>, unsigned int, To*)) {
  if (!text) return nullptr;
  const std::size_t size = convert(text, codePage, nullptr);
  std::unique_ptr<To[]> converted(new To[size + 1]);
  if (size > 0 && convert(text, codePage, converted.get()) != size) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  }
  converted[size] = To();
  return converted.release();
}

}  // namespace

AtoW::AtoW(const char* text, unsigned int codePage)
    : text_(Convert(text, codePage, platform::NarrowToWide)) {}

AtoW::AtoW(const std::string& text, unsigned int codePage) : AtoW(text.c_str(), codePage) {}

WtoA::WtoA(const wchar_t* text, unsigned int codePage)
    : text_(Convert(text, codePage, platform::WideToNarrow)) {}

AtoWV::AtoWV(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text;
  FormatStringVA(text, format, arguments);
  va_end(arguments);
  text_ = Convert(text.c_str(), 0, platform::NarrowToWide);
}

void WtoAArray::SetArray(const wchar_t* text) {
  const WtoA converted(text ? text : L"");
  const char* const narrow = converted;
  text_.assign(narrow, narrow + std::strlen(narrow) + 1);
}

}  // namespace vlm
