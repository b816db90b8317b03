#include <examples/describe/CsvReader.h>

#include <algorithm>
#include <istream>
#include <stdexcept>

namespace vlm::describe {
namespace {

constexpr char kQuote = '"';

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

[[noreturn]] void Refuse(std::size_t line, const char* reason) {
  throw std::runtime_error("line " + std::to_string(line) + ": " + reason);
}

}  // namespace

CsvReader::CsvReader(std::istream& stream, char delimiter, std::size_t blockSize)
    : stream_(stream), delimiter_(delimiter), block_(std::max<std::size_t>(blockSize, 4), '\0') {}

bool CsvReader::Next(CsvField& field) {
  if (bytesRead_ == 0) SkipByteOrderMark();
  if (atRow_) {
    while (!AtEnd() && IsLineEnd(block_[position_])) TakeLineEnd();
    if (AtEnd()) return false;
    ++row_;
    column_ = 0;
    rowLine_ = line_;
  }
  text_.clear();
  if (!AtEnd() && block_[position_] == kQuote) {
    TakeQuoted();
  } else {
    TakePlain();
  }
  const bool goesOn = !AtEnd() && block_[position_] == delimiter_;
  if (goesOn) {
    ++position_;
  } else if (!AtEnd()) {
    TakeLineEnd();
  }
  atRow_ = !goesOn;
  field = {text_, row_, column_++, rowLine_, atRow_};
  return true;
}

bool CsvReader::AtEnd() {
  if (position_ == size_) Fill();
  return position_ == size_;
}

void CsvReader::Fill() {
  stream_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
  if (stream_.bad()) Refuse(line_, "reading failed");
  position_ = 0;
  size_ = static_cast<std::size_t>(stream_.gcount());
  bytesRead_ += size_;
}

void CsvReader::SkipByteOrderMark() {
  if (AtEnd()) return;
  const std::string_view start(block_.data(), size_);
  if (start.starts_with("\xEF\xBB\xBF")) {
    position_ = 3;
  } else if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    Refuse(1, "the text is UTF-16; only UTF-8 is read");
  }
}

void CsvReader::TakeLineEnd() {
  const bool isReturn = block_[position_++] == '\r';
  if (isReturn && !AtEnd() && block_[position_] == '\n') ++position_;
  ++line_;
}

void CsvReader::TakePlain() {
  while (!AtEnd()) {
    std::size_t end = position_;
    while (end < size_ && block_[end] != delimiter_ && !IsLineEnd(block_[end])) ++end;
    const bool isWhole = end < size_;
    Keep(end);
    if (isWhole) return;
  }
}

void CsvReader::TakeQuoted() {
  const std::size_t opening = line_;
  bool afterReturn = false;
  ++position_;
  while (!AtEnd()) {
    std::size_t end = position_;
    while (end < size_ && block_[end] != kQuote) {
      const char c = block_[end++];
      line_ += c == '\r' || (c == '\n' && !afterReturn);
      afterReturn = c == '\r';
    }
    const bool atQuote = end < size_;
    Keep(end);
    if (!atQuote) continue;
    afterReturn = false;
    ++position_;
    if (AtEnd() || block_[position_] == delimiter_ || IsLineEnd(block_[position_])) return;
    if (block_[position_] != kQuote) Refuse(line_, "text stands behind a closing quote");
    Keep(position_ + 1);  // a doubled quote
  }
  Refuse(opening, "a quoted field begins here and does not end");
}

void CsvReader::Keep(std::size_t end) {
  const std::size_t room = kLongestField - text_.size();
  text_.append(block_, position_, std::min(end - position_, room));
  position_ = end;
}

}  // namespace vlm::describe
