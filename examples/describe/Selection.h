#pragma once

/// \file
/// Which columns of a file are meant by names and numbers.
///
///     const std::vector<std::string> names = {"x", "y", "depth, m"};
///     vlm::describe::SelectColumns("y,1", names);       // {1, 0}
///     vlm::describe::SelectColumns("depth, m", names);  // {2}

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::describe {

/// Finds columns, given by name or by number from 1, with commas between them; the places count
/// from 0. A name goes before a number, and a name with a comma in it before two columns.
///
/// *Errors*: `std::runtime_error` for a column that there is not, and for a name of several.
[[nodiscard]] std::vector<std::size_t> SelectColumns(std::string_view list,
                                                     const std::vector<std::string>& names);

}  // namespace vlm::describe
