#pragma once

/// \file
/// Where the gallery's programs, sources and pictures are.
///
///     const auto places = vlm::gallery::PlacesOf(options);
///     std::cout << vlm::gallery::CommandOf(example, places) << "\n";

#include <examples/gallery/List.h>

#include <string>

namespace vlm::gallery {

/// Folders. A plain value.
struct Places {
  std::string examples;  ///< from the gallery's folder to that of the examples
  std::string programs;  ///< absolute: in it the folder of each program
  std::string gallery;   ///< absolute: of the page and the pictures
};

/// The places for a list, which lies in a folder of the examples' folder.
[[nodiscard]] Places PlacesOf(const std::string& list, const std::string& programs,
                              const std::string& gallery);

/// A text as one word for the shell: in quotes if it needs some.
[[nodiscard]] std::string ShellWord(const std::string& text);

/// The command of an example as it is typed in the gallery's folder.
[[nodiscard]] std::string CommandOf(const Example& example, const Places& places);

/// The path from the gallery's folder to the chief source of an example.
[[nodiscard]] std::string SourceOf(const Example& example, const Places& places);

}  // namespace vlm::gallery
