#pragma once

/// \file
/// Named outlines from a text file.
///
///     const auto outlines = vlm::overlay::ReadOutlineFile("outlines.txt");
///     const vlm::Box2d& box = outlines[0].shape.GetBBox();

#include <velum/geometry/GPolygon.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::overlay {

/// An area of a map. A plain value.
struct Outline {
  std::string name;
  GPolygon shape;  ///< its contours; lengths are km
};

/// Reads outlines: for each a line "outline NAME", then for each of its contours a line "contour
/// COUNT" and COUNT lines of two numbers with a point. Empty lines and those that begin with "#"
/// are passed over.
///
/// *Errors*: `std::runtime_error` with the number of the line.
[[nodiscard]] std::vector<Outline> ReadOutlines(std::istream& stream);

/// Reads the outlines of a file.
///
/// *Errors*: `std::runtime_error` with the path, and the line or the reason.
[[nodiscard]] std::vector<Outline> ReadOutlineFile(const std::string& path);

}  // namespace vlm::overlay
