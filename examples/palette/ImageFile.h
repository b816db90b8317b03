#pragma once

/// \file
/// Pictures in files: PNG, and BMP through `CDib`.
///
///     const vlm::palette::Image image = vlm::palette::ReadImage("harbour.png");

#include <examples/palette/Image.h>

#include <string>

namespace vlm::palette {

/// The kinds of files that pictures are written to.
enum class ImageFormat { Png, Bmp, None };

/// Tells the format from a file name's extension, in any case.
[[nodiscard]] ImageFormat ImageFormatOf(const std::string& path);

/// Reads a PNG or BMP file; its first bytes tell which. What is transparent is laid on white.
///
/// *Errors*: `std::runtime_error` with the path and the reason.
[[nodiscard]] Image ReadImage(const std::string& path);

/// Writes a picture of few colours to a file, in the format of its extension.
///
/// *Errors*: `std::runtime_error` or `Exception` with the path and the reason.
void WriteImage(const IndexedImage& image, const std::string& path);

}  // namespace vlm::palette
