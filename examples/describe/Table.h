#pragma once

/// \file
/// The columns of numbers of a file.
///
///     vlm::describe::TableRequest request;
///     request.columns = {"depth_km", "magnitude"};
///     const auto table = vlm::describe::ReadTable(file, request);
///     double first = table.columns[0].values[0];

#include <velum/numerics/RMatrix.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::describe {

/// What is to be read. A plain value.
struct TableRequest {
  char delimiter = ',';
  bool hasHeader = true;             ///< whether the first row holds the names
  std::vector<std::string> columns;  ///< lists for SelectColumns; none: all columns of numbers
  std::string spatial;               ///< a list of two or three more; none: empty
};

/// Where something stands in the file. A plain value.
struct Place {
  std::size_t row = 0;   ///< of the data, counted from 1
  std::size_t line = 0;  ///< of the file, counted from 1
};

/// A column of numbers. A plain value.
struct Column {
  std::string name;
  std::size_t number = 0;      ///< in the file, counted from 1
  std::vector<double> values;  ///< one for each row, NaN where there is none
  std::size_t missing = 0;     ///< rows without a value
  std::size_t texts = 0;       ///< rows whose value is no number
  Place firstText;             ///< where the first of these stands
  std::string firstTextIs;     ///< and its text, as `Shown` gives it

  /// The numbers alone.
  [[nodiscard]] std::vector<double> Numbers() const;
};

/// What was read. A plain value.
struct Table {
  std::vector<Column> columns;
  std::vector<std::size_t> described;  ///< the columns asked for, in the order of the request
  std::vector<std::size_t> spatial;    ///< the columns of x, y and perhaps z
  std::vector<std::string> leftOut;    ///< columns that are not of numbers, where none were named
  std::size_t rows = 0;                ///< of data
  std::size_t fields = 0;              ///< of the first row
  std::size_t ragged = 0;              ///< rows of more or fewer fields than the first one
  Place firstRagged;                   ///< where the first of these stands
  std::size_t firstRaggedFields = 0;   ///< and how many it has
};

/// Told how many bytes and how many rows have been read.
using ReadingProgress = std::function<void(std::uint64_t bytes, std::size_t rows)>;

/// Reads a table as a stream; only the values of columns that are asked for are kept.
///
/// Where no columns are named, those are taken in which there are more numbers than texts; one that
/// has not after 1000 rows is given up.
///
/// *Errors*: `std::runtime_error` with the place for what CsvReader and SelectColumns refuse, for
/// more than 100,000 columns, for no rows, for spatial columns that are not two or three, and where
/// no column holds numbers.
[[nodiscard]] Table ReadTable(std::istream& stream, const TableRequest& request,
                              const ReadingProgress& progress = {});

/// The rows of the table in which each of these columns has a number, in a matrix.
[[nodiscard]] RMatrix WholeRows(const Table& table, const std::vector<std::size_t>& columns);

}  // namespace vlm::describe
