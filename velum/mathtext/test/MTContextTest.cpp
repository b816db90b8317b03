#include <velum/mathtext/MTContext.h>

#include <velum/core/Exception.h>
#include <velum/mathtext/MTDirectTextIF.h>
#include <velum/mathtext/MTStringElement.h>
#include <testing/RecordingTextDevice.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::FixedTextDevice;
using ::testing::IsEmpty;
using testing::RecordingTextDevice;
using Calls = std::vector<std::string>;

constexpr auto kSuccess = CMTContext::RETVAL_SUCCESS;
constexpr auto kFailure = CMTContext::RETVAL_FAILURE;

std::string Repeated(const std::string& text, std::size_t times) {
  std::string result;
  for (; times > 0; --times) result += text;
  return result;
}

// A device of height 8, where a byte is 4 wide, with an interface and a context on it.
class Context : public ::testing::Test {
 protected:
  CMTContext::RETVAL Parse(const std::string& text) { return context.Parse(text, block); }

  // What is drawn at (0, 0), attributes left out.
  Calls Drawn(const std::string& text) {
    block = std::make_shared<CMTMultiLineElement>(textIF);
    CMTContext own(textIF, 2.0);
    EXPECT_EQ(own.Parse(text, block), kSuccess) << text;
    (void)block->GetBBoxUsingTextIF(textIF, Vec2d());
    device.ClearCalls();
    block->DrawUsingTextIF(textIF, Vec2d());
    Calls drawn;
    for (const std::string& call : device.Calls())
      if (call.rfind("Draw", 0) == 0) drawn.push_back(call);
    return drawn;
  }

  RecordingTextDevice device;
  CMTTextIF textIF{device};
  CMTContext context{textIF, 2.0};
  std::shared_ptr<CMTMultiLineElement> block = std::make_shared<CMTMultiLineElement>(textIF);
};

