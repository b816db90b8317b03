#include <examples/convert/ByteCells.h>
#include <examples/convert/Conversion.h>
#include <examples/convert/Evidence.h>

#include <velum/core/Exception.h>

#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace vlm::convert {
namespace {

using namespace std::string_literals;

void Put(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string Got(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ByteCells, AreTheBytesOfCharacters) {
  const struct {
    const char* why;
    std::string bytes;
    Encoding encoding;
    unsigned int mark;
    std::string shown;  ///< for each byte the first letter of its class, and the character
  } rows[] = {
      {"UTF-8", "\xEF\xBB\xBF\xC3\xBC \n", {EncodingUTF8, 0}, 3, "M<mark>MMF<\xC3\xBC>XA<SP>L<LF>"},
      {"a pair", "\xF0\x9F\x98\x80", {EncodingUTF8, 0}, 0, "P<\xF0\x9F\x98\x80>PPP"},
      {"malformed", "\xE9z\xC3", {EncodingUTF8, 0}, 0, "!<\xEF\xBF\xBD>A<z>!<\xEF\xBF\xBD>"},
      {"U+FFFD itself", "\xEF\xBF\xBD", {EncodingUTF8, 0}, 0, "F<\xEF\xBF\xBD>XX"},
      {"low byte first", "a\0\x16\x04"s, {EncodingUTF16LE, 0}, 0, "A<a>ZF<\xD0\x96>X"},
      {"half a pair", "\xD8\x3D\0"s, {EncodingUTF16BE, 0}, 0, "!<\xEF\xBF\xBD>!!<\xEF\xBF\xBD>"},
      {"two bytes of a page", "\x82\xA0\t", {EncodingANSI, 932}, 0, "F<\xE3\x81\x82>XA<TAB>"},
      {"one byte of a page", "\xE9\0\x01"s, {EncodingANSI, 1252}, 0, "F<\xC3\xA9>Z<NUL>A<^A>"},
  };
  for (const auto& row : rows) {
    std::string shown;
    for (const ByteCell& cell : CellsOf(row.bytes, row.encoding, row.mark)) {
      shown += "MAFXPLZ!"[static_cast<int>(cell.byteClass)];
      if (cell.length > 0) shown += "<" + cell.text + ">";
    }
    EXPECT_EQ(shown, row.shown) << row.why;
  }
}

TEST(Evidence, IsTakenInTheOrderOfItsWeight) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a");
  const struct {
    std::string bytes;
    TextEncoding kind;
    bool isSure;
    const char* reason;
  } rows[] = {
      {"", EncodingUTF8, true, "the file is empty"},
      {"abc", EncodingUTF8, false, "all of it is ASCII"},
      {"\xC3\xA9", EncodingUTF8, false, "all that is not ASCII (1) is well-formed UTF-8"},
      {"caf\xE9", EncodingANSI, false, "nothing in it tells one code page from another"},
      {"a\0\0b"s, EncodingUTF16LE, false, "bytes of 0 rule out narrow text"},
      {"\xFF\xFEx\0"s, EncodingUTF16LE, true, "its mark says so"},
      {"\xFF\xFEx\0y"s, EncodingUTF16LE, false, "its last character is cut"},
      {"\xFF\xFEx\0\0\0"s, EncodingUTF16LE, false, "characters that no text has"},
      {"\xEF\xBB\xBF\xFF", EncodingUTF8, true, "its mark says so"},
      {"x\0y\0"s, EncodingUTF16LE, true, "all others are ASCII"},
      {"\0x\0y"s, EncodingUTF16BE, true, "all others are ASCII"},
      {"\4\x16\0 \4\x17"s, EncodingUTF16BE, true, "its first bytes are spread"},
      {"\x16\4\x38\4\x37\4", EncodingUTF8, false, "but its first bytes are spread"},
      {"\1\0\0\0\2\0\0\0"s, EncodingANSI, false, "this is hardly one"},
  };
  for (const auto& row : rows) {
    Put(path, row.bytes);
    const Evidence evidence = Examine(path, {});
    EXPECT_EQ(evidence.encoding.kind, row.kind) << row.reason;
    EXPECT_EQ(evidence.isSure, row.isSure) << row.reason;
    EXPECT_NE(evidence.reason.find(row.reason), std::string::npos) << evidence.reason;
  }
  EXPECT_EQ(Examine(path, Encoding{EncodingANSI, 866}).encoding.page, 866u);
}

TEST(Survey, CountsWhatThereIs) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a");
  Put(path, "a\r\n\xF0\x9F\x98\x80\r\xE9\xEF\xBF\xBD\n\0"s);
  const Survey survey = TakeSurvey(path, {EncodingUTF8, 0});
  EXPECT_EQ(survey.lines, 4u);
  EXPECT_EQ(survey.returnFeeds, 1u);
  EXPECT_EQ(survey.returns, 1u);
  EXPECT_EQ(survey.feeds, 1u);
  EXPECT_EQ(survey.characters, 5u);
  EXPECT_EQ(survey.pairs, 1u);
  EXPECT_EQ(survey.zeros, 1u);
  EXPECT_EQ(survey.malformed, 1u) << "U+FFFD itself is none";
}

