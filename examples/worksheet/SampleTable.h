#pragma once

/// \file
/// A made-up table of any length.
///
///     vlm::worksheet::WriteSampleTable("wells.csv", 1000000);

#include <string>

namespace vlm::worksheet {

/// Writes so many rows: a well, its rock, its depth, porosity, temperature and flow; now and then a
/// field is empty or says "n/a". The same number of rows gives the same table.
///
/// *Errors*: `Exception` if the file can't be written.
void WriteSampleTable(const std::string& path, unsigned rows);

}  // namespace vlm::worksheet
