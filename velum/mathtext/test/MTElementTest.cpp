#include <velum/mathtext/MTElement.h>

#include <velum/core/Exception.h>
#include <velum/mathtext/MTAssocStringElement.h>
#include <velum/mathtext/MTDirectTextIF.h>
#include <velum/mathtext/MTLineElement.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/MTStringElement.h>
#include <testing/RecordingTextDevice.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace vlm {
namespace {

using ::testing::Contains;
using testing::DeviceFault;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RecordingTextDevice;
using Side = IMathTextScanner::Side;

// A device of height 8 with an interface on it. A byte is 4 wide and its ink reaches from -6 to 2.
class MTElement : public ::testing::Test {
 protected:
  std::shared_ptr<CMTAssocStringElement> String(const char* text) {
    return std::make_shared<CMTAssocStringElement>(
        textIF, std::make_shared<CMTStringElement>(textIF, text));
  }
  std::shared_ptr<CMTLineElement> Line(const char* text) {
    auto line = std::make_shared<CMTLineElement>(textIF);
    line->AddAssocStringElement(String(text), Vec2d());
    return line;
  }
  std::shared_ptr<CMTMultiLineElement> Block(const std::vector<const char*>& lines) {
    auto block = std::make_shared<CMTMultiLineElement>(textIF);
    for (const char* text : lines) block->AppendLine(textIF, Line(text));
    return block;
  }

