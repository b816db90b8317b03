#include <velum/geometry/Box2.h>
#include <velum/geometry/Box3.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/detail/Pair.inl.h>
#include <velum/geometry/detail/SaturateTo.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace vlm {
namespace {

using detail::Both;
using detail::LoadPair;
using detail::Pair;
using detail::StorePair;

// What one matrix does to one point after the other. z is in step with x and y, which are computed
// as a pair: all sums run from the first product to the translation.
template <Mat4d::Type kType>
class PointTransform {
 public:
  explicit PointTransform(const double* m) noexcept
      : x_{LoadPair(m), LoadPair(m + 2)},
        y_{LoadPair(m + 4), LoadPair(m + 6)},
        z_{LoadPair(m + 8), LoadPair(m + 10)},
        offset_{LoadPair(m + 12), LoadPair(m + 14)} {}

  template <class Source, class Target>
  void Apply(const Source& source, Target& target) const noexcept {
    constexpr bool kHasZ = std::is_same_v<Source, Vec3d>;
    constexpr bool kWantsZ = std::is_same_v<Target, Vec3d>;
    const double px = source.x;
    const double py = source.y;
    const Pair x = Both(px);
    const Pair y = Both(py);
    Pair xy{px, py};
    Pair zw = Both(0);
    if constexpr (kHasZ) {
      zw = Both(source.z);
    }
    if constexpr (kType != Mat4d::TYPE_IDENTITY) {
      const Pair z = zw;
      constexpr bool kUsesZ = kHasZ && kType != Mat4d::TYPE_2D;
      xy = Sum<kUsesZ>(0, x, y, z);
      if constexpr (kType == Mat4d::TYPE_COMPLEX) {
        zw = Sum<kUsesZ>(1, x, y, z);
        const Pair w = Both(zw[1]);
        xy /= w;
        zw /= w;
      } else if constexpr (kWantsZ && kType == Mat4d::TYPE_AFFINE) {
        zw = Sum<kUsesZ>(1, x, y, z);
      }
    }
    if constexpr (kWantsZ) {
      target.z = zw[0];
    }
    Write(xy, target);
  }

 private:
  template <bool kUsesZ>
  Pair Sum(int half, Pair x, Pair y, Pair z) const noexcept {
    Pair sum = x * x_[half] + y * y_[half];
    if constexpr (kUsesZ) {
      sum += z * z_[half];
    }
    return sum + offset_[half];
  }

  static void Write(Pair xy, Vec2f& target) noexcept {
    target.Set(static_cast<float>(xy[0]), static_cast<float>(xy[1]));
  }
  template <class Target>
  static void Write(Pair xy, Target& target) noexcept {
    if constexpr (std::is_same_v<decltype(target.x), double>) {
      StorePair(&target.x, xy);
    } else {
      const detail::IntPair rounded = detail::SaturatePair(xy);
      std::memcpy(&target.x, &rounded, sizeof rounded);
    }
  }

  Pair x_[2];
  Pair y_[2];
  Pair z_[2];
  Pair offset_[2];
};

// Two points in space at a time: their z, and what they are divided by, make pairs as well.
template <Mat4d::Type kType>
void TransformTwo(const double* m, const Vec3d* source, Vec3d* target) noexcept {
  const double* const p = &source->x;
  const Pair x{p[0], p[3]};
  const Pair y{p[1], p[4]};
  const Pair z{p[2], p[5]};
  const auto both = [&](std::size_t column) noexcept {
    return x * Both(m[column]) + y * Both(m[4 + column]) + z * Both(m[8 + column]) +
           Both(m[12 + column]);
  };
  const Pair rows[] = {LoadPair(m), LoadPair(m + 4), LoadPair(m + 8), LoadPair(m + 12)};
  const auto one = [&](int i) noexcept {
    return Both(x[i]) * rows[0] + Both(y[i]) * rows[1] + Both(z[i]) * rows[2] + rows[3];
  };
  Pair first = one(0);
  Pair second = one(1);
  Pair zs = both(2);
  if constexpr (kType == Mat4d::TYPE_COMPLEX) {
    const Pair ws = both(3);
    first /= Both(ws[0]);
    second /= Both(ws[1]);
    zs /= ws;
  }
  double* const out = &target->x;
  StorePair(out, first);
  StorePair(out + 2, Pair{zs[0], second[0]});
  StorePair(out + 4, Pair{second[1], zs[1]});
}

template <Mat4d::Type kType, class Source, class Target>
void TransformAs(const double* m, const Source* source, Target* target,
                 unsigned int count) noexcept {
  const PointTransform<kType> transform(m);
  unsigned int i = 0;
  if constexpr (std::is_same_v<Source, Vec3d> && std::is_same_v<Target, Vec3d> &&
                (kType == Mat4d::TYPE_AFFINE || kType == Mat4d::TYPE_COMPLEX)) {
    for (; count - i >= 2; i += 2) {
      TransformTwo<kType>(m, source + i, target + i);
    }
  }
  for (; i < count; ++i) {
    transform.Apply(source[i], target[i]);
  }
}

template <class Source, class Target>
void TransformPoints(const Mat4d& matrix, const Source* source, Target* target,
                     unsigned int count) noexcept {
  const double* const m = matrix.ToDoubleArray();
  switch (matrix.GetType()) {
    case Mat4d::TYPE_IDENTITY:
      if constexpr (std::is_same_v<Source, Target>) {
        if (source != target && count != 0) {
          std::memcpy(static_cast<void*>(target), source, count * sizeof(Target));
        }
        return;
      } else {
        return TransformAs<Mat4d::TYPE_IDENTITY>(m, source, target, count);
      }
    case Mat4d::TYPE_2D:
      return TransformAs<Mat4d::TYPE_2D>(m, source, target, count);
    case Mat4d::TYPE_AFFINE:
      return TransformAs<Mat4d::TYPE_AFFINE>(m, source, target, count);
    default:
      return TransformAs<Mat4d::TYPE_COMPLEX>(m, source, target, count);
  }
}

}  // namespace

void Mat4d::Transform(const POINT* source, Vec2d* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec2d* source, POINT* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec2d* source, Vec2d* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec2d* source, Vec2i* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec3d* source, POINT* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec3d* source, Vec3d* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec3d* source, Vec2d* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec3d* source, Vec2f* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Vec3d* source, Vec2i* target, unsigned int count) const noexcept {
  TransformPoints(*this, source, target, count);
}

void Mat4d::Transform(const Box2d& source, Box2d& target) const noexcept {
  const Vec2d corners[] = {source.MinCorner(), source.MaxCorner()};
  Vec2d moved[2];
  Transform(corners, moved, 2);
  target.Set(moved[0], moved[1]);
}

void Mat4d::Transform(const Box3d& source, Box3d& target) const noexcept {
  const Vec3d corners[] = {source.MinCorner(), source.MaxCorner()};
  Vec3d moved[2];
  Transform(corners, moved, 2);
  target.Set(moved[0], moved[1]);
}

}  // namespace vlm
