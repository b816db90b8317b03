#pragma once

/// \file
/// The part of a text device that is alike for all of them: its attributes, and the stack of them.
///
///     class PlotterTextDevice final : public vlm::examples::AttributedTextDevice {
///       // measures and draws with what Now() gives
///     };

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/mathtext/MTAlignment.h>
#include <velum/mathtext/MTTextAttributes.h>
#include <velum/mathtext/TextIF.h>

#include <utility>
#include <vector>

namespace vlm::examples {

/// A device that keeps its attributes; a class derived from it measures and draws.
///
/// It begins with the defaults of `KQTextIF`. Alignments and justification are kept for whoever
/// asks: `Draw` takes the left end of the baseline. With its stack it serves `CMTDirectTextIF` as
/// well as `CMTTextIF`.
class AttributedTextDevice : public KQTextIF {
 public:
  // What each attribute means stands in KQTextIF.
  void SetColor(Color4b color) override { now_.text.color = color; }
  Color4b GetColor() const override { return now_.text.color; }
  void SetFace(const GString& face) override { now_.text.face = face; }
  GString GetFace() const override { return now_.text.face; }
  void SetWeight(unsigned int weight) override { now_.text.weight = weight; }
  unsigned int GetWeight() const override { return now_.text.weight; }
  void SetStyle(unsigned int style) override { now_.text.style = style; }
  unsigned int GetStyle() const override { return now_.text.style; }
  void SetCharset(unsigned int charset) override { now_.text.charset = charset; }
  unsigned int GetCharset() const override { return now_.text.charset; }
  void SetPitch(unsigned int pitch) override { now_.text.pitch = pitch; }
  unsigned int GetPitch() const override { return now_.text.pitch; }
  void SetFamily(unsigned int family) override { now_.text.family = family; }
  unsigned int GetFamily() const override { return now_.text.family; }
  void SetHorizAlignment(unsigned int alignment) override { now_.horizAlignment = alignment; }
  unsigned int GetHorizAlignment() const override { return now_.horizAlignment; }
  void SetVertAlignment(unsigned int alignment) override { now_.vertAlignment = alignment; }
  unsigned int GetVertAlignment() const override { return now_.vertAlignment; }
  void SetHeight(double height) override { now_.text.height = height; }
  double GetHeight() const override { return now_.text.height; }
  void SetHorizJustify(unsigned int justify) override { now_.horizJustify = justify; }
  unsigned int GetHorizJustify() const override { return now_.horizJustify; }

  /// Puts a copy of the attributes on the stack.
  void PreserveState() override { stack_.push_back(now_); }
  /// Takes the attributes from the top of the stack; nothing happens if it is empty.
  void RestoreState() override {
    if (stack_.empty()) return;
    now_ = std::move(stack_.back());
    stack_.pop_back();
  }

 protected:
  /// The default attributes but for the height.
  explicit AttributedTextDevice(double height) { now_.text.height = height; }
  ~AttributedTextDevice() = default;

  /// What a text looks like at present.
  [[nodiscard]] const MTTextAttributes& Now() const { return now_.text; }

 private:
  struct Attributes {
    MTTextAttributes text;
    unsigned int horizAlignment = HALIGN_LEFT;
    unsigned int vertAlignment = VALIGN_BASELINE;
    unsigned int horizJustify = HORIZ_JUSTIFY_LEFT;
  };

  Attributes now_;
  std::vector<Attributes> stack_;
};

}  // namespace vlm::examples
