#include <velum/colour/Dib.h>
#include <velum/colour/GrayScale.h>
#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>
#include <velum/files/File.h>
#include <testing/FailingAllocations.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <utility>

namespace vlm {
namespace {

BITMAPINFOHEADER Header(int width, int height, int bits, unsigned used = 0, unsigned form = 0) {
  BITMAPINFOHEADER header{};
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = static_cast<std::uint16_t>(bits);
  header.biCompression = form;
  header.biClrUsed = used;
  return header;
}

std::string BytesOf(const CDib& dib) {
  return {reinterpret_cast<const char*>(dib.GetDib()), dib.GetDibSize()};
}

std::string FileAt(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Stored(const CDib& dib) {
  CFile file;
  file.Open();
  dib.Write(file);
  return {reinterpret_cast<const char*>(file.GetBuffer()),
          static_cast<std::size_t>(file.GetLength())};
}

void Restore(CDib& dib, std::string stored) {
  CFile file;
  file.Open(stored.data(), static_cast<unsigned int>(stored.size()));
  dib.Read(file);
}

/// A bitmap with a table and pixels that tell their places.
CDib Sample(int width = 5, int height = 3, int bits = 8) {
  CDib dib(width, height, bits, 0);
  for (unsigned i = 0; i < dib.GetColorTableSize(); ++i) {
    dib.SetColorTable(static_cast<int>(i), RGBQUAD{std::uint8_t(i), 1, 2, 3});
  }
  unsigned char* const to = dib.GetWritableBits();
  for (int i = 0; i < dib.GetStride() * height; ++i) to[i] = static_cast<unsigned char>(i * 7 + 1);
  return dib;
}

TEST(Dib, SizesFollowFromTheHeader) {
  const struct {
    const char* why;
    BITMAPINFOHEADER header;
    unsigned table;
    int stride;
  } rows[] = {
      {"a bit takes a word", Header(1, 2, 1), 2, 4},
      {"32 bits fill one", Header(32, 2, 1), 2, 4},
      {"33 do not fit", Header(33, 2, 1), 2, 8},
      {"nibbles", Header(9, 2, 4), 16, 8},
      {"a whole table", Header(5, 2, 8), 256, 8},
      {"a part of it", Header(5, 2, 8, 10), 10, 8},
      {"more than a byte can name", Header(5, 2, 8, 300), 300, 8},
      {"three bytes", Header(3, 2, 24), 0, 12},
      {"three bytes, filled up", Header(5, 2, 24), 0, 16},
      {"a palette for poorer devices", Header(5, 2, 24, 7), 7, 16},
      {"masks", Header(3, 2, 16, 0, BI_BITFIELDS), 3, 8},
      {"masks and a palette", Header(3, 2, 32, 2, BI_BITFIELDS), 5, 12},
      {"no row", Header(3, 0, 32), 0, 12},
      {"a row of more bits than 32 bits count", Header(0x08000001, 0, 32), 0, 0x20000004},
      {"the widest row", Header(0x7FFFFFFF, 0, 1), 2, 0x10000000},
      {"no column", Header(0, 3, 32), 0, 0},
      {"no bit", Header(3, 3, 0), 1, 0},
  };
  for (const auto& row : rows) {
    CDib dib;
    dib.Create(row.header, nullptr, nullptr);
    EXPECT_EQ(dib.GetColorTableSize(), row.table) << row.why;
    EXPECT_EQ(dib.GetStride(), row.stride) << row.why;
    EXPECT_EQ(dib.GetUsedNumColors(), static_cast<int>(row.header.biClrUsed)) << row.why;
    EXPECT_EQ(dib.GetDibSize(),
              40 + row.table * 4 + static_cast<unsigned>(row.stride * row.header.biHeight))
        << row.why;
    EXPECT_EQ(dib.GetDib()->bmiHeader.biSize, 40u) << row.why;
    // One block: the table behind the header, the pixels behind the table, zeros in both.
    EXPECT_EQ(static_cast<const void*>(dib.GetColorTable()), &dib.GetDib()->bmiHeader + 1);
    EXPECT_EQ(static_cast<const void*>(dib.GetBits()), dib.GetColorTable() + row.table);
    EXPECT_EQ(BytesOf(dib).find_last_not_of('\0', 39 + std::size_t{dib.GetDibSize()}) < 40, true)
        << row.why;
    EXPECT_EQ(dib.GetPixelOffset(2, 1),
              static_cast<unsigned>(row.header.biBitCount * 2 / 8 + row.stride));
  }
}

TEST(Dib, WhatNoBlockCanHoldIsABadAllocation) {
  const int kMost = 0x7FFFFFFF;
  const struct {
    const char* why;
    BITMAPINFOHEADER header;
  } rows[] = {
      {"rows from the top", Header(2, -2, 24)},
      {"the lowest height", Header(1, -kMost - 1, 1)},
      {"a negative width", Header(-1, 1, 24)},
      {"a row of 2^31 bytes and more", Header(kMost, 1, 8)},
      {"rows that make 2^32 bytes", Header(1 << 15, 1 << 15, 32)},
      {"rows that wrap to few in 32 bits", Header((1 << 14) + 1, 1 << 16, 32)},
      {"a table that wraps to nothing", Header(1, 1, 24, 0x40000000)},
      {"masks that wrap", Header(1, 1, 24, 0xFFFFFFFF, BI_BITFIELDS)},
      {"28 bytes too many", Header(1 << 26, 16, 32, 0)},
      {"many bits", Header(kMost, kMost, 65535)},
  };
  for (const auto& row : rows) {
    CDib dib = Sample();
    const std::string before = BytesOf(dib);
    try {
      dib.Create(row.header, nullptr, nullptr);
      ADD_FAILURE() << row.why;
    } catch (const std::bad_alloc& error) {
      EXPECT_STREQ(error.what(), "bad allocation") << row.why;
    }
    EXPECT_EQ(BytesOf(dib), before) << row.why;
  }
  EXPECT_THROW(CDib(1, 1, 65536 + 24, 0), std::bad_alloc) << "not 24 bits";
  EXPECT_THROW(CDib(1, 1, 24, -1), std::bad_alloc);
  EXPECT_THROW(CDib().Create(1, 1, 8, 1UL << 32, nullptr, nullptr), std::bad_alloc);
}

TEST(Dib, CreateTakesHeaderTableAndPixels) {
  BITMAPINFOHEADER header = Header(2, 2, 4, 2);
  header.biXPelsPerMeter = 2835;
  const RGBQUAD table[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
  const unsigned char bits[] = {0x01, 0, 0, 0, 0x10, 0, 0, 0};
  CDib dib;
  dib.Create(header, table, bits);
  EXPECT_EQ(dib.GetDib()->bmiHeader.biXPelsPerMeter, 2835);
  EXPECT_EQ(std::memcmp(dib.GetColorTable(), table, sizeof(table)), 0);
  EXPECT_EQ(std::memcmp(dib.GetBits(), bits, sizeof(bits)), 0);
  // Out of itself, with another header.
  dib.Create(2, 1, 4, 2, dib.GetColorTable(), dib.GetBits() + 4);
  EXPECT_EQ(dib.GetHeight(), 1);
  EXPECT_EQ(dib.GetDib()->bmiHeader.biPlanes, 1);
  EXPECT_EQ(dib.GetDib()->bmiHeader.biXPelsPerMeter, 0);
  EXPECT_EQ(std::memcmp(dib.GetColorTable(), table, sizeof(table)), 0);
  EXPECT_EQ(dib.GetBits()[0], 0x10);
}

TEST(Dib, CopiesShareTheirBlockUntilOneIsWrittenTo) {
  CDib a = Sample();
  CDib b(a);
  CDib c;
  c = a;
  EXPECT_EQ(a.GetBits(), b.GetBits());
  EXPECT_EQ(a.GetBits(), c.GetBits());
  b.GetWritableBits()[0] = 99;
  EXPECT_EQ(b.GetBits()[0], 99);
  EXPECT_EQ(a.GetBits()[0], 1);
  EXPECT_EQ(std::memcmp(a.GetColorTable(), b.GetColorTable(), 256 * sizeof(RGBQUAD)), 0);
  const unsigned char* const own = b.GetBits();
  EXPECT_EQ(b.GetWritableBits(), own) << "nobody shares it any more";
  c.SetColorTable(3, static_cast<unsigned char>(77));
  EXPECT_EQ(a.GetColorTable()[3].rgbBlue, 3);
  EXPECT_EQ(c.GetColorTable()[3].rgbRed, 77);
  const CDib& same = a;
  a = same;
  EXPECT_EQ(a.GetBits()[0], 1);
  b = a;
  a.Clear();
  EXPECT_EQ(b.GetBits()[0], 1) << "the last holder keeps the block";
}

TEST(Dib, EntriesBehindTheTableAreLeftOut) {
  CDib dib(1, 1, 8, 4);
  const CDib shared(dib);
  dib.SetColorTable(4, 1, GRAYSCALE_8_RGBQUADTable);
  dib.SetColorTable(-1, RGBQUAD{1, 1, 1, 1});
  EXPECT_EQ(dib.GetBits(), shared.GetBits()) << "nothing was set";
  dib.SetColorTable(2, 0xFFFFFFFF, GRAYSCALE_8_RGBQUADTable + 8);
  dib.SetColorTable(0, RGBQUAD{1, 2, 3, 4});
  RGBQUAD out[4] = {{9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}};
  dib.GetColorTable(2, 4, out);
  EXPECT_EQ(out[1].rgbGreen, 9);
  EXPECT_EQ(out[2].rgbGreen, 9) << "behind the end";
  dib.GetColorTable(0, 1, out);
  EXPECT_EQ(out[0].rgbReserved, 4);
}

TEST(Dib, AnEmptyBitmapGivesNothing) {
  CDib dib;
  EXPECT_EQ(dib.GetWidth() + dib.GetHeight() + dib.GetBitsPerPixel() + dib.GetStride() +
                dib.GetUsedNumColors(),
            0);
  EXPECT_EQ(dib.GetColorTableSize() + dib.GetDibSize() + dib.GetPixelOffset(3, 3), 0u);
  EXPECT_EQ(dib.GetDib(), nullptr);
  EXPECT_EQ(dib.GetBits(), nullptr);
  EXPECT_EQ(dib.GetColorTable(), nullptr);
  EXPECT_EQ(dib.GetWritableBits(), nullptr);
  EXPECT_EQ(dib.CopyToGlobalMem(), nullptr);
  dib.SetColorTable(0, RGBQUAD{});
  dib.Save("/nowhere/at/all.bmp");
  dib.Clear();
  dib = CDib(dib);
  EXPECT_EQ(dib.GetDib(), nullptr);
}

TEST(Dib, AFileIsItsHeaderAndTheBlock) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a.bmp");
  const CDib dib = Sample(2, 2, 24);
  dib.Save(path);
  const std::string head("BM\x46\0\0\0\0\0\0\0\x36\0\0\0", 14);
  EXPECT_EQ(FileAt(path), head + BytesOf(dib));
  Sample(1, 1, 1).Save(path);
  EXPECT_EQ(FileAt(path).substr(2, 12), std::string("\x42\0\0\0\0\0\0\0\x3E\0\0\0", 12));
  EXPECT_EQ(FileAt(path).size(), 66u) << "nothing is left of the larger one";
  const std::pair<std::string, int> failures[] = {
      {"", ERR_INTERNAL}, {folder.Path(), ERR_OPEN}, {folder.Path("none/a.bmp"), ERR_OPEN}};
  for (const auto& [name, code] : failures) {
    try {
      dib.Save(name);
      ADD_FAILURE() << name;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), code) << name;
    }
  }
  dib.Save("/dev/null");
}

TEST(Dib, AFileWithoutRoomForItsLockIsWrittenInPlace) {
  const testing::TemporaryFolder folder;
  const std::string longName = folder.Path(std::string(250, 'n'));
  const std::string taken = folder.Path("taken.bmp");
  std::filesystem::create_directory(folder.Path(".taken.bmp.velum-lock"));
  std::ofstream(taken) << std::string(1000, 'x');
  for (const std::string& path : {longName, taken}) {
    const CDib dib = Sample(2, 2, 24);
    dib.Save(path);
    EXPECT_EQ(FileAt(path).size(), 14 + std::size_t{dib.GetDibSize()}) << path;
    EXPECT_EQ(FileAt(path).substr(14), BytesOf(dib)) << path;
  }
}

TEST(Dib, TheStoredFormComesBack) {
  for (const int bits : {1, 4, 8, 16, 24, 32}) {
    const CDib dib = Sample(7, 3, bits);
    const CDib shared(dib);
    const std::string stored = Stored(dib);
    const std::uint32_t size = dib.GetDibSize() + 28;
    ASSERT_EQ(stored.size(), 4 + std::size_t{size});
    std::uint32_t fields[8];
    std::memcpy(fields, stored.data(), sizeof(fields));
    const std::uint32_t expected[] = {size,
                                      1,
                                      size,
                                      dib.GetDibSize(),
                                      dib.GetColorTableSize(),
                                      68,
                                      68 + 4 * dib.GetColorTableSize(),
                                      static_cast<std::uint32_t>(dib.GetStride())};
    EXPECT_TRUE(std::equal(fields, fields + 8, expected)) << bits;
    EXPECT_EQ(stored.substr(32), BytesOf(dib)) << bits;
    CDib read = Sample();
    Restore(read, stored + "rest");
    EXPECT_EQ(BytesOf(read), BytesOf(dib)) << bits;
    read.GetWritableBits()[0] ^= 1;
    EXPECT_EQ(Stored(dib), stored) << "it is a block of its own";
  }
  EXPECT_EQ(Stored(CDib()), "\xFF\xFF\xFF\xFF");
  CDib dib = Sample();
  Restore(dib, Stored(CDib()));
  EXPECT_EQ(dib.GetDib(), nullptr);
  // Longer than what is read at once.
  const CDib large = Sample(1000, 500, 24);
  Restore(dib, Stored(large));
  EXPECT_EQ(BytesOf(dib), BytesOf(large));
  Restore(dib, std::string(4, '\0'));
  EXPECT_EQ(BytesOf(dib), BytesOf(large)) << "a size of 0 changes nothing";
}

TEST(Dib, ADamagedFormIsRefusedAndTheBitmapStays) {
  const std::string sound = Stored(Sample());
  const auto with = [&](std::size_t offset, std::uint32_t value) {
    std::string damaged = sound;
    std::memcpy(damaged.data() + offset, &value, sizeof(value));
    return damaged;
  };
  const std::string cut = "Unexpected end of file.";
  const std::string damaged = "The bitmap is damaged.";
  const struct {
    const char* why;
    std::string stored;
    std::string text;
  } rows[] = {
      {"no size", "\1\1", cut},
      {"no head", sound.substr(0, 50), cut},
      {"a byte is missing", sound.substr(0, sound.size() - 1), cut},
      {"less than a head", with(0, 67), damaged},
      {"a size that is not the block's", with(0, 0x7FFFFFF0), damaged},
      {"a block's size that is not that", with(8, 0), damaged},
      {"the size of the rest", with(12, 1), damaged},
      {"the table's size", with(16, 255), damaged},
      {"the stride", with(28, 4), damaged},
      {"a width", with(36, 0x7FFFFFFF), damaged},
      {"rows from the top", with(40, 0xFFFFFFFD), damaged},
      {"bits", with(44, 0xFFFF0001), damaged},
      {"masks", with(48, BI_BITFIELDS), damaged},
      {"used colours", with(64, 0xFFFFFFFF), damaged},
  };
  for (const auto& row : rows) {
    CDib dib = Sample(1, 1, 1);
    const std::string before = BytesOf(dib);
    try {
      Restore(dib, row.stored);
      ADD_FAILURE() << row.why;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_READ) << row.why;
      EXPECT_NE(error.GetDescription().find(row.text.c_str()), GString::npos)
          << row.why << ": " << error.GetDescription().c_str();
    }
    EXPECT_EQ(BytesOf(dib), before) << row.why;
  }
  // What has a meaning in memory only may be anything.
  CDib dib;
  std::string stored = sound;
  for (const std::size_t offset : {4u, 20u, 24u, 32u}) {
    std::memset(stored.data() + offset, 0xEE, 4);
  }
  Restore(dib, stored);
  EXPECT_EQ(Stored(dib), sound);
}

