#include <velum/colour/Dib.h>

#include <velum/core/Exception.h>
#include <velum/core/StandardErrors.h>
#include <velum/files/File.h>
#include <velum/files/detail/FileError.h>
#include <velum/platform/detail/FileReplacement.h>
#include <velum/platform/detail/FileSystem.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string_view>

namespace vlm {

static_assert(std::endian::native == std::endian::little, "blocks are stored as they stand");

namespace {

constexpr std::uint32_t kHeaderSize = sizeof(BITMAPINFOHEADER);
constexpr std::uint32_t kStoredEmpty = 0xFFFFFFFF;  // Blocks have multiples of 4 bytes.

/// The 14 bytes that stand before the bitmap in a BMP file.
struct FileHeader {
  FileHeader(std::uint32_t dibSize, std::uint32_t tableSize) noexcept {
    const std::uint32_t fileSize = dibSize + sizeof(bytes);
    const std::uint32_t bitsOffset = static_cast<std::uint32_t>(sizeof(bytes)) + kHeaderSize +
                                     tableSize * static_cast<std::uint32_t>(sizeof(RGBQUAD));
    std::memcpy(bytes + 2, &fileSize, sizeof(fileSize));
    std::memcpy(bytes + 10, &bitsOffset, sizeof(bitsOffset));
  }
  [[nodiscard]] std::string_view View() const noexcept { return {bytes, sizeof(bytes)}; }

  char bytes[14] = {'B', 'M'};
};

[[noreturn]] void ThrowDamaged(const CFile& file) {
  ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_READ, file.GetFilePath().c_str(),
                 "The bitmap is damaged.");
}

/// Replaces the file at `path` by two pieces one behind the other; false if none can take its
/// place.
bool ReplaceFile(const GString& path, std::string_view first, std::string_view second) {
  const bool isOther = platform::KindOf(path.c_str()) != platform::FileKind::kNothing &&
                       !platform::IsRegularFile(path.c_str());
  if (isOther) return false;
  platform::FileReplacement file;
  const bool hasBegun = file.Begin(path.c_str());
  const bool isWritten = hasBegun && file.Append(first) && file.Append(second);
  if (isWritten && file.Commit()) return true;
  if (hasBegun != isWritten || platform::IsDiskInDanger()) {
    detail::ThrowSystemError(__FILE_NAME__, __LINE__, ERR_WRITE, path);
  }
  return false;
}

/// Puts two pieces one behind the other into what stands at `path`.
void WriteInPlace(const GString& path, std::string_view first, std::string_view second) {
  CFile file(path, CFile::AccessWrite, CFile::ModeCreateAlways, CFile::ShareDenyWrite);
  file.Write(first.data(), static_cast<unsigned int>(first.size()));
  file.Write(second.data(), static_cast<unsigned int>(second.size()));
  file.Close();
}

/// The bytes that a file has behind its position; 0 for a pipe, which can't tell.
std::uint64_t BytesLeft(const CFile& file) {
  try {
    return static_cast<std::uint64_t>(
        std::max<std::int64_t>(file.GetLength() - file.GetPosition(), 0));
  } catch (const Exception&) {
    return 0;
  }
}

/// Gives memory for a block back.
struct FreeBytes {
  void operator()(void* memory) const noexcept { ::operator delete(memory); }
};

/// Memory for a block, for `FreeBytes`.
void* AllocateBytes(std::size_t size) {
  void* const memory = ::operator new(size, std::nothrow);
  if (!memory) throw BadAllocError();
  return memory;
}

}  // namespace

/// The head of a block; the colour table and the pixels follow it. Positions count from its begin,
/// so that a block means the same wherever it lies.
struct CDib::Block {
  std::uint32_t references;
  std::uint32_t blockSize;
  std::uint32_t dibSize;
  std::uint32_t tableSize;
  std::uint32_t tablePosition;
  std::uint32_t bitsPosition;
  std::int32_t stride;
  BITMAPINFOHEADER header;

  [[nodiscard]] RGBQUAD* Table() noexcept { return reinterpret_cast<RGBQUAD*>(this + 1); }
  [[nodiscard]] unsigned char* Bits() noexcept {
    return reinterpret_cast<unsigned char*>(Table() + tableSize);
  }
  [[nodiscard]] std::size_t BitsSize() const noexcept {
    return dibSize - kHeaderSize - tableSize * sizeof(RGBQUAD);
  }
};

/// What a header says of the sizes.
struct CDib::Sizes {
  std::uint32_t block;
  std::uint32_t dib;
  std::uint32_t table;
  std::int32_t stride;

  /// Writes them into the head of a block of nobody's.
  void PutInto(Block& head) const noexcept {
    head.references = 0;
    head.blockSize = block;
    head.dibSize = dib;
    head.tableSize = table;
    head.tablePosition = sizeof(Block);
    head.bitsPosition = head.tablePosition + table * static_cast<std::uint32_t>(sizeof(RGBQUAD));
    head.stride = stride;
    head.header.biSize = kHeaderSize;
  }
};

