#pragma once

/// \file
/// The encodings that the program converts between, by name.
///
///     const vlm::convert::Encoding russian = vlm::convert::FindEncoding("windows-1251");

#include <velum/files/TextEncoding.h>

#include <string>

namespace vlm::convert {

/// An encoding. A plain value.
struct Encoding {
  TextEncoding kind = EncodingUTF8;
  unsigned int page = 0;  ///< of `EncodingANSI`

  /// Its name: "UTF-16LE", "windows-1251", "Arabic (864)", "code page 4711".
  [[nodiscard]] std::string Name() const;
  /// True for one that has a byte order mark.
  [[nodiscard]] bool HasMark() const { return kind != EncodingANSI; }
};

/// Finds an encoding: "utf-8", "utf-16le", "utf-16be", the number of a code page, or its name, in
/// any case, as the internet or the list of code pages has it. "utf-16" has the low byte first.
///
/// *Errors*: `examples::UsageError` for a name of none, for a page that can't be converted, and for
/// EBCDIC, whose line ends are other bytes than those at which lines are told.
[[nodiscard]] Encoding FindEncoding(const std::string& name);

}  // namespace vlm::convert
