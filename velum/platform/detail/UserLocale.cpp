#include <velum/platform/detail/UserLocale.h>

#include <langinfo.h>
#include <locale.h>

#include <memory>
#include <type_traits>

namespace vlm::platform {

std::string UserDecimalPoint() {
  using Locale = std::remove_pointer_t<locale_t>;
  const std::unique_ptr<Locale, decltype(&::freelocale)> user(
      ::newlocale(LC_NUMERIC_MASK, "", locale_t{}), &::freelocale);
  return user ? ::nl_langinfo_l(RADIXCHAR, user.get()) : std::string();
}

}  // namespace vlm::platform
