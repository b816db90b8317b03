#pragma once

/// \file
/// The sheet of the gallery: a map on paper that has been laid on the scanner askew, and is bent.
///
///     const auto sheet = vlm::georeference::DrawSheet(outline);
///     vlm::RPoint pixel = vlm::georeference::PlaceOnSheet({0, 100});
///
/// Places on the map are km, x to the east and y to the north; those on the sheet are pixels from
/// its lower left corner, y upwards, since not every method can mirror. How the paper is bent is
/// known here, so that errors can be told.

#include <velum/geometry/Box2.h>
#include <velum/geometry/RPoint.h>
#include <examples/common/Handles.h>
#include <examples/overlay/Outlines.h>

#include <string>

namespace vlm::georeference {

constexpr int kSheetWidth = 1200;
constexpr int kSheetHeight = 1620;
constexpr double kGridStep = 100.0;  ///< km between the lines of the map's grid

/// The part of the world that the map shows.
[[nodiscard]] Box2d MapFrame();

/// Where a place of the map is on the sheet: the paper is turned, stretched, sheared, shifted, bent
/// along both axes, and has a dent.
[[nodiscard]] RPoint PlaceOnSheet(const RPoint& map);

/// Draws the map as it lies on the scanner: an image of RGB24.
[[nodiscard]] examples::SurfacePtr DrawSheet(const overlay::Outline& land);

/// Writes an image to a PNG file. *Errors*: `std::runtime_error` with the path and the reason.
void WriteSheet(struct _cairo_surface* sheet, const std::string& path);

/// Reads an image of a PNG file. *Errors*: `std::runtime_error` with the path and the reason.
[[nodiscard]] examples::SurfacePtr ReadSheet(const std::string& path);

}  // namespace vlm::georeference
