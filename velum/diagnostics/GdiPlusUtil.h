#pragma once

/// \file
/// The values of the painting classes made the library's, and back; the encoders of pictures.
///
///     const vlm::Gdiplus::PointF from[] = {{1.5f, 2}, {3, 4}};
///     vlm::Vec2d to[2];
///     vlm::FromGdiPointFArray(from, to, 2);

#include <velum/core/Api.h>
#include <velum/diagnostics/Forward.h>
#include <velum/geometry/Forward.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Writes the coordinates of `count` points as doubles.
VELUM_API void FromGdiPointFArray(const Gdiplus::PointF* from, Vec2d* to, unsigned count) noexcept;
/// Gives `out` the six elements of an affine transform: the first two columns of all rows, as
/// floats. Gives `out`.
VELUM_API Gdiplus::Matrix& ToGdiMatrix(const Mat3d& m, Gdiplus::Matrix& out) noexcept;
/// Gives `out` the transform of the plane: the first two columns of rows 0, 1 and 3, as floats.
/// Gives `out`.
VELUM_API Gdiplus::Matrix& ToGdiMatrix(const Mat4d& m, Gdiplus::Matrix& out) noexcept;
/// Gives `out` a transform, with a third column of 0, 0, 1. Gives `out`.
VELUM_API Mat3d& FromGdiMatrix(const Gdiplus::Matrix& m, Mat3d& out) noexcept;
/// Copies the rows of `from`, whole, to those of `to`. Each stride may be negative: the rows then
/// follow each other upward.
///
/// *Errors*: `ERR_INVALID_PARAMETER` from "GdiplusUtil" if a row of `to` is shorter than one of
/// `from`, or memory is null; nothing is copied.
VELUM_API void CopyGdiBitmapData(Gdiplus::BitmapData& to, const Gdiplus::BitmapData& from);

/// Finds the encoder of pictures of exactly this MIME type, and gives its index and its number.
/// There is one, of "image/png".
///
/// - Another type, or null: -1, and `clsid` stays.
VELUM_API int GetEncoderClsid(const wchar_t* mimeType, GUID* clsid) noexcept;

}  // namespace vlm
