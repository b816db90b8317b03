#pragma once

/// \file
/// A column of dates as a picture.
///
///     vlm::dates::DrawSurvey(survey, "field-log.csv", "forms.svg");

#include <examples/dates/ColumnSurvey.h>

#include <string>

namespace vlm::dates {

/// Draws a dot for each row of a column: across, its date; down, where it stands in the file; its
/// colour, the form in which it is typed. Rows that are no dates stand in a strip on the left, and
/// so do times alone beside dates. The file ends in .png, .svg or .pdf.
///
/// *Errors*: those of `WritePicture`.
void DrawSurvey(const Survey& survey, const std::string& title, const std::string& path);

}  // namespace vlm::dates
