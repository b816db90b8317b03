#pragma once

/// \file
/// All symbol sets on one sheet.
///
///     const vlm::specimen::SetsSheet sheet;
///     vlm::examples::WritePicture("sets.png", sheet.Width(), sheet.Height(),
///                                 [&](cairo_t* context) { sheet.Draw(context); });

struct _cairo;

namespace vlm::specimen {

/// Shows the 28 symbol sets: of each its names, its kind, and what its ASCII codes look like.
/// Lengths are points.
class SetsSheet {
 public:
  /// The width of the page.
  [[nodiscard]] double Width() const;
  /// The height of the page.
  [[nodiscard]] double Height() const;

  /// Draws the page with its top left corner at the origin of the context.
  ///
  /// *Errors*: those of `CStrokedFace` if a set can't be read.
  void Draw(struct _cairo* context) const;
};

}  // namespace vlm::specimen
