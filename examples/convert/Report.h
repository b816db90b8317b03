#pragma once

/// \file
/// What `convert` prints.
///
///     vlm::convert::PrintFindings(std::cout, "wells.txt", evidence, survey);

#include <examples/convert/Conversion.h>
#include <examples/convert/Evidence.h>

#include <iosfwd>
#include <string>

namespace vlm::convert {

/// Writes what a file is and why, and what there is in it.
void PrintFindings(std::ostream& out, const std::string& path, const Evidence& evidence,
                   const Survey& survey);

/// Writes what was made, and which characters were lost.
void PrintConversion(std::ostream& out, const std::string& path, const Target& target,
                     const Conversion& conversion);

}  // namespace vlm::convert
