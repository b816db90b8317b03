#include <examples/convert/ByteCells.h>

#include <velum/core/StringFormat.h>
#include <velum/core/WideText.h>

#include <algorithm>

namespace vlm::convert {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr std::size_t kLongest = 4;  // bytes of a character

/// A character at the head of bytes. A plain value.
struct Head {
  std::wstring text;
  std::size_t length = 1;
  bool isSound = true;
};

int ByteAt(std::string_view bytes, std::size_t i) { return static_cast<unsigned char>(bytes[i]); }

Head HeadOfUtf16(std::string_view bytes, bool highFirst) {
  const auto unit = [&](std::size_t i) {
    const int first = ByteAt(bytes, 2 * i);
    const int second = ByteAt(bytes, 2 * i + 1);
    return static_cast<wchar_t>(highFirst ? first << 8 | second : second << 8 | first);
  };
  if (bytes.size() < 2) return {L"", 1, false};
  const wchar_t first = unit(0);
  if (first < 0xD800 || first > 0xDFFF) return {std::wstring(1, first), 2, true};
  const wchar_t second = bytes.size() < 4 ? L'\0' : unit(1);
  const bool isPair = first < 0xDC00 && second >= 0xDC00 && second <= 0xDFFF;
  if (!isPair) return {L"", 2, false};
  return {{first, second}, 4, true};
}

// The shortest run of bytes that is a character of a page.
Head HeadOfPage(std::string_view bytes, unsigned int page) {
  if (bytes[0] == '\0') return {std::wstring(1, L'\0'), 1, true};
  for (std::size_t length = 1; length <= std::min(kLongest, bytes.size()); ++length) {
    const AtoW wide(std::string(bytes.substr(0, length)), page);
    const std::wstring text = static_cast<const wchar_t*>(wide);
    if (!text.empty() && text.find(kReplacement) == std::wstring::npos) return {text, length, true};
  }
  return {L"", 1, false};
}

Head HeadOf(std::string_view bytes, const Encoding& encoding) {
  constexpr unsigned int kUtf8Page = 65001;
  switch (encoding.kind) {
    case EncodingUTF16LE:
      return HeadOfUtf16(bytes, false);
    case EncodingUTF16BE:
      return HeadOfUtf16(bytes, true);
    case EncodingUTF8:
      if (bytes.starts_with("\xEF\xBF\xBD")) return {std::wstring(1, kReplacement), 3, true};
      return HeadOfPage(bytes, kUtf8Page);
    default:
      return HeadOfPage(bytes, encoding.page);
  }
}

std::string TextOf(const std::wstring& text) {
  const wchar_t code = text[0];
  switch (code) {
    case L'\0':
      return "NUL";
    case L'\t':
      return "TAB";
    case L'\n':
      return "LF";
    case L'\r':
      return "CR";
    case L' ':
      return "SP";
    default:
      break;
  }
  if (code < 0x20 || code == 0x7F) return ToString("^%c", static_cast<int>(code) ^ 0x40);
  return static_cast<const char*>(WtoA(text.c_str()));
}

ByteClass ClassOf(const Head& head, std::string_view bytes, std::size_t i) {
  if (!head.isSound) return ByteClass::Malformed;
  const wchar_t code = head.text[0];
  if (bytes[i] == '\0' && (code == 0 || code < 0x80)) return ByteClass::Zero;
  if (code == L'\n' || code == L'\r') return ByteClass::LineEnd;
  if (code < 0x80) return ByteClass::Ascii;
  if (head.text.size() > 1) return ByteClass::Pair;
  return i == 0 ? ByteClass::First : ByteClass::Further;
}

}  // namespace

const char* InWords(ByteClass byteClass) {
  switch (byteClass) {
    case ByteClass::Mark:
      return "byte order mark";
    case ByteClass::Ascii:
      return "ASCII";
    case ByteClass::First:
      return "first byte of a character";
    case ByteClass::Further:
      return "its further bytes";
    case ByteClass::Pair:
      return "character above U+FFFF";
    case ByteClass::LineEnd:
      return "line end";
    case ByteClass::Zero:
      return "zero";
    default:
      return "malformed";
  }
}

std::vector<ByteCell> CellsOf(std::string_view bytes, const Encoding& encoding,
                              unsigned int markSize) {
  std::vector<ByteCell> cells;
  const auto put = [&](std::size_t length, const std::string& text, auto classOf) {
    for (std::size_t i = 0; i < length; ++i) {
      ByteCell cell;
      cell.byte = static_cast<unsigned char>(bytes[i]);
      cell.byteClass = classOf(i);
      if (i == 0) {
        cell.text = text;
        cell.length = length;
      }
      cells.push_back(cell);
    }
    bytes.remove_prefix(length);
  };
  const std::size_t mark = std::min<std::size_t>(markSize, bytes.size());
  if (mark > 0) put(mark, "mark", [](std::size_t) { return ByteClass::Mark; });
  while (!bytes.empty()) {
    const Head head = HeadOf(bytes, encoding);
    const std::string_view at = bytes;
    put(head.length, head.isSound ? TextOf(head.text) : "\xEF\xBF\xBD",
        [&](std::size_t i) { return ClassOf(head, at, i); });
  }
  return cells;
}

}  // namespace vlm::convert
