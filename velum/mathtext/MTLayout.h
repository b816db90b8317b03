#pragma once

/// \file
/// The arithmetic between a box, the point that it is anchored at, and the left end of its
/// baseline:
///
///     const vlm::Box2d box(0.0, -9.0, 40.0, 3.0);
///     const vlm::Vec2d start = vlm::CalcLeftBaseline(box, vlm::Vec2d(100.0, 50.0),
///                                                    vlm::HALIGN_RIGHT, vlm::VALIGN_BASELINE);
///     // start is (60, 50)

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>
#include <velum/mathtext/MTAlignment.h>
#include <velum/mathtext/TextIF.h>

namespace vlm {

/// Gives the point where the left end of the baseline must lie so that a box, taken around that
/// end, stands at `position` as the alignments say.
///
/// - Left: `position.x`, whatever `box.xMin()` is: what overhangs on the left goes on doing so.
/// - Baseline: `position.y`.
///
/// *Errors*: `ERR_INTERNAL` for a `horzAlign` above 2 or a `vertAlign` above 3.
[[nodiscard]] VELUM_API Vec2d CalcLeftBaseline(const Box2d& box, const Vec2d& position,
                                               unsigned int horzAlign, unsigned int vertAlign);

/// Gives the justify value of an `HAlignment`: 0, 1, 2 give 1, 2, 3, anything else gives 1.
[[nodiscard]] VELUM_API unsigned int MapKQTextIFHorizAlignToHorizJustify(
    unsigned int align) noexcept;

/// Gives the `HAlignment` of a justify value: 1, 2, 3 give 0, 1, 2, anything else gives 0.
[[nodiscard]] VELUM_API unsigned int MapKQTextIFHorizJustifyToHorizAlign(
    unsigned int justify) noexcept;

}  // namespace vlm
