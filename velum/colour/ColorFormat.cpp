#include <velum/colour/ColorFormat.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vlm {

constinit const int ColorFmtToBPP[14] = {0, 1, 4, 8, 16, 32, 1, 4, 8, 24, 32, 32, 32, 32};
constinit const int ColorFmtToDibBPP[14] = {0, 1, 4, 8, 8, 8, 1, 4, 8, 24, 32, 32, 32, 32};
constinit const int ColorFmtToBPS[14] = {0, 1, 4, 8, 16, 32, 1, 4, 8, 8, 8, 8, 8, 8};
constinit const int ColorFmtToSampleCount[14] = {0, 1, 1, 1, 1, 1, 1, 1, 1, 3, 4, 4, 4, 4};
constinit const int ColorFmtToTblSize[14] = {0, 0, 0, 0, 0, 0, 2, 16, 256, 0, 0, 0, 0, 0};
constinit const bool ColorFmtHasAlphaChannel[14] = {false, false, false, false, false, false, false,
                                                    false, false, false, true,  true,  false, true};

namespace {

constexpr int kByte = 8;
constexpr int kWord = 64;

/// The byte with `count` bits from the bit `first` on, of which a byte has 0 as its highest.
constexpr unsigned Mask(int first, int count) noexcept {
  return (0xFFU >> first) & ~(0xFFU >> (first + count));
}

/// The `count` bits, 1 to 8, from the bit `bit` of `src` on, as the highest of a byte. What lies
/// below them is of no account.
unsigned Fetch(const unsigned char* src, int bit, int count) noexcept {
  unsigned value = unsigned{src[0]} << bit;
  if (bit + count > kByte) value |= unsigned{src[1]} >> (kByte - bit);
  return value & 0xFF;
}

/// Puts the highest `count` bits of a byte to the bit `bit` of `dst`, which has room for them.
void Put(unsigned char* dst, int bit, int count, unsigned value) noexcept {
  const unsigned mask = Mask(bit, count);
  *dst = static_cast<unsigned char>((*dst & ~mask) | ((value >> bit) & mask));
}

/// Fills `bytes` bytes with those that begin at the bit `bit`, 1 to 7, of `src`.
void CopyShifted(unsigned char* dst, const unsigned char* src, int bit,
                 std::ptrdiff_t bytes) noexcept {
  constexpr std::ptrdiff_t kWordBytes = kWord / kByte;
  for (; bytes >= kWordBytes; bytes -= kWordBytes, dst += kWordBytes, src += kWordBytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, src, sizeof(word));
    if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap64(word);
    word = word << bit | src[kWordBytes] >> (kByte - bit);
    if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap64(word);
    std::memcpy(dst, &word, sizeof(word));
  }
  for (; bytes > 0; --bytes) *dst++ = static_cast<unsigned char>(Fetch(src++, bit, kByte));
}

/// Copies `count` bits, at least one; the positions count bits from the highest of the first byte.
void CopyBits(unsigned char* dst, std::ptrdiff_t dstBit, const unsigned char* src,
              std::ptrdiff_t srcBit, std::ptrdiff_t count) noexcept {
  // Rounded down, for what lies before the begin of a row.
  dst += dstBit >> 3;
  src += srcBit >> 3;
  const int first = static_cast<int>(dstBit & (kByte - 1));
  int from = static_cast<int>(srcBit & (kByte - 1));
  if (first != 0) {
    const int head = static_cast<int>(std::min<std::ptrdiff_t>(kByte - first, count));
    Put(dst++, first, head, Fetch(src, from, head));
    count -= head;
    src += (from + head) / kByte;
    from = (from + head) % kByte;
  }
  const std::ptrdiff_t bytes = count / kByte;
  if (from == 0) {
    if (bytes > 0) std::memcpy(dst, src, static_cast<std::size_t>(bytes));
  } else {
    CopyShifted(dst, src, from, bytes);
  }
  const int tail = static_cast<int>(count % kByte);
  if (tail != 0) Put(dst + bytes, 0, tail, Fetch(src + bytes, from, tail));
}

}  // namespace

ColorFormat ColorFormatClosestToDIB(const BITMAPINFOHEADER& header) noexcept {
  switch (header.biBitCount) {
    case 1:
      return ColorFormatIndexed1;
    case 4:
      return ColorFormatIndexed4;
    case 8:
      return ColorFormatIndexed8;
    case 16:
    case 24:
      return ColorFormatBGR24;
    case 32:
      return ColorFormatBGRA32;
    default:
      return ColorFormatNone;
  }
}

void CopyPixels(unsigned char* dst, int dstPixel, const unsigned char* src, int srcPixel, int count,
                ColorFormat format) noexcept {
  if (count < 1 || format < ColorFormatGray1 || format > ColorFormatPBGRA32) return;
  const std::ptrdiff_t bits = ColorFmtToBPP[format];
  if (bits < kByte) {
    CopyBits(dst, bits * dstPixel, src, bits * srcPixel, bits * count);
  } else {
    const std::ptrdiff_t size = bits / kByte;
    std::memcpy(dst + size * dstPixel, src + size * srcPixel,
                static_cast<std::size_t>(size * count));
  }
}

}  // namespace vlm
