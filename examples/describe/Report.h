#pragma once

/// \file
/// What `describe` prints.
///
///     vlm::describe::PrintReport(std::cout, table);

#include <examples/describe/Table.h>

#include <velum/dates/NumberFormatSpec.h>
#include <velum/numerics/RMatrix.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::describe {

/// Writes all that is told of a table: what was read and what was left out, the figures of each
/// column, how several hang together, and where the points lie.
void PrintReport(std::ostream& out, const Table& table);

/// Writes what was left out of a table and why, a line for each reason.
void PrintNotes(std::ostream& out, const Table& table);

/// Writes a matrix with the names of its rows and columns, in blocks that fit a terminal.
void PrintMatrix(std::ostream& out, const RMatrix& matrix, const std::vector<std::string>& rows,
                 const std::vector<std::string>& columns,
                 const NumberFormatSpec& spec = {NumberFormatSpec::General, 5});

}  // namespace vlm::describe
