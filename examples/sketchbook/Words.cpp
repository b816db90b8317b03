#include <examples/sketchbook/Words.h>

namespace vlm::sketchbook {
namespace {

// Walks through a line once.
class WordReader {
 public:
  explicit WordReader(const std::string& line) : line_(line) {}

  bool IsQuoted() const { return isQuoted_; }

  // False at the end of the line, or at a comment.
  bool Read(GString& word) {
    position_ = line_.find_first_not_of(" \t\r\n", position_);
    if (position_ == std::string::npos || line_[position_] == '#') return false;
    word.clear();
    for (; position_ < line_.size(); ++position_) {
      const char c = line_[position_];
      if (c == '"') {
        ReadMark(word);
      } else if (!isQuoted_ && (c == ' ' || c == '\t' || c == '\r' || c == '\n')) {
        break;
      } else {
        word += c;
      }
    }
    return true;
  }

 private:
  void ReadMark(GString& word) {
    if (isQuoted_ && position_ + 1 < line_.size() && line_[position_ + 1] == '"') {
      word += '"';
      ++position_;
    } else {
      isQuoted_ = !isQuoted_;
    }
  }

  const std::string& line_;
  std::size_t position_ = 0;
  bool isQuoted_ = false;
};

}  // namespace

std::vector<GString> ReadWords(const std::string& line) {
  std::vector<GString> words;
  WordReader reader(line);
  for (GString word; reader.Read(word);) words.push_back(word);
  return words;
}

bool HasOpenQuote(const std::string& line) {
  WordReader reader(line);
  for (GString word; reader.Read(word);) {
  }
  return reader.IsQuoted();
}

}  // namespace vlm::sketchbook
