#pragma once

/// \file
/// A table as a picture.
///
///     vlm::describe::DrawTable(table, "wells.csv", {{"depth", "Depth (m)"}}, "wells.svg");

#include <examples/describe/Table.h>

#include <map>
#include <string>

namespace vlm::describe {

/// How many columns a picture shows.
inline constexpr std::size_t kMostPanels = 6;

/// Draws the first columns that a table describes: one as a histogram, up to six as a matrix of
/// panels, with histograms on its diagonal, scatter plots of the whole rows below it and their rank
/// correlations above it; and a map of the points, if there are any. `title` stands above all;
/// `labels` are math texts for names of columns. The file ends in .png, .svg or .pdf.
///
/// *Errors*: those of `WritePicture`.
void DrawTable(const Table& table, const std::string& title,
               const std::map<std::string, std::string>& labels, const std::string& path);

}  // namespace vlm::describe
