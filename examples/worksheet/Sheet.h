#pragma once

/// \file
/// A file of delimited text in a worksheet, with what its columns hold.
///
///     const auto sheet = vlm::worksheet::ReadSheet(file, settings, progress, size);
///     sheet.columns[0].type->Name();  // "Unsigned 8 bits"
///     sheet.cells.GetCell(0, 0);      // the first row's first field

#include <velum/commands/IProgress.h>
#include <velum/files/PrimType.h>
#include <velum/files/WksStore.h>
#include <examples/worksheet/Settings.h>

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::worksheet {

/// A column with what was found in it. A plain value.
struct SheetColumn {
  ColumnSetting setting;
  std::size_t numbers = 0;
  std::size_t texts = 0;
  std::size_t empty = 0;
  std::optional<CPrimType> type;  ///< what those of its numbers promote to; nothing without any
  unsigned digits = 0;            ///< the most significant ones of a number, as it is written
};

/// What was read. A plain value.
struct Sheet {
  CWksStore cells;
  std::vector<SheetColumn> columns;
  unsigned rows = 0;
};

/// The narrowest type that holds a number as it is written: for a whole one an integer, unsigned
/// unless it is negative; else `PrimFloat` up to six significant digits, and `PrimDouble`.
[[nodiscard]] CPrimType NarrowestType(std::string_view text, double number);

/// Reads the columns that the settings name, all of them if they name none; the first row holds the
/// names. `size` is that of the file in bytes, 0 if it is not known.
///
/// *Errors*: `std::runtime_error` for what is no table and for columns that there are not;
/// `UserAbortException` if the progress is canceled.
[[nodiscard]] Sheet ReadSheet(std::istream& stream, const Settings& settings, IProgress& progress,
                              double size);

/// The numbers of a column.
[[nodiscard]] std::vector<double> NumbersOf(const Sheet& sheet, unsigned column);

}  // namespace vlm::worksheet
