#include <velum/mathtext/MTTextIF.h>

#include <velum/mathtext/MTDirectTextIF.h>
#include <testing/RecordingTextDevice.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vlm {
namespace {

using testing::DeviceFault;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RecordingTextDevice;

TEST(CMTTextIF, ReadsTheDeviceOnceAndThenNeverAgain) {
  RecordingTextDevice device;
  device.SetFace("Serif");
  device.ClearCalls();
  CMTTextIF textIF(device);
  EXPECT_THAT(device.TakeCalls(),
              ElementsAre("GetColor", "GetFace", "GetWeight", "GetStyle", "GetCharset", "GetPitch",
                          "GetFamily", "GetHeight", "GetHorizAlignment", "GetVertAlignment",
                          "GetHorizJustify"));
  EXPECT_EQ(textIF.GetFace(), "Serif");
  EXPECT_EQ(textIF.GetHeight(), 8.0);
  EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST(CMTTextIF, TellsTheDeviceOnlyWhatChanges) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  device.ClearCalls();
  textIF.SetHeight(8.0);
  textIF.SetFace("Arial");
  textIF.PreserveState();
  textIF.SetColor(Color4b(1, 2, 3, 4));
  textIF.SetColor(Color4b(1, 2, 3, 4));
  textIF.RestoreState();
  textIF.PreserveState();
  textIF.RestoreState();
  EXPECT_THAT(device.TakeCalls(), ElementsAre("SetColor 1 2 3 4", "SetColor 0 0 0 255"));
}

TEST(CMTTextIF, RestoresInAFixedOrder) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  textIF.PreserveState();
  textIF.SetHeight(9.0);
  textIF.SetHorizJustify(2);
  textIF.SetVertAlignment(2);
  textIF.SetHorizAlignment(2);
  textIF.SetFamily(5);
  textIF.SetPitch(5);
  textIF.SetCharset(5);
  textIF.SetStyle(5);
  textIF.SetWeight(5);
  textIF.SetFace("Serif");
  textIF.SetColor(Color4b(1, 2, 3, 4));
  device.ClearCalls();
  textIF.RestoreState();
  EXPECT_THAT(device.TakeCalls(),
              ElementsAre("SetColor 0 0 0 255", "SetFace 'Arial'", "SetWeight 4", "SetStyle 0",
                          "SetCharset 1", "SetPitch 2", "SetFamily 2", "SetHorizAlignment 0",
                          "SetVertAlignment 1", "SetHorizJustify 1", "SetHeight 8"));
}

TEST(CMTTextIF, KeepsEachLevelThatIsPreserved) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  textIF.PreserveState();
  textIF.PreserveState();
  textIF.SetHeight(1.0);
  textIF.PreserveState();
  textIF.PreserveState();
  textIF.SetHeight(2.0);
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHeight(), 1.0);
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHeight(), 1.0);
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHeight(), 8.0);
  textIF.SetHeight(3.0);
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHeight(), 8.0);
}

TEST(CMTTextIF, HasNothingToRestoreOnItsFirstRecord) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  textIF.SetHeight(3.0);
  device.ClearCalls();
  textIF.RestoreState();
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHeight(), 3.0);
  EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST(CMTTextIF, StaysInStepWithADeviceThatThrows) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  textIF.PreserveState();
  textIF.SetWeight(7);
  textIF.SetHeight(3.0);
  device.FailOn("SetWeight");
  EXPECT_THROW(textIF.RestoreState(), DeviceFault);
  EXPECT_EQ(textIF.GetHeight(), 8.0);
  EXPECT_EQ(device.GetHeight(), 8.0);  // told, although the weight failed
}

TEST(CMTTextIF, CopiesHaveStacksOfTheirOwn) {
  RecordingTextDevice device;
  CMTTextIF textIF(device);
  textIF.PreserveState();
  textIF.SetHeight(3.0);
  CMTTextIF copy(textIF);
  copy.RestoreState();
  EXPECT_EQ(copy.GetHeight(), 8.0);
  EXPECT_EQ(textIF.GetHeight(), 3.0);
}

TEST(CMTDirectTextIF, PassesEverythingOn) {
  RecordingTextDevice device;
  CMTDirectTextIF textIF(device);
  device.ClearCalls();
  textIF.SetWeight(4);
  textIF.PreserveState();
  textIF.SetHorizJustify(3);
  textIF.RestoreState();
  EXPECT_EQ(textIF.GetHorizJustify(), 1U);
  EXPECT_THAT(device.Calls(), ElementsAre("SetWeight 4", "PreserveState", "SetHorizJustify 3",
                                          "RestoreState", "GetHorizJustify"));
}

TEST(CMTDirectTextIF, PassesEachAttributeToItsOwnSetterAndGetter) {
  RecordingTextDevice device;
  CMTDirectTextIF direct(device);
  CMTTextIF& textIF = direct;
  textIF.SetColor(Color4b(1, 2, 3, 4));
  textIF.SetFace("Serif");
  textIF.SetWeight(11);
  textIF.SetStyle(12);
  textIF.SetCharset(13);
  textIF.SetPitch(14);
  textIF.SetFamily(15);
  textIF.SetHorizAlignment(16);
  textIF.SetVertAlignment(17);
  textIF.SetHorizJustify(18);
  textIF.SetHeight(19.0);
  EXPECT_EQ(textIF.GetColor(), Color4b(1, 2, 3, 4));
  EXPECT_EQ(textIF.GetFace(), "Serif");
  EXPECT_EQ(textIF.GetWeight(), 11U);
  EXPECT_EQ(textIF.GetStyle(), 12U);
  EXPECT_EQ(textIF.GetCharset(), 13U);
  EXPECT_EQ(textIF.GetPitch(), 14U);
  EXPECT_EQ(textIF.GetFamily(), 15U);
  EXPECT_EQ(textIF.GetHorizAlignment(), 16U);
  EXPECT_EQ(textIF.GetVertAlignment(), 17U);
  EXPECT_EQ(textIF.GetHorizJustify(), 18U);
  EXPECT_EQ(textIF.GetHeight(), 19.0);
}

}  // namespace
}  // namespace vlm