  RecordingTextDevice device;
  CMTTextIF textIF{device};
};

TEST_F(MTElement, BeginsWithTheDefaults) {
  CMTStringElement string("a");
  EXPECT_EQ(string.GetOffset(), Vec2d());
  EXPECT_EQ(string.GetHorizAlignment(), 0U);
  EXPECT_EQ(string.GetVertAlignment(), 1U);
  EXPECT_EQ(string.GetHorizJustify(), 1U);
  EXPECT_EQ(string.GetHeight(), 0.0);
  device.SetFace("Serif");
  CMTDirectTextIF direct(device);
  device.ClearCalls();
  string.GetAttributes(direct);
  EXPECT_THAT(device.Calls(),
              ElementsAre("SetColor 0 0 0 255", "SetFace 'Arial'", "SetWeight 4", "SetStyle 0",
                          "SetCharset 1", "SetPitch 2", "SetFamily 2", "SetHeight 0"));
}

TEST_F(MTElement, MeasuresAStringOnceInItsOwnAttributes) {
  textIF.PreserveState();
  textIF.SetWeight(7);
  const CMTStringElement string(textIF, "ab");
  textIF.RestoreState();
  device.ClearCalls();
  EXPECT_EQ(string.GetExtentUsingTextIF(textIF), 10.0);
  EXPECT_EQ(string.GetGenericBBox(textIF), Box2d(0.0, -6.0, 10.0, 2.0));
  EXPECT_THAT(device.TakeCalls(), ElementsAre("SetWeight 7", "GetExtent 'ab'", "SetWeight 4",
                                              "SetWeight 7", "GetBounds 'ab'", "SetWeight 4"));
  EXPECT_EQ(string.GetExtentUsingTextIF(textIF), 10.0);
  EXPECT_EQ(string.GetGenericBBox(textIF), Box2d(0.0, -6.0, 10.0, 2.0));
  EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(MTElement, AddsTheOffsetWhereItIsToldTo) {
  CMTStringElement string(textIF, "ab");
  string.SetOffset(Vec2d(3.0, 1.0));
  EXPECT_EQ(string.GetExtentUsingTextIF(textIF), 11.0);
  EXPECT_EQ(string.GetInternalBBox(textIF, Vec2d(100.0, 0.0)), Box2d(103.0, -5.0, 111.0, 3.0));

  const auto assoc = String("ab");
  assoc->SetOffset(Vec2d(3.0, 1.0));
  EXPECT_EQ(assoc->GetGenericBBox(textIF), Box2d(3.0, -5.0, 11.0, 3.0));

  const auto block = Block({"ab"});
  block->SetOffset(Vec2d(3.0, 1.0));
  EXPECT_EQ(block->GetExtentUsingTextIF(textIF), 8.0);
  EXPECT_EQ(block->GetGenericBBox(textIF), Box2d(0.0, -6.0, 8.0, 2.0));
}

TEST_F(MTElement, AnOverhangingStringBeginsAtItsPosition) {
  const auto string = String("ja");  // its ink begins at -2
  EXPECT_EQ(string->GetGenericBBox(textIF), Box2d(-2.0, -6.0, 8.0, 2.0));
  EXPECT_EQ(string->GetInternalBBox(textIF, Vec2d(10.0, 0.0)), Box2d(10.0, -6.0, 20.0, 2.0));
  device.ClearCalls();
  string->InternalDraw(textIF, Vec2d(10.0, 0.0));
  EXPECT_THAT(device.Calls(), ElementsAre("Draw (12, 0) 'ja'"));
}

TEST_F(MTElement, BoxesOfAStringHoldTheOrigin) {
  EXPECT_EQ(String("x")->GetGenericBBox(textIF), Box2d(0.0, -4.0, 4.0, 0.0));
  EXPECT_EQ(String("")->GetGenericBBox(textIF), Box2d(0.0, 0.0, 0.0, 0.0));
  EXPECT_EQ(Line("xx")->GetGenericBBox(textIF), Box2d(0.0, -4.0, 8.0, 0.0));
}

TEST_F(MTElement, AttachedBlocksCountInBoxAndWidth) {
  const auto string = String("ab");
  string->AssociateMLElement(Block({"c"}), Vec2d(6.0, -8.0));
  EXPECT_EQ(string->GetGenericBBox(textIF), Box2d(0.0, -14.0, 10.0, 2.0));
  EXPECT_EQ(string->GetExtentUsingTextIF(textIF), 10.0);
  string->AssociateMLElement(Block({"c"}), Vec2d(-6.0, 0.0));  // blocks from -6 to 10
  EXPECT_EQ(string->GetExtentUsingTextIF(textIF), 16.0);
  EXPECT_EQ(string->GetInternalBBox(textIF, Vec2d()), Box2d(0.0, -14.0, 16.0, 2.0));
}

TEST_F(MTElement, ALineIsAsWideAsItsFarthestString) {
  CMTLineElement line(textIF);
  EXPECT_EQ(line.GetExtentUsingTextIF(textIF), 0.0);
  line.AddAssocStringElement(String("abc"), Vec2d(0.0, 0.0));
  line.AddAssocStringElement(String("a"), Vec2d(20.0, -3.0));
  EXPECT_EQ(line.GetExtentUsingTextIF(textIF), 24.0);
  EXPECT_EQ(line.GetGenericBBox(textIF), Box2d(0.0, -9.0, 24.0, 2.0));
  EXPECT_EQ(line.GetSimpleText(), "abca");
}

TEST_F(MTElement, LinesTouchEachOther) {
  // "x" has no descent and little ascent: the boxes are -4 to 0, 0 to 8 and 8 to 12.
  const auto block = Block({"x", "ab", "x"});
  EXPECT_EQ(block->GetGenericBBox(textIF), Box2d(0.0, -4.0, 8.0, 12.0));
  EXPECT_EQ(block->GetSimpleText(), "x\nab\nx");
  device.ClearCalls();
  block->InternalDraw(textIF, Vec2d(10.0, 0.0));
  EXPECT_THAT(device.Calls(),
              ElementsAre("Draw (10, 0) 'x'", "Draw (10, 6) 'ab'", "Draw (10, 12) 'x'"));
}

TEST_F(MTElement, ALineWithoutInkIsAsHighAsAnX) {
  EXPECT_EQ(Block({""})->GetGenericBBox(textIF), Box2d(0.0, -4.0, 4.0, 0.0));
  EXPECT_EQ(Block({"x", " ", "x"})->GetGenericBBox(textIF), Box2d(0.0, -4.0, 4.0, 8.0));
  EXPECT_EQ(Block({})->GetGenericBBox(textIF), Box2d(0.0, 0.0, 0.0, 0.0));
  EXPECT_EQ(Block({})->GetExtentUsingTextIF(textIF), 0.0);

  textIF.SetHorizAlignment(HALIGN_RIGHT);
  textIF.SetVertAlignment(VALIGN_TOP);
  Box2d box;
  Line("")->CalcEmptyLineInternalBBox(textIF, Vec2d(10.0, 0.0), box);
  EXPECT_EQ(box, Box2d(6.0, 0.0, 10.0, 4.0));
}

TEST_F(MTElement, BlocksJustifyTheirLines) {
  struct Row {
    unsigned int alignment;
    unsigned int justify;
    const char* narrow;  // the line that is 4 wide in a block of 12
    const char* wide;
  };
  const Row rows[] = {
      {0, 1, "Draw (100, 0) 'a'", "Draw (100, 8) 'abc'"},
      {0, 2, "Draw (104, 0) 'a'", "Draw (100, 8) 'abc'"},
      {0, 3, "Draw (108, 0) 'a'", "Draw (100, 8) 'abc'"},
      {1, 1, "Draw (94, 0) 'a'", "Draw (94, 8) 'abc'"},
      {1, 2, "Draw (98, 0) 'a'", "Draw (94, 8) 'abc'"},
      {1, 3, "Draw (102, 0) 'a'", "Draw (94, 8) 'abc'"},
      {2, 1, "Draw (88, 0) 'a'", "Draw (88, 8) 'abc'"},
      {2, 2, "Draw (92, 0) 'a'", "Draw (88, 8) 'abc'"},
      {2, 3, "Draw (96, 0) 'a'", "Draw (88, 8) 'abc'"},
      {0, 7, "Draw (100, 0) 'a'", "Draw (100, 8) 'abc'"},
  };
  for (const Row& row : rows) {
    // The lines stand to the block as the block to its position.
    const auto block = std::make_shared<CMTMultiLineElement>(textIF);
    for (const char* text : {"a", "abc"}) {
      const auto line = Line(text);
      line->SetHorizAlignment(row.alignment);
      block->AppendLine(textIF, line);
    }
    textIF.SetHorizAlignment(row.alignment);
    textIF.SetHorizJustify(row.justify);
    device.ClearCalls();
    block->DrawUsingTextIF(textIF, Vec2d(100.0, 0.0));
    std::vector<std::string> draws;
    for (const std::string& call : device.Calls())
      if (call.rfind("Draw", 0) == 0) draws.push_back(call);
    EXPECT_THAT(draws, ElementsAre(row.narrow, row.wide)) << row.alignment << row.justify;
  }
}

TEST_F(MTElement, TheBoxIsWhereTheDrawingIs) {
  const auto block = Block({"abc", "x"});  // 12 wide, -6 to 6
  textIF.SetHorizAlignment(HALIGN_RIGHT);
  textIF.SetVertAlignment(VALIGN_BOTTOM);
  EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d(100.0, 50.0)), Box2d(88.0, 38.0, 100.0, 50.0));
  textIF.SetVertAlignment(VALIGN_CENTER);
  EXPECT_EQ(block->GetBBoxUsingTextIF(textIF, Vec2d(100.0, 50.0)), Box2d(88.0, 44.0, 100.0, 56.0));
}

