#pragma once

/// \file
/// The byte order marks.
///
///     const vlm::TextEncoding encoding = vlm::detail::MarkedEncoding(bytes);
///     bytes.remove_prefix(vlm::detail::MarkOf(encoding).size());

#include <velum/files/TextEncoding.h>

#include <initializer_list>
#include <string_view>

namespace vlm::detail {

/// The bytes that a text in an encoding may begin with; none for `EncodingANSI`.
constexpr std::string_view MarkOf(TextEncoding encoding) noexcept {
  switch (encoding) {
    case EncodingUTF8:
      return "\xEF\xBB\xBF";
    case EncodingUTF16LE:
      return "\xFF\xFE";
    case EncodingUTF16BE:
      return "\xFE\xFF";
    default:
      return {};
  }
}

/// The encoding whose mark the bytes of a text begin with; `EncodingANSI` for none.
constexpr TextEncoding MarkedEncoding(std::string_view bytes) noexcept {
  for (const TextEncoding encoding : {EncodingUTF8, EncodingUTF16LE, EncodingUTF16BE}) {
    if (bytes.starts_with(MarkOf(encoding))) return encoding;
  }
  return EncodingANSI;
}

}  // namespace vlm::detail
