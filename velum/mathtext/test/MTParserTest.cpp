#include <velum/mathtext/MTParser.h>

#include <velum/mathtext/test/reference/ReferenceScanner.h>
#include <velum/mathtext/test/reference/ScanRecorder.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <chrono>
#include <clocale>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using test::ScanRecorder;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Calls = std::vector<std::string>;

Calls CallsOf(const std::string& text) {
  ScanRecorder recorder;
  const bool whole = ScanMathText(text.c_str(), recorder);
  const bool failed = !recorder.calls.empty() && recorder.calls.back().rfind("Error", 0) == 0;
  EXPECT_NE(whole, failed) << text;
  return recorder.calls;
}

TEST(ScanMathText, CallsTheScannerAsTheLanguageSays) {
  struct Row {
    const char* why;
    const char* text;
    Calls calls;
  };
  const Row rows[] = {
      {"plain text is one run", "abc", {"Text 'abc'"}},
      {"an unknown directive is an error", "abc\\zzz", {"Text 'abc'", "Error '\\zzz'"}},
      {"a lone backslash is an error", "a\\", {"Text 'a'", "Error '\\'"}},
      {"escapes are text, not braces", "a\\\\b\\{c\\}", {"Text 'a\\b{c}'"}},
      {"an escaped backslash opens nothing", "\\\\b", {"Text '\\b'"}},
      {"one blank belongs to the directive", "\\b x", {"Bold", "Text 'x'"}},
      {"a second blank is text", "\\b  x", {"Bold", "Text ' x'"}},
      {"a directive needs its end", "\\up50x", {"Error '\\up50x'"}},
      {"a brace is no end", "{\\b}", {"PushState", "Error '\\b}'"}},
      {"a line end ends a directive and stays", "\\up10\n", {"VerticalOffset -10", "Newline"}},
      {"the end of the text, too", "\\dn10", {"VerticalOffset 10"}},
      {"any case",
       "\\UP1 \\Blue \\PLAIN",
       {"VerticalOffset -1", "PredefinedColor 0 0 255 255", "Plain"}},
      {"a colour before bold", "\\blue x", {"PredefinedColor 0 0 255 255", "Text 'x'"}},
      {"the language's green is pure", "\\green", {"PredefinedColor 0 255 0 255"}},
      {"a size after a face that isn't one", "\\fs12 ", {"FontSize 12"}},
      {"component up to 255", "\\rgbr255 \\rgba0", {"ColorComponent 0 255", "ColorComponent 3 0"}},
      {"component beyond 255", "\\rgbr256", {"Error '\\rgbr256'"}},
      {"alpha is required", "\\color(255,0,0)", {"Error '\\color(255,0,0)'"}},
      {"white space in parentheses", "\\color( 1 , 2,\n3 ,4\t) x", {"Color 1 2 3 4", "Text 'x'"}},
      {"but not before them", "\\color (1,2,3,4)", {"Error '\\color (1,2,3,4)'"}},
      {"nor behind them", "\\color(1,2,3,4)  x", {"Color 1 2 3 4", "Text ' x'"}},
      {"a face", "\\f\"Arial\" x", {"Facename 'Arial'", "Text 'x'"}},
      {"no blank before the quote", "\\f \"Arial\"", {"Error '\\f \"Arial\"'"}},
      {"no empty face", "\\f\"\"", {"Error '\\f\"\"'"}},
      {"bytes of 128 are text", "\xC3\xA9", {"Text '\xC3\xA9'"}},
      {"but no face", "\\f\"\xC3\xA9\"", {"Error '\\f\"\xC3\xA9\"'"}},
      {"slots are 1 to 20", "\\sp1 \\rp20", {"SavePosition 1", "RestorePosition 20"}},
      {"slot 0", "\\sp0", {"Error '\\sp0'"}},
      {"slot 21", "\\rp21", {"Error '\\rp21'"}},
      {"line ends", "\r\n\n\r\n\n", {"Newline", "Newline", "Newline", "Newline"}},
      {"line feed before carriage return", "\n\r", {"Newline", "Newline"}},
      {"a tab is text", "a\tb", {"Text 'a\tb'"}},
      {"braces needn't match", "}{", {"PopState", "PushState"}},
      {"dates",
       "\\date \\time \\dt( \"hh\" )",
       {"DateTime 'mm/dd/yy'", "DateTime 'h:nn tt'", "DateTime 'hh'"}},
      {"32 bits", "\\a4294967295", {"CharCode 4294967295"}},
      {"33 bits", "\\a4294967296", {"Error '\\a4294967296'"}},
      {"reals", "\\ssbeg(.5,-5.,right,CENTER)", {"BeginSubstring 0.5 -5 2 3"}},
      {"reals with words", "\\line(+INF,NaN,bottom)", {"Line inf nan 3"}},
      {"infinity", "\\line(-infinity,1e2,top) \\ssend", {"Line -inf 100 1", "EndSubstring"}},
      {"a real too large", "\\line(1e309,0,top)", {"Error '\\line(1e309,0,top)'"}},
      {"a real too small", "\\line(1e-400,0,left)", {"Line 0 0 0"}},
      {"an exponent without digits", "\\line(1e,0,left)", {"Error '\\line(1e,0,left)'"}},
  };
  for (const Row& row : rows) EXPECT_EQ(CallsOf(row.text), row.calls) << row.why;
}