TEST_F(MTElement, SegmentsRunToTheSidesOfStringAndBlocks) {
  const auto string = String("ab");
  string->AssociateMLElement(Block({"c"}), Vec2d(8.0, -8.0));  // 8 to 12, -14 to -6
  string->AssociateLineSegment(Side::SIDE_LEFT, Vec2d(2.0, -3.0));
  string->AssociateLineSegment(Side::SIDE_TOP, Vec2d(2.0, -3.0));
  string->AssociateLineSegment(Side::SIDE_RIGHT, Vec2d(2.0, -3.0));
  string->AssociateLineSegment(Side::SIDE_BOTTOM, Vec2d(2.0, -3.0));
  device.ClearCalls();
  string->InternalDraw(textIF, Vec2d(100.0, 0.0));
  EXPECT_THAT(
      device.Calls(),
      ElementsAre("GetBounds 'ab'", "GetBounds 'c'", "Draw (100, 0) 'ab'", "Draw (108, -8) 'c'",
                  "DrawLine (102, -3) (100, -3)", "DrawLine (102, -3) (102, -14)",
                  "DrawLine (102, -3) (112, -3)", "DrawLine (102, -3) (102, 2)"));
  EXPECT_EQ(string->GetSimpleText(), "abc");
}

TEST_F(MTElement, SegmentsTakeTheAttributesOfTheString) {
  textIF.PreserveState();
  textIF.SetColor(Color4b(255, 0, 0, 255));
  auto inner = std::make_shared<CMTStringElement>(textIF, "a");
  textIF.RestoreState();
  CMTAssocStringElement string(textIF, inner);
  string.AssociateLineSegment(Side::SIDE_RIGHT, Vec2d());
  (void)string.GetGenericBBox(textIF);
  device.ClearCalls();
  string.InternalDraw(textIF, Vec2d());
  EXPECT_THAT(device.Calls(),
              ElementsAre("SetColor 255 0 0 255", "Draw (0, 0) 'a'", "SetColor 0 0 0 255",
                          "SetColor 255 0 0 255", "DrawLine (0, 0) (4, 0)", "SetColor 0 0 0 255"));
}

TEST_F(MTElement, ASideThatIsNoneIsAnInternalError) {
  const auto string = String("a");
  string->AssociateLineSegment(static_cast<Side>(4), Vec2d());
  try {
    string->InternalDraw(textIF, Vec2d());
    ADD_FAILURE();
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetSrcFile(), "MTParser");
  }
}

