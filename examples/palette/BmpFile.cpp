#include <examples/palette/BmpFile.h>

#include <velum/platform/Types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace vlm::palette {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12;  // the oldest form of a header
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kLargestHeader = 124;

[[noreturn]] void Refuse(const std::string& reason) { throw std::runtime_error(reason); }

template <class T>
T NumberAt(std::string_view bytes, std::size_t offset) {
  T number{};
  if (bytes.size() < sizeof(number) || offset > bytes.size() - sizeof(number)) {
    Refuse("the file ends in its header");
  }
  std::memcpy(&number, bytes.data() + offset, sizeof(number));
  return number;
}

/// A header of any form as one of 40 bytes.
BITMAPINFOHEADER HeaderOf(std::string_view bytes) {
  BITMAPINFOHEADER header{};
  header.biSize = NumberAt<std::uint32_t>(bytes, kFileHeader);
  if (header.biSize == kCoreHeader) {
    header.biWidth = NumberAt<std::uint16_t>(bytes, kFileHeader + 4);
    header.biHeight = NumberAt<std::uint16_t>(bytes, kFileHeader + 6);
    header.biPlanes = 1;
    header.biBitCount = NumberAt<std::uint16_t>(bytes, kFileHeader + 10);
    return header;
  }
  if (header.biSize < kInfoHeader || header.biSize > kLargestHeader) {
    Refuse("its header has " + std::to_string(header.biSize) + " bytes, and is of no known form");
  }
  return NumberAt<BITMAPINFOHEADER>(bytes, kFileHeader);
}

void CheckForm(const BITMAPINFOHEADER& header) {
  const int bits = header.biBitCount;
  if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32) {
    Refuse("pixels of " + std::to_string(bits) + " bits are not read");
  }
  const bool hasMasks = header.biCompression == BI_BITFIELDS && (bits == 16 || bits == 32);
  if (header.biCompression != BI_RGB && !hasMasks) {
    Refuse("its form of compression, number " + std::to_string(header.biCompression) +
           ", is not read");
  }
}

/// What stands between the header and the pixels: three masks or the colours.
std::vector<RGBQUAD> TableOf(std::string_view bytes, const BITMAPINFOHEADER& header) {
  const std::size_t first = kFileHeader + header.biSize;
  std::size_t size = 0;
  if (header.biCompression == BI_BITFIELDS) {
    size = 3;
  } else if (header.biBitCount <= 8) {
    size = std::size_t{1} << header.biBitCount;
    if (header.biClrUsed != 0) size = std::min<std::size_t>(size, header.biClrUsed);
  }
  std::vector<RGBQUAD> table(size);
  // Later forms have the masks inside of the header.
  const std::size_t masks = kFileHeader + kInfoHeader;
  for (std::size_t i = 0; i < size; ++i) {
    if (header.biSize == kCoreHeader) {
      table[i] = {NumberAt<std::uint8_t>(bytes, first + 3 * i),
                  NumberAt<std::uint8_t>(bytes, first + 3 * i + 1),
                  NumberAt<std::uint8_t>(bytes, first + 3 * i + 2), 0};
    } else {
      const bool isMask = header.biCompression == BI_BITFIELDS;
      table[i] = NumberAt<RGBQUAD>(bytes, (isMask ? masks : first) + sizeof(RGBQUAD) * i);
    }
  }
  return table;
}

/// The rows, the lowest first; they lie in the bytes or, turned round, in `turned`.
const unsigned char* BitsOf(std::string_view bytes, const BITMAPINFOHEADER& header,
                            std::vector<unsigned char>& turned) {
  const std::uint32_t offset = NumberAt<std::uint32_t>(bytes, 10);
  const std::int64_t height = std::abs(std::int64_t{header.biHeight});
  const std::int64_t stride = (std::int64_t{header.biBitCount} * header.biWidth + 31) / 32 * 4;
  const std::int64_t left = static_cast<std::int64_t>(bytes.size()) - std::int64_t{offset};
  if (header.biWidth <= 0 || height == 0) Refuse("it has no pixels");
  if (left / stride < height) Refuse("it has fewer pixels than its header says");
  const auto* const first = reinterpret_cast<const unsigned char*>(bytes.data()) + offset;
  if (header.biHeight > 0) return first;
  for (std::int64_t y = height - 1; y >= 0; --y) {
    turned.insert(turned.end(), first + y * stride, first + (y + 1) * stride);
  }
  return turned.data();
}

}  // namespace

CDib ReadBmp(std::string_view bytes) {
  if (!bytes.starts_with("BM")) Refuse("it is no BMP file");
  BITMAPINFOHEADER header = HeaderOf(bytes);
  CheckForm(header);
  std::vector<unsigned char> turned;
  const unsigned char* const bits = BitsOf(bytes, header, turned);
  const std::vector<RGBQUAD> table = TableOf(bytes, header);
  header.biHeight = header.biHeight < 0 ? -header.biHeight : header.biHeight;
  header.biClrUsed = header.biBitCount <= 8 ? static_cast<std::uint32_t>(table.size()) : 0;
  CDib dib;
  dib.Create(header, table.data(), bits);
  return dib;
}

}  // namespace vlm::palette
