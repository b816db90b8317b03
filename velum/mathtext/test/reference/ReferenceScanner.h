#pragma once

/// \file
/// A reader of the math text language written by hand, that the grammar is held against.
///
///     ScanRecorder expected;
///     ReferenceScan(text, expected);

#include <velum/mathtext/MTParser.h>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace vlm::test {

/// Reads one text, byte by byte.
class ReferenceScanner {
 public:
  ReferenceScanner(const char* text, IMathTextScanner& scanner) : place_(text), out_(scanner) {}

  /// Does what `ScanMathText` does.
  bool Scan() {
    while (*place_ != '\0') {
      if (*place_ == '{') {
        ++place_;
        out_.PushState();
      } else if (*place_ == '}') {
        ++place_;
        out_.PopState();
      } else if (*place_ == '\r' || *place_ == '\n') {
        place_ += place_[0] == '\r' && place_[1] == '\n' ? 2 : 1;
        out_.Newline();
      } else if (!Directive() && !TextRun()) {
        out_.Error(place_);
        return false;
      }
    }
    return true;
  }

 private:
  bool TextRun() {
    std::string run;
    for (;;) {
      const char c = *place_;
      if (c == '\\' && place_[1] != '\0' && std::strchr("\\{}", place_[1]) != nullptr) {
        run += place_[1];
        place_ += 2;
      } else if (c != '\0' && std::strchr("\\{}\r\n", c) == nullptr) {
        run += c;
        ++place_;
      } else {
        break;
      }
    }
    if (run.empty()) return false;
    out_.Text(run.c_str());
    return true;
  }

  bool Directive() {
    if (*place_ != '\\') return false;
    const char* const start = place_++;
    bool (ReferenceScanner::*const forms[])() = {
        &ReferenceScanner::UpOrDown,  &ReferenceScanner::ColorName,
        &ReferenceScanner::Component, &ReferenceScanner::FullColor,
        &ReferenceScanner::StyleName, &ReferenceScanner::Face,
        &ReferenceScanner::Size,      &ReferenceScanner::Code,
        &ReferenceScanner::Date,      &ReferenceScanner::Position,
        &ReferenceScanner::Substring, &ReferenceScanner::EndOfSubstring,
        &ReferenceScanner::Segment};
    const char* const body = place_;
    for (const auto form : forms) {
      place_ = body;
      if ((this->*form)()) return true;
    }
    place_ = start;
    return false;
  }

  bool UpOrDown() {
    const bool up = Word("up");
    unsigned n = 0;
    if (!(up || Word("dn")) || !Unsigned(n) || !EndMark()) return false;
    out_.VerticalOffset(up ? -static_cast<double>(n) : static_cast<double>(n));
    return true;
  }
  bool ColorName() {
    struct Row {
      const char* name;
      Color4b color;
    };
    const Row rows[] = {
        {"black", Color4b(0, 0, 0, 255)},      {"blue", Color4b(0, 0, 255, 255)},
        {"green", Color4b(0, 255, 0, 255)},    {"cyan", Color4b(0, 255, 255, 255)},
        {"red", Color4b(255, 0, 0, 255)},      {"magenta", Color4b(255, 0, 255, 255)},
        {"yellow", Color4b(255, 255, 0, 255)}, {"white", Color4b(255, 255, 255, 255)},
        {"gray", Color4b(128, 128, 128, 255)}};
    for (const Row& row : rows) {
      if (!Word(row.name)) continue;
      if (!EndMark()) return false;
      out_.PredefinedColor(row.color);
      return true;
    }
    return false;
  }
  bool Component() {
    const int index = OneOf({"rgbr", "rgbg", "rgbb", "rgba"});
    unsigned n = 0;
    if (index < 0 || !Unsigned(n) || n > 255 || !EndMark()) return false;
    out_.ColorComponent(static_cast<unsigned>(index), n);
    return true;
  }
  bool FullColor() {
    if (!Word("color(")) return false;
    unsigned char bytes[4] = {};
    for (int i = 0; i < 4; ++i) {
      unsigned n = 0;
      if (!Separator(i) || !Unsigned(n) || n > 255) return false;
      bytes[i] = static_cast<unsigned char>(n);
    }
    if (!Close()) return false;
    out_.Color(Color4b(bytes[0], bytes[1], bytes[2], bytes[3]));
    return true;
  }
  bool StyleName() {
    const int index = OneOf({"b", "i", "strike", "ul", "plain"});
    if (index < 0 || !EndMark()) return false;
    if (index == 0) out_.Bold();
    if (index == 1) out_.Italic();
    if (index == 2) out_.StrikeThrough();
    if (index == 3) out_.Underline();
    if (index == 4) out_.Plain();
    return true;
  }
  bool Face() {
    std::string name;
    if (!Word("f") || !Quoted(name) || !EndMark()) return false;
    out_.Facename(name.c_str());
    return true;
  }
  bool Size() {
    unsigned n = 0;
    if (!Word("fs") || !Unsigned(n) || !EndMark()) return false;
    out_.FontSize(n);
    return true;
  }
  bool Code() {
    unsigned n = 0;
    if (!Word("a") || !Unsigned(n) || !EndMark()) return false;
    out_.CharCode(n);
    return true;
  }
  bool Date() {
    std::string format;
    if (Word("date")) {
      format = "mm/dd/yy";
      if (!EndMark()) return false;
    } else if (Word("time")) {
      format = "h:nn tt";
      if (!EndMark()) return false;
    } else {
      if (!Word("dt(") || !Separator(0) || !Quoted(format) || !Close()) return false;
    }
    out_.DateTime(format.c_str());
    return true;
  }
  bool Position() {
    const int index = OneOf({"sp", "rp"});
    unsigned n = 0;
    if (index < 0 || !Unsigned(n) || n < 1 || n > 20 || !EndMark()) return false;
    if (index == 0) {
      out_.SavePosition(n);
    } else {
      out_.RestorePosition(n);
    }
    return true;
  }
  bool Substring() {
    double x = 0.0;
    double y = 0.0;
    if (!Word("ssbeg(") || !Separator(0) || !Real(x) || !Separator(1) || !Real(y) || !Separator(2))
      return false;
    const int horz = OneOf({"left", "center", "right"});
    if (horz < 0 || !Separator(3)) return false;
    const int vert = OneOf({"top", "baseline", "bottom", "center"});
    if (vert < 0 || !Close()) return false;
    out_.BeginSubstring(x, y, static_cast<HAlignment>(horz), static_cast<VAlignment>(vert));
    return true;
  }
  bool EndOfSubstring() {
    if (!Word("ssend") || !EndMark()) return false;
    out_.EndSubstring();
    return true;
  }
  bool Segment() {
    double x = 0.0;
    double y = 0.0;
    if (!Word("line(") || !Separator(0) || !Real(x) || !Separator(1) || !Real(y) || !Separator(2))
      return false;
    const int side = OneOf({"left", "top", "right", "bottom"});
    if (side < 0 || !Close()) return false;
    out_.Line(x, y, static_cast<IMathTextScanner::Side>(side));
    return true;
  }

