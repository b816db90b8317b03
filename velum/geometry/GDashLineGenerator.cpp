#include <velum/geometry/GDashLineGenerator.h>

#include <velum/core/Exception.h>

#include <cstddef>
#include <exception>
#include <limits>

namespace vlm {

namespace {

// How many entries of the list one segment may meet. Beyond it the ends of most would be one
// number, and the pattern might not come to its end.
constexpr double kMostEntries = 0x1p52;

// Where drawn pieces go. Types of this file's own, so that no compiler exports what they are given
// to.
template <class Vec>
struct ToSink {
  typename BasicDashLineGenerator<Vec>::Sink sink;
  void* context;

  void operator()(const Vec& begin, const Vec& end) const {
    if (sink) sink(begin, end, context);
  }
};

template <class Vec>
struct ToVector {
  std::vector<BasicGLine<Vec>>& out;

  void operator()(const Vec& begin, const Vec& end) const { out.emplace_back(begin, end); }
};

}  // namespace

template <class Vec>
void BasicDashLineGenerator<Vec>::Construct(const double* dashes, unsigned count) {
  if (!dashes && count != 0) ThrowErrorImpl("GDashLineGenerator", __LINE__, ERR_INTERNAL);
  try {
    std::vector<double> list;
    if (count == 0) {
      list.push_back(0);
    } else {
      list.assign(dashes, dashes + count);
    }
    dashes_.swap(list);
  } catch (const std::exception&) {
    ThrowErrorImpl("GDashLineGenerator", __LINE__, ERR_OUT_OF_MEMORY);
  }
  InitState();
}

template <class Vec>
void BasicDashLineGenerator<Vec>::InitState() noexcept {
  last_ = Vec() + std::numeric_limits<double>::max();
  index_ = 0;
  isPenDown_ = true;
  remaining_ = dashes_.empty() ? 0 : dashes_[0];
}

// Segments below this length are dashed; 0, which nothing is below, where none is.
template <class Vec>
double BasicDashLineGenerator<Vec>::LongestDashed() const noexcept {
  if (dashes_.empty()) return 0;
  double sum = 0;
  for (double entry : dashes_) {
    if (!(entry >= 0)) return 0;
    sum += entry;
  }
  const double longest = sum / static_cast<double>(dashes_.size()) * kMostEntries;
  return longest < std::numeric_limits<double>::max() ? longest
                                                      : std::numeric_limits<double>::max();
}

// Calls `draw` with the ends of each drawn piece.
template <class Vec>
template <class Draw>
void BasicDashLineGenerator<Vec>::Run(const Vec* points, unsigned count, const Draw& draw) {
  if (count < 2 || !points) {
    InitState();
    return;
  }
  if (!(points[0] == last_)) InitState();
  const double longest = LongestDashed();
  const std::size_t size = dashes_.size();
  std::size_t index = index_;
  bool isPenDown = isPenDown_;
  double remaining = remaining_;
  for (unsigned i = 1; i < count; ++i) {
    const Vec start = points[i - 1];
    const Vec d = points[i] - start;
    const double length = d.Length();
    if (!(length < longest)) {
      draw(start, points[i]);
      continue;
    }
    Vec from = start;  // where the pen has come to
    while (remaining < length) {
      const Vec boundary = (d * remaining) / (Vec() + length) + start;
      if (isPenDown) draw(from, boundary);
      from = boundary;
      isPenDown = !isPenDown;
      if (++index == size) index = 0;
      // It stays the distance from the segment's start.
      remaining += dashes_[index];
    }
    if (isPenDown) draw(from, points[i]);
    remaining -= length;
  }
  last_ = points[count - 1];
  index_ = static_cast<unsigned>(index);
  isPenDown_ = isPenDown;
  remaining_ = remaining;
}

template <class Vec>
void BasicDashLineGenerator<Vec>::Decompose(const Vec* points, unsigned count, Sink sink,
                                            void* context) {
  Run(points, count, ToSink<Vec>{sink, context});
}

template <class Vec>
void BasicDashLineGenerator<Vec>::Decompose(const Vec* points, unsigned count,
                                            std::vector<BasicGLine<Vec>>& out) {
  Run(points, count, ToVector<Vec>{out});
}

template class BasicDashLineGenerator<Vec2d>;
template class BasicDashLineGenerator<Vec3d>;

}  // namespace vlm
