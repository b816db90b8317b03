#include <velum/colour/MedianCut.h>
#include <examples/palette/BmpFile.h>
#include <examples/palette/Histogram.h>
#include <examples/palette/Image.h>
#include <examples/palette/NearestColor.h>
#include <examples/palette/Quantized.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace vlm::palette {
namespace {

unsigned long WordOf(const RGBQUAD& color) {
  ColorCount count;
  count.SetColor(color);
  return count.GetColor();
}

/// Few colours close together and others anywhere.
Image RandomImage(unsigned seed, int width, int height) {
  std::mt19937 random(seed);
  Image image{width, height, {}};
  for (int i = 0; i < width * height; ++i) {
    const auto value = random();
    const unsigned long word = i % 3 == 0 ? value : (value & 0x0F0F0F) | 0x404040;
    image.pixels.push_back(
        {std::uint8_t(word), std::uint8_t(word >> 8), std::uint8_t(word >> 16), 0});
  }
  return image;
}

std::vector<RGBQUAD> PaletteOf(const Image& image, unsigned size) {
  std::vector<ColorCount> counts = CountColors(image);
  std::vector<RGBQUAD> palette;
  MedianCut(counts, palette, size);
  return palette;
}

TEST(PaletteHistogram, CountsEveryColour) {
  const unsigned seed = std::random_device{}();
  const Image image = RandomImage(seed, 90, 40);
  std::map<unsigned long, unsigned> expected;
  for (const RGBQUAD& pixel : image.pixels) ++expected[WordOf(pixel)];
  const std::vector<ColorCount> colors = CountColors(image);
  ASSERT_EQ(colors.size(), expected.size()) << seed;
  auto next = expected.begin();
  for (const ColorCount& color : colors) {
    EXPECT_EQ(color.GetColor(), next->first) << seed;
    EXPECT_EQ(color.GetCount(), next++->second) << seed;
  }
  EXPECT_TRUE(CountColors(Image()).empty());
}

TEST(PaletteNearestColor, IsTheFirstOfTheLeastDistance) {
  const unsigned seed = std::random_device{}();
  const Image image = RandomImage(seed, 100, 100);
  for (const unsigned size : {1u, 2u, 7u, 256u}) {
    std::vector<RGBQUAD> palette = PaletteOf(image, size);
    palette.back() = palette.front();  // one that is never the first
    const IndexedImage mapped = MapToNearest(image, palette);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
      const auto distance = [&](const RGBQUAD& color) {
        const int red = image.pixels[i].rgbRed - color.rgbRed;
        const int green = image.pixels[i].rgbGreen - color.rgbGreen;
        const int blue = image.pixels[i].rgbBlue - color.rgbBlue;
        return red * red + green * green + blue * blue;
      };
      const auto nearest = std::min_element(
          palette.begin(), palette.end(),
          [&](const RGBQUAD& a, const RGBQUAD& b) { return distance(a) < distance(b); });
      ASSERT_EQ(mapped.indices[i], nearest - palette.begin()) << size << ", seed " << seed;
    }
  }
}

TEST(PaletteDiffusion, KeepsTheMeanOfAnEvenPicture) {
  const Image image{64, 64, std::vector<RGBQUAD>(64 * 64, RGBQUAD{64, 128, 192, 0})};
  const IndexedImage mapped = MapWithDiffusion(image, {{0, 0, 0, 0},
                                                       {255, 255, 255, 0},
                                                       {0, 0, 255, 0},
                                                       {255, 255, 0, 0},
                                                       {0, 255, 255, 0},
                                                       {255, 0, 0, 0}});
  double blue = 0, green = 0, red = 0;
  for (const RGBQUAD& pixel : ImageOf(mapped).pixels) {
    blue += pixel.rgbBlue / 4096.0;
    green += pixel.rgbGreen / 4096.0;
    red += pixel.rgbRed / 4096.0;
  }
  // What is left of a row's end goes nowhere.
  EXPECT_NEAR(blue, 64, 4);
  EXPECT_NEAR(green, 128, 4);
  EXPECT_NEAR(red, 192, 4);
}

TEST(PaletteQuantized, OfFewColoursIsExact) {
  const Image image = RandomImage(3, 5, 5);
  const Quantized quantized = Quantize(image, 256, false);
  EXPECT_EQ(quantized.meanSquaredError, 0.0);
  EXPECT_EQ(quantized.image.palette.size(), quantized.coloursBefore);
  EXPECT_TRUE(std::is_sorted(quantized.frequency.rbegin(), quantized.frequency.rend()));
  EXPECT_EQ(NearestName({3, 2, 250, 0}), "Red");
}

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) bytes += static_cast<char>(value);
  return bytes;
}

