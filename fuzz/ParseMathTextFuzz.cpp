// Lays any bytes out as math text, over an interface that keeps the attributes and over one that
// passes them on: measures, copies, draws and destroys the tree, and checks what must hold for
// every text.
#include <velum/mathtext/MTContext.h>
#include <velum/mathtext/MTDirectTextIF.h>
#include <velum/mathtext/MTStringElement.h>
#include <testing/RecordingTextDevice.h>
#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

using vlm::Box2d;
using vlm::CMTContext;
using vlm::CMTMultiLineElement;
using vlm::CMTTextIF;
using vlm::Vec2d;
using vlm::testing::RecordingTextDevice;
using Bits = std::array<std::uint64_t, 4>;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

Bits BitsOf(const Box2d& box) {
  return {std::bit_cast<std::uint64_t>(box.xMin()), std::bit_cast<std::uint64_t>(box.yMin()),
          std::bit_cast<std::uint64_t>(box.xMax()), std::bit_cast<std::uint64_t>(box.yMax())};
}

bool AsksForAlignmentsOnly(const std::vector<std::string>& calls) {
  return std::all_of(calls.begin(), calls.end(), [](const std::string& call) {
    return call == "GetHorizAlignment" || call == "GetVertAlignment";
  });
}

struct Outcome {
  CMTContext::RETVAL result;
  std::string simpleText;
  Bits box;
  bool operator==(const Outcome&) const = default;
};

Outcome LayOut(CMTTextIF& textIF, RecordingTextDevice& device, const std::string& text) {
  CMTContext context(textIF, 2.0);
  auto block = std::make_shared<CMTMultiLineElement>(textIF);
  const CMTContext::RETVAL result = context.Parse(text, block);
  const std::size_t openings = static_cast<std::size_t>(std::count(text.begin(), text.end(), '{')) +
                               static_cast<std::size_t>(std::count(text.begin(), text.end(), '(')) +
                               1;
  const std::size_t depth = device.StackDepth();
  Require(depth <= openings, "the stack holds no more than the text opens");

  const double height = textIF.GetHeight();
  const vlm::Color4b color = textIF.GetColor();
  const Box2d cold = block->GetBBoxUsingTextIF(textIF, Vec2d(3.0, 5.0));
  const double extent = block->GetExtentUsingTextIF(textIF);
  device.ClearCalls();
  const Box2d warm = block->GetBBoxUsingTextIF(textIF, Vec2d(3.0, 5.0));
  const double warmExtent = block->GetExtentUsingTextIF(textIF);
  Require(AsksForAlignmentsOnly(device.TakeCalls()), "a warm tree asks nothing");
  Require(BitsOf(cold) == BitsOf(warm), "the warm box is the cold one");
  Require(std::bit_cast<std::uint64_t>(extent) == std::bit_cast<std::uint64_t>(warmExtent),
          "the warm width is the cold one");

  const std::unique_ptr<CMTMultiLineElement> copy(block->Clone());
  const std::string simpleText = block->GetSimpleText();
  block.reset();
  copy->DrawUsingTextIF(textIF, Vec2d(3.0, 5.0));
  copy->InternalDraw(textIF, Vec2d());
  Require(copy->GetSimpleText() == simpleText, "a copy has the text");
  std::vector<std::shared_ptr<vlm::CMTStringElement>> strings;
  copy->FillMTStringElementList(strings);
  Require(textIF.GetHeight() == height && textIF.GetColor() == color,
          "drawing leaves the attributes");
  Require(device.StackDepth() == depth, "drawing leaves the stack");
  device.ClearCalls();

  // The context can be used on after a failure.
  (void)context.Parse("a\\b b", block);
  return {result, simpleText, BitsOf(cold)};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  // The clock of a text with the time may strike between the two, but not again and again.
  bool alike = false;
  for (int attempt = 0; attempt < 3 && !alike; ++attempt) {
    RecordingTextDevice keptDevice;
    CMTTextIF keeping(keptDevice);
    const Outcome kept = LayOut(keeping, keptDevice, text);
    Require(keptDevice.StackDepth() == 0, "a keeping interface leaves the device's stack alone");

    RecordingTextDevice passedDevice;
    vlm::CMTDirectTextIF passing(passedDevice);
    alike = LayOut(passing, passedDevice, text) == kept;
  }
  Require(alike, "both interfaces lay out alike");
  return 0;
}
