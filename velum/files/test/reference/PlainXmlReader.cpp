#include <velum/files/test/reference/PlainXmlReader.h>

namespace vlm::test {
namespace {

struct End {};
struct Fault {
  std::string text;
};

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) { document_.elements.emplace_back(); }

  FlatDocument Read() {
    try {
      while (true) ReadValue();
    } catch (const End&) {
    } catch (const Fault& fault) {
      document_.fault = fault.text;
    }
    return document_;
  }

 private:
  FlatElement& Current() { return document_.elements[current_]; }

  char Next() {
    if (at_ == text_.size()) throw End();
    const char c = text_[at_++];
    line_ += c == '\n';
    return c;
  }
  // A byte 0 can't be put back.
  void Unget(char c) {
    if (c == 0) return;
    --at_;
    line_ -= c == '\n';
  }
  static bool IsSpace(char c) { return std::string_view(" \t\n\v\f\r").find(c) < 6; }
  char NextNonSpace() {
    char c = Next();
    while (IsSpace(c)) c = Next();
    return c;
  }
  // What the end cuts off is in the word all the same.
  void ReadWord(std::string& word) {
    word.clear();
    char c = NextNonSpace();
    while (!IsSpace(c) && c != '>' && c != '?' && c != '=' && c != '/' && c != 0) {
      word += c;
      c = Next();
    }
    Unget(c);
  }
  [[noreturn]] void Fail(const char* text) { throw Fault{std::to_string(line_) + ": " + text}; }

  void ReadValue() {
    for (char c = Next(); c != '<'; c = Next()) Current().value += c;
    const char c = Next();
    if (c == '!') return ReadMarkup();
    if (c == '/') return ReadCloseTag();
    if (c != '?') Unget(c);
    FlatElement child;
    child.parent = current_;
    document_.elements.push_back(child);
    current_ = document_.elements.size() - 1;
    ReadWord(Current().name);
    if (Current().name.empty()) Fail("Tag without name");
    ReadAttributes();
  }

  void ReadMarkup() {
    if (Next() == '-') {
      const char c = Next();
      if (c == '-') return ReadComment();
      Unget(c);
    }
    while (Next() != '>') continue;
  }

  void ReadComment() {
    const char end[] = "-->";
    for (int matched = 0; matched < 3;) matched = Next() == end[matched] ? matched + 1 : 0;
  }

  void ReadAttributes() {
    std::string name;
    for (ReadWord(name); !name.empty(); ReadWord(name)) {
      std::string value;
      char c = NextNonSpace();
      if (c != '=') {
        Unget(c);
      } else if (c = NextNonSpace(); c == '"') {
        for (c = Next(); c != '"'; c = Next()) value += c;
      } else {
        Unget(c);
        ReadWord(value);
      }
      for (std::size_t i = 0; (i = value.find("&quot;")) != std::string::npos;) {
        value.replace(i, 6, "\"");
      }
      Current().attributes[name] = value;
    }
    const char c = NextNonSpace();
    if (c == '>') return;
    if ((c != '/' && c != '?') || NextNonSpace() != '>') Fail("Invalid closing bracket");
    current_ = Current().parent;
  }

  void ReadCloseTag() {
    std::string word;
    ReadWord(word);
    if (word != Current().name || NextNonSpace() != '>' || current_ == 0) {
      Fail("Closing tag mismatch");
    }
    current_ = Current().parent;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 1;
  std::size_t current_ = 0;
  FlatDocument document_;
};

}  // namespace

FlatDocument ReadPlainly(std::string_view text) { return Reader(text).Read(); }

}  // namespace vlm::test
