#pragma once

/// \file
/// A bitmap in memory, in the layout in which header, colour table and pixels are handed over as
/// one block.
///
///     vlm::CDib flag(3, 2, 24, 0);
///     unsigned char* const bits = flag.GetWritableBits();
///     bits[flag.GetPixelOffset(2, 1) + 2] = 255;  // red in the upper right corner
///     flag.Save("flag.bmp");

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/files/Forward.h>
#include <velum/platform/Types.h>

#include <cstdint>

namespace vlm {

/// A bitmap: a header of 40 bytes, the colour table and the pixels, one behind the other.
///
/// A value. Copies share one block of memory until one of them is written to, and copying costs one
/// increment. An empty bitmap has no block.
///
/// What the header says settles the sizes:
/// - Colour table: `biClrUsed` entries, or if that is 0 all that a pixel of up to 8 bits can name;
///   three more, the masks of the channels, with `BI_BITFIELDS`.
/// - Stride: the bytes of a row, a multiple of 4.
/// - Pixels: `biHeight` rows, the lowest first, whatever the compression. So the bytes of a
///   compressed bitmap need room in as many.
///
/// The whole block, with 28 bytes of its own before the header, has less than 4 GiB, and a row less
/// than 2 GiB. Rows from top to bottom, which a negative height tells of, are not for this class.
///
/// Threads: bitmaps that share a block belong to one thread at a time; the count of those that
/// share it is not locked.
///
/// *Errors*: a bitmap that can't be, or for which there is no memory, throws `BadAllocError` "bad
/// allocation": a negative width or height, or a size beyond those limits. The object is then as
/// it was.
class VELUM_API CDib {
 public:
  /// An empty bitmap.
  CDib() noexcept = default;
  /// A bitmap of zeros; see `Create`.
  CDib(int width, int height, int bitsPerPixel, int colorsUsed);
  /// Shares the block of another bitmap.
  CDib(const CDib& other) noexcept;
  virtual ~CDib();

  /// The pixels of a row; 0 for an empty bitmap.
  [[nodiscard]] int GetWidth() const noexcept;
  /// The number of rows; 0 for an empty bitmap.
  [[nodiscard]] int GetHeight() const noexcept;
  /// The bits of a pixel; 0 for an empty bitmap.
  [[nodiscard]] int GetBitsPerPixel() const noexcept;
  /// The bytes from a row to the next; 0 for an empty bitmap.
  [[nodiscard]] int GetStride() const noexcept;
  /// The header's `biClrUsed`; 0 for an empty bitmap.
  [[nodiscard]] int GetUsedNumColors() const noexcept;
  /// The entries of the colour table, masks among them; 0 for an empty bitmap.
  [[nodiscard]] unsigned int GetColorTableSize() const noexcept;
  /// The bytes of header, colour table and pixels; 0 for an empty bitmap.
  [[nodiscard]] unsigned int GetDibSize() const noexcept;
  /// The header, `GetDibSize` bytes with all that follows it; null for an empty bitmap.
  ///
  /// *Lifetime*: until the bitmap is changed or gone; so for the next two.
  [[nodiscard]] const BITMAPINFO* GetDib() const noexcept;
  /// The pixels, the lowest row first; null for an empty bitmap.
  [[nodiscard]] const unsigned char* GetBits() const noexcept;
  /// The colour table; null for an empty bitmap.
  [[nodiscard]] const RGBQUAD* GetColorTable() const noexcept;
  /// Where in the pixels the byte lies that holds the first bit of a pixel, with `y` counted
  /// upwards; 0 for an empty bitmap.
  [[nodiscard]] unsigned int GetPixelOffset(int x, int y) const noexcept;
  /// Copies `count` entries of the colour table from the index `first` on; those behind the end of
  /// the table are left out.
  void GetColorTable(unsigned int first, unsigned int count, RGBQUAD* out) const noexcept;

