#pragma once

/// \file
/// A text device that writes down every call, so that a test can say what reaches a device and in
/// what order.
///
///     vlm::testing::RecordingTextDevice device;
///     vlm::CMTTextIF textIF(device);
///     device.ClearCalls();
///     textIF.SetWeight(7);
///     textIF.SetWeight(7);
///     EXPECT_THAT(device.TakeCalls(), ElementsAre("SetWeight 7"));

#include <testing/FixedTextDevice.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace vlm::testing {

/// What a `RecordingTextDevice` throws when it is told to.
class DeviceFault : public std::runtime_error {
 public:
  /// Names the operation that failed.
  explicit DeviceFault(const std::string& operation) : std::runtime_error(operation) {}
};

/// A `FixedTextDevice` that writes down every call and fails on demand.
///
/// A call stands as its name and its arguments: "SetColor 255 0 0 255", "SetHeight 4.5",
/// "GetExtent 'ab'", "Draw (3, -1) 'ab'", "DrawLine (0, 0) (8, 0)", "PreserveState", "GetFace". A
/// call that fails is written down and changes nothing.
class RecordingTextDevice final : public FixedTextDevice {
 public:
  /// Gives the calls so far.
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }
  /// Gives the calls so far and forgets them.
  std::vector<std::string> TakeCalls();
  /// Forgets the calls so far.
  void ClearCalls() { calls_.clear(); }
  /// Lets the n-th call of an operation from now on (1 is the next one) throw a `DeviceFault`,
  /// once.
  void FailOn(const std::string& operation, int nth = 1);

  void SetColor(Color4b color) override;
  Color4b GetColor() const override;
  void SetFace(const GString& face) override;
  GString GetFace() const override;
  void SetWeight(unsigned int weight) override;
  unsigned int GetWeight() const override;
  void SetStyle(unsigned int style) override;
  unsigned int GetStyle() const override;
  void SetCharset(unsigned int charset) override;
  unsigned int GetCharset() const override;
  void SetPitch(unsigned int pitch) override;
  unsigned int GetPitch() const override;
  void SetFamily(unsigned int family) override;
  unsigned int GetFamily() const override;
  void SetHorizAlignment(unsigned int alignment) override;
  unsigned int GetHorizAlignment() const override;
  void SetVertAlignment(unsigned int alignment) override;
  unsigned int GetVertAlignment() const override;
  void SetHeight(double height) override;
  double GetHeight() const override;
  void SetHorizJustify(unsigned int justify) override;
  unsigned int GetHorizJustify() const override;
  void PreserveState() override;
  void RestoreState() override;
  void GetBounds(const GString& text, Box2d& box) override;
  void GetExtent(const GString& text, Vec2d& extent) override;
  void GetMetrics(KQTextIF::_TXTMETRICS& metrics) override;
  bool Draw(const Vec2d& position, const GString& text) override;
  bool DrawLine(const Vec2d& from, const Vec2d& to) override;

 private:
  void Record(const char* operation, const std::string& arguments = "") const;

  mutable std::vector<std::string> calls_;
  mutable std::string failingOperation_;
  mutable int callsToFailure_ = 0;
};

}  // namespace vlm::testing
