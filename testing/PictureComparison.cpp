#include <testing/PictureComparison.h>

#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <ostream>
#include <stdexcept>

namespace vlm::testing {
namespace {

struct SurfaceDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;

// PNG comes in as ARGB32 or, without alpha, as RGB24, whose fourth byte is undefined; painting onto
// an ARGB32 surface brings both to one form.
SurfacePtr ReadPicture(const std::string& path) {
  const SurfacePtr file(cairo_image_surface_create_from_png(path.c_str()));
  const cairo_status_t status = cairo_surface_status(file.get());
  if (status != CAIRO_STATUS_SUCCESS) {
    throw std::runtime_error("cannot read the picture '" + path +
                             "': " + cairo_status_to_string(status));
  }
  SurfacePtr picture(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                cairo_image_surface_get_width(file.get()),
                                                cairo_image_surface_get_height(file.get())));
  cairo_t* context = cairo_create(picture.get());
  cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_surface(context, file.get(), 0, 0);
  cairo_paint(context);
  cairo_destroy(context);
  cairo_surface_flush(picture.get());
  return picture;
}

int LargestByteDifference(const unsigned char* pixel, const unsigned char* other) {
  int largest = 0;
  for (int byte = 0; byte < 4; ++byte) {
    largest = std::max(largest, std::abs(pixel[byte] - other[byte]));
  }
  return largest;
}

void AddPixel(PictureDifference& difference, int column, int row) {
  if (difference.count++ == 0) {
    difference.left = column;
    difference.right = column + 1;
    difference.top = row;
  }
  difference.left = std::min(difference.left, column);
  difference.right = std::max(difference.right, column + 1);
  difference.bottom = row + 1;
}

bool IsRemakeAsked() {
  const char* flag = std::getenv("VELUM_REMAKE_PICTURES");
  return flag != nullptr && std::strcmp(flag, "1") == 0;
}

}  // namespace

PictureDifference ComparePictures(const std::string& path, const std::string& otherPath,
                                  int channel) {
  const SurfacePtr picture = ReadPicture(path);
  const SurfacePtr other = ReadPicture(otherPath);
  PictureDifference difference;
  difference.width = cairo_image_surface_get_width(picture.get());
  difference.height = cairo_image_surface_get_height(picture.get());
  difference.otherWidth = cairo_image_surface_get_width(other.get());
  difference.otherHeight = cairo_image_surface_get_height(other.get());
  if (!difference.SameSize()) return difference;

  const std::ptrdiff_t stride = cairo_image_surface_get_stride(picture.get());
  const unsigned char* row = cairo_image_surface_get_data(picture.get());
  const unsigned char* otherRow = cairo_image_surface_get_data(other.get());
  for (int y = 0; y < difference.height; ++y, row += stride, otherRow += stride) {
    for (int x = 0; x < difference.width; ++x) {
      const int largest = LargestByteDifference(row + 4 * x, otherRow + 4 * x);
      difference.largest = std::max(difference.largest, largest);
      if (largest > channel) AddPixel(difference, x, y);
    }
  }
  return difference;
}

std::ostream& operator<<(std::ostream& stream, const PictureDifference& difference) {
  if (!difference.SameSize()) {
    return stream << "the sizes differ: " << difference.width << " x " << difference.height
                  << " pixels and " << difference.otherWidth << " x " << difference.otherHeight;
  }
  const auto pixels = static_cast<std::int64_t>(difference.width) * difference.height;
  stream << difference.count << " of " << pixels
         << " pixels differ, the largest difference of a byte is " << difference.largest;
  if (difference.count > 0) {
    stream << "; they lie in columns " << difference.left << " to " << difference.right - 1
           << ", rows " << difference.top << " to " << difference.bottom - 1;
  }
  return stream;
}

::testing::AssertionResult MatchesStoredPicture(const std::string& path,
                                                const std::string& storedPath,
                                                const PictureTolerance& tolerance) {
  namespace fs = std::filesystem;
  if (IsRemakeAsked()) {
    fs::copy_file(path, storedPath, fs::copy_options::overwrite_existing);
    return ::testing::AssertionFailure()
           << "remade " << storedPath << "; look at it, then run without VELUM_REMAKE_PICTURES";
  }
  const std::string howToRemake = "\n  drawn:  " + path + "\n  stored: " + storedPath +
                                  "\nSet VELUM_REMAKE_PICTURES=1 to store what was drawn.";
  if (!fs::exists(storedPath)) {
    return ::testing::AssertionFailure() << "there is no stored picture" << howToRemake;
  }
  const PictureDifference difference = ComparePictures(path, storedPath, tolerance.channel);
  if (difference.SameSize() && difference.count <= tolerance.pixels) {
    return ::testing::AssertionSuccess() << difference;
  }
  return ::testing::AssertionFailure() << difference << howToRemake;
}

}  // namespace vlm::testing