TEST(Dib, MemoryForALargeSizeFollowsTheBytes) {
  // A sound head of a bitmap of 4 GB, and little behind it.
  std::string head(4 + 68, '\0');
  const BITMAPINFOHEADER header = Header(1 << 15, (1 << 15) - 1, 32);
  const std::uint32_t stride = 1u << 17;
  const std::uint32_t dibSize = 40 + stride * ((1u << 15) - 1);
  const std::uint32_t fields[] = {dibSize + 28, 1, dibSize + 28, dibSize, 0, 68, 68, stride};
  std::memcpy(head.data(), fields, sizeof(fields));
  std::memcpy(head.data() + sizeof(fields), &header, sizeof(header));
  for (const std::size_t given : {0u, 300000u}) {
    std::string stored = head + std::string(given, 'x');
    CFile file;
    file.Open(stored.data(), static_cast<unsigned int>(stored.size()));
    CDib dib;
    const testing::AllocationPeak peak;
    EXPECT_THROW(dib.Read(file), Exception);
    EXPECT_LT(peak.Bytes(), (1u << 17) + 3 * given);
  }
}

TEST(Dib, APipeIsReadInPieces) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const CDib large = Sample(1000, 500, 24);
  const std::string stored = Stored(large);
  std::thread writer([&] { std::ofstream(path, std::ios::binary) << stored; });
  CFile file(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyNone);
  CDib dib;
  const testing::AllocationPeak peak;
  EXPECT_NO_THROW(dib.Read(file));
  EXPECT_LT(peak.Bytes(), 2 * stored.size());
  writer.join();
  EXPECT_EQ(BytesOf(dib), BytesOf(large));
}

