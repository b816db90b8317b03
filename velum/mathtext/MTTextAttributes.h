#pragma once

/// \file
/// The attributes that a piece of text carries with it.
///
///     vlm::MTTextAttributes attributes;  // black "Arial", neither bold nor italic
///     attributes.height = 12.0;

#include <velum/colour/Color4b.h>
#include <velum/core/GString.h>
#include <velum/mathtext/TextIF.h>

namespace vlm {

/// What a text looks like, without its place. A plain value with the defaults of math text
/// elements.
struct MTTextAttributes {
  Color4b color;                             ///< black, opaque
  unsigned int weight = TEXT_WEIGHT_NORMAL;  ///< a `TextWeight`
  unsigned int style = 0;                    ///< a sum of `TextStyle`
  unsigned int charset = 1;                  ///< character set code
  unsigned int pitch = 2;                    ///< pitch code
  unsigned int family = 2;                   ///< family code
  double height = 0.0;                       ///< text height, in the device's units
  GString face = "Arial";                    ///< face name

  /// Compares all attributes exactly, the face byte by byte.
  bool operator==(const MTTextAttributes& other) const = default;
};

}  // namespace vlm
