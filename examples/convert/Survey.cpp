#include <examples/convert/Survey.h>

#include <velum/files/EncodedBufferedFile.h>
#include <velum/files/File.h>

#include <string_view>

namespace vlm::convert {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;

bool IsUtf16(TextEncoding encoding) {
  return encoding == EncodingUTF16LE || encoding == EncodingUTF16BE;
}

// The code of the unit of one or two bytes that ends `back` units before the end; -1 for none.
int UnitFromEnd(std::string_view bytes, std::size_t back, TextEncoding encoding) {
  const std::size_t size = IsUtf16(encoding) ? 2 : 1;
  if (bytes.size() < size * (back + 1)) return -1;
  const std::string_view unit = bytes.substr(bytes.size() - size * (back + 1), size);
  const auto first = static_cast<unsigned char>(unit[0]);
  if (size == 1) return first;
  const auto second = static_cast<unsigned char>(unit[1]);
  return encoding == EncodingUTF16BE ? first << 8 | second : second << 8 | first;
}

LineEnd EndOf(std::string_view bytes, TextEncoding encoding) {
  if (IsUtf16(encoding) && bytes.size() % 2 != 0) return LineEnd::None;  // cut inside a unit
  const int last = UnitFromEnd(bytes, 0, encoding);
  if (last == '\r') return LineEnd::Return;
  if (last != '\n') return LineEnd::None;
  return UnitFromEnd(bytes, 1, encoding) == '\r' ? LineEnd::ReturnFeed : LineEnd::Feed;
}

// How often a line's bytes hold U+FFFD itself.
std::uint64_t ReplacementsIn(std::string_view bytes, TextEncoding encoding) {
  std::uint64_t count = 0;
  if (IsUtf16(encoding)) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      count += UnitFromEnd(bytes.substr(0, i + 2), 0, encoding) == kReplacement;
    }
  } else if (encoding == EncodingUTF8) {
    constexpr std::string_view kBytes = "\xEF\xBF\xBD";
    for (std::size_t at = 0; (at = bytes.find(kBytes, at)) != std::string_view::npos; at += 3) {
      ++count;
    }
  }
  return count;
}

void CountLine(const std::wstring& line, std::string_view bytes, TextEncoding encoding,
               Survey& survey) {
  std::uint64_t replaced = 0;
  for (const wchar_t unit : line) {
    const bool isSecondHalf = unit >= 0xDC00 && unit <= 0xDFFF;
    survey.characters += !isSecondHalf;
    survey.pairs += isSecondHalf;
    survey.ascii += unit < 0x80;
    survey.zeros += unit == 0;
    replaced += unit == kReplacement;
  }
  if (replaced > 0) survey.malformed += replaced - ReplacementsIn(bytes, encoding);
}

}  // namespace

Survey TakeSurvey(const std::string& path, const Encoding& encoding, const LineUser& use) {
  CEncodedBufferedFile text(path, "r", CEncodedBufferedFile::ShareDenyWrite, encoding.kind,
                            encoding.page, true, false);
  // The bytes of each line tell how it ends.
  CFile raw(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyWrite);
  Survey survey;
  survey.bytes = static_cast<std::uint64_t>(raw.GetLength());
  std::int64_t position = text.GetPosition();
  raw.Seek(position, CFile::OriginBegin);
  std::wstring line;
  std::string bytes;
  while (text.ReadString(line)) {
    bytes.resize(static_cast<std::size_t>(text.GetPosition() - position));
    position = text.GetPosition();
    raw.ReadN(bytes.data(), static_cast<unsigned int>(bytes.size()));
    const LineEnd end = EndOf(bytes, encoding.kind);
    ++survey.lines;
    survey.feeds += end == LineEnd::Feed;
    survey.returnFeeds += end == LineEnd::ReturnFeed;
    survey.returns += end == LineEnd::Return;
    CountLine(line, bytes, encoding.kind, survey);
    if (use) use(line, end);
  }
  return survey;
}

}  // namespace vlm::convert
