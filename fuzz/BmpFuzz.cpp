// Reads any bytes as a BMP file, as the example does. What is refused is told; what is read has no
// more pixels than the bytes hold, and comes back from a file that the library writes.
#include <velum/colour/Dib.h>
#include <examples/palette/BmpFile.h>
#include <examples/palette/Image.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

void Require(bool fact) {
  if (!fact) std::abort();
}

/// The bytes of the file that `Save` writes.
std::string FileOf(const vlm::CDib& dib) {
  std::string bytes("BM\0\0\0\0\0\0\0\0", 10);
  const std::uint32_t offset = 54 + 4 * dib.GetColorTableSize();
  bytes.append(reinterpret_cast<const char*>(&offset), sizeof(offset));
  return bytes.append(reinterpret_cast<const char*>(dib.GetDib()), dib.GetDibSize());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vlm::CDib dib;
  try {
    dib = vlm::palette::ReadBmp({reinterpret_cast<const char*>(data), size});
  } catch (const std::runtime_error& error) {
    Require(std::strlen(error.what()) > 0);
    return 0;
  }
  // The table may be larger than what of it stands in the file only by what a pixel can name.
  Require(dib.GetDibSize() <= size + 40 + 256 * sizeof(vlm::RGBQUAD));
  const vlm::palette::Image image = vlm::palette::ImageOf(dib);
  Require(!image.pixels.empty() && image.pixels.size() <= 8 * size);
  const vlm::palette::Image again = vlm::palette::ImageOf(vlm::palette::ReadBmp(FileOf(dib)));
  Require(again.width == image.width && again.height == image.height);
  Require(vlm::palette::MeanSquaredError(image, again) == 0.0);
  return 0;
}
