#pragma once

/// \file
/// The first bytes of a text file, each with what it is and the character that it belongs to.
///
///     const auto cells = vlm::convert::CellsOf("\xC3\xBC\n", {vlm::EncodingUTF8, 0}, 0);
///     // First "ü" of 2 bytes, Further, LineEnd

#include <examples/convert/Encodings.h>

#include <string>
#include <string_view>
#include <vector>

namespace vlm::convert {

/// What a byte is.
enum class ByteClass { Mark, Ascii, First, Further, Pair, LineEnd, Zero, Malformed };

/// How many classes there are.
inline constexpr int kByteClasses = 8;

/// A class in words.
[[nodiscard]] const char* InWords(ByteClass byteClass);

/// A byte. A plain value.
struct ByteCell {
  unsigned char byte = 0;
  ByteClass byteClass = ByteClass::Ascii;
  std::string text;        ///< of the character, at its first byte: UTF-8, or "LF" and the like
  std::size_t length = 0;  ///< of the character in bytes, at its first byte; 0 at the others
};

/// Takes bytes apart. A character that the end cuts is malformed.
///
/// A page with switches has no characters that stand alone; its bytes are taken one by one.
[[nodiscard]] std::vector<ByteCell> CellsOf(std::string_view bytes, const Encoding& encoding,
                                            unsigned int markSize);

}  // namespace vlm::convert
