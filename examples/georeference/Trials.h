#pragma once

/// \file
/// What each method makes of the control points of the sheet.
///
///     const auto trials = vlm::georeference::TryAllMethods(points);
///     std::cout << vlm::georeference::TableOf(trials);

#include <velum/numerics/ImageRegistration.h>
#include <examples/georeference/ControlPoints.h>

#include <string>
#include <vector>

namespace vlm::georeference {

/// How far places are off, in km.
struct Distances {
  double rms = 0;    ///< the root of the mean square
  double worst = 0;  ///< the largest
};

/// A method, fitted in both directions. A plain value.
struct Trial {
  WarpingMethod method;      ///< what was asked for
  WarpingMethod inForce;     ///< what the control points allowed
  CImageRegistration toMap;  ///< from the sheet to the map
  CImageRegistration toSheet;
  Distances atControlPoints;  ///< what is left of the control points
  Distances elsewhere;        ///< the error at 1000 other points
  double milliseconds = 0;    ///< that the fit took, one direction
};

/// Fits every method to the control points of the sheet of MapSheet.h.
[[nodiscard]] std::vector<Trial> TryAllMethods(const ControlPoints& points);

/// Returns the results as a table.
[[nodiscard]] std::string TableOf(const std::vector<Trial>& trials);

}  // namespace vlm::georeference
