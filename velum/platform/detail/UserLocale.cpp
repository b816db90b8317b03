#include <velum/platform/detail/UserLocale.h>

#include <langinfo.h>
#include <locale.h>
#include <stdlib.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace vlm::platform {

namespace {

/// The name of the user's locale for numbers; that of the plain one if none is named.
std::string_view UserLocaleName() {
  for (const char* const variable : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
    const char* const name = ::getenv(variable);
    if (name && *name) return name;
  }
  return "C";
}

}  // namespace

std::string UserDecimalPoint() {
  const std::string_view name = UserLocaleName();
  if (name == "C" || name == "POSIX" || name.substr(0, 2) == "C.") return ".";
  using Locale = std::remove_pointer_t<locale_t>;
  const std::unique_ptr<Locale, decltype(&::freelocale)> user(
      ::newlocale(LC_NUMERIC_MASK, "", locale_t{}), &::freelocale);
  return user ? ::nl_langinfo_l(RADIXCHAR, user.get()) : std::string();
}

}  // namespace vlm::platform
