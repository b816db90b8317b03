#include <velum/mathtext/MTParser.h>

#include <velum/mathtext/detail/RealText.h>

#include <boost/phoenix.hpp>
#include <boost/spirit/include/qi.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>

namespace vlm {
namespace {

namespace phx = boost::phoenix;
namespace qi = boost::spirit::qi;

// Folds the letters of ASCII and leaves all other bytes alone. Spirit's own filters either ask the
// locale or may not be asked about bytes of 128 and above.
struct FoldAscii {
  char operator()(char c) const {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
};

enum ComponentIndex : unsigned int { kRed, kGreen, kBlue, kAlpha };

enum StyleIndex : unsigned int { kBold, kItalic, kStrikeThrough, kUnderline, kPlain };

template <class T>
using Names = qi::symbols<char, T, qi::tst<char, T>, FoldAscii>;  // entries in lower case

const Names<Color4b>& ColorNames() {
  static const Names<Color4b> names = [] {
    Names<Color4b> table;
    table.add("black", Color4b(0, 0, 0, 255))("blue", Color4b(0, 0, 255, 255))(
        "green", Color4b(0, 255, 0, 255))("cyan", Color4b(0, 255, 255, 255))(
        "red", Color4b(255, 0, 0, 255))("magenta", Color4b(255, 0, 255, 255))(
        "yellow", Color4b(255, 255, 0, 255))("white", Color4b(255, 255, 255, 255))(
        "gray", Color4b(128, 128, 128, 255));
    return table;
  }();
  return names;
}

const Names<ComponentIndex>& ComponentNames() {
  static const Names<ComponentIndex> names = [] {
    Names<ComponentIndex> table;
    table.add("rgbr", kRed)("rgbg", kGreen)("rgbb", kBlue)("rgba", kAlpha);
    return table;
  }();
  return names;
}

const Names<StyleIndex>& StyleNames() {
  static const Names<StyleIndex> names = [] {
    Names<StyleIndex> table;
    table.add("b", kBold)("i", kItalic)("strike", kStrikeThrough)("ul", kUnderline)("plain",
                                                                                    kPlain);
    return table;
  }();
  return names;
}

const Names<HAlignment>& HorizAlignmentNames() {
  static const Names<HAlignment> names = [] {
    Names<HAlignment> table;
    table.add("left", HALIGN_LEFT)("center", HALIGN_CENTER)("right", HALIGN_RIGHT);
    return table;
  }();
  return names;
}

const Names<VAlignment>& VertAlignmentNames() {
  static const Names<VAlignment> names = [] {
    Names<VAlignment> table;
    table.add("top", VALIGN_TOP)("baseline", VALIGN_BASELINE)("bottom", VALIGN_BOTTOM)(
        "center", VALIGN_CENTER);
    return table;
  }();
  return names;
}

const Names<IMathTextScanner::Side>& SideNames() {
  static const Names<IMathTextScanner::Side> names = [] {
    Names<IMathTextScanner::Side> table;
    table.add("left", IMathTextScanner::SIDE_LEFT)("top", IMathTextScanner::SIDE_TOP)(
        "right", IMathTextScanner::SIDE_RIGHT)("bottom", IMathTextScanner::SIDE_BOTTOM);
    return table;
  }();
  return names;
}

// The grammar. A rule for each line of the language's description; the actions call the scanner
// once an item has matched to its end.
template <class Iterator>
struct MathText : qi::grammar<Iterator> {
  MathText() : MathText::base_type(document) {
    using boost::spirit::ascii::no_case;
    using qi::_1;
    using qi::_2;
    using qi::_3;
    using qi::_4;
    using qi::_pass;
    using qi::_val;
    using qi::char_;
    using qi::eoi;
    using qi::eol;
    using qi::lit;
    using qi::raw;
    using qi::uint_;

    // Small pieces stand in the rules that use them: a rule of their own would cost a call for each
    // byte.
    const auto plainChar = qi::copy(~char_("\\{}\r\n"));
    const auto escape = qi::copy('\\' >> char_("\\{}"));
    const auto endMark = qi::copy(lit(' ') | &eol | &eoi);
    const auto space = qi::copy(qi::omit[*char_(" \t\r\n\v\f")]);
    const auto comma = qi::copy(space >> ',' >> space);
    const auto close = qi::copy(space >> ')');
    const auto digits = qi::copy(+char_('0', '9'));

    document = *item;
    item = (&lit('\\') >> directive) | lit('{')[Call(&IMathTextScanner::PushState)] |
           lit('}')[Call(&IMathTextScanner::PopState)] | eol[Call(&IMathTextScanner::Newline)] |
           textRun;
    textRun = raw[+(+plainChar | escape)][phx::bind(&MathText::TakeText, this, _1)];

    real = raw[-char_("+-") >> ((digits >> -('.' >> -digits)) | ('.' >> digits)) >>
               -(char_("eE") >> -char_("+-") >> digits)]
              [_pass = phx::bind(&MathText::ReadReal, _1, _val)] |
           raw[-char_("+-") >> no_case[lit("nan") | (lit("inf") >> -lit("inity"))]]
              [_val = phx::bind(&MathText::ReadWord, _1)];
    quoted = '"' >> +(char_('\x01', '\x7f') - '"') >> '"';
    byte = uint_[(_val = _1, _pass = _1 <= 255U)];
    slot = uint_[(_val = _1, _pass = _1 >= 1U && _1 <= 20U)];

    // A look at the first letter spares the call of a rule that can't match.
    const auto on = [](const char* firstLetters, const auto& rule) {
      return qi::copy(&qi::char_(std::string(firstLetters)) >> rule);
    };
    directive = '\\' >> (on("uU", up) | on("dD", down) | on("bBgGcCrRmMyYwW", predefinedColor) |
                         on("rR", colorComponent) | on("cC", color) | on("bBiIsSuUpP", style) |
                         on("fF", facename | fontSize) | on("aA", charCode) | on("dD", date) |
                         on("tT", time) | on("dD", dateTime) | on("sS", savePosition) |
                         on("rR", restorePosition) | on("sS", beginSubstring | endSubstring) |
                         on("lL", line));

    up = (no_case["up"] >> uint_ >>
          endMark)[Call(&IMathTextScanner::VerticalOffset, -phx::static_cast_<double>(_1))];
    down = (no_case["dn"] >> uint_ >>
            endMark)[Call(&IMathTextScanner::VerticalOffset, phx::static_cast_<double>(_1))];
    predefinedColor = (ColorNames() >> endMark)[Call(&IMathTextScanner::PredefinedColor, _1)];
    colorComponent =
        (ComponentNames() >> byte >> endMark)[Call(&IMathTextScanner::ColorComponent, _1, _2)];
    color = (no_case["color("] >> space >> byte >> comma >> byte >> comma >> byte >> comma >>
             byte >> close >> endMark)[Call(
        &IMathTextScanner::Color, phx::construct<Color4b>(phx::static_cast_<unsigned char>(_1),
                                                          phx::static_cast_<unsigned char>(_2),
                                                          phx::static_cast_<unsigned char>(_3),
                                                          phx::static_cast_<unsigned char>(_4)))];
    style = (StyleNames() >> endMark)[phx::bind(&MathText::SetStyle, this, _1)];
    facename = (no_case["f"] >> quoted >>
                endMark)[Call(&IMathTextScanner::Facename, phx::bind(&MathText::Bytes, _1))];
    fontSize = (no_case["fs"] >> uint_ >>
                endMark)[Call(&IMathTextScanner::FontSize, phx::static_cast_<double>(_1))];
    charCode = (no_case["a"] >> uint_ >> endMark)[Call(&IMathTextScanner::CharCode, _1)];
    date = (no_case["date"] >> endMark)[Call(&IMathTextScanner::DateTime, phx::val("mm/dd/yy"))];
    time = (no_case["time"] >> endMark)[Call(&IMathTextScanner::DateTime, phx::val("h:nn tt"))];
    dateTime = (no_case["dt("] >> space >> quoted >> close >>
                endMark)[Call(&IMathTextScanner::DateTime, phx::bind(&MathText::Bytes, _1))];
    savePosition = (no_case["sp"] >> slot >> endMark)[Call(&IMathTextScanner::SavePosition, _1)];
    restorePosition =
        (no_case["rp"] >> slot >> endMark)[Call(&IMathTextScanner::RestorePosition, _1)];
    beginSubstring = (no_case["ssbeg("] >> space >> real >> comma >> real >> comma >>
                      HorizAlignmentNames() >> comma >> VertAlignmentNames() >> close >>
                      endMark)[Call(&IMathTextScanner::BeginSubstring, _1, _2, _3, _4)];
    endSubstring = (no_case["ssend"] >> endMark)[Call(&IMathTextScanner::EndSubstring)];
    line = (no_case["line("] >> space >> real >> comma >> real >> comma >> SideNames() >> close >>
            endMark)[Call(&IMathTextScanner::Line, _1, _2, _3)];
  }

