#pragma once

/// \file
/// Numbers read and written with the point, whatever locale the application has set.
///
///     const vlm::platform::PlainLocale plain;
///     const double number = std::strtod("2.5", nullptr);

#include <locale.h>

namespace vlm::platform {

/// Gives the calling thread the C locale until the end of the scope; other threads keep theirs.
class PlainLocale {
 public:
  PlainLocale() noexcept : before_(::uselocale(Plain())) {}
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;
  ~PlainLocale() { ::uselocale(before_); }

 private:
  /// The C locale, which is part of the runtime: it needs no memory and lives for ever.
  static locale_t Plain() noexcept {
    static const locale_t plain = ::newlocale(LC_ALL_MASK, "C", locale_t{});
    return plain;
  }

  locale_t before_;
};

}  // namespace vlm::platform