CDib::CDib(int width, int height, int bitsPerPixel, int colorsUsed) {
  // A negative number of colours is more than there can be.
  Create(width, height, bitsPerPixel, static_cast<unsigned long>(colorsUsed), nullptr, nullptr);
}

CDib::CDib(const CDib& other) noexcept : block_(other.block_) { Hold(block_); }

CDib::~CDib() { Release(block_); }

int CDib::GetWidth() const noexcept { return block_ ? block_->header.biWidth : 0; }

int CDib::GetHeight() const noexcept { return block_ ? block_->header.biHeight : 0; }

int CDib::GetBitsPerPixel() const noexcept { return block_ ? block_->header.biBitCount : 0; }

int CDib::GetStride() const noexcept { return block_ ? block_->stride : 0; }

int CDib::GetUsedNumColors() const noexcept {
  return block_ ? static_cast<int>(block_->header.biClrUsed) : 0;
}

unsigned int CDib::GetColorTableSize() const noexcept { return block_ ? block_->tableSize : 0; }

unsigned int CDib::GetDibSize() const noexcept { return block_ ? block_->dibSize : 0; }

const BITMAPINFO* CDib::GetDib() const noexcept {
  return block_ ? reinterpret_cast<const BITMAPINFO*>(&block_->header) : nullptr;
}

const unsigned char* CDib::GetBits() const noexcept { return block_ ? block_->Bits() : nullptr; }

const RGBQUAD* CDib::GetColorTable() const noexcept { return block_ ? block_->Table() : nullptr; }

unsigned int CDib::GetPixelOffset(int x, int y) const noexcept {
  if (!block_) return 0;
  const std::int64_t inRow = std::int64_t{block_->header.biBitCount} * x / 8;
  return static_cast<unsigned int>(inRow + std::int64_t{block_->stride} * y);
}

void CDib::GetColorTable(unsigned int first, unsigned int count, RGBQUAD* out) const noexcept {
  const unsigned int size = GetColorTableSize();
  if (first < size) std::copy_n(GetColorTable() + first, std::min(count, size - first), out);
}

void CDib::Save(const GString& path) const {
  if (!block_) return;
  if (path.empty()) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  const FileHeader header(block_->dibSize, block_->tableSize);
  const std::string_view dib(reinterpret_cast<const char*>(&block_->header), block_->dibSize);
  if (!ReplaceFile(path, header.View(), dib)) WriteInPlace(path, header.View(), dib);
}

void CDib::Write(CFile& file) const {
  if (!block_) {
    file.Write(&kStoredEmpty, sizeof(kStoredEmpty));
    return;
  }
  Block head = *block_;
  head.references = 1;
  file.Write(&head.blockSize, sizeof(head.blockSize));
  file.Write(&head, sizeof(head));
  if (const auto rest = static_cast<unsigned int>(head.blockSize - sizeof(head)); rest > 0) {
    file.Write(block_ + 1, rest);
  }
}

void* CDib::CopyToGlobalMem() const {
  if (!block_) return nullptr;
  void* const memory = std::malloc(block_->dibSize);
  if (!memory) throw BadAllocError();
  return std::memcpy(memory, &block_->header, block_->dibSize);
}

void CDib::Create(const BITMAPINFOHEADER& header, const RGBQUAD* table, const unsigned char* bits) {
  Sizes sizes;
  if (!Measure(header, sizes)) throw BadAllocError();
  Block* const block = Allocate(header, sizes);
  if (table) {
    std::copy_n(table, sizes.table, block->Table());
  } else {
    std::fill_n(block->Table(), sizes.table, RGBQUAD{});
  }
  if (bits) {
    std::copy_n(bits, block->BitsSize(), block->Bits());
  } else {
    std::fill_n(block->Bits(), block->BitsSize(), static_cast<unsigned char>(0));
  }
  Take(block);
}

void CDib::Create(int width, int height, int bitsPerPixel, unsigned long colorsUsed,
                  const RGBQUAD* table, const unsigned char* bits) {
  BITMAPINFOHEADER header{};
  header.biSize = kHeaderSize;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = static_cast<std::uint16_t>(bitsPerPixel);
  header.biClrUsed = static_cast<std::uint32_t>(colorsUsed);
  if (header.biBitCount != bitsPerPixel || header.biClrUsed != colorsUsed) throw BadAllocError();
  Create(header, table, bits);
}

void CDib::Clear() noexcept { DecRef(); }

unsigned char* CDib::GetWritableBits() {
  if (!block_) return nullptr;
  if (block_->references > 1) CopyBits();
  return block_->Bits();
}

