#include <velum/core/ErrorCodes.h>
#include <velum/files/MemoryFile.h>
#include <velum/files/test/FileErrors.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using test::CodeOf;
using test::ErrorOf;

class OpenedUp : public CMemoryFile {
 public:
  using CMemoryFile::CMemoryFile;
  using CMemoryFile::GrowFile;

  void SeekToFarEnd() {
    Seek(0x7FFFFFFF, OriginBegin);
    Seek(0x7FFFFFFF, OriginCurrent);
  }
};

std::string Content(const CMemoryFile& file) {
  return {reinterpret_cast<const char*>(file.GetBuffer()), file.GetLength()};
}

TEST(MemoryFile, CapacityDoublesFrom1024UntilItHoldsTheNeed) {
  for (const auto& [size, capacity] : {std::pair{1u, 1024u}, {1025u, 2048u}, {3000u, 4096u}}) {
    CMemoryFile file;
    const std::vector<char> data(size, 'x');
    file.Write(data.data(), size);
    // What the buffer holds beyond the length belongs to the file: ASan would tell.
    unsigned char* const buffer = file.GetBuffer();
    file.SetLength(capacity);
    EXPECT_EQ(file.GetBuffer(), buffer) << size;
    EXPECT_EQ(file.GetLength(), capacity);
  }
}

TEST(MemoryFile, ReadsBackWhatASlowModelHolds) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  CMemoryFile file;
  std::string model;
  std::size_t position = 0;
  for (int step = 0; step < 20000; ++step) {
    const auto n = static_cast<unsigned int>(random() % 40);
    switch (random() % 7) {
      case 0: {
        const std::string data(n, static_cast<char>('a' + n % 26));
        file.Write(data.data(), n);
        if (n > 0 && position > model.size()) model.resize(position);
        if (n > 0) model.replace(position, n, data);
        position += n;
        break;
      }
      case 1: {
        std::string data(n, '\0');
        const std::string there = position < model.size() ? model.substr(position, n) : "";
        ASSERT_EQ(file.Read(data.data(), n), there.size());
        ASSERT_EQ(data.substr(0, there.size()), there);
        position += there.size();
        break;
      }
      case 2:
        ASSERT_EQ(file.Getc(), position < model.size() ? model[position] : -1);
        position += position < model.size();
        break;
      case 3:
        file.Putc('z');
        if (position > model.size()) model.resize(position);
        model.replace(position++, 1, "z");
        break;
      case 4:
        position = random() % (model.size() + 50);
        file.Seek(static_cast<int>(position), CMemoryFile::OriginBegin);
        break;
      case 5:
        if (random() % 20 == 0) {
          model.resize(random() % (model.size() + 100));
          file.SetLength(static_cast<unsigned int>(model.size()));
          position = std::min(position, model.size());
        }
        break;
      default: {
        const bool can = position > 0 && position <= model.size();
        ASSERT_EQ(file.UnGetc('u'), can ? 'u' : -1);
        if (can) model[--position] = 'u';
      }
    }
    ASSERT_EQ(file.GetPosition(), position) << step;
    ASSERT_EQ(file.EndOfFile(), position >= model.size());
    ASSERT_EQ(Content(file), model) << step;
  }
}

TEST(MemoryFile, SeekRefusesPlacesThatDoNotExist) {
  CMemoryFile file;
  file.Write("abc", 3);
  const std::string refused = "15: Unable to seek 'memory file'.\nout of range";
  EXPECT_EQ(ErrorOf([&] { file.Seek(-1, CMemoryFile::OriginBegin); }), refused);
  EXPECT_EQ(ErrorOf([&] { file.Seek(-4, CMemoryFile::OriginCurrent); }), refused);
  EXPECT_EQ(file.Seek(-1, CMemoryFile::OriginEnd), 2u);
  EXPECT_EQ(file.Seek(9, static_cast<CMemoryFile::Origin>(3)), 2u) << "an unknown origin";
  file.Seek(0x7FFFFFFF, CMemoryFile::OriginBegin);
  EXPECT_EQ(file.Seek(0x7FFFFFFF, CMemoryFile::OriginCurrent), 0xFFFFFFFEu);
  EXPECT_EQ(file.Seek(1, CMemoryFile::OriginCurrent), 0xFFFFFFFFu);
  EXPECT_EQ(ErrorOf([&] { file.Seek(1, CMemoryFile::OriginCurrent); }), refused);
  char byte = 'x';
  EXPECT_EQ(file.Read(&byte, 1), 0u);
  EXPECT_EQ(file.Getc(), -1);
  EXPECT_EQ(file.UnGetc('x'), -1);
}