  using Range = boost::iterator_range<Iterator>;

  template <class Operation, class... Arguments>
  auto Call(Operation operation, Arguments... arguments) {
    return phx::bind(operation, phx::ref(scanner), arguments...);
  }

  static const char* Bytes(const std::string& string) { return string.c_str(); }

  void TakeText(const Range& range) {
    text.clear();
    const Iterator end = range.end();
    for (Iterator place = range.begin();;) {
      const Iterator escape = std::find(place, end, '\\');
      text.append(place, escape);
      if (escape == end) break;
      text += escape[1];
      place = escape + 2;
    }
    scanner->Text(text.c_str());
  }

  void SetStyle(StyleIndex index) {
    switch (index) {
      case kBold:
        return scanner->Bold();
      case kItalic:
        return scanner->Italic();
      case kStrikeThrough:
        return scanner->StrikeThrough();
      case kUnderline:
        return scanner->Underline();
      case kPlain:
        return scanner->Plain();
    }
  }

  static bool ReadReal(const Range& range, double& value) {
    return detail::ReadReal(range.begin(), range.end(), value);
  }
  static double ReadWord(const Range& range) { return detail::ReadRealWord(range.begin()); }

  IMathTextScanner* scanner = nullptr;  // who is called; set before each scan
  std::string text;                     // the run being read