TEST(Survey, AByteLeftOverIsNoLineEnd) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a");
  Put(path, "x\0\0\n\0"s);
  EXPECT_EQ(TakeSurvey(path, {EncodingUTF16LE, 0}).feeds, 0u);
}

TEST(Encodings, AreFoundByNumberAndName) {
  const struct {
    const char* name;
    const char* found;
  } rows[] = {
      {"0", "UTF-8"},          {"1", "UTF-8"},          {"65001", "UTF-8"},
      {"UTF-16", "UTF-16LE"},  {"1200", "UTF-16LE"},    {"1201", "UTF-16BE"},
      {"28592", "iso-8859-2"}, {"864", "Arabic (864)"}, {"arabic (864)", "Arabic (864)"},
  };
  for (const auto& row : rows) EXPECT_EQ(FindEncoding(row.name).Name(), row.found) << row.name;
}

TEST(Conversion, WritesTheTargetAsItIsTold) {
  const testing::TemporaryFolder folder;
  const std::string from = folder.Path("a"), to = folder.Path("b");
  Put(from, "\xD0\x96\r\nb\rc\nd");
  const struct {
    const char* why;
    Target target;
    std::string bytes;
  } rows[] = {
      {"kept", {{EncodingUTF8, 0}, false, LineEnds::Keep}, "\xD0\x96\r\nb\rc\nd"},
      {"a mark", {{EncodingUTF8, 0}, true, LineEnds::Feed}, "\xEF\xBB\xBF\xD0\x96\nb\nc\nd"},
      {"no mark", {{EncodingUTF16BE, 0}, false, LineEnds::Feed}, "\4\x16\0\n\0b\0\n\0c\0\n\0d"s},
      {"a page", {{EncodingANSI, 1251}, false, LineEnds::ReturnFeed}, "\xC6\r\nb\r\nc\r\nd"},
      {"one that lacks it", {{EncodingANSI, 1252}, false, LineEnds::Feed}, "?\nb\nc\nd"},
  };
  for (const auto& row : rows) {
    const Conversion done = ConvertFile(from, {EncodingUTF8, 0}, to, row.target);
    EXPECT_EQ(Got(to), row.bytes) << row.why;
    EXPECT_EQ(done.survey.lines, 4u);
    EXPECT_EQ(done.lost.size(), row.target.encoding.page == 1252 ? 1u : 0u) << row.why;
  }
}

TEST(Conversion, ReplacesAFileAsAWholeOrNotAtAll) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Path("a"), link = folder.Path("b");
  Put(path, "caf\xE9\n");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  std::filesystem::create_symlink("a", link);
  ConvertFile(path, {EncodingANSI, 1252}, link, {{EncodingUTF8, 0}, false, LineEnds::Keep});
  EXPECT_EQ(Got(path), "caf\xC3\xA9\n") << "onto itself, by its link";
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_THROW(ConvertFile(folder.Path("none"), {}, path, {}), Exception);
  EXPECT_EQ(Got(path), "caf\xC3\xA9\n");
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    files += entry.exists() ? 1 : 0;
  }
  EXPECT_EQ(files, 2u) << "nothing is left over";
}

}  // namespace
}  // namespace vlm::convert
