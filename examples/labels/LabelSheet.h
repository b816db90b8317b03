#pragma once

/// \file
/// A page that shows labels in a grid, each with its measures and its source.
///
///     const vlm::examples::LabelSheet sheet(vlm::examples::ReadLabelFile("labels.txt"));
///     vlm::examples::WritePicture("labels.pdf", sheet.Width(), sheet.Height(),
///                                 [&](cairo_t* context) { sheet.Draw(context); });

#include <examples/common/CairoTextDevice.h>
#include <examples/common/LabelLayout.h>
#include <examples/labels/LabelFile.h>

#include <cstddef>
#include <string>
#include <vector>

struct _cairo;

namespace vlm::examples {

/// Labels laid out on a page of fixed width, grouped under headings; the page is as long as needed.
///
/// Each label stands over its source, with its bounding box in a faint blue line and the baseline
/// of its first line in a faint red one. The labels of a row share a baseline. A wrong label shows
/// as a red panel that says what is wrong. A label too wide for its column takes several; one wider
/// than the page runs out of it. A value that never changes; lengths are points.
class LabelSheet {
 public:
  /// Lays the labels out, in outline faces or, if one is named, in a stroked face.
  ///
  /// *Errors*: those of the device.
  explicit LabelSheet(const std::vector<Label>& labels, const std::string& strokedFace = {});

  /// The width of the page.
  [[nodiscard]] double Width() const;

  /// The height of the page.
  [[nodiscard]] double Height() const { return height_; }

  /// The names of the wrong labels with what is wrong with each, in their order.
  [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }

  /// Draws the page with its top left corner at the origin of the context.
  void Draw(struct _cairo* context) const;

 private:
  struct Cell {
    std::string group;
    std::string name;
    LabelLayout label;
    std::vector<std::string> source;
    std::size_t columns;  // how many of the grid it takes
    double left = 0.0;
    double top = 0.0;
    double baseline = 0.0;
    double sourceTop = 0.0;
  };
  struct Heading {
    std::string text;
    double baseline;
  };

  void Place();
  void PlaceRow(std::size_t first, std::size_t last);
  static void DrawCell(const Cell& cell, KQTextIF& labels, CairoTextDevice& device,
                       struct _cairo* context);

  std::string strokedFace_;
  std::vector<Cell> cells_;
  std::vector<Heading> headings_;
  std::vector<std::string> faults_;
  double height_ = 0.0;
};

}  // namespace vlm::examples
