#pragma once

/// \file
/// The polygon clipper as a plain sweep: every edge that is active is looked at on every scan line,
/// and every list is a list. Slow, short and simple; the library's own sweep is held against it,
/// vertex for vertex. Nothing of the library is used here.

#include <stdexcept>
#include <vector>

namespace vlm::reference {

enum PlainOperation { kDifference, kIntersection, kXor, kUnion };

struct PlainVertex {
  double x;
  double y;
  bool operator==(const PlainVertex&) const = default;
};

using PlainVertices = std::vector<PlainVertex>;

struct PlainContour {
  PlainVertices vertices;
  bool hole = false;
  bool operator==(const PlainContour&) const = default;
};

using PlainPolygon = std::vector<PlainContour>;
using PlainStrips = std::vector<PlainVertices>;

/// A broken invariant, by the number of its message.
struct PlainError : std::runtime_error {
  explicit PlainError(int number) : std::runtime_error("plain clipper"), code(number) {}
  int code;
};

PlainPolygon PlainClip(PlainOperation operation, const PlainPolygon& subject,
                       const PlainPolygon& clip);

PlainStrips PlainStripClip(PlainOperation operation, const PlainPolygon& subject,
                           const PlainPolygon& clip);

}  // namespace vlm::reference