TEST(Dib, WithoutMemoryTheBitmapStays) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  std::string stored = Stored(Sample(300, 300, 24));
  CFile file;
  file.Open(stored.data(), static_cast<unsigned int>(stored.size()));
  const auto read = [&file](CDib& dib) {
    file.Seek(0, CFile::OriginBegin);
    dib.Read(file);
  };
  const struct {
    const char* why;
    std::function<void(CDib&)> change;
  } rows[] = {
      {"a new bitmap", [](CDib& dib) { dib.Create(7, 7, 1, 0, nullptr, nullptr); }},
      {"a block of its own", [](CDib& dib) { static_cast<void>(dib.GetWritableBits()); }},
      {"one for the table",
       [](CDib& dib) {
         dib.SetColorTable(0, RGBQUAD{9, 9, 9, 9});
       }},
      {"what is read", read},
  };
  for (const auto& row : rows) {
    CDib dib = Sample();
    const CDib shared(dib);
    const std::string before = BytesOf(dib);
    {
      const testing::FailingAllocations none;
      EXPECT_THROW(row.change(dib), std::bad_alloc) << row.why;
    }
    EXPECT_EQ(dib.GetBits(), shared.GetBits()) << row.why;
    EXPECT_EQ(BytesOf(dib), before) << row.why;
  }
}

TEST(Dib, TheBlockForAClipboardIsTheCallers) {
  CDib dib = Sample();
  const std::string before = BytesOf(dib);
  const std::unique_ptr<void, decltype(&std::free)> block(dib.CopyToGlobalMem(), &std::free);
  dib.Clear();
  EXPECT_EQ(std::string(static_cast<const char*>(block.get()), before.size()), before);
}

}  // namespace
}  // namespace vlm
