#pragma once

/// \file
/// The body of `CalcLeftBaseline`, for the elements, which call it for every box that they give.
///
///     detail::LeftBaseline(box, position, HALIGN_LEFT, VALIGN_TOP);

#include <velum/mathtext/MTLayout.h>

namespace vlm::detail {

/// Raises the internal error for an alignment that is none.
[[noreturn]] void ThrowBadAlignment();

/// Does what `CalcLeftBaseline` does.
inline Vec2d LeftBaseline(const Box2d& box, const Vec2d& position, unsigned int horzAlign,
                          unsigned int vertAlign) {
  Vec2d start = position;
  switch (vertAlign) {
    case VALIGN_TOP:
      start.y = position.y - box.yMin();
      break;
    case VALIGN_BASELINE:
      break;
    case VALIGN_BOTTOM:
      start.y = position.y - box.yMax();
      break;
    case VALIGN_CENTER:
      start.y = position.y - (box.yMax() + box.yMin()) * 0.5;
      break;
    default:
      ThrowBadAlignment();
  }
  switch (horzAlign) {
    case HALIGN_LEFT:
      break;
    case HALIGN_CENTER:
      start.x = position.x - 0.5 * (box.xMax() + box.xMin());
      break;
    case HALIGN_RIGHT:
      start.x = position.x - box.xMax();
      break;
    default:
      ThrowBadAlignment();
  }
  return start;
}

}  // namespace vlm::detail