TEST_F(Context, PlacesWhatItReads) {
  struct Row {
    const char* why;
    const char* text;
    Calls drawn;
  };
  const Row rows[] = {
      {"plain text takes no scanner", "{a}", {"Draw (0, 0) '{a}'"}},
      {"a string ends where its attributes do",
       "abc\\b def",
       {"Draw (0, 0) 'abc'", "Draw (12, 0) 'def'"}},
      {"bold is wider", "\\b ab\\plain c", {"Draw (0, 0) 'ab'", "Draw (10, 0) 'c'"}},
      {"a superscript", "x\\up50 \\fs50 2", {"Draw (0, 0) 'x'", "Draw (4, -4) '2'"}},
      {"braces restore the height", "{\\fs50 a}b", {"Draw (0, 0) 'a'", "Draw (2, 0) 'b'"}},
      {"sizes multiply", "\\fs50 \\fs50 a\\i b", {"Draw (0, 0) 'a'", "Draw (1, 0) 'b'"}},
      {"braces don't restore the pen", "{\\up50 a}b", {"Draw (0, -4) 'a'", "Draw (4, -4) 'b'"}},
      {"down", "\\dn25 a", {"Draw (0, 2) 'a'"}},
      {"positions go back",
       "a\\sp1 b\\up50 c\\rp1 d",
       {"Draw (0, 0) 'a'", "Draw (4, 0) 'b'", "Draw (8, -4) 'c'", "Draw (4, 0) 'd'"}},
      {"positions die with the line", "a\\sp1 \n\\rp1 c", {"Draw (0, 0) 'a'", "Draw (0, 8) 'c'"}},
      {"tabs", "a\tb\t\tc", {"Draw (0, 0) 'a'", "Draw (8, 0) 'b'", "Draw (24, 0) 'c'"}},
      {"a tab on a stop goes to the next", "ab\tc", {"Draw (0, 0) 'ab'", "Draw (16, 0) 'c'"}},
      {"character codes", "\\a65 \\a322 c", {"Draw (0, 0) 'ABc'"}},
      {"no tab from a code", "\\a9 c", {"Draw (0, 0) '\tc'"}},
      {"a zero cuts the run off", "ab\\a0 cd\\i e", {"Draw (0, 0) 'ab'", "Draw (8, 0) 'e'"}},
      {"a run of nothing but a zero", "\\a0 \\i e", {"Draw (0, 0) ''", "Draw (0, 0) 'e'"}},
      {"lines", "a\n\nb", {"Draw (0, 0) 'a'", "Draw (0, 6) ''", "Draw (0, 12) 'b'"}},
      {"an empty line in the middle of nothing", "\n", {"Draw (0, 0) ''", "Draw (0, 4) ''"}},
      {"a substring in percent of the height",
       "ab\\ssbeg(50,-100,left,baseline) c\\ssend d",
       {"Draw (0, 0) 'ab'", "Draw (4, -8) 'c'", "Draw (8, 0) 'd'"}},
      {"a wide substring moves the pen",
       "a\\ssbeg(0,-100,left,baseline) bcd\\ssend e",
       {"Draw (0, 0) 'a'", "Draw (0, -8) 'bcd'", "Draw (12, 0) 'e'"}},
      {"anchored substrings",
       "abcd\\ssbeg(100,-75,center,bottom) xx\\ssend e",
       {"Draw (0, 0) 'abcd'", "Draw (4, -6) 'xx'", "Draw (16, 0) 'e'"}},
      {"lines of a substring are not justified",
       "\\ssbeg(0,0,right,top) a\nbc\\ssend d",
       {"Draw (8, 0) ''", "Draw (0, 6) 'a'", "Draw (0, 14) 'bc'", "Draw (8, 0) 'd'"}},
      {"a substring has its own braces",
       "{a\\ssbeg(0,0,left,top) b\nc\\ssend d}",
       {"Draw (0, 0) 'a'", "Draw (0, 6) 'b'", "Draw (0, 14) 'c'", "Draw (4, 0) 'd'"}},
      {"a line to the right",
       "ab\\line(50,-25,right)",
       {"Draw (0, 0) 'ab'", "DrawLine (4, -2) (8, -2)"}},
      {"height 0 before a line",
       "a\\fs0 \\line(50,50,right)",
       {"Draw (0, 0) 'a'", "DrawLine (0, 0) (4, 0)"}},
      {"height 0 before a substring",
       "a\\fs0 \\ssbeg(50,50,left,baseline) b\\ssend c",
       {"Draw (0, 0) 'a'", "Draw (0, 0) 'b'", "Draw (4, 0) 'c'"}},
      {"a brace open at the end", "\\i {a", {"Draw (0, 0) 'a'"}},
      {"a brace open at the end of a substring",
       "\\ssbeg(0,0,left,baseline) {a\\ssend ",
       {"Draw (0, 0) ''", "Draw (0, 0) 'a'"}},
  };
  for (const Row& row : rows) EXPECT_EQ(Drawn(row.text), row.drawn) << row.why;
}

TEST_F(Context, ChangesTheAttributesAsTheLanguageSays) {
  struct Row {
    const char* text;
    Calls calls;  // in front of "GetExtent 'z'"
  };
  const Row rows[] = {
      {"\\b z", {"SetWeight 7"}},
      {"\\i \\ul \\strike z", {"SetStyle 1", "SetStyle 3", "SetStyle 7"}},
      {"\\b \\i \\plain z", {"SetWeight 7", "SetStyle 1", "SetStyle 0", "SetWeight 4"}},
      {"\\f\"Serif\" z", {"SetFace 'Serif'", "SetCharset 0", "SetPitch 0", "SetFamily 0"}},
      {"\\fs50 z", {"SetHeight 4"}},
      {"\\color(1,2,3,4) \\red z", {"SetColor 1 2 3 4", "SetColor 255 0 0 4"}},
      {"\\rgbr9 \\rgbg8 \\rgbb7 \\rgba6 z",
       {"SetColor 9 0 0 255", "SetColor 9 8 0 255", "SetColor 9 8 7 255", "SetColor 9 8 7 6"}},
      {"{\\b }z", {"SetWeight 7", "SetWeight 4"}},
      {"\\b \nz", {"SetWeight 7", "SetWeight 4"}},
  };
  for (const Row& row : rows) {
    device.ClearCalls();
    EXPECT_EQ(Parse(row.text), kSuccess);
    Calls calls = device.TakeCalls();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "GetMetrics");
    Calls before;
    for (std::size_t i = 1; i < calls.size() && calls[i] != "GetExtent 'z'"; ++i)
      before.push_back(calls[i]);
    EXPECT_EQ(before, row.calls) << row.text;
  }
}

