#include <examples/palette/ImageFile.h>

#include <examples/common/Handles.h>
#include <examples/common/Program.h>
#include <examples/palette/BmpFile.h>
#include <examples/palette/ImageSurface.h>

#include <cairo.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace vlm::palette {
namespace {

constexpr std::string_view kPngMark("\x89PNG\r\n\x1A\n", 8);

cairo_status_t Take(void* rest, unsigned char* to, unsigned int count) {
  auto& bytes = *static_cast<std::string_view*>(rest);
  if (bytes.size() < count) return CAIRO_STATUS_READ_ERROR;
  std::memcpy(to, bytes.data(), count);
  bytes.remove_prefix(count);
  return CAIRO_STATUS_SUCCESS;
}

void Check(cairo_status_t status) {
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

Image ReadPng(std::string_view bytes) {
  const examples::SurfacePtr png(cairo_image_surface_create_from_png_stream(Take, &bytes));
  Check(cairo_surface_status(png.get()));
  const int width = cairo_image_surface_get_width(png.get());
  const int height = cairo_image_surface_get_height(png.get());
  const examples::SurfacePtr page(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  const examples::ContextPtr context(cairo_create(page.get()));
  cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
  cairo_paint(context.get());
  cairo_set_source_surface(context.get(), png.get(), 0.0, 0.0);
  cairo_paint(context.get());
  Check(cairo_status(context.get()));
  cairo_surface_flush(page.get());
  Image image{width, height, {}};
  const unsigned char* const data = cairo_image_surface_get_data(page.get());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(page.get());
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const unsigned char* const pixel = data + y * stride + std::ptrdiff_t{4} * x;
      image.pixels.push_back({pixel[0], pixel[1], pixel[2], 0});
    }
  }
  return image;
}

}  // namespace

ImageFormat ImageFormatOf(const std::string& path) {
  std::string extension = path.substr(std::min(path.size(), path.rfind('.') + 1));
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  if (extension == "png") return ImageFormat::Png;
  if (extension == "bmp") return ImageFormat::Bmp;
  return ImageFormat::None;
}

Image ReadImage(const std::string& path) {
  std::ifstream file = examples::OpenInput(path);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  try {
    if (bytes.starts_with(kPngMark)) return ReadPng(bytes);
    if (bytes.starts_with("BM")) return ImageOf(ReadBmp(bytes));
    throw std::runtime_error("it is neither PNG nor BMP");
  } catch (const std::runtime_error& error) {
    throw std::runtime_error("cannot read '" + path + "': " + error.what());
  }
}

void WriteImage(const IndexedImage& image, const std::string& path) {
  if (ImageFormatOf(path) == ImageFormat::Bmp) {
    DibOf(image).Save(path);
    return;
  }
  const examples::SurfacePtr surface = SurfaceOf(ImageOf(image));
  const cairo_status_t status = cairo_surface_write_to_png(surface.get(), path.c_str());
  if (status != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error("cannot write '" + path + "': " + cairo_status_to_string(status));
  }
}

}  // namespace vlm::palette
