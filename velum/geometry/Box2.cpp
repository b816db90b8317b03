#include <velum/geometry/Box2.h>

#include <cstring>

namespace vlm {
namespace {

// x and y side by side in one register: a comparison selects in both at once, each by the rule of
// a single number. Compilers don't find this form by themselves in a loop over points.
template <class T>
struct Lanes {
  typedef T Pair __attribute__((vector_size(2 * sizeof(T))));

  static Pair Load(const BasicVec2<T>& v) noexcept {
    Pair pair;
    std::memcpy(&pair, &v, sizeof pair);
    return pair;
  }
  static BasicVec2<T> Store(Pair pair) noexcept { return BasicVec2<T>(pair[0], pair[1]); }
};

}  // namespace

template <class T>
void BasicBox2<T>::BoundPoints(const BasicVec2<T>* points, unsigned int count) noexcept {
  using Pair = typename Lanes<T>::Pair;
  constexpr unsigned int kStep = 4;
  const BasicBox2 empty;
  Pair low = Lanes<T>::Load(empty.min_);
  Pair high = Lanes<T>::Load(empty.max_);
  const auto extendBy = [&](const BasicVec2<T>& point) {
    const Pair p = Lanes<T>::Load(point);
    low = p < low ? p : low;
    high = p > high ? p : high;
  };
  unsigned int i = 0;
  for (; count - i >= kStep; i += kStep) {
    extendBy(points[i]);
    extendBy(points[i + 1]);
    extendBy(points[i + 2]);
    extendBy(points[i + 3]);
  }
  for (; i < count; ++i) {
    extendBy(points[i]);
  }
  this->Set(Lanes<T>::Store(low), Lanes<T>::Store(high));
}

template void BasicBox2<float>::BoundPoints(const Vec2f* points, unsigned int count) noexcept;
template void BasicBox2<double>::BoundPoints(const Vec2d* points, unsigned int count) noexcept;

}  // namespace vlm