TEST_F(Context, CallsTheDeviceForOneLabelExactlySo) {
  device.ClearCalls();
  EXPECT_EQ(Parse("H{\\dn25 \\fs50 2}O\\red !"), kSuccess);
  EXPECT_THAT(
      device.TakeCalls(),
      ElementsAre("GetMetrics", "GetExtent 'H'", "SetHeight 4", "GetExtent '2'", "SetHeight 8",
                  "GetExtent 'O'", "SetColor 255 0 0 255", "GetExtent '!'", "SetColor 0 0 0 255"));
  EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d()), Box2d(0.0, -6.0, 14.0, 4.0));
  EXPECT_THAT(
      device.TakeCalls(),
      ElementsAre("GetBounds 'H'", "SetHeight 4", "GetBounds '2'", "SetHeight 8", "GetBounds 'O'",
                  "SetColor 255 0 0 255", "GetBounds '!'", "SetColor 0 0 0 255"));
  EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d()), Box2d(0.0, -6.0, 14.0, 4.0));
  EXPECT_THAT(device.TakeCalls(), IsEmpty());
  block->DrawUsingTextIF(textIF, Vec2d(10.0, 20.0));
  EXPECT_THAT(device.TakeCalls(),
              ElementsAre("Draw (10, 20) 'H'", "SetHeight 4", "Draw (14, 22) '2'", "SetHeight 8",
                          "Draw (16, 22) 'O'", "SetColor 255 0 0 255", "Draw (20, 22) '!'",
                          "SetColor 0 0 0 255"));
}

TEST_F(Context, DrawsOnADeviceThatKeepsItsOwnStack) {
  CMTDirectTextIF direct(device);
  CMTContext own(direct, 2.0);
  EXPECT_EQ(own.Parse("\\b a", block), kSuccess);
  (void)block->GetBBoxUsingTextIF(direct, Vec2d());
  EXPECT_EQ(device.StackDepth(), 0U);
  device.ClearCalls();
  block->DrawUsingTextIF(direct, Vec2d());
  const Calls attributes = {"SetColor 0 0 0 255", "SetFace 'Arial'", "SetWeight 7", "SetStyle 0",
                            "SetCharset 1",       "SetPitch 2",      "SetFamily 2", "SetHeight 8"};
  Calls expected = {"GetHorizAlignment", "GetVertAlignment", "PreserveState", "GetHorizJustify",
                    "GetHorizAlignment"};
  const auto add = [&expected](const Calls& calls) {
    expected.insert(expected.end(), calls.begin(), calls.end());
  };
  for (int level = 0; level < 2; ++level) {  // the string with attachments, and the string
    add({"PreserveState", "SetHorizAlignment 0", "SetVertAlignment 1"});
    add(attributes);
  }
  add({"Draw (0, 0) 'a'", "RestoreState"});
  add(attributes);
  add({"RestoreState", "RestoreState"});
  EXPECT_THAT(device.Calls(), ElementsAreArray(expected));
  EXPECT_EQ(device.StackDepth(), 0U);
}

TEST_F(Context, FailsAndKeepsTheResult) {
  const struct {
    const char* why;
    const char* text;
  } rows[] = {
      {"syntax", "a\\zzz"},
      {"brace closed before it is opened", "\\b a}"},
      {"brace open at a line end", "{a\n"},
      {"brace of the outer level", "{\\ssbeg(0,0,left,top) }\\ssend "},
      {"substring closed before it is opened", "a\\ssend "},
      {"text ends inside a substring", "\\ssbeg(0,0,left,top) a"},
      {"offset nan", "\\ssbeg(nan,0,left,top) \\ssend "},
      {"line at infinity", "a\\line(0,inf,top)"},
      {"offset overflows", "\\fs4294967295 \\line(1e308,0,top)"},
  };
  for (const auto& row : rows) {
    CMTTextIF own(device);
    CMTContext fresh(own, 2.0);
    std::shared_ptr<CMTMultiLineElement> result = block;
    EXPECT_EQ(fresh.Parse(row.text, result), kFailure) << row.why;
    EXPECT_EQ(result, block) << row.why;
    own.PreserveState();
    own.SetHeight(2.0);
    own.RestoreState();
    EXPECT_EQ(fresh.Parse("ok\\b ay", result), kSuccess) << row.why;  // goes on where it stopped
  }
}

