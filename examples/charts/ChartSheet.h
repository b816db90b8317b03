#pragma once

/// \file
/// The charts of a sample on one sheet.
///
///     vlm::charts::WriteSheet("charts.png", sample);

#include <examples/charts/Charts.h>

#include <string>

namespace vlm::charts {

/// Writes a sheet with the histogram beside the probability plot, as a journal would print them,
/// and below these the box plot and both charts as small as a thumb.
///
/// *Errors*: those of `WritePage`.
void WriteSheet(const std::string& path, Sample& sample);

}  // namespace vlm::charts
