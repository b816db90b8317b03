#pragma once

/// \file
/// Two outlines combined by each set operation, with the figures of what comes out.
///
///     const vlm::overlay::Results results(outlines[0].shape, outlines[1].shape);
///     std::cout << results.Table();

#include <velum/geometry/GPolygon.h>

#include <string>
#include <vector>

namespace vlm::overlay {

/// A polygon and what there is to say of it. A plain value.
struct Result {
  std::string name;
  GPolygon shape;
  double area = 0;          ///< in square units of the shape; holes do not count
  unsigned int holes = 0;   ///< contours that are holes
  unsigned int strips = 0;  ///< the triangle strips that it falls into
  double milliseconds = 0;  ///< that the operation took; 0 for an operand
};

/// Both operands and the four combinations of them. A value.
class Results {
 public:
  /// Combines two shapes.
  ///
  /// *Errors*: those of the clipper.
  Results(const GPolygon& first, const GPolygon& second);

  /// The operands, then intersection, union, difference and exclusive-or.
  [[nodiscard]] const std::vector<Result>& All() const { return results_; }
  /// The figures of all, one line for each, below a line of headings.
  [[nodiscard]] std::string Table() const;

 private:
  std::vector<Result> results_;
};

}  // namespace vlm::overlay