TEST(ScanMathText, CallsNothingForNoText) {
  ScanRecorder recorder;
  EXPECT_TRUE(ScanMathText(nullptr, recorder));
  EXPECT_TRUE(ScanMathText("", recorder));
  EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST(ScanMathText, PointsIntoTheTextAtAnError) {
  class Pointer : public ScanRecorder {
   public:
    void Error(const char* rest) override { place = rest; }
    const char* place = nullptr;
  };
  const char* const text = "ab\\b c\\nope";
  Pointer scanner;
  EXPECT_FALSE(ScanMathText(text, scanner));
  EXPECT_EQ(scanner.place, text + 6);
}

TEST(ScanMathText, AgreesWithTheReferenceOnRandomTexts) {
  const char* const pieces[] = {"\\up",
                                "\\dn",
                                "12",
                                " ",
                                "300",
                                "\\red",
                                "\\BLUE",
                                "\\rgbr",
                                "\\rgba",
                                "\\color(",
                                "1",
                                ",",
                                "255",
                                ")",
                                "\\b",
                                "\\i",
                                "\\strike",
                                "\\ul",
                                "\\plain",
                                "\\f",
                                "\"Arial\"",
                                "\"",
                                "\\fs",
                                "\\a",
                                "\\date",
                                "\\time",
                                "\\dt(",
                                "\\sp",
                                "\\rp",
                                "20",
                                "21",
                                "\\ssbeg(",
                                "left",
                                "center",
                                "RIGHT",
                                "top",
                                "baseline",
                                "bottom",
                                "\\ssend",
                                "\\line(",
                                "nan",
                                "-inf",
                                "1.5e3",
                                ".5",
                                "5.",
                                "1e400",
                                "1e-400",
                                "1e",
                                "+",
                                "-",
                                "\n",
                                "\r",
                                "\r\n",
                                "\t",
                                "{",
                                "}",
                                "\\\\",
                                "\\{",
                                "\\}",
                                "\\",
                                "abc",
                                "\xC3\xA9",
                                "\xFF",
                                "4294967296",
                                "infinity",
                                "\\b ",
                                "\\up20 ",
                                "\\ssbeg(0,-50,left,bottom) ",
                                "\\line(0, 1, right)",
                                "\\color(1,2,3,4) "};
  const unsigned int seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  int whole = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (std::size_t n = random() % 12; n > 0; --n) text += pieces[random() % std::size(pieces)];
    ScanRecorder expected;
    ScanRecorder found;
    EXPECT_EQ(ScanMathText(text.c_str(), found), test::ReferenceScan(text.c_str(), expected));
    ASSERT_EQ(found.calls, expected.calls) << text;
    if (found.calls.empty() || found.calls.back().rfind("Error", 0) != 0) ++whole;
  }
  EXPECT_GT(whole, 2000);  // the pieces make right texts, too
}

