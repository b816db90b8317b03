#include <velum/files/TextEncoding.h>
#include <velum/files/test/FileErrors.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace vlm {
namespace {

using namespace std::string_literals;

TEST(TextEncoding, EvidenceIsWhatTheBytesAre) {
  constexpr auto kCertain = ConfidenceCertain, kNo = ConfidenceNo, kLikely = ConfidenceLikely,
                 kDoubtful = ConfidenceDoubtful;
  const struct {
    const char* why;
    std::string bytes;
    unsigned int mark;
    TextEncoding marked;
    ConfidenceLevel ansi, le, be, binary;
  } rows[] = {
      {"an empty file", "", 0, EncodingANSI, kCertain, kCertain, kCertain, kNo},
      {"one letter", "a", 0, EncodingANSI, kLikely, kNo, kNo, kDoubtful},
      {"one control", "\1", 0, EncodingANSI, kDoubtful, kNo, kNo, kDoubtful},
      {"one zero", "\0"s, 0, EncodingANSI, kNo, kNo, kNo, kCertain},
      {"narrow text", "some text", 0, EncodingANSI, kLikely, kNo, kNo, kDoubtful},
      {"of even length", "some texts", 0, EncodingANSI, kLikely, kDoubtful, kDoubtful, kDoubtful},
      {"a zero at the end", "some texts!\0"s, 0, EncodingANSI, kLikely, kDoubtful, kDoubtful,
       kDoubtful},
      {"which is part of a unit all the same", "\1\0"s, 0, EncodingANSI, kDoubtful, kCertain,
       kDoubtful, kNo},
      {"two of them", "some texts\0\0"s, 0, EncodingANSI, kNo, kNo, kNo, kCertain},
      {"ASCII, low first", "h\0i\0"s, 0, EncodingANSI, kNo, kCertain, kDoubtful, kNo},
      {"ASCII, high first", "\0h\0i"s, 0, EncodingANSI, kNo, kDoubtful, kCertain, kNo},
      {"a mark, low first", "\xFF\xFE\x16\x04\x17\x04"s, 2, EncodingUTF16LE, kDoubtful, kLikely,
       kNo, kDoubtful},
      {"a mark, high first", "\xFE\xFF\4\x16\4\x17"s, 2, EncodingUTF16BE, kDoubtful, kNo, kLikely,
       kDoubtful},
      {"a mark alone", "\xFE\xFF", 2, EncodingUTF16BE, kDoubtful, kNo, kDoubtful, kDoubtful},
      {"a mark of UTF-8", "\xEF\xBB\xBFz", 3, EncodingUTF8, kLikely, kDoubtful, kDoubtful,
       kDoubtful},
      {"without a blank", "\x16\4\x27\4\x10\4\x41\4"s, 0, EncodingANSI, kDoubtful, kDoubtful,
       kDoubtful, kLikely},
      {"a head of records", "\1\0\0\0\x40\0\0\0\x7F\0\0\0"s, 0, EncodingANSI, kNo, kNo, kNo,
       kCertain},
  };
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    std::ofstream(path, std::ios::binary) << row.bytes;
    unsigned int size = 9;
    TextEncoding encoding = EncodingUnknown;
    EXPECT_TRUE(GetBOMInfo(path, size, encoding));
    EXPECT_EQ(size, row.mark);
    EXPECT_EQ(encoding, row.marked);
    EXPECT_EQ(IsFileANSI(path, 512), row.ansi);
    EXPECT_EQ(IsFileUTF16LE(path, 512), row.le);
    EXPECT_EQ(IsFileUTF16BE(path, 512), row.be);
    EXPECT_EQ(IsFileBinary(path, 512), row.binary);
  }
}

TEST(TextEncoding, OnlyTheSampleIsLookedAt) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a");
  std::ofstream(path, std::ios::binary) << "abc\0"s;
  EXPECT_EQ(IsFileANSI(path, 2), ConfidenceLikely);
  EXPECT_EQ(IsFileANSI(path, 4), ConfidenceNo) << "the sample is full";
  EXPECT_EQ(IsFileANSI(path, 6), ConfidenceLikely);
  EXPECT_EQ(IsFileANSI(path, 0xFFFFFFFE), ConfidenceLikely) << "no memory for what is not there";
}

TEST(TextEncoding, SizesAreCheckedFirstAndMissingFilesAreNoError) {
  using Question = ConfidenceLevel (*)(const GString&, unsigned int);
  for (const Question ask : {IsFileANSI, IsFileUTF16LE, IsFileUTF16BE, IsFileBinary}) {
    for (const unsigned int size : {0u, 1u, 3u, 513u}) {
      EXPECT_EQ(test::CodeOf([&] { (void)ask("/no/file", size); }), ERR_INVALID_PARAMETER) << size;
    }
    const ConfidenceLevel missing = ask("/no/file", 512);
    EXPECT_EQ(missing, ask == IsFileBinary ? ConfidenceNo : ConfidenceCertain);
  }
  unsigned int size = 9;
  TextEncoding encoding = EncodingUnknown;
  EXPECT_FALSE(GetBOMInfo("", size, encoding));
  EXPECT_EQ(size, 0u);
  EXPECT_EQ(encoding, EncodingANSI);
  EXPECT_EQ(test::CodeOf([&] { GetBOMInfo("/no/file", size, encoding); }), ERR_OPEN);
}

}  // namespace
}  // namespace vlm
