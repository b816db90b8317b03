#pragma once

/// \file
/// Which dates stand in a column of a file, and how they are typed.
///
///     const auto survey = vlm::dates::TakeSurvey(file, {"date"}, KQDateTextOptions());
///     survey.forms[0].count;       // of the commonest form
///     survey.unread[0].text;       // what is no date

#include <velum/dates/DateText.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::dates {

/// Which column of a file is meant. A plain value.
struct ColumnRequest {
  std::string column;     ///< its name, or its number from 1
  char delimiter = ',';   ///< between fields
  bool hasHeader = true;  ///< whether the first row holds the names
};

/// A form in which dates are typed. A plain value.
struct Form {
  std::string shape;                     ///< as ShapeOf gives it
  KQDateTime::DATE_FORMAT_TYPE dateFmt;  ///< the types that the library finds
  KQDateTime::TIME_FORMAT_TYPE timeFmt;
  std::size_t count = 0;
  std::string example;   ///< the first text of the form
  std::size_t line = 0;  ///< of the file, where that stands
};

/// A date of the column. A plain value.
struct Entry {
  std::size_t row;   ///< of the data, counted from 1
  double date;       ///< the stored number
  std::size_t form;  ///< the place among the forms
};

/// A text that is no date. A plain value.
struct Unread {
  std::size_t row;
  std::size_t line;
  std::string text;
};

/// What was found. A plain value.
struct Survey {
  std::string column;
  std::size_t rows = 0;     ///< of data
  std::size_t empty = 0;    ///< rows without a text
  std::vector<Form> forms;  ///< the commonest first
  std::vector<Entry> entries;
  std::vector<Unread> unread;
  std::size_t swapped = 0;    ///< dates that only the order not chosen gives
  std::size_t ambiguous = 0;  ///< dates that would be others in the order not chosen
};

/// Reads a column as a stream.
///
/// *Errors*: `std::runtime_error` with the place for what `CsvReader` and `SelectColumns` refuse,
/// and for a file without rows.
[[nodiscard]] Survey TakeSurvey(std::istream& stream, const ColumnRequest& request,
                                const KQDateTextOptions& options);

/// The shape of a text: n for one or two digits, nnnn for more, x for letters, one blank for
/// several.
[[nodiscard]] std::string ShapeOf(const std::string& text);

}  // namespace vlm::dates
