#include <velum/files/detail/TextStream.h>
#include <velum/files/detail/UnicodeTests.h>
#include <velum/files/test/reference/PlainTextReader.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <string>

namespace vlm::detail {
namespace {

using testing::TemporaryFolder;

std::shared_ptr<TextStream> OpenToRead(const std::string& path, TextEncoding encoding,
                                       std::size_t blockSize) {
  platform::OpenWish wish;
  wish.sharing.reads = true;
  return TextStream::Open(path.c_str(), wish, encoding, blockSize);
}

/// The next line; that of a code page as if each byte were a character.
bool ReadLine(TextStream& stream, TextEncoding encoding, std::wstring& line) {
  if (encoding != EncodingANSI) return stream.AppendLine(line);
  std::string bytes;
  if (!stream.AppendLine(bytes)) return false;
  for (const char byte : bytes) line += static_cast<wchar_t>(static_cast<unsigned char>(byte));
  return true;
}

/// Bytes rich in what is cut, malformed or a line end.
std::string RandomBytes(std::mt19937& random, std::size_t size) {
  static const std::string kRich("\r\n\r\n\0a\xD8\xDC\xE2\x82\xAC\xF0\x9F\x98\x80\xC3\xA9\xED\xF4",
                                 19);
  std::string bytes;
  while (bytes.size() < size) {
    bytes += random() % 8 ? kRich[random() % kRich.size()] : static_cast<char>(random());
    if (random() % 20 == 0) bytes.append("\r\0\n\0", 4);
    if (random() % 20 == 0) bytes.append("\0\r\0\n", 4);
    if (random() % 50 == 0) bytes.append(random() % 40, 'x');
  }
  return bytes;
}

TEST(TextStream, ReadsTheSameLinesAndUnitsWhereverABlockCuts) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  for (int round = 0; round < 300; ++round) {
    const std::string bytes = RandomBytes(random, random() % 200);
    std::ofstream(path, std::ios::binary) << bytes;
    for (const TextEncoding encoding :
         {EncodingANSI, EncodingUTF8, EncodingUTF16LE, EncodingUTF16BE}) {
      constexpr unsigned int kLatin1 = 28591;  // where each byte is a character
      const std::size_t block = 6 + random() % 30;
      const auto lines = OpenToRead(path, encoding, block);
      const auto units = OpenToRead(path, encoding, block);
      ASSERT_TRUE(lines && units);
      test::PlainTextReader plain(bytes, encoding, kLatin1, lines->Position());
      std::wstring expected;
      while (plain.ReadString(expected)) {
        std::wstring line;
        ASSERT_TRUE(ReadLine(*lines, encoding, line));
        EXPECT_EQ(lines->Position(), plain.GetPosition());
        EXPECT_EQ(lines->AtEnd(), plain.EndOfFile());
        std::wstring slowly;
        int unit = 0;
        while (units->ReadUnit(unit) && unit != TextStream::kNone) {
          bool sees = false;
          ASSERT_TRUE(unit != '\r' || units->SeesLineFeed(sees));
          if (sees) continue;
          slowly += unit == '\r' ? L'\n' : static_cast<wchar_t>(unit);
          if (slowly.back() == L'\n') break;
        }
        ASSERT_EQ(slowly, line) << encoding << " block " << block;
        if (!line.empty() && line.back() == L'\n') line.pop_back();
        ASSERT_EQ(line, expected) << encoding << " block " << block;
      }
      std::wstring none;
      EXPECT_TRUE(ReadLine(*lines, encoding, none) && none.empty() && lines->AtEnd());
    }
  }
}

TEST(TextStream, ALongLineIsReadAndWrittenInPieces) {
  const TemporaryFolder folder;
  std::wstring text;
  for (int i = 0; i < 200000; ++i) {
    text += {wchar_t(0x41 + i % 26), wchar_t(0xD83D), wchar_t(0xDE00 + i % 64)};
    if (i % 3 == 0) text += wchar_t(0x4E00 + i % 20000);
  }
  for (const TextEncoding encoding : {EncodingUTF8, EncodingUTF16LE, EncodingUTF16BE}) {
    platform::OpenWish wish;
    wish.sharing.reads = wish.sharing.writes = wish.creates = wish.empties = true;
    wish.permissions = 0600;
    const auto stream = TextStream::Open(folder.Path("a").c_str(), wish, encoding);
    ASSERT_TRUE(stream && stream->Write(text, 0));
    const std::int64_t size = stream->Position();
    ASSERT_TRUE(stream->Seek(encoding == EncodingUTF8 ? 3 : 2, 0));
    std::wstring line;
    ASSERT_TRUE(stream->AppendLine(line));
    EXPECT_TRUE(line == text) << encoding;
    EXPECT_EQ(stream->Position(), size);
  }
}

TEST(UnicodeTests, EachHoldsForWhatItIsNamedAfter) {
  using namespace std::string_view_literals;
  const struct {
    const char* why;
    std::string_view bytes;
    unsigned int passed;
  } rows[] = {
      {"nothing", ""sv, 0},
      {"one byte", "a"sv, kOddLength},
      {"ASCII", "a\0b\0"sv, kAscii16 | kNullBytes},
      {"a blank", "\0 \0a"sv, kReverseAscii16 | kReverseControls | kNullBytes},
      {"a mark alone", "\xFF\xFE"sv, kSignature | kReverseIllegalChars},
      {"the other mark", "\xFE\xFF"sv, kReverseSignature | kIllegalChars},
      {"an ideographic blank", "\0\x30\x0A\x30"sv, kControls | kNullBytes},
      {"a zero", "ab\0\0"sv, kIllegalChars | kReverseIllegalChars | kNullBytes},
      {"a line feed", "\0a\0\n"sv, kReverseAscii16 | kReverseControls | kIllegalChars | kNullBytes},
      {"CR LF in narrow text", "ab\r\ncd"sv, kIllegalChars},
      {"no character", "\xFF\xFF"sv, kIllegalChars | kReverseIllegalChars},
  };
  // A few bytes have no statistics worth a word.
  constexpr unsigned int kRest = ~(kStatistics | kReverseStatistics);
  for (const auto& row : rows) {
    EXPECT_EQ(UnicodeTests(row.bytes, kRest), row.passed) << row.why;
    EXPECT_EQ(UnicodeTests(row.bytes, kControls | kOddLength),
              row.passed & (kControls | kOddLength));
  }
}

TEST(UnicodeTests, TheStatisticsSeeNothingInRandomBytes) {
  std::mt19937 random(7);
  for (int i = 0; i < 1000; ++i) {
    std::string bytes;
    while (bytes.size() < 512) bytes += static_cast<char>(random());
    EXPECT_EQ(UnicodeTests(bytes, kStatistics | kReverseStatistics), 0u) << i;
  }
}

}  // namespace
}  // namespace vlm::detail