TEST(MemoryFile, AWriteBeyondTheLargestCapacityLeavesTheFileAsItWas) {
  OpenedUp file;
  file.Write("abc", 3);
  const auto says = [](auto work) -> std::string {
    try {
      work();
    } catch (const std::bad_alloc& error) {
      return error.what();
    }
    return "nothing";
  };
  EXPECT_EQ(says([&] { file.GrowFile(0x80000001); }), "bad allocation");
  EXPECT_EQ(says([&] { file.SetLength(0xFFFFFFFF); }), "bad allocation");
  for (const unsigned int count : {1u, 0xFFFFFFFFu}) {
    file.SeekToFarEnd();
    EXPECT_EQ(says([&] { file.Write(&file, count); }), "bad allocation") << count;
  }
  EXPECT_EQ(says([&] { file.Putc('x'); }), "bad allocation");
  EXPECT_EQ(Content(file), "abc");
}

TEST(MemoryFile, OverACallersBytesItNeverGrows) {
  unsigned char bytes[8] = "abcdefg";
  CMemoryFile file(bytes, 4);
  const std::string refused = "14: Unable to write 'memory file'.\nout of range";
  EXPECT_EQ(ErrorOf([&] { file.Write("12345", 5); }), refused);
  EXPECT_EQ(ErrorOf([&] { file.SetLength(5); }), refused);
  file.Write("1234", 4);
  EXPECT_EQ(ErrorOf([&] { file.Putc('5'); }), refused);
  file.Seek(9, CMemoryFile::OriginBegin);
  EXPECT_EQ(ErrorOf([&] { file.Putc('5'); }), refused);
  EXPECT_STREQ(reinterpret_cast<char*>(bytes), "1234efg");
  file.SetLength(2);
  EXPECT_EQ(file.GetPosition(), 2u);
  file.Write("xy", 2);
  EXPECT_STREQ(reinterpret_cast<char*>(bytes), "12xyefg") << "room inside stays";
  EXPECT_EQ(CodeOf([&] { file.Attach(nullptr, 1); }), ERR_INTERNAL);
}

TEST(MemoryFile, DetachHandsTheBufferOverAndTheFileGrowsAnew) {
  CMemoryFile file;
  file.Write("abc", 3);
  unsigned char* const buffer = file.Detach();
  EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer), 3), "abc");
  EXPECT_EQ(file.GetBuffer(), nullptr);
  file.Putc('x');
  EXPECT_EQ(Content(file), "x");
  std::free(buffer);
  file.Close();
  EXPECT_EQ(file.GetLength(), 0u);
}

TEST(MemoryFile, ReadStringGivesLinesAndPiecesOfThem) {
  CMemoryFile file;
  file.Write("ab\ncdefg", 8);
  file.Seek(0, CMemoryFile::OriginBegin);
  char text[4] = "zzz";
  EXPECT_EQ(file.ReadString(nullptr, 4), nullptr);
  EXPECT_EQ(file.ReadString(text, 0), nullptr);
  EXPECT_STREQ(file.ReadString(text, 1), "") << "without reading";
  for (const char* const line : {"ab\n", "cde", "fg"}) EXPECT_STREQ(file.ReadString(text, 4), line);
  EXPECT_EQ(file.ReadString(text, 4), nullptr);
  EXPECT_STREQ(text, "fg");
}

TEST(MemoryFile, BytesAreNumbersFromZero) {
  CMemoryFile file;
  EXPECT_EQ(file.Putc(-1), 255);
  EXPECT_EQ(file.Putc(300), 44);
  EXPECT_EQ(file.UnGetc(-1), -1) << "the end of a file is not put back";
  EXPECT_EQ(file.UnGetc(0xE9), 0xE9);
  EXPECT_EQ(file.Getc(), 0xE9);
  EXPECT_EQ(CodeOf([&] { file.Write(nullptr, 0); }), ERR_INTERNAL);
  EXPECT_EQ(CodeOf([&] { file.Read(nullptr, 0); }), ERR_INTERNAL);
}

}  // namespace
}  // namespace vlm
