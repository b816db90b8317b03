#pragma once

/// \file
/// The page of the gallery.
///
///     vlm::CHtmlReport report;
///     vlm::gallery::WritePage(report, list, places, outcomes);

#include <examples/gallery/List.h>
#include <examples/gallery/Places.h>
#include <examples/gallery/Run.h>

#include <iosfwd>
#include <vector>

namespace vlm::gallery {

/// Writes the page: a tile for each example, then each with its story, pictures, command, time and
/// links. All links lead to files beside the page, and to the sources.
void WritePage(std::ostream& report, const List& list, const Places& places,
               const std::vector<Outcome>& outcomes);

}  // namespace vlm::gallery
