#include <velum/platform/detail/Painting.h>

#include <velum/platform/detail/FileReplacement.h>

#include <zlib.h>

#include <array>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm::platform {

namespace {

// Pictures of few colours: a higher level takes three times as long for two thirds of the size.
constexpr int kLevel = 3;

void PutWord(std::uint32_t word, std::uint8_t* out) {
  for (int i = 0; i < 4; ++i) out[i] = static_cast<std::uint8_t>(word >> (24 - 8 * i));
}

/// A pixel as the file has it: red, green, blue, alpha, not multiplied.
void PutStraight(std::uint32_t pixel, std::uint8_t* out) {
  const std::uint32_t alpha = pixel >> 24;
  const auto part = [&](int shift) {
    const std::uint32_t value = pixel >> shift & 0xFF;
    // What another's pixels hold beyond alpha can't be shown.
    return static_cast<std::uint8_t>(value >= alpha ? (alpha == 0 ? 0 : 255)
                                                    : (value * 255 + alpha / 2) / alpha);
  };
  out[0] = part(16);
  out[1] = part(8);
  out[2] = part(0);
  out[3] = static_cast<std::uint8_t>(alpha);
}

// Both loops over a row take blocks of a known size, so that a compiler takes several bytes at a
// time.

/// A row of pixels as the file has them.
void StraightRow(const std::uint8_t* pixels, int width, std::uint8_t* out) {
  constexpr int kBlock = 8;
  std::array<std::uint32_t, kBlock> block;
  int left = width;
  for (; left >= kBlock; left -= kBlock, pixels += sizeof(block), out += sizeof(block)) {
    std::memcpy(block.data(), pixels, sizeof(block));
    std::uint32_t common = 0xFFFFFFFF;
    for (const std::uint32_t pixel : block) common &= pixel;
    if (common >> 24 == 255) {
      // Opaque pixels, which most are, only have another order of bytes.
      static_assert(std::endian::native == std::endian::little);
      for (std::uint32_t& pixel : block) {
        pixel = (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
      }
      std::memcpy(out, block.data(), sizeof(block));
    } else {
      for (std::size_t i = 0; i < kBlock; ++i) PutStraight(block[i], out + 4 * i);
    }
  }
  for (; left > 0; --left, pixels += 4, out += 4) {
    std::memcpy(block.data(), pixels, 4);
    PutStraight(block[0], out);
  }
}

/// Takes the bytes of one row from those of another.
void Subtract(const std::vector<std::uint8_t>& row, const std::vector<std::uint8_t>& above,
              std::uint8_t* out) {
  constexpr std::size_t kBlock = 32;
  std::array<std::uint8_t, kBlock> a;
  std::array<std::uint8_t, kBlock> b;
  std::size_t at = 0;
  for (; row.size() - at >= kBlock; at += kBlock) {
    std::memcpy(a.data(), row.data() + at, kBlock);
    std::memcpy(b.data(), above.data() + at, kBlock);
    for (std::size_t i = 0; i < kBlock; ++i) a[i] = static_cast<std::uint8_t>(a[i] - b[i]);
    std::memcpy(out + at, a.data(), kBlock);
  }
  for (; at < row.size(); ++at) out[at] = static_cast<std::uint8_t>(row[at] - above[at]);
}

/// Compresses bytes into data chunks of a file.
class PngData {
 public:
  explicit PngData(FileReplacement& file) : file_(file), out_(64 * 1024) {
    isOpen_ = deflateInit(&stream_, kLevel) == Z_OK;
  }
  PngData(const PngData&) = delete;
  PngData& operator=(const PngData&) = delete;
  ~PngData() {
    if (isOpen_) deflateEnd(&stream_);
  }

  [[nodiscard]] bool IsOpen() const { return isOpen_; }

  [[nodiscard]] bool Put(std::vector<std::uint8_t>& bytes, bool isLast) {
    stream_.next_in = bytes.data();
    stream_.avail_in = static_cast<uInt>(bytes.size());
    for (;;) {
      stream_.next_out = out_.data() + used_;
      stream_.avail_out = static_cast<uInt>(out_.size() - used_);
      const int result = deflate(&stream_, isLast ? Z_FINISH : Z_NO_FLUSH);
      used_ = out_.size() - stream_.avail_out;
      const bool isDone = isLast ? result == Z_STREAM_END : stream_.avail_out != 0;
      const bool isChunk = isLast || !isDone;
      if (isChunk && !PutChunk("IDAT", out_.data(), std::exchange(used_, 0))) return false;
      if (isDone) return true;
    }
  }

  [[nodiscard]] bool PutChunk(const char* type, const std::uint8_t* data, std::size_t size) {
    std::uint8_t head[8];
    PutWord(static_cast<std::uint32_t>(size), head);
    std::memcpy(head + 4, type, 4);
    std::uint8_t sum[4];
    PutWord(static_cast<std::uint32_t>(
                crc32_z(crc32_z(0, head + 4, 4), data ? data : head, data ? size : 0)),
            sum);
    return Append(head, 8) && Append(data, size) && Append(sum, 4);
  }

 private:
  [[nodiscard]] bool Append(const std::uint8_t* bytes, std::size_t size) {
    return file_.Append(std::string_view(reinterpret_cast<const char*>(bytes), size));
  }

  FileReplacement& file_;
  z_stream stream_{};
  bool isOpen_ = false;
  std::vector<std::uint8_t> out_;
  std::size_t used_ = 0;
};

}  // namespace

SaveResult SavePng(PixelSurface& surface, const char* path) {
  FileReplacement file;
  if (!file.Begin(path)) return SaveResult::kNoFile;
  PngData data(file);
  if (!data.IsOpen()) return SaveResult::kNoMemory;

  const int width = surface.Width();
  const int height = surface.Height();
  // Eight bits to each of red, green, blue and alpha.
  std::uint8_t header[13] = {0, 0, 0, 0, 0, 0, 0, 0, 8, 6, 0, 0, 0};
  PutWord(static_cast<std::uint32_t>(width), header);
  PutWord(static_cast<std::uint32_t>(height), header + 4);
  bool isWritten = file.Append("\x89PNG\r\n\x1A\n") && data.PutChunk("IHDR", header, sizeof header);

  // Each row is told by its difference from the one above, which in charts is mostly none.
  const std::size_t rowBytes = 4 * static_cast<std::size_t>(width);
  std::vector<std::uint8_t> above(rowBytes);
  std::vector<std::uint8_t> row(rowBytes);
  std::vector<std::uint8_t> difference(1 + rowBytes);
  difference[0] = 2;
  const std::uint8_t* pixels = surface.Pixels();
  for (int y = 0; y < height && isWritten; ++y, pixels += surface.Stride()) {
    StraightRow(pixels, width, row.data());
    Subtract(row, above, difference.data() + 1);
    row.swap(above);
    isWritten = data.Put(difference, y + 1 == height);
  }
  isWritten = isWritten && data.PutChunk("IEND", nullptr, 0) && file.Commit();
  return isWritten ? SaveResult::kDone : SaveResult::kNoFile;
}

}  // namespace vlm::platform
