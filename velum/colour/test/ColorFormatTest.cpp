#include <velum/colour/ColorFormat.h>
#include <velum/colour/GrayScale.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vlm {
namespace {

TEST(ColorFormat, TablesTellEachFormatsProperties) {
  const struct {
    int bpp, dibBpp, bps, samples, table;
    bool alpha;
  } rows[14] = {{0, 0, 0, 0, 0, false},   {1, 1, 1, 1, 0, false},   {4, 4, 4, 1, 0, false},
                {8, 8, 8, 1, 0, false},   {16, 8, 16, 1, 0, false}, {32, 8, 32, 1, 0, false},
                {1, 1, 1, 1, 2, false},   {4, 4, 4, 1, 16, false},  {8, 8, 8, 1, 256, false},
                {24, 24, 8, 3, 0, false}, {32, 32, 8, 4, 0, true},  {32, 32, 8, 4, 0, true},
                {32, 32, 8, 4, 0, false}, {32, 32, 8, 4, 0, true}};
  for (int i = 0; i < 14; ++i) {
    EXPECT_EQ(ColorFmtToBPP[i], rows[i].bpp) << i;
    EXPECT_EQ(ColorFmtToDibBPP[i], rows[i].dibBpp) << i;
    EXPECT_EQ(ColorFmtToBPS[i], rows[i].bps) << i;
    EXPECT_EQ(ColorFmtToSampleCount[i], rows[i].samples) << i;
    EXPECT_EQ(ColorFmtToTblSize[i], rows[i].table) << i;
    EXPECT_EQ(ColorFmtHasAlphaChannel[i], rows[i].alpha) << i;
  }
  const int nearest[][2] = {{0, 0},  {1, 6},  {2, 0},   {4, 7}, {8, 8},
                            {16, 9}, {24, 9}, {32, 10}, {48, 0}};
  for (const auto& [bits, format] : nearest) {
    BITMAPINFOHEADER header{};
    header.biBitCount = static_cast<std::uint16_t>(bits);
    EXPECT_EQ(ColorFormatClosestToDIB(header), format) << bits;
  }
}

TEST(GrayScale, TablesGoFromBlackToWhite) {
  const auto check = [](const Color4b* colors, const RGBQUAD* quads, unsigned size) {
    for (unsigned i = 0; i < size; ++i) {
      const auto gray = static_cast<unsigned char>(i * 255 / (size - 1));
      EXPECT_EQ(colors[i], Color4b(gray, 255)) << size << ", " << i;
      EXPECT_EQ(Color4b(quads[i], quads[i].rgbReserved), Color4b(gray, 0)) << size << ", " << i;
    }
  };
  check(GRAYSCALE_1_Color4bTable, GRAYSCALE_1_RGBQUADTable, 2);
  check(GRAYSCALE_4_Color4bTable, GRAYSCALE_4_RGBQUADTable, 16);
  check(GRAYSCALE_8_Color4bTable, GRAYSCALE_8_RGBQUADTable, 256);
  for (unsigned i = 0; i < 16; ++i) {
    EXPECT_EQ(GRAYSCALE_4_To_GRAYSCALE_8_Table[i], i * 17);
    EXPECT_EQ(GRAYSCALE_4_To_GRAYSCALE_16_Table[i], i * 4369);
    EXPECT_EQ(GRAYSCALE_4_To_GRAYSCALE_32_Table[i], i * 0x11111111UL);
  }
  for (unsigned i = 0; i < 256; ++i) {
    EXPECT_EQ(GRAYSCALE_8_To_GRAYSCALE_16_Table[i], i * 257);
    EXPECT_EQ(GRAYSCALE_8_To_GRAYSCALE_32_Table[i], i * 0x01010101UL);
  }
}

using Bytes = std::vector<unsigned char>;

Bytes RandomBytes(std::size_t size, std::mt19937& random) {
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random());
  return bytes;
}

// Bit by bit, the leftmost one first.
void PlainCopy(Bytes& dst, std::size_t dstBit, const Bytes& src, std::size_t srcBit,
               std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t from = srcBit + i;
    const std::size_t to = dstBit + i;
    const int bit = src[from / 8] >> (7 - from % 8) & 1;
    const int mask = 0x80 >> (to % 8);
    dst[to / 8] = static_cast<unsigned char>(bit ? dst[to / 8] | mask : dst[to / 8] & ~mask);
  }
}

// The arrays end with the last byte that is used, so that a sanitizer sees what goes beyond.
TEST(CopyPixels, DoesWhatAPlainCopyDoes) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  for (int round = 0; round < 4000; ++round) {
    const auto below = [&random](unsigned limit) {
      return static_cast<unsigned>(random() % limit);
    };
    const auto format = static_cast<ColorFormat>(1 + below(13));
    const unsigned bits = static_cast<unsigned>(ColorFmtToBPP[format]);
    const unsigned dstPixel = below(70);
    const unsigned srcPixel = below(70);
    const unsigned count = below(round % 2 ? 20 : 400);
    const Bytes src = RandomBytes(((srcPixel + count) * bits + 7) / 8, random);
    Bytes dst = RandomBytes(((dstPixel + count) * bits + 7) / 8, random);
    Bytes expected = dst;
    PlainCopy(expected, dstPixel * bits, src, srcPixel * bits, count * bits);
    // Positions may count from within the row: of 12 bytes, a whole number of pixels of any format.
    const unsigned to = dst.size() < 12 ? 0 : below(2) * 12;
    const unsigned from = src.size() < 12 ? 0 : below(2) * 12;
    CopyPixels(dst.data() + to, static_cast<int>(dstPixel) - static_cast<int>(to * 8 / bits),
               src.data() + from, static_cast<int>(srcPixel) - static_cast<int>(from * 8 / bits),
               static_cast<int>(count), format);
    ASSERT_EQ(dst, expected) << "format " << format << ", " << count << " pixels from " << srcPixel
                             << " to " << dstPixel << ", counted from the bytes " << from << " and "
                             << to << ", seed " << seed;
  }
}

TEST(CopyPixels, ChangesThePixelsInRangeAlone) {
  const unsigned char src[] = {0b00011000, 0x12};
  unsigned char dst[] = {0xE7, 0xFF};
  CopyPixels(dst, 3, src, 3, 2, ColorFormatIndexed1);
  EXPECT_EQ(dst[0], 0xFF);
  CopyPixels(dst, 5, src, 3, 1, ColorFormatGray1);
  CopyPixels(dst, 6, src, 0, 2, ColorFormatGray1);
  EXPECT_EQ(dst[0], 0xFC);
  CopyPixels(dst, 1, src, 2, 1, ColorFormatGray4);
  EXPECT_EQ(dst[0], 0xF1);
  CopyPixels(dst, 0, src, 0, 2, ColorFormatNone);
  CopyPixels(dst, 0, src, 0, 2, static_cast<ColorFormat>(14));
  CopyPixels(dst, 0, src, 0, -1, ColorFormatBGRA32);
  EXPECT_EQ(dst[0], 0xF1);
  EXPECT_EQ(dst[1], 0xFF);
}

}  // namespace
}  // namespace vlm
