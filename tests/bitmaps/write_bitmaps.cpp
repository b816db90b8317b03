// Writes bitmaps of every depth into a folder, NAME.bmp, and beside each one what a viewer must
// show: NAME.rgb, red, green and blue of every pixel, the upper row first.
#include <velum/colour/Dib.h>
#include <velum/core/Exception.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace {

constexpr int kWidth = 13;
constexpr int kHeight = 5;

/// A number that tells the place of a pixel.
unsigned Mix(int x, int y) {
  return static_cast<unsigned>(x * 37 + y * 101 + 5) * 2654435761U >> 8;
}

unsigned char Scaled(unsigned value, unsigned most) {
  return static_cast<unsigned char>((value * 255 + most / 2) / most);
}

/// A bitmap that is filled pixel by pixel, and what it shows.
class Sample {
 public:
  Sample(const vlm::BITMAPINFOHEADER& header, const vlm::RGBQUAD* table) {
    dib_.Create(header, table, nullptr);
  }

  /// Sets a pixel, counted from the upper left corner, to a number of the bitmap's bits.
  void Set(int x, int y, unsigned long value) {
    const int bits = dib_.GetBitsPerPixel();
    unsigned char* const to = dib_.GetWritableBits() + dib_.GetPixelOffset(x, kHeight - 1 - y);
    if (bits < 8) {
      *to = static_cast<unsigned char>(*to | value << (8 - bits - x * bits % 8));
    } else {
      std::memcpy(to, &value, static_cast<std::size_t>(bits / 8));
    }
  }
  void Show(unsigned red, unsigned green, unsigned blue) {
    for (const unsigned channel : {red, green, blue}) shown_ += static_cast<char>(channel);
  }
  void Save(const std::string& path) const {
    dib_.Save(path + ".bmp");
    std::ofstream(path + ".rgb", std::ios::binary) << shown_;
  }

 private:
  vlm::CDib dib_;
  std::string shown_;
};

vlm::BITMAPINFOHEADER Header(int bits, unsigned used, unsigned form) {
  vlm::BITMAPINFOHEADER header{};
  header.biWidth = kWidth;
  header.biHeight = kHeight;
  header.biPlanes = 1;
  header.biBitCount = static_cast<std::uint16_t>(bits);
  header.biCompression = form;
  header.biClrUsed = used;
  return header;
}

void WriteIndexed(const std::string& path, int bits, unsigned used) {
  vlm::RGBQUAD table[256] = {};
  for (unsigned i = 0; i < 256; ++i) {
    table[i] = {std::uint8_t(i * 3), std::uint8_t(255 - i), std::uint8_t(i * 91 + 7), 0};
  }
  Sample sample(Header(bits, used, vlm::BI_RGB), table);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const unsigned index = Mix(x, y) % (used ? used : 1U << bits);
      sample.Set(x, y, index);
      sample.Show(table[index].rgbRed, table[index].rgbGreen, table[index].rgbBlue);
    }
  }
  sample.Save(path);
}

/// Channels of so many bits, red on top.
void WriteChannels(const std::string& path, int bits, int red, int green, int blue, bool masks) {
  const unsigned most[] = {(1U << red) - 1, (1U << green) - 1, (1U << blue) - 1};
  const std::uint32_t words[] = {most[0] << (green + blue), most[1] << blue, most[2]};
  vlm::RGBQUAD table[3];
  std::memcpy(table, words, sizeof(table));
  Sample sample(Header(bits, 0, masks ? vlm::BI_BITFIELDS : vlm::BI_RGB), table);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const unsigned r = Mix(x, y) & most[0];
      const unsigned g = Mix(x + 1, y) & most[1];
      const unsigned b = Mix(x, y + 1) & most[2];
      sample.Set(x, y, r << (green + blue) | g << blue | b);
      sample.Show(Scaled(r, most[0]), Scaled(g, most[1]), Scaled(b, most[2]));
    }
  }
  sample.Save(path);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  const std::string folder = std::string(argv[1]) + "/";
  try {
    WriteIndexed(folder + "1-bit", 1, 0);
    WriteIndexed(folder + "4-bits", 4, 0);
    WriteIndexed(folder + "4-bits-11-colours", 4, 11);
    WriteIndexed(folder + "8-bits", 8, 0);
    WriteIndexed(folder + "8-bits-100-colours", 8, 100);
    WriteChannels(folder + "16-bits", 16, 5, 5, 5, false);
    WriteChannels(folder + "16-bits-masks", 16, 5, 6, 5, true);
    WriteChannels(folder + "24-bits", 24, 8, 8, 8, false);
    WriteChannels(folder + "32-bits", 32, 8, 8, 8, false);
    WriteChannels(folder + "32-bits-masks", 32, 8, 8, 8, true);
  } catch (const vlm::Exception& error) {
    std::fprintf(stderr, "%s\n", error.GetDescription().c_str());
    return 1;
  }
  return 0;
}
