#include <velum/files/test/reference/PlainTextReader.h>

#include <velum/core/WideText.h>

#include <utility>

namespace vlm::test {

PlainTextReader::PlainTextReader(std::string bytes, TextEncoding encoding, unsigned int codePage,
                                 std::int64_t startOfText)
    : bytes_(std::move(bytes)),
      encoding_(encoding),
      codePage_(codePage),
      start_(static_cast<std::size_t>(startOfText)),
      at_(start_) {}

wchar_t PlainTextReader::Getc() {
  if (readAt_ == input_.size() && FillInputBuffer() == 0) return 0xFFFF;
  return input_[readAt_++];
}

wchar_t PlainTextReader::UnGetc(wchar_t c) {
  if (readAt_ == input_.size()) {
    if (!EndOfFile()) {
      if (FillInputBuffer() == 0) return 0xFFFF;
    } else {
      input_.clear();
      readAt_ = 0;
    }
  }
  input_.insert(readAt_, 1, c);
  return c;
}

bool PlainTextReader::ReadString(std::wstring& line) {
  if (readAt_ == input_.size() && FillInputBuffer() == 0) return false;
  line = input_.substr(readAt_);
  input_.clear();
  readAt_ = 0;
  if (!line.empty() && line.back() == L'\n') {
    line.pop_back();
    if (!line.empty() && line.back() == L'\r') line.pop_back();
  }
  return true;
}

void PlainTextReader::SeekToBegin() {
  at_ = start_;
  half_ = kNone;
  metEnd_ = false;
  input_.clear();
  readAt_ = 0;
}

std::size_t PlainTextReader::FillInputBuffer() {
  readAt_ = 0;
  // A line of a page may be no text at all.
  while (FillFromLine() && input_.empty()) {
  }
  return input_.size();
}

bool PlainTextReader::FillFromLine() {
  input_.clear();
  std::wstring line;
  std::wstring chunk;
  while (ReadText(chunk)) {
    line += chunk;
    if (chunk.size() < 255 || chunk.back() == L'\n') break;
  }
  // A page's characters may be longer than a byte, so that a line is converted as a whole.
  input_ = encoding_ == EncodingANSI ? FromPage(std::string(line.begin(), line.end())) : line;
  return !line.empty();
}

std::wstring PlainTextReader::FromPage(const std::string& line) const {
  // The conversion stops at a terminator, which is a character here.
  std::wstring text;
  for (std::size_t at = 0; at <= line.size();) {
    const std::string part = line.substr(at, line.find('\0', at) - at);
    text += AtoW(part, codePage_);
    at += part.size() + 1;
    if (at <= line.size()) text += L'\0';
  }
  return text;
}

bool PlainTextReader::ReadText(std::wstring& chunk) {
  chunk.clear();
  while (chunk.size() < 255) {
    const int c = Next();
    if (c == kNone) return !chunk.empty();
    if (c == '\r') {
      const std::size_t at = at_;
      const bool isFeed = Next() == '\n';
      at_ = at;
      half_ = kNone;
      if (isFeed) continue;
      chunk += L'\n';
      return true;
    }
    chunk += static_cast<wchar_t>(c);
    if (c == '\n') return true;
  }
  return true;
}

int PlainTextReader::Next() {
  if (half_ != kNone) return std::exchange(half_, kNone);
  if (at_ >= bytes_.size()) {
    metEnd_ = true;
    return kNone;
  }
  const char32_t code = Decode(at_);
  if (code <= 0xFFFF) return static_cast<int>(code);
  half_ = static_cast<int>(0xDC00 + (code - 0x10000) % 0x400);
  return static_cast<int>(0xD800 + (code - 0x10000) / 0x400);
}

char32_t PlainTextReader::Decode(std::size_t& at) const {
  if (encoding_ == EncodingANSI) return static_cast<unsigned char>(bytes_[at++]);
  if (encoding_ == EncodingUTF8) return DecodeUtf8(at);
  const int first = Unit(at);
  at += 2;
  if (first >= 0xD800 && first < 0xDC00) {
    const int second = Unit(at);
    if (second < 0xDC00 || second > 0xDFFF) return 0xFFFD;
    at += 2;
    return 0x10000 + static_cast<char32_t>((first - 0xD800) * 0x400 + (second - 0xDC00));
  }
  if (first == kNone) at = bytes_.size();
  return first == kNone || (first >= 0xDC00 && first < 0xE000) ? 0xFFFD
                                                               : static_cast<char32_t>(first);
}

char32_t PlainTextReader::DecodeUtf8(std::size_t& at) const {
  // Table 3-7 of The Unicode Standard: the ranges of the bytes of well-formed characters.
  static constexpr struct {
    unsigned char low[4], high[4];
    int count;
  } kForms[] = {
      {{0x00}, {0x7F}, 1},
      {{0xC2, 0x80}, {0xDF, 0xBF}, 2},
      {{0xE0, 0xA0, 0x80}, {0xE0, 0xBF, 0xBF}, 3},
      {{0xE1, 0x80, 0x80}, {0xEC, 0xBF, 0xBF}, 3},
      {{0xED, 0x80, 0x80}, {0xED, 0x9F, 0xBF}, 3},
      {{0xEE, 0x80, 0x80}, {0xEF, 0xBF, 0xBF}, 3},
      {{0xF0, 0x90, 0x80, 0x80}, {0xF0, 0xBF, 0xBF, 0xBF}, 4},
      {{0xF1, 0x80, 0x80, 0x80}, {0xF3, 0xBF, 0xBF, 0xBF}, 4},
      {{0xF4, 0x80, 0x80, 0x80}, {0xF4, 0x8F, 0xBF, 0xBF}, 4},
  };
  std::size_t longest = 1;
  for (const auto& form : kForms) {
    std::size_t count = 0;
    char32_t code = 0;
    while (count < static_cast<std::size_t>(form.count) && at + count < bytes_.size()) {
      const auto byte = static_cast<unsigned char>(bytes_[at + count]);
      if (byte < form.low[count] || byte > form.high[count]) break;
      const unsigned int bits = form.count == 1 ? 0x7F : count > 0 ? 0x3F : 0x7Fu >> form.count;
      code = code << 6 | (byte & bits);
      ++count;
    }
    if (count == static_cast<std::size_t>(form.count)) {
      at += count;
      return code;
    }
    if (count > longest) longest = count;
  }
  at += longest;
  return 0xFFFD;
}

int PlainTextReader::Unit(std::size_t at) const {
  if (at + 1 >= bytes_.size()) return kNone;
  const auto first = static_cast<unsigned char>(bytes_[at]);
  const auto second = static_cast<unsigned char>(bytes_[at + 1]);
  return encoding_ == EncodingUTF16BE ? first << 8 | second : second << 8 | first;
}

}  // namespace vlm::test
