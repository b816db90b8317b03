#pragma once

/// \file
/// The command line of the program `gallery`.
///
///     const auto options = vlm::gallery::ParseOptions({"-p", "build/examples", "gallery.xml"});

#include <string>
#include <vector>

namespace vlm::gallery {

/// What the command line asks for. A plain value.
struct Options {
  bool help = false;               ///< show the usage and end
  std::string list;                ///< the list
  std::string programs;            ///< the folder with the folders of the programs
  std::string output = "gallery";  ///< the gallery's folder
};

/// Reads the arguments, without the program's name.
///
/// *Errors*: `examples::UsageError`.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

/// The text that `--help` shows.
[[nodiscard]] const char* UsageText();

}  // namespace vlm::gallery
