#pragma once

/// \file
/// The command line of the program `georeference`.
///
///     const auto options = vlm::georeference::ParseOptions({"--points", "mine.txt", "list.txt"});

#include <velum/numerics/ImageRegistration.h>

#include <string>
#include <vector>

namespace vlm::georeference {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;                        ///< show the usage and end
  std::string output = "georeference.png";  ///< the picture
  std::string sheet = "sheet.png";          ///< the scanned sheet
  std::string points;                       ///< the user's control points; empty for the gallery's
  std::string list;                         ///< points to transform; empty for the standard input
  WarpingMethod method = ThinPlateSpline;   ///< for the user's control points
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::georeference
