#include <examples/georeference/Resampling.h>

#include <cairo.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace vlm::georeference {
namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;

// The pixels of an image of RGB24, to be read.
class Pixels {
 public:
  explicit Pixels(cairo_surface_t* image)
      : width_(cairo_image_surface_get_width(image)),
        height_(cairo_image_surface_get_height(image)),
        stride_(cairo_image_surface_get_stride(image)),
        data_(cairo_image_surface_get_data(image)) {}

  // The colour at a place, y upwards, whose whole numbers are the corners of pixels.
  [[nodiscard]] std::uint32_t At(const RPoint& place) const {
    const double x = place.X() - 0.5;
    const double y = height_ - place.Y() - 0.5;
    if (!(x >= 0 && y >= 0 && x < width_ - 1 && y < height_ - 1)) return kWhite;
    const int column = static_cast<int>(x);
    const int row = static_cast<int>(y);
    const double right = x - column;
    const double below = y - row;
    const std::uint32_t corners[] = {Word(column, row), Word(column + 1, row),
                                     Word(column, row + 1), Word(column + 1, row + 1)};
    const double shares[] = {(1 - right) * (1 - below), right * (1 - below), (1 - right) * below,
                             right * below};
    std::uint32_t color = 0;
    for (unsigned shift = 0; shift < 24; shift += 8) {
      double sum = 0.5;
      for (unsigned i = 0; i < 4; ++i) sum += shares[i] * ((corners[i] >> shift) & 0xFF);
      color |= static_cast<std::uint32_t>(sum) << shift;
    }
    return color;
  }

 private:
  [[nodiscard]] std::uint32_t Word(int column, int row) const {
    std::uint32_t word;
    std::memcpy(&word, data_ + std::ptrdiff_t{row} * stride_ + 4 * std::ptrdiff_t{column},
                sizeof word);
    return word;
  }

  int width_;
  int height_;
  int stride_;
  const unsigned char* data_;
};

}  // namespace

examples::SurfacePtr Resampled(cairo_surface_t* sheet, const CImageRegistration& toSheet,
                               const Box2d& map, int width) {
  const double step = map.xRange() / width;
  const int height = static_cast<int>(std::lround(map.yRange() / step));
  const Pixels source(sheet);
  examples::SurfacePtr image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  unsigned char* const data = cairo_image_surface_get_data(image.get());
  const std::ptrdiff_t stride = cairo_image_surface_get_stride(image.get());
  std::vector<RPoint> places(static_cast<std::size_t>(width));
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      places[static_cast<std::size_t>(column)] =
          RPoint(map.xMin() + (column + 0.5) * step, map.yMax() - (row + 0.5) * step);
    }
    toSheet.TransformPoints(places.data(), places.data(), places.size());
    for (std::size_t column = 0; column < places.size(); ++column) {
      const std::uint32_t color = source.At(places[column]);
      std::memcpy(data + row * stride + 4 * static_cast<std::ptrdiff_t>(column), &color,
                  sizeof color);
    }
  }
  cairo_surface_mark_dirty(image.get());
  return image;
}

}  // namespace vlm::georeference
