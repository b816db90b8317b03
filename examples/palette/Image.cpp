#include <examples/palette/Image.h>

#include <velum/colour/ColorFormat.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace vlm::palette {
namespace {

/// A channel of a pixel that is a number of 16 or 32 bits.
class MaskedChannel {
 public:
  explicit MaskedChannel(std::uint32_t mask)
      : mask_(mask), shift_(mask ? std::countr_zero(mask) : 0), most_(mask >> shift_) {}

  [[nodiscard]] std::uint8_t Of(std::uint32_t pixel) const {
    if (mask_ == 0) return 0;
    const std::uint64_t value = (pixel & mask_) >> shift_;
    return static_cast<std::uint8_t>((value * 255 + most_ / 2) / most_);
  }

 private:
  std::uint32_t mask_;
  int shift_;
  std::uint64_t most_;
};

/// The masks of red, green and blue, in this order.
std::array<MaskedChannel, 3> ChannelsOf(const CDib& dib) {
  std::uint32_t masks[3] = {0x7C00, 0x03E0, 0x001F};
  if (dib.GetBitsPerPixel() == 32) {
    masks[0] = 0xFF0000;
    masks[1] = 0x00FF00;
    masks[2] = 0x0000FF;
  }
  if (dib.GetDib()->bmiHeader.biCompression == BI_BITFIELDS) {
    std::memcpy(masks, dib.GetColorTable(), sizeof(masks));
  }
  return {MaskedChannel(masks[0]), MaskedChannel(masks[1]), MaskedChannel(masks[2])};
}

void ReadIndices(const CDib& dib, const unsigned char* row, RGBQUAD* to) {
  const int bits = dib.GetBitsPerPixel();
  const unsigned size = dib.GetColorTableSize();
  const RGBQUAD* const table = dib.GetColorTable();
  for (int x = 0; x < dib.GetWidth(); ++x) {
    const int place = x * bits;
    const unsigned index = (row[place / 8] >> (8 - bits - place % 8)) & ((1U << bits) - 1);
    to[x] = index < size ? table[index] : RGBQUAD{};
    to[x].rgbReserved = 0;
  }
}

}  // namespace

Image ImageOf(const CDib& dib) {
  Image image{dib.GetWidth(), dib.GetHeight(), {}};
  const auto width = static_cast<std::size_t>(image.width);
  image.pixels.resize(width * static_cast<std::size_t>(image.height));
  if (image.pixels.empty()) return image;
  const auto channels = ChannelsOf(dib);
  for (int y = 0; y < image.height; ++y) {
    const unsigned char* const row = dib.GetBits() + dib.GetPixelOffset(0, image.height - 1 - y);
    RGBQUAD* const to = image.pixels.data() + static_cast<std::size_t>(y) * width;
    const int bits = dib.GetBitsPerPixel();
    if (bits <= 8) {
      ReadIndices(dib, row, to);
    } else if (bits == 24) {
      for (std::size_t x = 0; x < width; ++x)
        to[x] = {row[3 * x], row[3 * x + 1], row[3 * x + 2], 0};
    } else {
      const std::size_t bytes = static_cast<std::size_t>(bits) / 8;
      for (std::size_t x = 0; x < width; ++x) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, row + bytes * x, bytes);
        to[x] = {channels[2].Of(pixel), channels[1].Of(pixel), channels[0].Of(pixel), 0};
      }
    }
  }
  return image;
}

Image ImageOf(const IndexedImage& image) {
  Image all{image.width, image.height, {}};
  all.pixels.reserve(image.indices.size());
  for (const unsigned char index : image.indices) all.pixels.push_back(image.palette[index]);
  return all;
}

CDib DibOf(const IndexedImage& image) {
  const std::size_t size = image.palette.size();
  const int bits = size <= 2 ? 1 : size <= 16 ? 4 : 8;
  CDib dib(image.width, image.height, bits, static_cast<int>(size));
  dib.SetColorTable(0, static_cast<unsigned>(size), image.palette.data());
  unsigned char* const to = dib.GetWritableBits();
  for (int y = 0; y < image.height; ++y) {
    unsigned char* const row = to + dib.GetPixelOffset(0, image.height - 1 - y);
    const unsigned char* const from =
        image.indices.data() + static_cast<std::ptrdiff_t>(y) * image.width;
    for (int x = 0; x < image.width; ++x) {
      const int place = x * bits;
      row[place / 8] =
          static_cast<unsigned char>(row[place / 8] | from[x] << (8 - bits - place % 8));
    }
  }
  return dib;
}

double MeanSquaredError(const Image& a, const Image& b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < a.pixels.size(); ++i) {
    const int red = a.pixels[i].rgbRed - b.pixels[i].rgbRed;
    const int green = a.pixels[i].rgbGreen - b.pixels[i].rgbGreen;
    const int blue = a.pixels[i].rgbBlue - b.pixels[i].rgbBlue;
    sum += red * red + green * green + blue * blue;
  }
  return a.pixels.empty() ? 0.0 : sum / (3.0 * static_cast<double>(a.pixels.size()));
}

double Decibels(double meanSquaredError) {
  constexpr double kPeak = 255.0 * 255.0;
  return 10.0 * std::log10(kPeak / meanSquaredError);
}

}  // namespace vlm::palette