/// A BMP file of a header of 40 bytes.
std::string Bmp(int width, int height, int bits, const std::string& table, const std::string& rows,
                unsigned used = 0, unsigned form = 0) {
  BITMAPINFOHEADER header{};
  header.biSize = 40;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = static_cast<std::uint16_t>(bits);
  header.biCompression = form;
  header.biClrUsed = used;
  std::string head(54, '\0');
  head[0] = 'B';
  head[1] = 'M';
  const auto offset = static_cast<std::uint32_t>(54 + table.size());
  std::memcpy(head.data() + 10, &offset, sizeof(offset));
  std::memcpy(head.data() + 14, &header, sizeof(header));
  return head + table + rows;
}

std::vector<unsigned long> PixelsOf(const std::string& bmp) {
  std::vector<unsigned long> words;
  for (const RGBQUAD& pixel : ImageOf(ReadBmp(bmp)).pixels) words.push_back(WordOf(pixel));
  return words;
}

TEST(PaletteBmp, EveryDepthIsRead) {
  const std::string table = Bytes({10, 20, 30, 0, 40, 50, 60, 0});
  const unsigned long first = 0x0A141E;
  const unsigned long second = 0x28323C;
  const std::string masks = Bytes({0, 0xF8, 0, 0, 0xE0, 7, 0, 0, 0x1F, 0, 0, 0});
  const std::string core =
      Bytes({'B', 'M', 0, 0, 0, 0, 0, 0, 0,  0,  32, 0,  0,  0,  12,   0, 0, 0,
             2,   0,   1, 0, 1, 0, 1, 0, 10, 20, 30, 40, 50, 60, 0x40, 0, 0, 0});
  using Words = std::vector<unsigned long>;
  const struct {
    const char* why;
    std::string bytes;
    Words pixels;
  } rows[] = {
      {"a bit", Bmp(2, 1, 1, table, Bytes({0x40, 0, 0, 0}), 2), Words{first, second}},
      {"a nibble", Bmp(2, 1, 4, table, Bytes({0x10, 0, 0, 0}), 2), Words{second, first}},
      {"a byte, beyond the table", Bmp(2, 1, 8, table, Bytes({1, 9, 0, 0}), 2), Words{second, 0}},
      {"5 bits each", Bmp(2, 1, 16, "", Bytes({0, 0x7C, 0x10, 0x02})), Words{0xFF, 0x848400}},
      {"5, 6 and 5 bits", Bmp(2, 1, 16, masks, Bytes({0, 0xF8, 0xE0, 7}), 0, BI_BITFIELDS),
       Words{0xFF, 0xFF00}},
      {"three bytes, two rows", Bmp(1, 2, 24, "", Bytes({1, 2, 3, 0, 4, 5, 6, 0})),
       Words{0x040506, 0x010203}},
      {"from the top", Bmp(1, -2, 24, "", Bytes({1, 2, 3, 0, 4, 5, 6, 0})),
       Words{0x010203, 0x040506}},
      {"four bytes", Bmp(1, 1, 32, "", Bytes({1, 2, 3, 99})), Words{0x010203}},
      {"the oldest header", core, Words{first, second}},
  };
  for (const auto& row : rows) EXPECT_EQ(PixelsOf(row.bytes), row.pixels) << row.why;
}

TEST(PaletteBmp, WhatCanNotBeReadIsTold) {
  const std::string pixels(4, '\0');
  const struct {
    std::string bytes;
    const char* message;
  } rows[] = {
      {"PNG", "it is no BMP file"},
      {Bmp(1, 1, 24, "", pixels).substr(0, 30), "the file ends in its header"},
      {Bmp(1, 1, 24, "", ""), "it has fewer pixels than its header says"},
      {Bmp(0x7FFFFFFF, 0x7FFFFFFF, 32, "", pixels), "it has fewer pixels than its header says"},
      {Bmp(1, -0x7FFFFFFF - 1, 24, "", pixels), "it has fewer pixels than its header says"},
      {Bmp(1, 0, 24, "", pixels), "it has no pixels"},
      {Bmp(-1, 1, 24, "", pixels), "it has no pixels"},
      {Bmp(1, 1, 2, "", pixels), "pixels of 2 bits are not read"},
      {Bmp(1, 1, 8, "", pixels, 0, 1), "its form of compression, number 1, is not read"},
      {Bmp(1, 1, 8, "", pixels, 0x40000000), "the file ends in its header"},
  };
  for (const auto& row : rows) {
    try {
      static_cast<void>(ReadBmp(row.bytes));
      ADD_FAILURE() << row.message;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), row.message);
    }
  }
}

TEST(PaletteImage, ComesBackFromItsBitmap) {
  for (const unsigned size : {1u, 2u, 3u, 16u, 17u, 256u}) {
    const Image image = RandomImage(size, 21, 5);
    const IndexedImage mapped = MapToNearest(image, PaletteOf(image, size));
    const CDib dib = DibOf(mapped);
    EXPECT_EQ(dib.GetBitsPerPixel(), size <= 2 ? 1 : size <= 16 ? 4 : 8);
    EXPECT_EQ(MeanSquaredError(ImageOf(dib), ImageOf(mapped)), 0.0) << size;
  }
}

}  // namespace
}  // namespace vlm::palette
