#pragma once

/// \file
/// Points from text files: a line for each, its numbers between blanks.
///
///     const auto points = vlm::georeference::ReadControlPointFile("sheet-points.txt");
///     map.Calibrate(points.sheet, points.map, vlm::ThinPlateSpline);
///
/// Empty lines and those that begin with "#" are passed over.

#include <velum/geometry/RPoint.h>

#include <iosfwd>
#include <string>

namespace vlm::georeference {

/// Places that are known on the sheet and on the map. A plain value.
struct ControlPoints {
  RPoints sheet;
  RPoints map;
};

/// Reads control points: four numbers, x and y on the sheet, then x and y on the map.
///
/// *Errors*: `std::runtime_error` with the number of the line.
[[nodiscard]] ControlPoints ReadControlPoints(std::istream& stream);

/// Reads the control points of a file.
///
/// *Errors*: `std::runtime_error` with the path, and the line or the reason.
[[nodiscard]] ControlPoints ReadControlPointFile(const std::string& path);

/// Reads points of two numbers.
///
/// *Errors*: `std::runtime_error` with the number of the line.
[[nodiscard]] RPoints ReadPoints(std::istream& stream);

}  // namespace vlm::georeference