TEST(ScanMathText, CanBeCalledFromWithinAScan) {
  class Nested : public ScanRecorder {
   public:
    void Bold() override {
      ScanRecorder inner;
      ScanMathText("\\i in\\ul ner", inner);
      calls.insert(calls.end(), inner.calls.begin(), inner.calls.end());
    }
    void Text(const char* text) override {
      ScanRecorder inner;
      ScanMathText("inner", inner);
      ScanRecorder::Text(text);  // still the outer one's
    }
  };
  Nested scanner;
  EXPECT_TRUE(ScanMathText("a\\b b", scanner));
  EXPECT_THAT(scanner.calls, ElementsAre("Text 'a'", "Italic", "Text 'in'", "Underline",
                                         "Text 'ner'", "Text 'b'"));
}

TEST(ScanMathText, LetsExceptionsPassAndWorksOn) {
  class Thrower : public ScanRecorder {
   public:
    void Italic() override { throw std::runtime_error("italic"); }
  };
  for (int i = 0; i < 2; ++i) {
    Thrower scanner;
    EXPECT_THROW(ScanMathText("a\\b b\\i c", scanner), std::runtime_error);
    EXPECT_THAT(scanner.calls, ElementsAre("Text 'a'", "Bold", "Text 'b'"));
  }
  EXPECT_EQ(CallsOf("\\b c"), (Calls{"Bold", "Text 'c'"}));
}

TEST(ScanMathText, WorksOnSeveralThreadsAtATime) {
  std::vector<std::thread> threads;
  std::vector<Calls> calls(4);
  for (Calls& mine : calls) {
    threads.emplace_back([&mine] {
      for (int i = 0; i < 1000; ++i) mine = CallsOf("x\\up50 \\fs70 2\\red !");
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const Calls& mine : calls) {
    EXPECT_THAT(mine, ElementsAre("Text 'x'", "VerticalOffset -50", "FontSize 70", "Text '2'",
                                  "PredefinedColor 255 0 0 255", "Text '!'"));
  }
}

TEST(ScanMathText, DoesNotHeedTheLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"de_DE.UTF-8", "tr_TR.UTF-8", "C.UTF-8"}) {
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr) << locale;
    EXPECT_EQ(CallsOf("\\LINE(1.5,0,LEFT) \\I"), (Calls{"Line 1.5 0 0", "Italic"})) << locale;
  }
  std::setlocale(LC_ALL, before.c_str());
}

// Texts that a careless grammar would read in quadratic time or by recursion. 256 kB take seconds
// then.
TEST(ScanMathText, ReadsHostileTextsInLinearTime) {
  struct Row {
    const char* head;
    const char* repeated;
    const char* why;
  };
  const Row rows[] = {
      {"\\color(", " ", "one unfinished directive of white space"},
      {"", "\\", "escaped backslashes"},
      {"\\", "\\\\", "an odd number of backslashes"},
      {"", "\\ssbeg(1,1,left,", "unfinished substrings"},
      {"", "\\ssbeg(0,0,left,top) ", "substrings"},
      {"", "{", "braces"},
      {"\\line(0.", "0", "a number of many zeros"},
      {"\\line(", "9", "a number of many digits"},
      {"\\line(1e", "9", "an exponent of many digits"},
      {"\\f\"", "x", "an unfinished quotation"},
      {"", "\n", "line ends"},
  };
  class Counter : public ScanRecorder {
   public:
    void PushState() override { ++count; }
    void Newline() override { ++count; }
    void BeginSubstring(double, double, HAlignment, VAlignment) override { ++count; }
    void Text(const char*) override { ++count; }
    void Error(const char*) override { ++count; }
    std::size_t count = 0;
  };
  for (const Row& row : rows) {
    std::string text = row.head;
    while (text.size() < 256 * 1024) text += row.repeated;
    Counter counter;
    const auto start = std::chrono::steady_clock::now();
    ScanMathText(text.c_str(), counter);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    EXPECT_LT(taken.count(), 2.0) << row.why;
    EXPECT_GE(counter.count, 1U) << row.why;
  }
}

TEST(ContainsMathText, LooksForThreeCharacters) {
  EXPECT_TRUE(ContainsMathText("a\\b"));
  EXPECT_TRUE(ContainsMathText("a\nb"));
  EXPECT_TRUE(ContainsMathText("a\tb"));
  EXPECT_FALSE(ContainsMathText(""));
  EXPECT_FALSE(ContainsMathText("{a}\r\xC3\xA9"));
}

}  // namespace
}  // namespace vlm
