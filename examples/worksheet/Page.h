#pragma once

/// \file
/// The report on a worksheet, a page of HTML.
///
///     vlm::CHtmlReport report;
///     vlm::worksheet::WritePage(report, sheet, settings, "wells.csv", charts);
///     report.WriteToFile("wells.html");

#include <examples/worksheet/Charts.h>
#include <examples/worksheet/Settings.h>
#include <examples/worksheet/Sheet.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::worksheet {

/// Writes the page without its end: the figures of the columns of numbers, the words of the others,
/// the charts, the first rows.
void WritePage(std::ostream& report, const Sheet& sheet, const Settings& settings,
               const std::string& file, const std::vector<Chart>& charts);

}  // namespace vlm::worksheet