TEST_F(MTElement, AttachmentsScaleWithTheTextHeight) {
  auto line = Line("a");  // height 8
  textIF.SetHeight(4.0);
  line->AssociateLineSegment(textIF, Side::SIDE_RIGHT, Vec2d(1.0, -1.0));
  const auto block = Block({"b"});  // height 4, 2 wide
  EXPECT_EQ(line->AssociateMLElement(textIF, block, Vec2d(3.0, -2.0)), Vec2d(8.0, 0.0));
  device.ClearCalls();
  line->InternalDraw(textIF, Vec2d());
  EXPECT_THAT(device.Calls(), Contains("Draw (6, -4) 'b'"));
  EXPECT_THAT(device.Calls(), Contains("DrawLine (2, -2) (8, -2)"));
}

TEST_F(MTElement, AttachmentsAtHeightZeroStandAtTheOrigin) {
  auto line = Line("a");
  textIF.SetHeight(0.0);
  line->AssociateLineSegment(textIF, Side::SIDE_RIGHT, Vec2d(0.0, 0.0));
  line->AssociateMLElement(textIF, Block({"b"}), Vec2d(5.0, 0.0));
  device.ClearCalls();
  line->InternalDraw(textIF, Vec2d());
  EXPECT_THAT(device.Calls(), Contains("Draw (0, 0) 'b'"));
  EXPECT_THAT(device.Calls(), Contains("DrawLine (0, 0) (4, 0)"));
}

TEST_F(MTElement, AnOffsetThatGrowsBeyondAllBoundsIsRefused) {
  auto line = Line("a");
  textIF.SetHeight(1e-200);
  EXPECT_THROW(line->AssociateLineSegment(textIF, Side::SIDE_RIGHT, Vec2d(1e200, 0.0)), Exception);
  EXPECT_THROW(line->AssociateMLElement(textIF, Block({"b"}), Vec2d(1e200, 0.0)), Exception);
}

TEST_F(MTElement, AnEmptyLineTakesAttachmentsOnAnEmptyString) {
  CMTLineElement line(textIF);
  // The empty string's own height is 0, and so are offsets in it.
  EXPECT_EQ(line.AssociateMLElement(textIF, Block({"bc"}), Vec2d(3.0, 3.0)), Vec2d(8.0, 0.0));
  EXPECT_EQ(line.GetGenericBBox(textIF), Box2d(0.0, -6.0, 8.0, 2.0));
  EXPECT_EQ(line.GetSimpleText(), "bc");
}

TEST_F(MTElement, CopiesShareChildrenAndKeepTheirOwnMeasures) {
  const auto string = std::make_shared<CMTStringElement>(textIF, "a");
  CMTAssocStringElement original(textIF, string);
  EXPECT_EQ(original.GetExtentUsingTextIF(textIF), 4.0);
  const std::unique_ptr<CMTAssocStringElement> copy(original.Clone());
  string->SetText("abc");
  EXPECT_EQ(original.GetExtentUsingTextIF(textIF), 4.0);  // still kept
  EXPECT_EQ(copy->GetExtentUsingTextIF(textIF), 4.0);
  copy->AssociateMLElement(Block({}), Vec2d());
  EXPECT_EQ(copy->GetExtentUsingTextIF(textIF), 12.0);
  EXPECT_EQ(original.GetExtentUsingTextIF(textIF), 4.0);
  EXPECT_EQ(original.GetSimpleText(), "abc");
}

TEST_F(MTElement, EveryBlockIsMeasuredAnewWhenAnotherIsAttached) {
  const auto string = String("");
  const auto first = Block({"a"});
  string->AssociateMLElement(first, Vec2d());
  EXPECT_EQ(string->GetExtentUsingTextIF(textIF), 4.0);
  first->AppendLine(textIF, Line("abc"));
  string->AssociateMLElement(Block({"ab"}), Vec2d());
  EXPECT_EQ(string->GetExtentUsingTextIF(textIF), 12.0);
}

TEST_F(MTElement, AppendedLinesAreCopies) {
  const auto line = Line("a");
  const auto block = std::make_shared<CMTMultiLineElement>(textIF);
  block->AppendLine(textIF, line);
  line->clear();
  EXPECT_TRUE(line->empty());
  EXPECT_EQ(block->GetSimpleText(), "a");
  block->AppendLine(textIF, line);
  EXPECT_EQ(block->GetSimpleText(), "a\n");
}

