#include <examples/palette/ImageSurface.h>

#include <cairo.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace vlm::palette {

examples::SurfacePtr SurfaceOf(const Image& image) {
  examples::SurfacePtr surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.width, image.height));
  const cairo_status_t status = cairo_surface_status(surface.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
  unsigned char* const data = cairo_image_surface_get_data(surface.get());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface.get());
  const RGBQUAD* pixel = image.pixels.data();
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x, ++pixel) {
      const std::uint32_t word =
          std::uint32_t{pixel->rgbRed} << 16 | std::uint32_t{pixel->rgbGreen} << 8 | pixel->rgbBlue;
      std::memcpy(data + y * stride + std::ptrdiff_t{4} * x, &word, sizeof(word));
    }
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

}  // namespace vlm::palette
