#include <testing/RecordingTextDevice.h>

#include <cstdio>
#include <utility>

namespace vlm::testing {
namespace {

// The shortest form that tells small binary fractions apart; a zero has no sign.
std::string InWords(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.12g", value == 0.0 ? 0.0 : value);
  return text;
}

std::string InWords(unsigned int value) { return std::to_string(value); }

std::string InWords(const GString& text) { return "'" + text.String() + "'"; }

std::string InWords(const Vec2d& point) {
  std::string text = "(";
  text.append(InWords(point.x)).append(", ").append(InWords(point.y)).append(")");
  return text;
}

std::string InWords(Color4b color) {
  return std::to_string(color.R) + " " + std::to_string(color.G) + " " + std::to_string(color.B) +
         " " + std::to_string(color.A);
}

}  // namespace

std::vector<std::string> RecordingTextDevice::TakeCalls() { return std::exchange(calls_, {}); }

void RecordingTextDevice::FailOn(const std::string& operation, int nth) {
  failingOperation_ = operation;
  callsToFailure_ = nth;
}

void RecordingTextDevice::Record(const char* operation, const std::string& arguments) const {
  std::string call = operation;
  if (!arguments.empty()) call.append(1, ' ').append(arguments);
  calls_.push_back(call);
  if (failingOperation_ == operation && --callsToFailure_ == 0) {
    failingOperation_.clear();
    throw DeviceFault(operation);
  }
}

void RecordingTextDevice::SetColor(Color4b color) {
  Record("SetColor", InWords(color));
  FixedTextDevice::SetColor(color);
}

Color4b RecordingTextDevice::GetColor() const {
  Record("GetColor");
  return FixedTextDevice::GetColor();
}

void RecordingTextDevice::SetFace(const GString& face) {
  Record("SetFace", InWords(face));
  FixedTextDevice::SetFace(face);
}

GString RecordingTextDevice::GetFace() const {
  Record("GetFace");
  return FixedTextDevice::GetFace();
}

void RecordingTextDevice::SetWeight(unsigned int weight) {
  Record("SetWeight", InWords(weight));
  FixedTextDevice::SetWeight(weight);
}

unsigned int RecordingTextDevice::GetWeight() const {
  Record("GetWeight");
  return FixedTextDevice::GetWeight();
}

void RecordingTextDevice::SetStyle(unsigned int style) {
  Record("SetStyle", InWords(style));
  FixedTextDevice::SetStyle(style);
}

unsigned int RecordingTextDevice::GetStyle() const {
  Record("GetStyle");
  return FixedTextDevice::GetStyle();
}

void RecordingTextDevice::SetCharset(unsigned int charset) {
  Record("SetCharset", InWords(charset));
  FixedTextDevice::SetCharset(charset);
}

unsigned int RecordingTextDevice::GetCharset() const {
  Record("GetCharset");
  return FixedTextDevice::GetCharset();
}

void RecordingTextDevice::SetPitch(unsigned int pitch) {
  Record("SetPitch", InWords(pitch));
  FixedTextDevice::SetPitch(pitch);
}

unsigned int RecordingTextDevice::GetPitch() const {
  Record("GetPitch");
  return FixedTextDevice::GetPitch();
}

void RecordingTextDevice::SetFamily(unsigned int family) {
  Record("SetFamily", InWords(family));
  FixedTextDevice::SetFamily(family);
}

unsigned int RecordingTextDevice::GetFamily() const {
  Record("GetFamily");
  return FixedTextDevice::GetFamily();
}

void RecordingTextDevice::SetHorizAlignment(unsigned int alignment) {
  Record("SetHorizAlignment", InWords(alignment));
  FixedTextDevice::SetHorizAlignment(alignment);
}

unsigned int RecordingTextDevice::GetHorizAlignment() const {
  Record("GetHorizAlignment");
  return FixedTextDevice::GetHorizAlignment();
}

void RecordingTextDevice::SetVertAlignment(unsigned int alignment) {
  Record("SetVertAlignment", InWords(alignment));
  FixedTextDevice::SetVertAlignment(alignment);
}

unsigned int RecordingTextDevice::GetVertAlignment() const {
  Record("GetVertAlignment");
  return FixedTextDevice::GetVertAlignment();
}

void RecordingTextDevice::SetHeight(double height) {
  Record("SetHeight", InWords(height));
  FixedTextDevice::SetHeight(height);
}

double RecordingTextDevice::GetHeight() const {
  Record("GetHeight");
  return FixedTextDevice::GetHeight();
}

void RecordingTextDevice::SetHorizJustify(unsigned int justify) {
  Record("SetHorizJustify", InWords(justify));
  FixedTextDevice::SetHorizJustify(justify);
}

unsigned int RecordingTextDevice::GetHorizJustify() const {
  Record("GetHorizJustify");
  return FixedTextDevice::GetHorizJustify();
}

void RecordingTextDevice::PreserveState() {
  Record("PreserveState");
  FixedTextDevice::PreserveState();
}

void RecordingTextDevice::RestoreState() {
  Record("RestoreState");
  FixedTextDevice::RestoreState();
}

void RecordingTextDevice::GetBounds(const GString& text, Box2d& box) {
  Record("GetBounds", InWords(text));
  FixedTextDevice::GetBounds(text, box);
}

void RecordingTextDevice::GetExtent(const GString& text, Vec2d& extent) {
  Record("GetExtent", InWords(text));
  FixedTextDevice::GetExtent(text, extent);
}

void RecordingTextDevice::GetMetrics(KQTextIF::_TXTMETRICS& metrics) {
  Record("GetMetrics");
  FixedTextDevice::GetMetrics(metrics);
}

bool RecordingTextDevice::Draw(const Vec2d& position, const GString& text) {
  Record("Draw", InWords(position) + " " + InWords(text));
  return FixedTextDevice::Draw(position, text);
}

bool RecordingTextDevice::DrawLine(const Vec2d& from, const Vec2d& to) {
  Record("DrawLine", InWords(from) + " " + InWords(to));
  return FixedTextDevice::DrawLine(from, to);
}

}  // namespace vlm::testing