TEST_F(Context, ANumberThatLeavesTheRangeIsAFailure) {
  EXPECT_EQ(Parse("\\i " + Repeated("\\fs4294967295 ", 50)), kFailure);  // 8 * (4.3e7)^50
  EXPECT_TRUE(std::isfinite(textIF.GetHeight()));
  EXPECT_EQ(Parse(Repeated("\\fs4294967295 ", 38) + Repeated("\\up4294967295 ", 600)), kFailure);
}

TEST_F(Context, NothingChangesWhenThereIsNoSubstringToEnd) {
  device.ClearCalls();
  EXPECT_EQ(Parse("\\b a\\ssend "), kFailure);
  EXPECT_THAT(device.Calls(), ElementsAre("GetMetrics", "SetWeight 7"));  // "a" is still pending
  EXPECT_EQ(Parse("\\i b"), kSuccess);
  EXPECT_EQ(block->GetSimpleText(), "ab");
}

TEST_F(Context, EmptyTextLeavesTheResultAlone) {
  std::shared_ptr<CMTMultiLineElement> none;
  EXPECT_EQ(context.Parse("", none), kSuccess);
  EXPECT_EQ(none, nullptr);
}

TEST_F(Context, PlainTextNeedsABlockToGoTo) {
  std::shared_ptr<CMTMultiLineElement> none;
  EXPECT_THROW(context.Parse("plain", none), Exception);
  EXPECT_EQ(context.Parse("\\b math", none), kSuccess);
  ASSERT_NE(none, nullptr);
}

TEST_F(Context, PlainTextIsAppendedAndMathTextReplaces) {
  const auto mine = block;
  EXPECT_EQ(Parse("a"), kSuccess);
  EXPECT_EQ(Parse("b"), kSuccess);
  EXPECT_EQ(mine->GetSimpleText(), "a\nb");
  EXPECT_EQ(Parse("c\\b d"), kSuccess);
  EXPECT_NE(block, mine);
  const auto contexts = block;
  EXPECT_EQ(Parse("\\i e"), kSuccess);
  EXPECT_EQ(block, contexts);
  EXPECT_EQ(block->GetSimpleText(), "cd\ne");
}

TEST_F(Context, LinesOfTheTextTakeTheAlignmentsOfTheInterface) {
  textIF.SetHorizAlignment(HALIGN_CENTER);
  textIF.SetHorizJustify(HORIZ_JUSTIFY_RIGHT);
  // The block is 12 wide and centred; the short line ends at its right side.
  EXPECT_THAT(Drawn("\\i a\nabc"), ElementsAre("Draw (2, 0) 'a'", "Draw (-6, 8) 'abc'"));
}

TEST_F(Context, TheDateGoesThroughItsFormat) {
  EXPECT_EQ(Parse("\\dt(\"--\")x\ty"), kFailure);
  EXPECT_EQ(Parse("a\\dt(\"--\tQ\") \\dt(\"yyyy\")"), kSuccess);
  std::vector<std::shared_ptr<CMTStringElement>> strings;
  block->FillMTStringElementList(strings);
  ASSERT_EQ(strings.size(), 2U);
  EXPECT_EQ(strings[0]->GetText(), "a--");
  EXPECT_EQ(strings[1]->GetText().size(), 5U);
  EXPECT_EQ(strings[1]->GetText().substr(0, 3), "Q20");
  EXPECT_EQ(Parse("\\dt(\"" + std::string(128, '-') + "\")"), kSuccess);
}

TEST_F(Context, TabsNeverMoveThePenAstray) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double chars : {0.0, infinity, -infinity, std::nan("")}) {
    CMTContext own(textIF, chars);
    block = nullptr;
    ASSERT_EQ(own.Parse("ab\tc", block), kSuccess);
    EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d()), Box2d(0.0, -6.0, 12.0, 2.0)) << chars;
  }
  CMTContext tiny(textIF, 1e-300);
  ASSERT_EQ(tiny.Parse("ab\tc", block), kSuccess);
  EXPECT_TRUE(std::isfinite(block->GetBBoxUsingTextIF(textIF, Vec2d()).xMax()));
}

