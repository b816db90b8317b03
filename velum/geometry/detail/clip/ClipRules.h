#pragma once

/// \file
/// What the set operations make of parities, and the classes of vertices that follow.
///
/// Parities and the edges of a bundle are masks of two bits, one for each of the two polygons. A
/// parity bit is set where an odd number of edges of that polygon lie to the left; of the clip
/// polygon of a difference, where an even number does.

#include <velum/geometry/Gpc.h>

#include <cstdint>

namespace vlm::detail {

using TypeMask = std::uint8_t;
inline constexpr TypeMask kClipBit = 1;
inline constexpr TypeMask kSubjectBit = 2;

/// What the output does at a vertex, by which of the four quadrants around it are inside: 1 to the
/// left of it and below, 2 to the right and below, 4 to the left and above, 8 to the right and
/// above, above being the side of larger y.
enum class VertexClass : std::uint8_t {
  kNull = 0,
  kExternalMaximum = 1,
  kExternalLeftIntermediate = 2,
  kTopEdge = 3,
  kExternalRightIntermediate = 4,
  kRightEdge = 5,
  kInternalMaximumAndMinimum = 6,
  kInternalMinimum = 7,
  kExternalMinimum = 8,
  kExternalMaximumAndMinimum = 9,
  kLeftEdge = 10,
  kInternalLeftIntermediate = 11,
  kBottomEdge = 12,
  kInternalRightIntermediate = 13,
  kInternalMaximum = 14,
  kFull = 15,
};

/// One of the set operations.
class ClipRules {
 public:
  explicit ClipRules(gpc_op op) noexcept
      : inside_(op == GPC_XOR     ? 0b0110U
                : op == GPC_UNION ? 0b1110U
                                  : 0b1000U),
        outside_(op == GPC_DIFF ? kClipBit : TypeMask{0}) {}

  /// The parity to the left of every edge.
  [[nodiscard]] TypeMask Outside() const noexcept { return outside_; }
  /// True if points with this parity belong to the result.
  [[nodiscard]] bool Inside(unsigned parity) const noexcept { return (inside_ >> parity) & 1U; }

  /// The class of a vertex from the parities of the quadrants.
  [[nodiscard]] VertexClass Classify(unsigned belowLeft, unsigned belowRight, unsigned aboveLeft,
                                     unsigned aboveRight) const noexcept {
    return static_cast<VertexClass>(
        ((inside_ >> belowLeft) & 1U) + 2 * ((inside_ >> belowRight) & 1U) +
        4 * ((inside_ >> aboveLeft) & 1U) + 8 * ((inside_ >> aboveRight) & 1U));
  }

 private:
  unsigned inside_;
  TypeMask outside_;
};

}  // namespace vlm::detail