TEST_F(MTElement, ContentIsWhatEmptyAndClearSay) {
  CMTAssocStringElement string(textIF, "");
  string.AssociateLineSegment(Side::SIDE_TOP, Vec2d());
  EXPECT_TRUE(string.empty());
  string.AssociateMLElement(Block({"a"}), Vec2d());
  EXPECT_FALSE(string.empty());
  string.clear();
  EXPECT_TRUE(string.empty());
  device.ClearCalls();
  string.InternalDraw(textIF, Vec2d());
  EXPECT_THAT(device.Calls(), Contains("DrawLine (0, 0) (0, 0)"));  // segments stay
}

TEST_F(MTElement, ListsCopiesOfItsStrings) {
  const auto block = Block({"a", "b"});
  std::vector<std::shared_ptr<CMTStringElement>> list;
  block->FillMTStringElementList(list);
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[1]->GetText(), "b");
  list[1]->SetText("changed");
  EXPECT_EQ(block->GetSimpleText(), "a\nb");
}

TEST_F(MTElement, AWarmTreeAsksNothing) {
  const auto block = Block({"a", "", "jx"});
  const auto inner = Block({"c", "d"});
  auto line = Line("e");
  line->AssociateMLElement(textIF, inner, Vec2d(1.0, 1.0));
  block->AppendLine(textIF, line);
  CMTDirectTextIF direct(device);
  const Box2d cold = block->GetGenericBBox(direct);
  const double extent = block->GetExtentUsingTextIF(direct);
  device.ClearCalls();
  EXPECT_EQ(block->GetGenericBBox(direct), cold);
  EXPECT_EQ(block->GetExtentUsingTextIF(direct), extent);
  EXPECT_EQ(block->GetInternalBBox(direct, Vec2d()), cold);
  EXPECT_THAT(device.Calls(), IsEmpty());

  // Drawing stacks the lines again; the measures of the empty one, too, are kept.
  block->DrawUsingTextIF(direct, Vec2d());
  EXPECT_THAT(device.Calls(), ::testing::Not(Contains(::testing::HasSubstr("GetBounds"))));
}

TEST_F(MTElement, AnEmptyLineIsMeasuredAgainWhenItsAttributesChange) {
  const auto line = std::make_shared<CMTLineElement>(textIF);
  Box2d before, after;
  (void)line->GetGenericBBox(textIF);
  line->CalcEmptyLineInternalBBox(textIF, Vec2d(), before);
  textIF.PreserveState();
  textIF.SetHeight(2 * textIF.GetHeight());
  line->SetAttributes(textIF);
  textIF.RestoreState();
  (void)line->GetGenericBBox(textIF);
  line->CalcEmptyLineInternalBBox(textIF, Vec2d(), after);
  EXPECT_EQ(after, before * 2.0);
}

// Whatever call of the device fails, the exception arrives and the attributes are as before.
TEST_F(MTElement, LeavesTheInterfaceAsItWasWhenTheDeviceThrows) {
  textIF.SetHeight(6.0);
  const auto makeBlock = [this] {
    const auto block = Block({"ab", "", "x"});
    textIF.PreserveState();
    textIF.SetHeight(3.0);
    textIF.SetWeight(7);
    auto line = Line("e");
    line->AssociateMLElement(textIF, Block({"c"}), Vec2d(1.0, 1.0));
    line->AssociateLineSegment(textIF, Side::SIDE_TOP, Vec2d());
    textIF.RestoreState();
    block->AppendLine(textIF, line);
    return block;
  };
  for (const char* operation : {"GetBounds", "SetHeight", "SetWeight", "Draw", "DrawLine"}) {
    int failures = 0;
    for (int nth = 1; nth < 40; ++nth) {
      const auto block = makeBlock();
      textIF.PreserveState();
      device.FailOn(operation, nth);
      try {
        (void)block->GetExtentUsingTextIF(textIF);
        block->DrawUsingTextIF(textIF, Vec2d());
        device.FailOn("nothing");
      } catch (const DeviceFault&) {
        ++failures;
      }
      EXPECT_EQ(textIF.GetHeight(), 6.0) << operation << nth;
      EXPECT_EQ(textIF.GetWeight(), 4U) << operation << nth;
      textIF.SetHeight(5.0);  // on the record that was preserved here and nowhere else
      textIF.RestoreState();
      EXPECT_EQ(textIF.GetHeight(), 6.0) << operation << nth;
      (void)block->GetExtentUsingTextIF(textIF);
      EXPECT_NO_THROW(block->DrawUsingTextIF(textIF, Vec2d()));
    }
    EXPECT_GT(failures, 0) << operation;
  }
}

}  // namespace
}  // namespace vlm
