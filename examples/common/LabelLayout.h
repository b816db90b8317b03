#pragma once

/// \file
/// One label, parsed and measured, ready to be drawn.
///
///     vlm::examples::CairoTextDevice device(context, 16.0);
///     const vlm::examples::LabelLayout label(device, "Area (km\\up35 {\\fs65 2}\\dn35 )");
///     if (!label.Fault()) label.Draw(device, vlm::Vec2d(40.0, 40.0));

#include <velum/geometry/Box2.h>
#include <velum/mathtext/MTMultiLineElement.h>
#include <velum/mathtext/TextIF.h>
#include <examples/common/LabelFault.h>

#include <memory>
#include <optional>
#include <string>

namespace vlm::examples {

/// The tree of a math text with its box, or the reason why there is none.
///
/// Has no device of its own: it is made with one and may be drawn with another, of another output
/// format for one. The height is the one that the first had. Units are the device's.
class LabelLayout {
 public:
  /// Parses and measures `text`; `justify` is 1, 2 or 3 for left, center and right.
  ///
  /// *Errors*: what the device throws. A wrong text is no error here; see Fault.
  LabelLayout(KQTextIF& device, const std::string& text, unsigned int justify = 1);

  /// What is wrong with the text; nothing if it has a layout.
  [[nodiscard]] const std::optional<LabelFault>& Fault() const { return fault_; }

  /// The box with the left end of the first baseline at (0, 0); (0, 0, 0, 0) if there is no layout.
  [[nodiscard]] const Box2d& Box() const { return box_; }

  /// Draws the label with the left end of its first baseline at `position`; nothing if there is no
  /// layout.
  void Draw(KQTextIF& device, const Vec2d& position) const;

 private:
  std::shared_ptr<CMTMultiLineElement> block_;
  std::optional<LabelFault> fault_;
  Box2d box_;
  unsigned int justify_;
};

}  // namespace vlm::examples