  /// Writes a BMP file at `path`. A file that is there is replaced once the new one is whole, and
  /// keeps its permissions. An empty bitmap writes nothing.
  ///
  /// Of processes and threads that write at once, each waits for the lock of the file
  /// `.NAME.velum-lock`, which stands beside the file `NAME` during a write. So that name is the
  /// library's: a regular file that has it is taken for what a killed process has left, and the
  /// next write puts an end to it.
  ///
  /// What can't be replaced is written in place: a pipe or device, a file that can't be read, one
  /// in a folder where the process may not put another one, a name too long for the lock's. A
  /// failure then leaves a part of the file.
  ///
  /// *Errors*: `ERR_OPEN` if the file can't be written, `ERR_WRITE` if writing fails, in place also
  /// `ERR_CLOSE`, with the path and the system's text; `ERR_INTERNAL` for an empty path.
  void Save(const GString& path) const;
  /// Writes the bitmap in the library's stored form, which `Read` reads: the size of the block as
  /// an unsigned 32-bit number, then the block as it stands in memory, its count of sharers as 1.
  ///
  /// The block: 32-bit numbers for that count, the block's size, the size of header, table and
  /// pixels, the table's entries, where the table lies, where the pixels lie, the stride; header;
  /// table; pixels. Equal bitmaps have equal bytes.
  ///
  /// Of an empty bitmap it is the number 0xFFFFFFFF alone, the size of no block: a reader that does
  /// not know this form finds no memory for it or meets the end of the file, and keeps what it had.
  ///
  /// *Errors*: those of `CFile::Write`.
  void Write(CFile& file) const;
  /// Makes a copy of header, table and pixels in one block of memory of its own, `GetDibSize`
  /// bytes, for a clipboard or whoever else takes it; null for an empty bitmap.
  ///
  /// *Lifetime*: the block is the caller's, who returns it to `std::free`.
  [[nodiscard]] void* CopyToGlobalMem() const;

  /// Makes a new bitmap of what a header says; `biSize` becomes 40.
  ///
  /// The three masks of `BI_BITFIELDS` are the first entries of `table`: also where they come from
  /// a longer header, which holds them itself.
  ///
  /// `table` and `bits` hold as many bytes as the new bitmap's table and pixels; where one of them
  /// is null, zeros take its place. They may lie in this bitmap.
  void Create(const BITMAPINFOHEADER& header, const RGBQUAD* table, const unsigned char* bits);
  /// The same for a header with a width, a height, bits and `biClrUsed`, one plane and otherwise
  /// zeros.
  void Create(int width, int height, int bitsPerPixel, unsigned long colorsUsed,
              const RGBQUAD* table, const unsigned char* bits);
  /// Makes the bitmap empty.
  void Clear() noexcept;
  /// The pixels, for writing; null for an empty bitmap. A shared block is copied first.
  ///
  /// *Lifetime*: as for `GetBits`. What is written after the bitmap has been copied shows in the
  /// copy, too: ask anew.
  [[nodiscard]] unsigned char* GetWritableBits();
  /// Sets `count` entries of the colour table from the index `first` on; those behind the end of
  /// the table are ignored. A shared block is copied first.
  void SetColorTable(unsigned int first, unsigned int count, const RGBQUAD* entries);
  /// Sets one entry of the colour table; nothing happens if it is not there.
  void SetColorTable(int index, RGBQUAD entry);
  /// Sets one entry of the colour table to a gray with the reserved byte 0.
  void SetColorTable(int index, unsigned char gray);
  /// Becomes the bitmap that `Write` wrote.
  ///
  /// A stored size of 0 changes nothing. Fields that the header settles must agree with it; the
  /// others are not looked at.
  ///
  /// *Errors*: those of `CFile::ReadN`; `ERR_READ` "The bitmap is damaged." for sizes that
  /// contradict each other or belong to no bitmap. The bitmap is then as it was.
  /// *Cost*: the memory of the block, if the file has as many bytes. Otherwise, and for a pipe, 64
  /// kB at once and then at most three times what has come, however large a size it tells.
  void Read(CFile& file);

  /// Shares the block of another bitmap.
  CDib& operator=(const CDib& other) noexcept;

 protected:
  /// Counts this object among those that share its block.
  void AddRef() noexcept;
  /// Leaves the block, which goes with the last that shared it; the bitmap is empty.
  void DecRef() noexcept;
  /// Goes over to a copy of the block that nobody shares; nothing happens if it is empty.
  void CopyBits();

 private:
  struct Block;
  struct Sizes;

  [[gnu::visibility("hidden")]] static bool Measure(const BITMAPINFOHEADER& header, Sizes& sizes);
  [[gnu::visibility("hidden")]] static Block* Allocate(const BITMAPINFOHEADER& header,
                                                       const Sizes& sizes);
  [[gnu::visibility("hidden")]] static Block* ReadBlock(CFile& file, std::uint32_t size);
  [[gnu::visibility("hidden")]] static void Hold(Block* block) noexcept;
  [[gnu::visibility("hidden")]] static void Release(Block* block) noexcept;
  [[gnu::visibility("hidden")]] void Take(Block* block) noexcept;

  Block* block_ = nullptr;
};

}  // namespace vlm
