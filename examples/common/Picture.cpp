#include <examples/common/Picture.h>

#include <examples/common/Handles.h>

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace vlm::examples {
namespace {

constexpr double kPixelsPerPoint = 2.0;

[[noreturn]] void ThrowUnwritable(const std::string& path, const std::string& reason) {
  throw std::runtime_error("cannot write '" + path + "': " + reason);
}

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

SurfacePtr MakeSurface(PictureFormat format, double width, double height, std::string& bytes) {
  switch (format) {
    case PictureFormat::Svg:
      return SurfacePtr(cairo_svg_surface_create_for_stream(Append, &bytes, width, height));
    case PictureFormat::Pdf:
      return SurfacePtr(cairo_pdf_surface_create_for_stream(Append, &bytes, width, height));
    case PictureFormat::Png:
      break;
  }
  SurfacePtr image(cairo_image_surface_create(
      CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(width * kPixelsPerPoint)),
      static_cast<int>(std::ceil(height * kPixelsPerPoint))));
  cairo_surface_set_device_scale(image.get(), kPixelsPerPoint, kPixelsPerPoint);
  return image;
}

std::string Render(const std::string& path, PictureFormat format, double width, double height,
                   const std::function<void(cairo_t*)>& draw) {
  std::string bytes;
  const SurfacePtr surface = MakeSurface(format, width, height, bytes);
  const ContextPtr context(cairo_create(surface.get()));
  cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
  cairo_paint(context.get());
  draw(context.get());
  cairo_status_t status = cairo_status(context.get());
  if (status == CAIRO_STATUS_SUCCESS && format == PictureFormat::Png) {
    status = cairo_surface_write_to_png_stream(surface.get(), Append, &bytes);
  }
  cairo_surface_finish(surface.get());
  if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface.get());
  if (status != CAIRO_STATUS_SUCCESS) ThrowUnwritable(path, cairo_status_to_string(status));
  return bytes;
}

}  // namespace

std::optional<PictureFormat> PictureFormatOf(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return std::nullopt;
  std::string extension(path.substr(dot + 1));
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  if (extension == "png") return PictureFormat::Png;
  if (extension == "svg") return PictureFormat::Svg;
  if (extension == "pdf") return PictureFormat::Pdf;
  return std::nullopt;
}

void WritePicture(const std::string& path, double width, double height,
                  const std::function<void(cairo_t*)>& draw) {
  const std::optional<PictureFormat> format = PictureFormatOf(path);
  if (!format) {
    throw std::invalid_argument("'" + path + "' is none of .png, .svg and .pdf");
  }
  const std::string bytes = Render(path, *format, width, height, draw);
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) ThrowUnwritable(path, std::generic_category().message(errno));
}

}  // namespace vlm::examples
