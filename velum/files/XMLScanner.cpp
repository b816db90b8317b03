#include <velum/files/XMLScanner.h>

#include <velum/core/Exception.h>
#include <velum/files/detail/FileError.h>
#include <velum/platform/detail/FileAccess.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace vlm {

namespace {

constexpr char kModule[] = "XMLScanner";

// As isspace has it in the C locale, whatever the present one.
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool EndsWord(char c) {
  return IsSpace(c) || c == '>' || c == '?' || c == '=' || c == '/' || c == 0;
}

// The value with a double quote for each "&quot;".
std::string WithQuotes(std::string value) {
  constexpr std::string_view kQuote = "&quot;";
  std::size_t found = value.find(kQuote);
  if (found == std::string::npos) return value;
  std::string plain;
  std::size_t begin = 0;
  for (; found != std::string::npos; found = value.find(kQuote, begin)) {
    plain.append(value, begin, found - begin);
    plain += '"';
    begin = found + kQuote.size();
  }
  return plain.append(value, begin);
}

}  // namespace

// The file in hand and a block of its bytes.
class XMLScanner::Source {
 public:
  explicit Source(const GString& path) : path_(path), block_(new char[kBlockSize]) {
    platform::OpenWish wish;
    wish.sharing.reads = true;
    file_ = platform::OpenFile(path.c_str(), wish);
    if (file_ < 0) detail::ThrowSystemError(kModule, __LINE__, ERR_OPEN, path_);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() { platform::CloseFile(file_); }

  std::string_view ReadBlock() {
    const std::int64_t count = platform::ReadSome(file_, block_.get(), kBlockSize);
    if (count < 0) detail::ThrowSystemError(kModule, __LINE__, ERR_READ, path_);
    return {block_.get(), static_cast<std::size_t>(count)};
  }

 private:
  static constexpr std::size_t kBlockSize = 65536;

  const GString& path_;
  std::unique_ptr<char[]> block_;
  int file_ = -1;
};

// One scan's place in its file, from its beginning to its end. That of a scan around it is kept
// here meanwhile.
class XMLScanner::Scan {
 public:
  Scan(XMLScanner& scanner, const GString& path)
      : scanner_(scanner), isInner_(scanner.source_ != nullptr), path_(path) {
    Exchange();
  }
  Scan(const Scan&) = delete;
  Scan& operator=(const Scan&) = delete;
  ~Scan() {
    if (isInner_) {
      Exchange();
      return;
    }
    // Nothing points into the block any more, nor holds what the tree no longer has.
    scanner_.source_.reset();
    scanner_.next_ = scanner_.end_ = nullptr;
    scanner_.pushback_ = 0;
    scanner_.current_ = scanner_.root_;
  }

 private:
  void Exchange() noexcept {
    std::swap(pushback_, scanner_.pushback_);
    std::swap(lineNumber_, scanner_.lineNumber_);
    std::swap(state_, scanner_.state_);
    current_.swap(scanner_.current_);
    std::swap(path_, scanner_.path_);
    source_.swap(scanner_.source_);
    std::swap(next_, scanner_.next_);
    std::swap(end_, scanner_.end_);
    attributeName_.swap(scanner_.attributeName_);
  }

