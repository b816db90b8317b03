#pragma once

/// \file
/// A text device without output whose measures can be worked out in one's head.
///
///     vlm::testing::FixedTextDevice device;
///     device.SetHeight(8.0);
///     vlm::Vec2d extent;
///     device.GetExtent("abc", extent);  // (12, 8)

#include <velum/mathtext/TextIF.h>

#include <cstddef>
#include <vector>

namespace vlm::testing {

/// Measures every face alike and draws nothing. It has a stack of attributes, as real devices do.
///
/// With h as the text height:
///
/// - a byte is h/2 wide, in bold (weight 7 and above) 5h/8; the cell is h high;
/// - the ink of a byte fills its width and reaches from -3h/4 to h/4; that of "x" from -h/2 to 0;
/// - "j" at the beginning of a text overhangs it by h/4 on the left;
/// - a blank has no ink, and a text without ink has the box (0, 0, 0, 0).
///
/// It begins with height 8 and the usual defaults. An object with identity, for one thread.
class FixedTextDevice : public KQTextIF {
 public:
  FixedTextDevice() = default;
  virtual ~FixedTextDevice() = default;

  /// Gives how many states are pushed.
  [[nodiscard]] std::size_t StackDepth() const { return stack_.size(); }

  void SetColor(Color4b color) override { now_.color = color; }
  Color4b GetColor() const override { return now_.color; }
  void SetFace(const GString& face) override { now_.face = face; }
  GString GetFace() const override { return now_.face; }
  void SetWeight(unsigned int weight) override { now_.weight = weight; }
  unsigned int GetWeight() const override { return now_.weight; }
  void SetStyle(unsigned int style) override { now_.style = style; }
  unsigned int GetStyle() const override { return now_.style; }
  void SetCharset(unsigned int charset) override { now_.charset = charset; }
  unsigned int GetCharset() const override { return now_.charset; }
  void SetPitch(unsigned int pitch) override { now_.pitch = pitch; }
  unsigned int GetPitch() const override { return now_.pitch; }
  void SetFamily(unsigned int family) override { now_.family = family; }
  unsigned int GetFamily() const override { return now_.family; }
  void SetHorizAlignment(unsigned int alignment) override { now_.horizAlignment = alignment; }
  unsigned int GetHorizAlignment() const override { return now_.horizAlignment; }
  void SetVertAlignment(unsigned int alignment) override { now_.vertAlignment = alignment; }
  unsigned int GetVertAlignment() const override { return now_.vertAlignment; }
  void SetHeight(double height) override { now_.height = height; }
  double GetHeight() const override { return now_.height; }
  void SetHorizJustify(unsigned int justify) override { now_.horizJustify = justify; }
  unsigned int GetHorizJustify() const override { return now_.horizJustify; }
  void PreserveState() override;
  void RestoreState() override;
  void GetBounds(const GString& text, Box2d& box) override;
  void GetExtent(const GString& text, Vec2d& extent) override;
  void GetMetrics(KQTextIF::_TXTMETRICS& metrics) override;
  bool Draw(const Vec2d& position, const GString& text) override;
  bool DrawLine(const Vec2d& from, const Vec2d& to) override;

 private:
  struct Attributes {
    Color4b color;
    GString face = "Arial";
    unsigned int weight = TEXT_WEIGHT_NORMAL;
    unsigned int style = 0;
    unsigned int charset = 1;
    unsigned int pitch = 2;
    unsigned int family = 2;
    unsigned int horizAlignment = 0;
    unsigned int vertAlignment = 1;
    unsigned int horizJustify = HORIZ_JUSTIFY_LEFT;
    double height = 8.0;
  };

  [[nodiscard]] double CharWidth() const;

  Attributes now_;
  std::vector<Attributes> stack_;
};

}  // namespace vlm::testing
