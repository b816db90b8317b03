#pragma once

/// \file
/// A specimen sheet of one face.
///
///     const vlm::specimen::FaceSheet sheet(vlm::specimen::FindFace("KQ Roman"));
///     vlm::examples::WritePicture("roman.png", sheet.Width(), sheet.Height(),
///                                 [&](cairo_t* context) { sheet.Draw(context); });

#include <examples/specimen/FaceFacts.h>
#include <examples/specimen/FacePainter.h>
#include <examples/specimen/Page.h>

#include <memory>
#include <set>
#include <string>

struct _cairo;

namespace vlm::specimen {

/// Shows a face: its names and measures, the lines between which its letters stand, a line of text
/// in three sizes, and every code with its glyph. Lengths are points.
class FaceSheet {
 public:
  /// Prepares the sheet of a face by its index.
  explicit FaceSheet(unsigned int face);

  /// The width of the page.
  [[nodiscard]] double Width() const;
  /// The height of the page.
  [[nodiscard]] double Height() const;

  /// Draws the page with its top left corner at the origin of the context.
  ///
  /// *Errors*: `std::runtime_error` if the face can't be read.
  void Draw(struct _cairo* context) const;

 private:
  [[nodiscard]] double LargeSize() const;
  [[nodiscard]] double LinesHeight() const;
  double DrawHead(Page& page, double y) const;
  double DrawLines(Page& page, FacePainter& painter, double y) const;
  double DrawSizes(Page& page, FacePainter& painter, double y) const;
  double DrawGrid(Page& page, FacePainter& painter, double y) const;

  FaceFacts facts_;
  std::shared_ptr<const CFaceInfo> face_;
  std::set<int> defined_;  // codes that have glyphs of their own
  std::string largeText_;
};

/// The codes from one to another, as a text.
[[nodiscard]] GString CodesFrom(unsigned int first, unsigned int last);

/// How far to the right a text is drawn, so that it begins at its position: markers that are
/// centred on their place reach to the left of it. For an em of 1.
[[nodiscard]] double CenteredShift(const FaceFacts& face);

}  // namespace vlm::specimen
