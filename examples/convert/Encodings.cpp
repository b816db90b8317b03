#include <examples/convert/Encodings.h>

#include <velum/core/StringCompare.h>
#include <velum/core/StringConvert.h>
#include <velum/core/WideText.h>
#include <velum/files/CodePageInfo.h>
#include <examples/common/Program.h>

#include <optional>

namespace vlm::convert {
namespace {

constexpr struct {
  const char* name;
  unsigned int page;
} kNames[] = {
    {"utf-8", 65001},       {"utf8", 65001},        {"utf-16", 1200},       {"utf-16le", 1200},
    {"utf-16be", 1201},     {"windows-1250", 1250}, {"windows-1251", 1251}, {"windows-1252", 1252},
    {"windows-1253", 1253}, {"windows-1254", 1254}, {"windows-1255", 1255}, {"windows-1256", 1256},
    {"windows-1257", 1257}, {"windows-1258", 1258}, {"windows-874", 874},   {"iso-8859-1", 28591},
    {"iso-8859-2", 28592},  {"iso-8859-3", 28593},  {"iso-8859-4", 28594},  {"iso-8859-5", 28595},
    {"iso-8859-6", 28596},  {"iso-8859-7", 28597},  {"iso-8859-8", 28598},  {"iso-8859-9", 28599},
    {"iso-8859-13", 28603}, {"iso-8859-15", 28605}, {"latin1", 28591},      {"koi8-r", 20866},
    {"koi8-u", 21866},      {"shift_jis", 932},     {"euc-jp", 51932},      {"iso-2022-jp", 50220},
    {"euc-kr", 51949},      {"big5", 950},          {"gbk", 936},           {"gb2312", 936},
    {"gb18030", 54936},     {"macintosh", 10000},   {"us-ascii", 20127},    {"ibm437", 437},
    {"ibm850", 850},        {"ibm866", 866},        {"utf-7", 65000},
};

bool IsSame(const std::string& a, const char* b) { return StringEquivalent()(a, std::string(b)); }

std::optional<unsigned int> PageOf(const std::string& name) {
  unsigned int page = 0;
  if (StringToUnsigned(name, page)) return page;
  for (const auto& row : kNames) {
    if (IsSame(name, row.name)) return row.page;
  }
  const CodePageInfo pages;
  unsigned int index = 0;
  if (pages.GetIndexFromName(name, index)) return pages.GetPageNumberByIndex(index);
  return {};
}

// What is no code page of its own but has a number.
std::optional<Encoding> UnicodeOf(unsigned int page) {
  switch (page) {
    case 0:
    case 1:
    case 65001:
      return Encoding{EncodingUTF8, 0};
    case 1200:
      return Encoding{EncodingUTF16LE, 0};
    case 1201:
      return Encoding{EncodingUTF16BE, 0};
    default:
      return {};
  }
}

}  // namespace

std::string Encoding::Name() const {
  switch (kind) {
    case EncodingUTF8:
      return "UTF-8";
    case EncodingUTF16LE:
      return "UTF-16LE";
    case EncodingUTF16BE:
      return "UTF-16BE";
    default:
      break;
  }
  for (const auto& row : kNames) {
    if (row.page == page) return row.name;
  }
  const CodePageInfo pages;
  unsigned int index = 0;
  const bool isListed = page <= 0xFFFF && pages.GetIndexFromPageNumber(page, index);
  return isListed ? std::string(pages.GetNameByIndex(index).c_str())
                  : "code page " + std::to_string(page);
}

Encoding FindEncoding(const std::string& name) {
  const std::optional<unsigned int> page = PageOf(name);
  if (!page) throw examples::UsageError("there is no encoding '" + name + "'");
  if (const auto unicode = UnicodeOf(*page)) return *unicode;
  const std::string number = "code page " + std::to_string(*page);
  const AtoW probe("\n", *page);
  const std::wstring feed(static_cast<const wchar_t*>(probe));
  if (feed.empty()) throw examples::UsageError(number + " can't be converted here");
  if (feed != L"\n") {
    throw examples::UsageError(number + " is EBCDIC, whose line ends this program doesn't know");
  }
  return {EncodingANSI, *page};
}

}  // namespace vlm::convert
