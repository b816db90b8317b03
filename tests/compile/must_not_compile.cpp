// One mistake of a user's for each value of CASE; 0 holds none.
#include <velum/velum.h>

using namespace vlm;

bool Use(const CMTStringElement& a, const CMTStringElement& b) {
#if CASE == 1
  return a == b;
#else
  return &a == &b;
#endif
}

#if CASE == 2
Color4b colour = 0x00FF0000;
#else
Color4b colour(0x00FF0000, 255);
#endif

#if CASE == 3
KQTextIF device;
#else
KQTextIF* device = nullptr;
#endif

#if CASE == 4
AtoW first("text");
AtoW second = first;
#else
AtoW first("text");
#endif

bool Normalizes() {
#if CASE == 5
  Vec2i v(3, 4);
#else
  Vec2d v(3, 4);
#endif
  return v.Normalize();
}