  qi::rule<Iterator> document, item, textRun, directive;
  qi::rule<Iterator, double()> real;
  qi::rule<Iterator, std::string()> quoted;
  qi::rule<Iterator, unsigned int()> byte, slot;
  qi::rule<Iterator> up, down, predefinedColor, colorComponent, color, style, facename, fontSize,
      charCode, date, time, dateTime, savePosition, restorePosition, beginSubstring, endSubstring,
      line;
};

using Grammar = MathText<const char*>;

// A grammar for one scan. Building one takes longer than scanning a label, so each thread keeps
// one; a scan inside a scan gets its own.
class GrammarLease {
 public:
  GrammarLease() {
    if (state_ == State::kFree) {
      thread_local Kept kept;
      grammar_ = &kept.grammar;
      state_ = State::kLent;
    } else {
      own_ = std::make_unique<Grammar>();
      grammar_ = own_.get();
    }
  }
  GrammarLease(const GrammarLease&) = delete;
  GrammarLease& operator=(const GrammarLease&) = delete;
  ~GrammarLease() {
    if (own_) return;
    if (grammar_->text.capacity() > kMaxKeptText) std::string().swap(grammar_->text);
    state_ = State::kFree;
  }

  Grammar* operator->() const { return grammar_; }
  Grammar& operator*() const { return *grammar_; }

 private:
  enum class State { kFree, kLent, kGone };

  // Destroyed with its thread, where the destructor of something else may still scan.
  struct Kept {
    ~Kept() { state_ = State::kGone; }
    Grammar grammar;
  };

  static constexpr std::size_t kMaxKeptText = 65536;

  static thread_local constinit State state_;

  std::unique_ptr<Grammar> own_;
  Grammar* grammar_;
};

thread_local constinit GrammarLease::State GrammarLease::state_ = GrammarLease::State::kFree;

}  // namespace

IMathTextScanner::~IMathTextScanner() = default;

bool ScanMathText(const char* text, IMathTextScanner& scanner) {
  if (text == nullptr || *text == '\0') return true;
  const char* position = text;
  const char* const end = text + std::strlen(text);
  {
    const GrammarLease grammar;
    grammar->scanner = &scanner;
    qi::parse(position, end, *grammar);
  }
  if (position == end) return true;
  scanner.Error(position);
  return false;
}

// The bytes of a character beyond ASCII are 128 and above in UTF-8, the code page of narrow text,
// so none of them can be taken for one of the three.
bool ContainsMathText(const char* text) { return std::strpbrk(text, "\\\n\t") != nullptr; }

}  // namespace vlm
