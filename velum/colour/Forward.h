#pragma once

/// \file
/// Forward declarations of the colour values, enough to name them in a declaration.
///
///     namespace vlm { void Fill(Color4b const& colour); }

#include <velum/core/Api.h>

namespace vlm {

class Color3f;
class Color4f;
class Color4b;
class ColorInterpolation;
class NamedColors;

template <class Color>
class VELUM_API FloatColor;

}  // namespace vlm
