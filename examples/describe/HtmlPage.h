#pragma once

/// \file
/// What `describe` tells, as a page of HTML.
///
///     vlm::describe::WriteHtmlPage("wells.html", table, "wells.csv", labels);  // and wells.png

#include <examples/describe/Table.h>

#include <map>
#include <string>

namespace vlm::describe {

/// Writes the page to `path`, which ends in .html, and its picture beside it: what was left out,
/// the figures of each column side by side, the picture, the correlations.
///
/// *Errors*: those of `DrawTable`; `std::runtime_error` if the page can't be written.
void WriteHtmlPage(const std::string& path, const Table& table, const std::string& title,
                   const std::map<std::string, std::string>& labels);

}  // namespace vlm::describe
