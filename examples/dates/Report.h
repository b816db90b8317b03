#pragma once

/// \file
/// What `dates` prints.
///
///     vlm::dates::PrintForms(std::cout, "12/25/2010 3:45 PM", KQDateTextOptions());

#include <examples/dates/ColumnSurvey.h>

#include <iosfwd>
#include <string>

namespace vlm::dates {

/// Writes what a text is read as, its numbers, and all forms in which the date can be written; an
/// "=" stands before those that are read as the same date and second again.
///
/// *Errors*: `std::runtime_error` for a text that is no date.
void PrintForms(std::ostream& out, const std::string& text, const KQDateTextOptions& options);

/// Writes what stands in a column: the forms with their shapes, the range of dates, what may have
/// been meant otherwise, and what is no date.
void PrintSurvey(std::ostream& out, const Survey& survey, const KQDateTextOptions& options);

/// A form as its spreadsheet format string.
[[nodiscard]] std::string FormatName(int dateFmt, int timeFmt);

}  // namespace vlm::dates
