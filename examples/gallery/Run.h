#pragma once

/// \file
/// Runs the commands of a list, one after the other.
///
///     const auto runs = vlm::gallery::RunAll(list, places, std::cout);

#include <examples/gallery/List.h>
#include <examples/gallery/Places.h>

#include <iosfwd>
#include <vector>

namespace vlm::gallery {

/// The name of the page in the gallery's folder.
inline constexpr char kPage[] = "index.html";

/// How a command went. A plain value.
struct Outcome {
  double seconds = 0;   ///< from its start to its end
  bool speaks = false;  ///< whether it printed anything: then TextOf names the file with that
};

/// The name of the file beside the page that keeps what an example prints.
[[nodiscard]] std::string TextOf(const Example& example);

/// Runs the command of each example in the gallery's folder, which is made, and tells each on
/// `progress`. What was there of the
/// page and the files to be made is removed before.
///
/// *Errors*: `std::runtime_error` with the example's name, before any command has run for one
/// without a source; for a command that fails, with its status and what it printed; for one that
/// leaves out a file.
[[nodiscard]] std::vector<Outcome> RunAll(const List& list, const Places& places,
                                          std::ostream& progress);

}  // namespace vlm::gallery
