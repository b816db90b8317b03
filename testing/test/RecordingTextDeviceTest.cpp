#include <testing/RecordingTextDevice.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace vlm;

TEST(RecordingTextDevice, WritesCallsDownInOrder) {
  vlm::testing::RecordingTextDevice device;
  KQTextIF& calls = device;
  calls.SetColor(Color4b(1, 2, 3, 4));
  calls.SetFace("Serif");
  calls.SetHeight(4.5);
  Box2d box;
  calls.GetBounds("a b", box);
  calls.Draw(Vec2d(1.0, -0.25), "a");
  calls.DrawLine(Vec2d(-0.0, 0.0), Vec2d(8.0, 0.0));
  EXPECT_EQ(calls.GetFace(), "Serif");
  EXPECT_THAT(device.TakeCalls(),
              ElementsAre("SetColor 1 2 3 4", "SetFace 'Serif'", "SetHeight 4.5", "GetBounds 'a b'",
                          "Draw (1, -0.25) 'a'", "DrawLine (0, 0) (8, 0)", "GetFace"));
  EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST(RecordingTextDevice, FailsOnceOnTheCallThatItIsToldTo) {
  vlm::testing::RecordingTextDevice device;
  device.FailOn("SetWeight", 2);
  device.SetWeight(5);
  device.SetStyle(1);
  EXPECT_THROW(device.SetWeight(7), vlm::testing::DeviceFault);
  EXPECT_EQ(device.GetWeight(), 5U);
  EXPECT_NO_THROW(device.SetWeight(7));
  EXPECT_EQ(device.GetWeight(), 7U);
}

TEST(FixedTextDevice, MeasuresAsItsCommentSays) {
  vlm::testing::FixedTextDevice device;
  Box2d box;
  device.GetBounds("jx", box);
  EXPECT_EQ(box, Box2d(-2.0, -6.0, 8.0, 2.0));
  device.GetBounds("x ", box);
  EXPECT_EQ(box, Box2d(0.0, -4.0, 4.0, 0.0));
  device.GetBounds("  ", box);
  EXPECT_EQ(box, Box2d(0.0, 0.0, 0.0, 0.0));

  device.SetWeight(7);
  device.SetHeight(16.0);
  Vec2d extent;
  device.GetExtent("ab", extent);
  EXPECT_EQ(extent, Vec2d(20.0, 16.0));
}

TEST(FixedTextDevice, RestoresWhatItPreservedAndNothingBelow) {
  vlm::testing::FixedTextDevice device;
  device.PreserveState();
  device.SetHeight(3.0);
  EXPECT_EQ(device.StackDepth(), 1U);
  device.RestoreState();
  EXPECT_EQ(device.GetHeight(), 8.0);
  device.RestoreState();
  EXPECT_EQ(device.GetHeight(), 8.0);
}
