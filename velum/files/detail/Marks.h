#pragma once

/// \file
/// The byte order marks.
///
///     const bool isMarked = bytes.starts_with(vlm::detail::MarkOf(vlm::EncodingUTF16LE));

#include <velum/files/TextEncoding.h>

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

}  // namespace vlm::detail
