#pragma once

/// \file
/// The charts of a report, one PNG file each beside it.
///
///     const auto charts = vlm::worksheet::DrawCharts(sheet, "wells.html");
///     charts[0].file;  // "wells-1.png"

#include <examples/worksheet/Sheet.h>

#include <string>
#include <vector>

namespace vlm::worksheet {

/// A picture of a report. A plain value.
struct Chart {
  std::string file;   ///< as the report names it
  std::string title;  ///< what it shows
  int width;          ///< in the report, in pixels
  int height;
};

/// Draws a histogram of each column whose setting asks for it and which has 11 numbers that are not
/// all the same, into files beside the report at `path` and named after it.
///
/// *Errors*: those of `charts::WritePage`.
[[nodiscard]] std::vector<Chart> DrawCharts(const Sheet& sheet, const std::string& path);

}  // namespace vlm::worksheet
