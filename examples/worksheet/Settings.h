#pragma once

/// \file
/// The settings of a report, a small XML file.
///
///     <worksheet title="Wells" rows="5">
///       <column name="depth_m" title="Depth" unit="m"/>
///       <column name="rock"/>
///       <note>Logged in 2026.</note>
///     </worksheet>

#include <string>
#include <vector>

namespace vlm::worksheet {

/// A column to be read. A plain value.
struct ColumnSetting {
  std::string name;   ///< in the file's first row
  std::string title;  ///< in the report; the name unless told
  std::string unit;   ///< may be empty
  bool chart = true;  ///< whether its histogram is drawn
};

/// What the report is to tell. A plain value.
struct Settings {
  std::string title;                   ///< of the report; the file's name unless told
  char delimiter = ',';                ///< between fields
  unsigned rows = 10;                  ///< how many rows are shown as they are
  std::vector<ColumnSetting> columns;  ///< none: all
  std::vector<std::string> notes;      ///< paragraphs below the title
};

/// Reads a file of settings.
///
/// *Errors*: `Exception` for a file that can't be read and for what is no XML; `std::runtime_error`
/// with the file's name for elements, attributes and values that are no settings.
[[nodiscard]] Settings ReadSettings(const std::string& path);

}  // namespace vlm::worksheet
