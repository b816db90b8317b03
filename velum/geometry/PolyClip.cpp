#include <velum/geometry/PolyClip.h>

#include <cstddef>

namespace vlm {

namespace {

// What one edge of the rectangle remembers of the path that comes by.
struct Stage {
  double boundary;
  bool isFirst = true;
  bool lastIsInside = false;
  Vec2d first;
  Vec2d last;
};

struct Pipeline {
  Stage stages[4];  // right, bottom, left, top
  CPodVector<Vec2d, 32>& out;

  // Sends a point to stage `I`; behind the last one is the output.
  template <int I>
  void Feed(const Vec2d& p) {
    if constexpr (I == 4) {
      out.push_back(p);
    } else {
      Stage& stage = stages[I];
      const double b = stage.boundary;
      const bool isInside = I == 0 ? p.x <= b : I == 1 ? p.y >= b : I == 2 ? p.x >= b : p.y <= b;
      if (stage.isFirst) {
        stage.first = p;
        stage.isFirst = false;
      } else {
        if (isInside != stage.lastIsInside) Feed<I + 1>(Crossing<I % 2 == 0>(stage.last, p, b));
        if (isInside) Feed<I + 1>(p);
      }
      stage.last = p;
      stage.lastIsInside = isInside;
    }
  }

  // Where the segment from `last` to `p` meets an edge at x or y = `b`.
  template <bool IsX>
  static Vec2d Crossing(const Vec2d& last, const Vec2d& p, double b) noexcept {
    if constexpr (IsX) {
      return Vec2d(b, (p.y - last.y) * (b - last.x) / (p.x - last.x) + last.y);
    } else {
      return Vec2d((p.x - last.x) * (b - last.y) / (p.y - last.y) + last.x, b);
    }
  }

  // Leads the path back to where stage `I` saw it begin. What that sends on passes the stages
  // behind it, which are closed after it.
  template <int I>
  void Close() {
    if constexpr (I < 4) {
      // A copy, since the stage is about to take it as its last point.
      if (const Vec2d first = stages[I].first; !stages[I].isFirst) Feed<I>(first);
      Close<I + 1>();
    }
  }
};

}  // namespace

unsigned CPolyClip::Clip(const Vec2d* points, unsigned count, CPodVector<Vec2d, 32>& out) const {
  if (!points) return 0;
  const std::size_t size = out.size();
  Pipeline pipeline{{{right_, true, false, {}, {}},
                     {bottom_, true, false, {}, {}},
                     {left_, true, false, {}, {}},
                     {top_, true, false, {}, {}}},
                    out};
  for (unsigned i = 0; i < count; ++i) pipeline.Feed<0>(points[i]);
  pipeline.Close<0>();
  return static_cast<unsigned>(out.size() - size);
}

}  // namespace vlm