  bool Word(const char* word) {
    const char* p = place_;
    for (; *word != '\0'; ++word, ++p) {
      const char folded = *p >= 'A' && *p <= 'Z' ? static_cast<char>(*p + 32) : *p;
      if (folded != *word) return false;
    }
    place_ = p;
    return true;
  }
  int OneOf(std::initializer_list<const char*> names) {
    int index = 0;
    for (const char* name : names) {
      if (Word(name)) return index;
      ++index;
    }
    return -1;
  }
  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }
  bool Unsigned(unsigned& value) {
    if (!IsDigit(*place_)) return false;
    unsigned long long n = 0;
    for (; IsDigit(*place_); ++place_) {
      n = n * 10 + static_cast<unsigned>(*place_ - '0');
      if (n > 0xFFFFFFFFULL) return false;
    }
    value = static_cast<unsigned>(n);
    return true;
  }
  bool Real(double& value) {
    const char* const start = place_;
    if (*place_ == '+' || *place_ == '-') ++place_;
    if (!Word("nan") && !Word("infinity") && !Word("inf")) {
      int figures = 0;
      for (; IsDigit(*place_); ++place_) ++figures;
      if (*place_ == '.') {
        ++place_;
        for (; IsDigit(*place_); ++place_) ++figures;
      }
      if (figures == 0) return false;
      if (*place_ == 'e' || *place_ == 'E') {
        const char* p = place_ + 1;
        if (*p == '+' || *p == '-') ++p;
        if (IsDigit(*p)) {
          while (IsDigit(*p)) ++p;
          place_ = p;
        }
      }
      value = std::strtod(std::string(start, place_).c_str(), nullptr);
      return !std::isinf(value);
    }
    value = std::strtod(std::string(start, place_).c_str(), nullptr);
    return true;
  }
  bool Quoted(std::string& text) {
    if (*place_ != '"') return false;
    text.clear();
    for (++place_; *place_ > 0 && *place_ != '"'; ++place_) text += *place_;
    return *place_++ == '"' && !text.empty();
  }
  void Space() {
    while (*place_ != '\0' && std::strchr(" \t\r\n\v\f", *place_) != nullptr) ++place_;
  }
  // What stands before argument number `index` of a form in parentheses.
  bool Separator(int index) {
    Space();
    if (index > 0) {
      if (*place_ != ',') return false;
      ++place_;
      Space();
    }
    return true;
  }
  bool Close() {
    Space();
    if (*place_ != ')') return false;
    ++place_;
    return EndMark();
  }
  bool EndMark() {
    if (*place_ == ' ') {
      ++place_;
      return true;
    }
    return *place_ == '\0' || *place_ == '\r' || *place_ == '\n';
  }

  const char* place_;
  IMathTextScanner& out_;
};

/// Does what `ScanMathText` does.
inline bool ReferenceScan(const char* text, IMathTextScanner& scanner) {
  return ReferenceScanner(text, scanner).Scan();
}

}  // namespace vlm::test
