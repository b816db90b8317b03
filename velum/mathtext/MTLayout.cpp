#include <velum/mathtext/MTLayout.h>

#include <velum/core/Exception.h>
#include <velum/mathtext/detail/LeftBaseline.h>

namespace vlm {

void detail::ThrowBadAlignment() { ThrowErrorImpl("MTParser", __LINE__, ERR_INTERNAL); }

Vec2d CalcLeftBaseline(const Box2d& box, const Vec2d& position, unsigned int horzAlign,
                       unsigned int vertAlign) {
  return detail::LeftBaseline(box, position, horzAlign, vertAlign);
}

unsigned int MapKQTextIFHorizAlignToHorizJustify(unsigned int align) noexcept {
  return align <= HALIGN_RIGHT ? align + 1 : HORIZ_JUSTIFY_LEFT;
}

unsigned int MapKQTextIFHorizJustifyToHorizAlign(unsigned int justify) noexcept {
  const bool known = justify >= HORIZ_JUSTIFY_LEFT && justify <= HORIZ_JUSTIFY_RIGHT;
  return known ? justify - 1 : HALIGN_LEFT;
}

}  // namespace vlm
