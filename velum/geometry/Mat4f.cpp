#include <velum/geometry/Mat4f.h>

#include <velum/geometry/Box2.h>
#include <velum/geometry/Box3.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/detail/Inverse4.h>
#include <velum/geometry/detail/Pair.inl.h>
#include <velum/geometry/detail/SaturateTo.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace vlm {
namespace {

// A row in one register; an operation on it is the operation on each of its numbers.
typedef float Row __attribute__((vector_size(16)));

Row LoadRow(const float* p) noexcept {
  Row row;
  std::memcpy(&row, p, sizeof row);
  return row;
}

Row All(float v) noexcept { return Row{v, v, v, v}; }

template <class Source, class Target>
void TransformPoints(const float* m, const Source* source, Target* target,
                     unsigned int count) noexcept {
  const Row rows[] = {LoadRow(m), LoadRow(m + 4), LoadRow(m + 8), LoadRow(m + 12)};
  for (unsigned int i = 0; i < count; ++i) {
    Row p = All(static_cast<float>(source[i].x)) * rows[0] +
            All(static_cast<float>(source[i].y)) * rows[1];
    if constexpr (std::is_same_v<Source, Vec3f>) {
      p += All(source[i].z) * rows[2];
    }
    p += rows[3];
    p /= All(p[3]);
    if constexpr (std::is_same_v<decltype(target->x), float>) {
      target[i].x = p[0];
      target[i].y = p[1];
      if constexpr (std::is_same_v<Target, Vec3f>) {
        target[i].z = p[2];
      }
    } else {
      const detail::IntPair rounded = detail::SaturatePair(detail::Pair{p[0], p[1]});
      std::memcpy(&target[i].x, &rounded, sizeof rounded);
    }
  }
}

}  // namespace

Mat4f::Mat4f(const Mat4d& m) noexcept {
  const double* const from = m.ToDoubleArray();
  for (std::size_t i = 0; i < 16; ++i) {
    m_[i] = static_cast<float>(from[i]);
  }
}

bool Mat4f::Inverse(Mat4f& out) const noexcept {
  const bool isAffine = m_[3] == 0 && m_[7] == 0 && m_[11] == 0 && m_[15] == 1;
  return isAffine ? detail::InvertAffine(m_, out.m_) : detail::InvertByElimination(m_, out.m_);
}

void Mat4f::VecMult(const POINT* source, Vec2f* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec2f* source, POINT* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec2f* source, Vec2f* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec2f* source, Vec2i* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec3f* source, POINT* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec3f* source, Vec3f* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec3f* source, Vec2f* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::VecMult(const Vec3f* source, Vec2i* target, unsigned int count) const noexcept {
  TransformPoints(m_, source, target, count);
}

void Mat4f::Transform(const Box2f& source, Box2f& target) const noexcept {
  const Vec2f corners[] = {source.MinCorner(), source.MaxCorner()};
  Vec2f moved[2];
  VecMult(corners, moved, 2);
  target.Set(moved[0], moved[1]);
}

void Mat4f::Transform(const Box3f& source, Box3f& target) const noexcept {
  const Vec3f corners[] = {source.MinCorner(), source.MaxCorner()};
  Vec3f moved[2];
  VecMult(corners, moved, 2);
  target.Set(moved[0], moved[1]);
}

}  // namespace vlm