  XMLScanner& scanner_;
  const bool isInner_;
  char pushback_ = 0;
  std::int64_t lineNumber_ = 1;
  State state_ = StateValue;
  std::shared_ptr<XMLNode> current_ = scanner_.root_;
  GString path_;
  std::unique_ptr<Source> source_;
  const char* next_ = nullptr;
  const char* end_ = nullptr;
  std::string attributeName_;
};

XMLScanner::XMLScanner() : root_(XMLNode::Factory()), current_(root_) {}

XMLScanner::~XMLScanner() = default;

std::shared_ptr<XMLNode> XMLScanner::ScanFile(const GString& path) {
  const Scan scan(*this, path);
  source_ = std::make_unique<Source>(path_);
  return RunStates() ? root_ : nullptr;
}

void XMLScanner::Close() noexcept { root_->Done(); }

bool XMLScanner::RunStates() {
  while (true) {
    switch (state_) {
      case StateValue:
        ReadValue();
        break;
      case StateTagName:
        ReadTagName();
        break;
      case StateComment:
        ReadComment();
        break;
      case StateDocType:
        ReadDocType();
        break;
      case StateAttributes:
        ReadAttributes();
        break;
      case StateAttributeValue:
        ReadAttributeValue();
        break;
      case StateCloseBracket:
        CloseBracket();
        break;
      case StateCloseTag:
        if (!ReadCloseTag()) return false;
        break;
      case StateEnd:
        return true;
      default:
        ThrowErrorImpl(kModule, __LINE__, ERR_INTERNAL);
    }
  }
}

void XMLScanner::ReadValue() {
  AppendUpTo('<', current_->value);
  if (state_ == StateEnd) return;
  const char c = ReadNextChar();
  if (state_ == StateEnd) return;
  if (c == '!') {
    const bool isDash = ReadNextChar() == '-';
    if (state_ == StateEnd) return;
    const char second = isDash ? ReadNextChar() : '\0';
    if (state_ == StateEnd) return;
    if (isDash && second != '-') Unget(second);
    state_ = second == '-' ? StateComment : StateDocType;
  } else if (c == '/') {
    state_ = StateCloseTag;
  } else {
    if (c != '?') Unget(c);
    BeginChild();
    state_ = StateTagName;
  }
}

void XMLScanner::ReadTagName() {
  current_->name = ReadWord();
  if (state_ == StateEnd) return;
  if (current_->name.empty()) Fail("Tag without name");
  state_ = StateAttributes;
}

bool XMLScanner::ReadCloseTag() {
  constexpr char kComplaint[] = "Closing tag mismatch";
  const std::string word = ReadWord();
  if (state_ == StateEnd) return true;
  if (word != current_->name) Fail(kComplaint);
  const char c = ReadNextNonSpaceChar();
  if (state_ == StateEnd) return true;
  if (c != '>') Fail(kComplaint);
  GoToParent(kComplaint);
  state_ = StateValue;
  return true;
}

void XMLScanner::ReadAttributes() {
  attributeName_ = ReadWord();
  if (state_ == StateEnd) return;
  state_ = attributeName_.empty() ? StateCloseBracket : StateAttributeValue;
}

void XMLScanner::ReadAttributeValue() {
  const char c = ReadNextNonSpaceChar();
  if (state_ == StateEnd) return;
  std::string value;
  if (c != '=') {
    Unget(c);
  } else {
    const char first = ReadNextNonSpaceChar();
    if (state_ == StateEnd) return;
    if (first == '"') {
      value = ReadLiteral();
    } else {
      Unget(first);
      value = ReadWord();
    }
    if (state_ == StateEnd) return;
  }
  current_->attributes[attributeName_] = WithQuotes(std::move(value));
  state_ = StateAttributes;
}

void XMLScanner::CloseBracket() {
  constexpr char kComplaint[] = "Invalid closing bracket";
  const char c = ReadNextNonSpaceChar();
  if (state_ == StateEnd) return;
  if (c == '/' || c == '?') {
    const char last = ReadNextNonSpaceChar();
    if (state_ == StateEnd) return;
    if (last != '>') Fail(kComplaint);
    GoToParent(kComplaint);
  } else if (c != '>') {
    Fail(kComplaint);
  }
  state_ = StateValue;
}

void XMLScanner::ReadComment() {
  constexpr std::string_view kEnd = "-->";
  std::size_t matched = 0;
  while (matched < kEnd.size()) {
    const char c = ReadNextChar();
    if (state_ == StateEnd) return;
    matched = c == kEnd[matched] ? matched + 1 : 0;
  }
  state_ = StateValue;
}

void XMLScanner::ReadDocType() {
  while (ReadNextChar() != '>') {
    if (state_ == StateEnd) return;
  }
  state_ = StateValue;
}

char XMLScanner::ReadNextNonSpaceChar() {
  char c;
  do c = ReadNextChar();
  while (IsSpace(c));
  return c;
}

std::string XMLScanner::ReadWord() {
  std::string word;
  char c = ReadNextNonSpaceChar();
  while (!EndsWord(c)) {
    word += c;
    // What is in the block is taken in one piece; no line ends inside of a word.
    const char* const stop = std::find_if(next_, end_, EndsWord);
    word.append(next_, stop);
    next_ = stop;
    c = ReadNextChar();
  }
  Unget(c);
  return word;
}

std::string XMLScanner::ReadLiteral() {
  std::string literal;
  AppendUpTo('"', literal);
  return literal;
}

void XMLScanner::SetCurrentNode(const std::shared_ptr<XMLNode>& node) {
  if (!node) ThrowErrorImpl(kModule, __LINE__, ERR_INTERNAL);
  current_ = node;
}

void XMLScanner::Fail(const char* text) const {
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  const int line = static_cast<int>(std::min(lineNumber_, kMost));
  ThrowErrorImpl(kModule, __LINE__, ERR_PARSE, path_.c_str(), line, text);
}

bool XMLScanner::Fill() {
  if (!source_) return false;
  const std::string_view block = source_->ReadBlock();
  next_ = block.data();
  end_ = next_ + block.size();
  return next_ != end_;
}

void XMLScanner::BeginChild() { current_ = XMLNode::Factory(current_); }

// The root has no parent to go to, whatever a tag says.
void XMLScanner::GoToParent(const char* complaint) {
  std::shared_ptr<XMLNode> parent = current_->parent.lock();
  if (!parent) Fail(complaint);
  current_ = std::move(parent);
}

// Appends what stands before the next `stop` and reads past it, or goes to the end of the file.
void XMLScanner::AppendUpTo(char stop, std::string& text) {
  if (pushback_ != 0) {
    const char c = ReadNextChar();
    if (c == stop) return;
    text += c;
  }
  while (true) {
    if (next_ == end_ && !Fill()) {
      state_ = StateEnd;
      return;
    }
    const auto size = static_cast<std::size_t>(end_ - next_);
    const auto* const found = static_cast<const char*>(std::memchr(next_, stop, size));
    const char* const last = found ? found : end_;
    text.append(next_, last);
    lineNumber_ += std::count(next_, last, '\n');
    next_ = last;
    if (!found) continue;
    ++next_;
    return;
  }
}

}  // namespace vlm
