#include <examples/sketchbook/Session.h>

#include <velum/commands/CommandFactory.h>
#include <velum/core/Exception.h>
#include <examples/sketchbook/Connector.h>
#include <examples/sketchbook/Script.h>
#include <examples/sketchbook/SketchCommand.h>
#include <examples/sketchbook/SketchFile.h>
#include <examples/sketchbook/Words.h>
#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace vlm::sketchbook {
namespace {

using ::testing::ElementsAre;

// A session with a sketch in which shapes, connectors and styles hang together.
class SketchSession : public ::testing::Test {
 protected:
  SketchSession() {
    for (const char* line : {
             "do add style name=ink color=navy width=2",
             "do add style name=spare",
             "do add circle x=10 y=20 r=5 name=a style=ink",
             "do add rectangle x=80 y=20 w=20 h=10 name=b style=ink",
             "do add connector from=a to=b name=ab",
             "do add label x=0 y=40 name=c text=\"{\\i x}\"",
             "do add connector from=c to=a name=ca",
             "do add connector from=b to=a name=ba",
         }) {
      session_.Execute(line);
    }
  }

  std::string Stream() const { return StoreSketch(session_.Sketch()); }

  std::string FaultOf(const std::string& line) {
    try {
      session_.Execute(line);
      return "none";
    } catch (const Exception& error) {
      return error.GetDescription();
    }
  }

