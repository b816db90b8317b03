#pragma once

/// \file
/// A scanner that writes down what it is told.
///
///     ScanRecorder recorder;
///     vlm::ScanMathText("\\b x", recorder);  // recorder.calls is {"Bold", "Text 'x'"}

#include <velum/mathtext/MTParser.h>
#include <charconv>
#include <string>
#include <vector>

namespace vlm::test {

/// Writes each call down with its arguments; real numbers to the last bit.
class ScanRecorder : public IMathTextScanner {
 public:
  std::vector<std::string> calls;  ///< in their order

  void Text(const char* text) override { Add("Text", Quote(text)); }
  void CharCode(unsigned int code) override { Add("CharCode", std::to_string(code)); }
  void Newline() override { Add("Newline"); }
  void Facename(const char* face) override { Add("Facename", Quote(face)); }
  void FontSize(double percent) override { Add("FontSize", Number(percent)); }
  void PredefinedColor(const Color4b& color) override { Add("PredefinedColor", Bytes(color)); }
  void Color(const Color4b& color) override { Add("Color", Bytes(color)); }
  void ColorComponent(unsigned int component, unsigned int value) override {
    Add("ColorComponent", std::to_string(component) + " " + std::to_string(value));
  }
  void Bold() override { Add("Bold"); }
  void Italic() override { Add("Italic"); }
  void StrikeThrough() override { Add("StrikeThrough"); }
  void Underline() override { Add("Underline"); }
  void Plain() override { Add("Plain"); }
  void DateTime(const char* format) override { Add("DateTime", Quote(format)); }
  void VerticalOffset(double percent) override { Add("VerticalOffset", Number(percent)); }
  void SavePosition(unsigned int slot) override { Add("SavePosition", std::to_string(slot)); }
  void RestorePosition(unsigned int slot) override { Add("RestorePosition", std::to_string(slot)); }
  void PushState() override { Add("PushState"); }
  void PopState() override { Add("PopState"); }
  void BeginSubstring(double x, double y, HAlignment horz, VAlignment vert) override {
    Add("BeginSubstring",
        Number(x) + " " + Number(y) + " " + std::to_string(horz) + " " + std::to_string(vert));
  }
  void EndSubstring() override { Add("EndSubstring"); }
  void Line(double x, double y, IMathTextScanner::Side side) override {
    Add("Line", Number(x) + " " + Number(y) + " " + std::to_string(side));
  }
  void Error(const char* rest) override { Add("Error", Quote(rest)); }

 private:
  void Add(const char* name, const std::string& arguments = "") {
    std::string call = name;
    if (!arguments.empty()) call.append(1, ' ').append(arguments);
    calls.push_back(call);
  }
  static std::string Quote(const char* text) { return "'" + std::string(text) + "'"; }
  static std::string Bytes(const Color4b& color) {
    return std::to_string(color.R) + " " + std::to_string(color.G) + " " + std::to_string(color.B) +
           " " + std::to_string(color.A);
  }
  static std::string Number(double value) {
    char text[32];
    const auto [end, error] = std::to_chars(text, text + sizeof text, value == 0.0 ? 0.0 : value,
                                            std::chars_format::general, 17);
    return std::string(text, end);
  }
};

}  // namespace vlm::test