void CDib::SetColorTable(unsigned int first, unsigned int count, const RGBQUAD* entries) {
  const unsigned int size = GetColorTableSize();
  if (first >= size || count == 0) return;
  // Entries of this bitmap's own stay in the block that the others share.
  if (block_->references > 1) CopyBits();
  std::memmove(block_->Table() + first, entries, std::min(count, size - first) * sizeof(RGBQUAD));
}

void CDib::SetColorTable(int index, RGBQUAD entry) {
  if (index >= 0) SetColorTable(static_cast<unsigned int>(index), 1, &entry);
}

void CDib::SetColorTable(int index, unsigned char gray) {
  SetColorTable(index, RGBQUAD{gray, gray, gray, 0});
}

void CDib::Read(CFile& file) {
  std::uint32_t size = 0;
  file.ReadN(&size, sizeof(size));
  if (size == 0) return;
  if (size == kStoredEmpty) {
    Clear();
  } else {
    Take(ReadBlock(file, size));
  }
}

CDib& CDib::operator=(const CDib& other) noexcept {
  if (this != &other) Take(other.block_);
  return *this;
}

void CDib::AddRef() noexcept { Hold(block_); }

void CDib::DecRef() noexcept {
  Release(block_);
  block_ = nullptr;
}

void CDib::CopyBits() {
  if (!block_) return;
  auto* const copy = static_cast<Block*>(AllocateBytes(block_->blockSize));
  std::memcpy(copy, block_, block_->blockSize);
  copy->references = 0;
  Take(copy);
}

/// False for a bitmap that no block can hold.
bool CDib::Measure(const BITMAPINFOHEADER& header, Sizes& sizes) {
  constexpr int kMostBitsWithTable = 8;
  constexpr std::uint32_t kMasks = 3;
  if (header.biWidth < 0 || header.biHeight < 0) return false;
  std::uint64_t table = header.biClrUsed;
  if (table == 0 && header.biBitCount <= kMostBitsWithTable) table = 1U << header.biBitCount;
  if (header.biCompression == BI_BITFIELDS) table += kMasks;
  const std::int64_t bits = std::int64_t{header.biBitCount} * header.biWidth;
  const std::int64_t stride = ((bits + 31) >> 3) & ~std::int64_t{3};
  if (stride > std::numeric_limits<std::int32_t>::max()) return false;
  const std::uint64_t dib =
      kHeaderSize + table * sizeof(RGBQUAD) +
      static_cast<std::uint64_t>(stride) * static_cast<std::uint64_t>(header.biHeight);
  const std::uint64_t block = dib + offsetof(Block, header);
  if (block > std::numeric_limits<std::uint32_t>::max()) return false;
  sizes = {static_cast<std::uint32_t>(block), static_cast<std::uint32_t>(dib),
           static_cast<std::uint32_t>(table), static_cast<std::int32_t>(stride)};
  return true;
}

/// Makes a block with its head alone filled in.
CDib::Block* CDib::Allocate(const BITMAPINFOHEADER& header, const Sizes& sizes) {
  auto* const block = static_cast<Block*>(AllocateBytes(sizes.block));
  block->header = header;
  sizes.PutInto(*block);
  return block;
}

/// Reads a block of `size` bytes: into as much memory as the file has bytes, or else into memory
/// that grows with what has come. Nobody knows whether a pipe gives as much as it says.
CDib::Block* CDib::ReadBlock(CFile& file, std::uint32_t size) {
  constexpr std::uint64_t kFirstPiece = 1 << 16;
  Block head;
  if (size < sizeof(head)) ThrowDamaged(file);
  file.ReadN(&head, sizeof(head));
  Sizes sizes;
  if (!Measure(head.header, sizes) || sizes.block != size || head.blockSize != size ||
      head.dibSize != sizes.dib || head.tableSize != sizes.table || head.stride != sizes.stride) {
    ThrowDamaged(file);
  }
  sizes.PutInto(head);
  using Memory = std::unique_ptr<void, FreeBytes>;
  const std::uint64_t there = sizeof(head) + BytesLeft(file);
  auto capacity =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(size, std::max(there, kFirstPiece)));
  Memory memory(AllocateBytes(capacity));
  std::memcpy(memory.get(), &head, sizeof(head));
  for (std::uint32_t have = sizeof(head);;) {
    if (capacity > have) file.ReadN(static_cast<char*>(memory.get()) + have, capacity - have);
    if (capacity == size) break;
    have = capacity;
    capacity = size - capacity > capacity ? 2 * capacity : size;
    Memory larger(AllocateBytes(capacity));
    std::memcpy(larger.get(), memory.get(), have);
    memory.swap(larger);
  }
  return static_cast<Block*>(memory.release());
}

void CDib::Hold(Block* block) noexcept {
  if (block) ++block->references;
}

void CDib::Release(Block* block) noexcept {
  if (block && block->references-- == 1) FreeBytes()(block);
}

/// Leaves the block for another one, which may be the same.
void CDib::Take(Block* block) noexcept {
  Hold(block);
  Release(block_);
  block_ = block;
}

}  // namespace vlm