  std::ostringstream answers_;
  Session session_{answers_, 1000};
};

TEST_F(SketchSession, UndoBringsBackEveryByteAndRedoToo) {
  for (const char* line : {
           "do add circle x=1 y=2 r=3",
           "do add style name=pencil color=gray",
           "do add connector from=b to=c via=\"0,0\" arrow=both",
           "do move a dx=0.1 dy=-0.3 angle=33",
           "do recolor a color=#102030 fill=#40506070",  // leaves its style
           "do recolor ink color=crimson",               // changes two shapes
           "do delete spare",
           "do delete ab",
           "do delete a",  // with three connectors, from the middle of other shapes' lists
           "do delete b",
       }) {
    const std::string before = Stream();
    session_.Execute(line);
    const std::string after = Stream();
    EXPECT_NE(after, before) << line;
    EXPECT_EQ(session_.Sketch()->Fault(), "") << line;
    session_.Execute("undo");
    EXPECT_EQ(Stream(), before) << line;
    session_.Execute("redo");
    EXPECT_EQ(Stream(), after) << line;
    session_.Execute("undo");
  }
}

TEST_F(SketchSession, AnyCommandsUndoneStepByStepGoBackThroughEveryState) {
  const auto seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const auto number = [&](unsigned int below) { return std::to_string(random() % below); };
  std::vector<std::string> states = {Stream()};
  for (int i = 0; i < 400; ++i) {
    const auto& shapes = session_.Sketch()->Shapes();
    const auto any = [&] {
      return shapes.empty() ? "a" : shapes[random() % shapes.size()]->Name().String();
    };
    const std::string lines[] = {
        "do add circle x=" + number(99) + " y=" + number(99) + " r=" + number(9) + " style=ink",
        "do add connector from=" + any() + " to=" + any(),
        "do move " + any() + " dx=0." + number(99) + " angle=" + number(360),
        "do recolor " + any() + " color=#0000" + std::to_string(10 + random() % 90),
        "do recolor ink fill=#" + std::to_string(100000 + random() % 900000),
        "do delete " + any(),
    };
    const std::string& line = lines[random() % std::size(lines)];
    if (FaultOf(line) == "none") states.push_back(Stream());
    ASSERT_EQ(Stream(), states.back()) << line;
    ASSERT_EQ(session_.Sketch()->Fault(), "") << line;
  }
  EXPECT_GT(states.size(), 100u);
  for (std::size_t i = states.size() - 1; i-- > 0;) {
    session_.Execute("undo");
    ASSERT_EQ(Stream(), states[i]) << i;
  }
  for (std::size_t i = 1; i < states.size(); ++i) {
    session_.Execute("redo");
    ASSERT_EQ(Stream(), states[i]) << i;
  }
}

TEST_F(SketchSession, WhatIsRefusedSaysWhyAndChangesNothing) {
  const std::string before = Stream();
  const struct {
    const char* line;
    const char* fault;
  } rows[] = {
      {"draw", "draw needs a file name"},
      {"fly", "what is 'fly'? see help"},
      {"undo 2", "undo stands alone"},
      {"redo", "there is nothing to redo"},
      {"do", "do what? add, move, recolor or delete"},
      {"do rotate a", "there is no command 'rotate'"},
      {"do add", "needs the kind of shape"},
      {"do add star x=1", "there is no kind of shape 'star'"},
      {"do add circle x=1 y=2", "a circle needs 'r'"},
      {"do add circle x=1 y=2 r=0", "a radius is above 0 and at most 10000"},
      {"do add circle x=1 y=2 r=3 corner=1", "a circle has no 'corner'"},
      {"do add circle x=1 y=2 r=nan", "add has no option 'r' with the value 'nan'"},
      {"do add circle x=1 y=2 r=3 radius=3", "add has no option 'radius' with the value '3'"},
      {"do add circle x=1 y=2 r=3 name=b", "'b' is there already"},
      {"do add circle x=1 y=2 r=3 style=none", "no style is called 'none'"},
      {"do add label x=1 y=2 text=\"\\zzz\"", "the text, line 1, column 1: cannot read '\\zzz'"},
      {"do add label x=1 y=2 text=\"open", "a quotation mark is open"},
      {"do add polyline points=\"1,2,3\"", "add has no option 'points' with the value '1,2,3'"},
      {"do add connector from=a to=a", "a connector needs two shapes"},
      {"do add connector from=a to=ab", "a connector ends at no connector"},
      {"do move ab dx=1", "a connector goes where its shapes go"},
      {"do move a dx=9999", "'a' would lie too far out"},
      {"do move z dx=1", "no shape is called 'z'"},
      {"do recolor a", "needs 'color' or 'fill'"},
      {"do recolor a color=mud", "recolor has no option 'color' with the value 'mud'"},
      {"do delete ink", "'ink' is the style of 2 shapes"},
      {"limit few", "limit needs a number"},
  };
  for (const auto& [line, fault] : rows) {
    EXPECT_EQ(FaultOf(line), fault) << line;
    EXPECT_EQ(Stream(), before) << line;
  }
}

TEST_F(SketchSession, HistoryKeepsAsManyStepsAsItsLimit) {
  session_.Execute("limit 2");
  EXPECT_EQ(FaultOf("undo"), "there is nothing to undo");  // the cut took the positions away
  for (const char* dx : {"dx=1", "dx=2", "dx=3"}) {
    session_.Execute(std::string("do move a ") + dx);
  }
  session_.Execute("undo");
  answers_.str("");
  session_.Execute("history");
  EXPECT_EQ(answers_.str(), "  undone  Move 'a'\n  done  Move 'a'\n2 steps of at most 2\n");
  session_.Execute("undo");
  EXPECT_EQ(FaultOf("undo"), "there is nothing to undo");
}

TEST_F(SketchSession, LoadThatFailsLeavesSketchAndHistory) {
  const vlm::testing::TemporaryFolder folder;
  const std::string before = Stream();
  for (const std::string& path : {folder.Path("none"), folder.Path()}) {
    EXPECT_NE(FaultOf("load " + path), "none");
    EXPECT_EQ(Stream(), before);
  }
  session_.Execute("undo");
  session_.Execute("save " + folder.Path("file"));
  session_.Execute("load " + folder.Path("file"));
  EXPECT_EQ(FaultOf("redo"), "there is nothing to redo");
}

TEST(SketchCommands, OptionsGoOutAsTheyCameIn) {
  RegisterCommands();
  const auto command = CommandFactory::Construct("ADD");
  EXPECT_TRUE(command->Option("Kind", "circle"));
  EXPECT_TRUE(command->Option("X", "1"));
  EXPECT_TRUE(command->Option("X", "2"));
  EXPECT_FALSE(command->Option("X", "far"));
  std::list<std::pair<GString, GString>> options;
  command->EnumerateOptions(options);
  options.erase(options.begin(), std::next(options.begin(), 3));  // the flags of every command
  EXPECT_THAT(options, ElementsAre(std::pair<GString, GString>("kind", "circle"),
                                   std::pair<GString, GString>("x", "2")));
  EXPECT_THROW(command->Do(), Exception);  // has no document
}

TEST(Words, QuotesKeepBlanksAndCommentsEnd) {
  EXPECT_THAT(ReadWords(" do\tadd  text=\"a \"\"b\"\" # c\" # not this"),
              ElementsAre("do", "add", "text=a \"b\" # c"));
  EXPECT_THAT(ReadWords("name=\"\" a#b"), ElementsAre("name=", "a#b"));
  EXPECT_TRUE(HasOpenQuote("text=\"a\nb"));
  EXPECT_FALSE(HasOpenQuote("text=\"a\nb\" # it's \" quiet"));
}

TEST(Script, StopsAtItsFirstErrorAndNamesTheLineWhereThatBegins) {
  std::ostringstream answers;
  Session session(answers, 10);
  std::istringstream script(
      "do add label x=1 y=1 name=a text=\"two\nlines\"\n"
      "do add label x=1 y=1 text=\"{\n\"\ndo add circle x=1 y=1 r=1\n");
  try {
    RunScript(session, script, "test.txt");
    FAIL() << "was run";
  } catch (const ScriptError& error) {
    EXPECT_THAT(error.what(), ::testing::StartsWith("test.txt:3: the text, line 1"));
  }
  EXPECT_EQ(session.Sketch()->Shapes().size(), 1u);
}

TEST(Script, AtATerminalGoesOnAfterAnError) {
  std::ostringstream terminal;
  Session session(terminal, 10);
  std::istringstream lines("fly\ndo add circle x=1 y=1 r=1\nquit\nlist\n");
  RunDialog(session, lines, terminal);
  EXPECT_EQ(terminal.str(),
            "sketch> what is 'fly'? see help\nsketch> Done: Add circle 'circle'\nsketch> ");
}

}  // namespace
}  // namespace vlm::sketchbook
