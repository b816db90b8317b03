#pragma once

/// \file
/// The first bytes of a text file as a picture, with the evidence for its encoding.
///
///     vlm::convert::DrawFile("greek.txt", evidence, survey, "greek.png");

#include <examples/convert/Evidence.h>
#include <examples/convert/Survey.h>

#include <string>

namespace vlm::convert {

/// Draws the first bytes of the file `path` as cells, coloured by class, each with its value, and
/// the characters that they make; a legend below, the evidence and the counts on the right.
///
/// *Errors*: those of `WritePicture`; `std::runtime_error` for a file that can't be read.
void DrawFile(const std::string& path, const Evidence& evidence, const Survey& survey,
              const std::string& picture);

}  // namespace vlm::convert
