#include <velum/geometry/RectTransformer.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/Rounding.h>
#include <velum/geometry/detail/WrapTo.inl.h>

#include <cmath>
#include <cstdint>

namespace vlm {
namespace {

POINT Rounded(const Vec2d& p) noexcept {
  return POINT{detail::WrapTo<std::int32_t>(ToNearest(p.x)),
               detail::WrapTo<std::int32_t>(ToNearest(p.y))};
}

Vec2d Scale(const Vec2d& source, const Vec2d& destination, bool isotropic) noexcept {
  const bool hasWidth = std::abs(source.x) >= EPSILON;
  const bool hasHeight = std::abs(source.y) >= EPSILON;
  if (!hasWidth && !hasHeight) {
    return Vec2d::ONE;
  }
  if (!hasHeight) {
    return Vec2d() + destination.x / source.x;
  }
  if (!hasWidth) {
    return Vec2d() + destination.y / source.y;
  }
  Vec2d scale = destination / source;
  if (isotropic) {
    const double smaller = std::fmin(std::abs(scale.x), std::abs(scale.y));
    scale.Set(std::copysign(smaller, scale.x), std::copysign(smaller, scale.y));
  }
  return scale;
}

}  // namespace

CRectTransformer::CRectTransformer(const Box2d& source, const Box2d& destination,
                                   bool isotropic) noexcept
    : sourceCenter_(source.Center()),
      destinationCenter_(destination.Center()),
      scale_(Scale(source.Size(), destination.Size(), isotropic)) {}

Vec2d CRectTransformer::Transform(const Vec2d& p) const noexcept {
  return (p - sourceCenter_) * scale_ + destinationCenter_;
}

Box2d CRectTransformer::Transform(const Box2d& box) const noexcept {
  return Box2d(Transform(box.MinCorner()), Transform(box.MaxCorner()));
}

POINT CRectTransformer::Transform(POINT const& p) const noexcept {
  return Rounded(Transform(Vec2d(p)));
}

RECT CRectTransformer::Transform(RECT const& rect) const noexcept {
  POINT const leftTop = Transform(POINT{rect.left, rect.top});
  POINT const rightBottom = Transform(POINT{rect.right, rect.bottom});
  return RECT{leftTop.x, leftTop.y, rightBottom.x, rightBottom.y};
}

Vec2d CRectTransformer::ReverseTransform(const Vec2d& p) const noexcept {
  return (p - destinationCenter_) / scale_ + sourceCenter_;
}

Box2d CRectTransformer::ReverseTransform(const Box2d& box) const noexcept {
  return Box2d(ReverseTransform(box.MinCorner()), ReverseTransform(box.MaxCorner()));
}

POINT CRectTransformer::ReverseTransform(POINT const& p) const noexcept {
  return Rounded(ReverseTransform(Vec2d(p)));
}

RECT CRectTransformer::ReverseTransform(RECT const& rect) const noexcept {
  POINT const leftTop = ReverseTransform(POINT{rect.left, rect.top});
  POINT const rightBottom = ReverseTransform(POINT{rect.right, rect.bottom});
  return RECT{leftTop.x, leftTop.y, rightBottom.x, rightBottom.y};
}

CRectTransformer::operator Mat3d() const noexcept {
  return Mat3d::MakeTranslation(-sourceCenter_).Scale(scale_).Translate(destinationCenter_);
}

}  // namespace vlm