TEST_F(Context, SurvivesAPenThatIsNotFinite) {
  class Endless : public FixedTextDevice {
   public:
    void GetExtent(const GString&, Vec2d& extent) override {
      extent = Vec2d(std::numeric_limits<double>::infinity(), 1.0);
    }
  } endless;
  CMTTextIF own(endless);
  CMTContext fresh(own, 2.0);
  EXPECT_EQ(fresh.Parse("a\tb\\ssbeg(1,1,center,top) c\\ssend \\up1 d\n\te", block), kSuccess);
  block->DrawUsingTextIF(own, Vec2d());
  EXPECT_EQ(block->GetSimpleText(), "abcd\ne");
}

TEST_F(Context, PassesForeignExceptionsAndLeavesTheInterfaceUsable) {
  device.FailOn("GetExtent", 2);
  EXPECT_THROW(Parse("a\\b b\\i c"), testing::DeviceFault);
  textIF.RestoreState();  // the line that was left open
  EXPECT_EQ(textIF.GetWeight(), 4U);
  EXPECT_EQ(Parse("\\i d"), kSuccess);
  EXPECT_EQ(block->GetSimpleText(), "bd");  // "b" was pending
}

TEST_F(Context, KeepsItsOptions) {
  context.SetOptions(0xFF00);
  context.SetOptions(0x0003);
  context.ClearOptions(0x0101);
  EXPECT_EQ(context.GetOptions(), 0xFE02);
  EXPECT_EQ(context.GetCharsPerTab(), 2.0);
  context.SetCharsPerTab(3.0);
  EXPECT_EQ(Parse("\ta"), kSuccess);
  EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d()).xMax(), 16.0);
}

TEST_F(Context, LimitsTheDepthOfSubstrings) {
  const auto nested = [](std::size_t depth) {
    return Repeated("\\ssbeg(0,0,left,top) ", depth) + "a" + Repeated("\\ssend ", depth);
  };
  ASSERT_EQ(Parse(nested(100)), kSuccess);
  EXPECT_EQ(block->GetSimpleText(), "a");
  EXPECT_EQ(Parse(nested(101)), kFailure);
}

// 100,000 levels, through parsing, measuring, copying, drawing and destruction.
TEST_F(Context, DeepNestingNeitherCrashesNorHangs) {
  for (const bool direct : {false, true}) {
    FixedTextDevice fixed;
    CMTTextIF keeping(fixed);
    CMTDirectTextIF passing(fixed);
    CMTTextIF& own = direct ? passing : keeping;
    CMTContext fresh(own, 2.0);
    for (const auto& [text, expected] : std::vector<std::pair<std::string, CMTContext::RETVAL>>{
             {"\\b " + Repeated("{", 100000) + "a" + Repeated("}", 100000), kSuccess},
             {"\\b " + Repeated("{", 100000) + "a", kSuccess},
             {"\\b " + Repeated("{\\fs99 ", 100000) + "a", kSuccess},
             {Repeated("\\ssbeg(0,0,left,top) ", 100000), kFailure},
             {Repeated("\\ssend ", 100000), kFailure}}) {  // 100 of them end what that one began
      EXPECT_EQ(fresh.Parse(text, block), expected);
      const std::unique_ptr<CMTMultiLineElement> copy(block->Clone());
      (void)copy->GetBBoxUsingTextIF(own, Vec2d());
      copy->DrawUsingTextIF(own, Vec2d());
    }
  }
}

// Many substrings on one string take linear time.
TEST_F(Context, ManySubstringsOnOneStringAreCheap) {
  FixedTextDevice fixed;
  CMTTextIF own(fixed);
  CMTContext fresh(own, 2.0);
  ASSERT_EQ(fresh.Parse("a" + Repeated("\\ssbeg(10,0,left,baseline) b\\ssend ", 20000), block),
            kSuccess);
  EXPECT_EQ(block->GetBBoxUsingTextIF(own, Vec2d()).xRange(), 4.8);
}

}  // namespace
}  // namespace vlm
