#pragma once

/// \file
/// Forward declarations of colours and bitmaps, enough to name them in a declaration.
///
///     namespace vlm { void Fill(const Color4b& colour); }

#include <velum/core/Api.h>

namespace vlm {

class CColorTable;
class CColorTableEntry;
class CDib;
class Color3f;
class Color4f;
class Color4b;
class ColorCount;
class ColorInterpolation;
class NamedColors;

template <class Color>
class VELUM_API FloatColor;

}  // namespace vlm
