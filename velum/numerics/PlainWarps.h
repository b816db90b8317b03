#pragma once

/// \file
/// The two simplest warps: a shift, and nothing at all. They work in plain coordinates.
///
///     vlm::CTranslate warp;
///     if (warp.Calibrate(from, to)) vlm::RPoint p = warp.Transform({50, 40});

#include <velum/core/Api.h>
#include <velum/geometry/RPoint.h>
#include <velum/numerics/ImageWarp.h>

namespace vlm {

/// A shift by the mean distance of the control points. One control point is the least. As long as
/// it is uncalibrated, it leaves points where they are.
class VELUM_API CTranslate : public CImageWarp {
 public:
  /// Makes a shift by nothing.
  CTranslate();
  /// Copies what has been fitted.
  CTranslate(const CTranslate& other);
  /// Copies what has been fitted.
  CTranslate(CTranslate&& other) noexcept;
  ~CTranslate() override;
  /// Copies what has been fitted.
  CTranslate& operator=(const CTranslate& other);
  /// Copies what has been fitted.
  CTranslate& operator=(CTranslate&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;

  double TranslateX = 0;  ///< What is added to x.
  double TranslateY = 0;  ///< What is added to y.
};

/// The map that leaves every point where it is.
class VELUM_API CIdentityMap : public CImageWarp {
 public:
  /// Makes the identity.
  CIdentityMap();
  /// Makes the identity.
  CIdentityMap(const CIdentityMap& other);
  /// Makes the identity.
  CIdentityMap(CIdentityMap&& other) noexcept;
  ~CIdentityMap() override;
  /// Stays the identity.
  CIdentityMap& operator=(const CIdentityMap& other);
  /// Stays the identity.
  CIdentityMap& operator=(CIdentityMap&& other) noexcept;
  [[nodiscard]] CImageWarp* Clone() const override;
  /// Does nothing and returns `true`, whatever the control points are.
  [[nodiscard]] bool Calibrate(const RPoints& from, const RPoints& to) override;
  [[nodiscard]] RPoint Transform(const RPoint& p) const override;
};

}  // namespace vlm
