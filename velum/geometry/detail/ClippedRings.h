#pragma once

/// \file
/// Set operations on rings by the clipper.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/PolygonRings.h>

namespace vlm::detail {

/// The result of the clipper.
class ClippedRings {
 public:
  /// Runs an operation on rings that do not cross. A clipper that fails is a result without an
  /// area, see `HasResult`.
  ClippedRings(gpc_op operation, const MultiPolygon2d& left, const MultiPolygon2d& right);
  ClippedRings(const ClippedRings&) = delete;
  ClippedRings& operator=(const ClippedRings&) = delete;
  ~ClippedRings();

  /// True unless the clipper failed.
  [[nodiscard]] bool HasResult() const noexcept { return hasResult_; }
  /// The contours as rings. The holes are no holes of the polygon that they are with;
  /// `RebuildRings` finds theirs.
  [[nodiscard]] MultiPolygon2d LooseRings() const;

 private:
  gpc_polygon contours_{};
  bool hasResult_ = false;
};

}  // namespace vlm::detail
