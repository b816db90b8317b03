#include <velum/mathtext/MTDateTimeFormat.h>

#include <velum/core/Exception.h>

#include <boost/phoenix.hpp>
#include <boost/spirit/include/qi.hpp>

#include <string>

namespace vlm {
namespace {

namespace phx = boost::phoenix;
namespace qi = boost::spirit::qi;

struct Entry {
  const char* pattern;
  const char* format;
};

constexpr Entry kEntries[] = {
    {"d", "%#d"},  {"dd", "%d"},   {"ddd", "%a"}, {"dddd", "%A"}, {"m", "%#m"}, {"mm", "%m"},
    {"mmm", "%b"}, {"mmmm", "%B"}, {"yy", "%y"},  {"yyyy", "%Y"}, {"h", "%#I"}, {"hh", "%#H"},
    {"HH", "%H"},  {"nn", "%M"},   {"ss", "%S"},  {"tt", "%p"},
};

using Table = qi::symbols<char, const char*>;

const Table& FormatsOfPatterns() {
  static const Table table = [] {
    Table entries;
    for (const Entry& entry : kEntries) entries.add(entry.pattern, entry.format);
    return entries;
  }();
  return table;
}

const Table& PatternsOfFormats() {
  static const Table table = [] {
    Table entries;
    for (const Entry& entry : kEntries) entries.add(entry.format, entry.pattern);
    return entries;
  }();
  return table;
}

GString Convert(const GString& text, const Table& table) {
  std::string result;
  const auto appendEntry = phx::ref(result) += qi::_1;
  const char* position = text.c_str();
  const char* const end = position + text.size();
  // The character behind an entry is copied unseen.
  qi::parse(position, end,
            *((table[appendEntry] >> -qi::char_[appendEntry]) | qi::char_[appendEntry]));
  if (position != end) {
    ThrowErrorImpl("MathTextDTFormatParser", __LINE__, ERR_CUSTOM,
                   "MathText parsing error near '%s'", position);
  }
  return result;
}

}  // namespace

GString MathTextDTToPrintfFormat(const GString& pattern) {
  return Convert(pattern, FormatsOfPatterns());
}

GString PrintfToMathTextDTFormat(const GString& format) {
  return Convert(format, PatternsOfFormats());
}

}  // namespace vlm
