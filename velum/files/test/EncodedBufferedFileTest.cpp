#include <velum/core/WideText.h>
#include <velum/files/EncodedBufferedFile.h>
#include <velum/files/test/FileErrors.h>
#include <velum/files/test/reference/PlainTextReader.h>

#include <testing/FailingAllocations.h>
#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cwchar>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace vlm {
namespace {

using namespace std::string_literals;
using test::CodeOf;
using test::ErrorOf;
using testing::BytesOfFile;
using testing::PutFile;
using testing::TemporaryFolder;
using File = CEncodedBufferedFile;

/// The inside of a file that derived classes see.
class OpenedFile : public File {
 public:
  using File::File;
  using File::FillInputBuffer;
  using File::GetNextChar;
  using File::GetNextWideChar;
  using File::ReadText;
  using File::Seek;
};

template <class Action>
bool CatchesBadAlloc(Action action) {
  try {
    action();
    return false;
  } catch (const std::bad_alloc&) {
    return true;
  }
}

class EncodedFile : public ::testing::Test {
 protected:
  void Open(const std::string& mode, TextEncoding encoding, unsigned int page = 0,
            bool trust = true) {
    file_.Open(path_, mode, File::ShareDenyNone, encoding, page, trust, false);
  }
  std::vector<std::wstring> Lines() {
    std::vector<std::wstring> lines;
    std::wstring line;
    while (file_.ReadString(line)) lines.push_back(line);
    return lines;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.Path("a.txt");
  OpenedFile file_;
};

struct Sample {
  const char* name;
  TextEncoding encoding;
  unsigned int page;
  int mark;
};

const Sample kSamples[] = {
    {"arabic.utf-16le", EncodingUTF16LE, 0, 0},
    {"arabic.utf-8", EncodingANSI, 0, 0},
    {"chinese.big5", EncodingANSI, 950, 0},
    {"chinese.utf-16be", EncodingUTF16BE, 0, 0},
    {"chinese.utf-16le-mark", EncodingUTF16LE, 0, 2},
    {"english.utf-16be", EncodingUTF16BE, 0, 0},
    {"english.utf-16le", EncodingUTF16LE, 0, 0},
    {"english.utf-8", EncodingANSI, 1252, 0},
    {"french.utf-16le-mark", EncodingUTF16LE, 0, 2},
    {"french.utf-8-mark", EncodingUTF8, 0, 3},
    {"french.windows-1252", EncodingANSI, 1252, 0},
    {"gothic.utf-16be", EncodingUTF16BE, 0, 0},
    {"gothic.utf-16le-mark", EncodingUTF16LE, 0, 2},
    {"gothic.utf-8-mark", EncodingUTF8, 0, 3},
    {"greek.utf-16be", EncodingUTF16BE, 0, 0},
    {"greek.utf-16le-mark", EncodingUTF16LE, 0, 2},
    {"hindi.utf-16le", EncodingUTF16LE, 0, 0},
    {"japanese.shift_jis", EncodingANSI, 932, 0},
    {"japanese.utf-16be", EncodingUTF16BE, 0, 0},
    {"japanese.utf-16le", EncodingUTF16LE, 0, 0},
    {"korean.utf-16be", EncodingUTF16BE, 0, 0},
    {"russian.koi8-r", EncodingANSI, 20866, 0},
    {"russian.utf-16be-mark", EncodingUTF16BE, 0, 2},
    {"russian.utf-16le", EncodingUTF16LE, 0, 0},
    {"russian.windows-1251", EncodingANSI, 1251, 0},
    {"thai.utf-16be", EncodingUTF16BE, 0, 0},
};

TEST_F(EncodedFile, TextsOfManyLanguagesAreFoundReadAndWrittenBack) {
  for (const Sample& sample : kSamples) {
    SCOPED_TRACE(sample.name);
    const std::string name(sample.name);
    const std::string folder = VELUM_TEXT_DATA "/";
    const std::string typed = BytesOfFile(folder + name.substr(0, name.find('.')) + ".utf-8");
    ASSERT_FALSE(typed.empty());
    // Whoever asks for narrow text gets what is there.
    file_.Open(folder + name, "r", File::ShareDenyWrite, EncodingANSI, sample.page, false, false);
    EXPECT_EQ(file_.GetEncoding(), sample.encoding);
    EXPECT_EQ(file_.GetPosition(), sample.mark);
    std::wstring text;
    for (const std::wstring& line : Lines()) text += line + L'\n';
    EXPECT_EQ(text, static_cast<const wchar_t*>(AtoW(typed)));
    file_.Close();
    Open("w", sample.encoding, sample.page);
    file_.WriteString(text);
    file_.Close();
    const std::string bytes = BytesOfFile(folder + name);
    const std::string written = BytesOfFile(path_);
    EXPECT_EQ(written.substr(written.size() - bytes.size()), bytes);
    EXPECT_EQ(written.size() - bytes.size(),
              sample.encoding == EncodingANSI || sample.mark ? 0u : 2u);
  }
}

TEST_F(EncodedFile, DoesWhatAPlainReaderDoesOnAnyBytes) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::string rich("\r\n\r\n\0a\xD8\xDC\xE2\x82\xAC\xF0\x9F\x98\x80\xC3\xA9", 17);
  for (int round = 0; round < 400; ++round) {
    std::string bytes;
    for (std::size_t left = random() % 80; left > 0; --left) {
      if (random() % 30 == 0) bytes.append(240 + random() % 30, '\0');
      bytes += random() % 8 ? rich[random() % rich.size()] : static_cast<char>(random());
    }
    PutFile(path_, bytes);
    const auto encoding = static_cast<TextEncoding>(random() % 4);
    constexpr unsigned int kPages[] = {0, 1252, 932};
    const unsigned int page = kPages[random() % 3];
    Open("rb", encoding, page);
    test::PlainTextReader plain(bytes, encoding, page, file_.GetPosition());
    std::wstring line, expected;
    for (int step = 0; step < 200; ++step) {
      const auto c = static_cast<wchar_t>(random() % 3 ? 'u' : '\r');
      switch (random() % 8) {
        case 0:
          ASSERT_EQ(file_.UnGetc(c), plain.UnGetc(c));
          break;
        case 1:
          if (random() % 8 == 0) {
            file_.SeekToBegin();
            plain.SeekToBegin();
          }
          break;
        case 2:
        case 3:
          ASSERT_EQ(file_.ReadString(line), plain.ReadString(expected));
          ASSERT_EQ(line, expected) << encoding;
          break;
        default:
          ASSERT_EQ(file_.Getc(), plain.Getc()) << encoding;
      }
      ASSERT_EQ(file_.GetPosition(), plain.GetPosition()) << encoding;
      ASSERT_EQ(file_.EndOfFile(), plain.EndOfFile()) << encoding;
    }
    file_.Close();
  }
}

TEST_F(EncodedFile, LinesEndInAnyWay) {
  const struct {
    const char* why;
    std::string bytes;
    std::vector<std::wstring> lines;
  } rows[] = {
      {"all three", "a\r\nb\nc\rd", {L"a", L"b", L"c", L"d"}},
      {"empty lines", "\r\r\n\n", {L"", L"", L""}},
      {"nothing", "", {}},
      {"a chunk and its line end", std::string(254, 'x') + "\ny", {std::wstring(254, 'x'), L"y"}},
      {"a whole chunk", std::string(255, 'x') + "\ny", {std::wstring(255, 'x'), L"y"}},
      {"a cut line end", std::string(65535, 'x') + "\r\ny", {std::wstring(65535, 'x'), L"y"}},
      {"a terminator", "a\0b\n"s, {L"a\0b"s}},
  };
  for (const auto& row : rows) {
    for (const unsigned int page : {0u, 1252u}) {
      PutFile(path_, row.bytes);
      Open("rt", EncodingANSI, page);
      EXPECT_EQ(Lines(), row.lines) << row.why;
      EXPECT_TRUE(file_.EndOfFile());
      file_.Close();
    }
  }
}

TEST_F(EncodedFile, TheNamedEncodingIsKeptOrCorrectedAsTheOpenerWishes) {
  const std::string wide("\xFF\xFEh\0i\0 \0\x16\x04\n\0", 12);
  const struct {
    const char* why;
    std::string bytes;
    TextEncoding asked;
    bool trust;
    TextEncoding encoding;
    int start;
    wchar_t first;
  } rows[] = {
      {"a mark is found", wide, EncodingANSI, false, EncodingUTF16LE, 2, L'h'},
      {"for nobody's request", wide, EncodingUnknown, false, EncodingUTF16LE, 2, L'h'},
      {"the other order", wide, EncodingUTF16BE, false, EncodingUTF16LE, 2, L'h'},
      {"for UTF-8", wide, EncodingUTF8, false, EncodingUTF16LE, 2, L'h'},
      {"trusted UTF-8", wide, EncodingUTF8, true, EncodingUTF8, 2, L'h'},
      {"trusted narrow text", wide, EncodingANSI, true, EncodingANSI, 0, L'\xFF'},
      {"a mark of UTF-8", "\xEF\xBB\xBFz", EncodingUTF16LE, false, EncodingUTF8, 3, L'z'},
      {"narrow text", "plain\n", EncodingUTF8, false, EncodingANSI, 0, L'p'},
      {"narrow for wide", "plain\n", EncodingUTF16LE, false, EncodingANSI, 0, L'p'},
      {"binary for wide", "\0\0\1\0"s, EncodingUTF16BE, false, EncodingUTF16BE, 0, L'\0'},
      {"an empty file", "", EncodingUTF16BE, false, EncodingUTF16BE, 0, wchar_t(0xFFFF)},
      {"a mark of another", "\xFE\xFFz", EncodingANSI, false, EncodingANSI, 2, L'z'},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    PutFile(path_, row.bytes);
    Open("r", row.asked, 1252, row.trust);
    EXPECT_EQ(file_.GetEncoding(), row.encoding);
    EXPECT_EQ(file_.GetPosition(), row.start);
    EXPECT_EQ(file_.Getc(), row.first);
    EXPECT_EQ(file_.SeekToBegin(), row.start);
    EXPECT_EQ(file_.Getc(), row.first);
    file_.Close();
    EXPECT_EQ(file_.GetEncoding(), row.encoding) << "kept";
  }
}

TEST_F(EncodedFile, MarksAreWrittenToNewAndEmptyFilesOnly) {
  const struct {
    const char* why;
    const char* before;  ///< null: no file
    const char* mode;
    TextEncoding encoding;
    std::string after;
  } rows[] = {
      {"new", nullptr, "w", EncodingUTF8, "\xEF\xBB\xBFx"},
      {"emptied", "abc", "wb+", EncodingUTF16LE, "\xFF\xFEx\0"s},
      {"appended, new", nullptr, "a", EncodingUTF16BE, "\xFE\xFF\0x"s},
      {"appended, empty", "", "a+", EncodingUTF8, "\xEF\xBB\xBFx"},
      {"appended", "abc", "a", EncodingUTF8, "abcx"},
      {"overwritten", "abc", "r+", EncodingUTF8, "xbc"},
      {"overwritten, empty", "", "r+", EncodingUTF8, "x"},
      {"overwritten behind a mark",
       "\xEF\xBB\xBF"
       "abc",
       "r+b", EncodingUTF8, "\xEF\xBB\xBFxbc"},
      {"narrow", nullptr, "w", EncodingANSI, "x"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    if (row.before) PutFile(path_, row.before);
    Open(row.mode, row.encoding);
    EXPECT_EQ(file_.Putc('x'), 'x');
    file_.Close();
    EXPECT_EQ(BytesOfFile(path_), row.after);
    std::remove(path_.c_str());
  }
}

TEST_F(EncodedFile, CharactersAndLinesAreTakenFromTheSameBuffer) {
  PutFile(path_, "one\ntwo\nthree");
  Open("r", EncodingUTF8, 0, false);
  std::wstring line;
  EXPECT_EQ(file_.UnGetc(L'*'), L'*');
  EXPECT_EQ(file_.Getc(), L'*');
  EXPECT_EQ(file_.Getc(), L'o');
  EXPECT_EQ(file_.GetPosition(), 4) << "a line is read ahead";
  EXPECT_TRUE(file_.ReadString(line));
  EXPECT_EQ(line, L"ne");
  EXPECT_EQ(file_.Getc(), L't');
  EXPECT_EQ(file_.GetLength(), 13);
  EXPECT_EQ(file_.Getc(), L'o') << "the position is at the start";
  EXPECT_EQ(file_.SeekToEnd(), 13);
  EXPECT_EQ(file_.Getc(), wchar_t(0xFFFF));
  EXPECT_TRUE(file_.EndOfFile());
  for (int i = 0; i < 1000; ++i) file_.UnGetc(static_cast<wchar_t>(L'a' + i));
  for (int i = 999; i >= 0; --i) ASSERT_EQ(file_.Getc(), static_cast<wchar_t>(L'a' + i));
  EXPECT_EQ(file_.Seek(-5, 2), 8);
  wchar_t wide[4];
  EXPECT_EQ(file_.ReadText(wide, 4), wide);
  EXPECT_STREQ(wide, L"thr");
  char narrow[9];
  EXPECT_EQ(file_.ReadText(narrow, 9), narrow);
  EXPECT_STREQ(narrow, "ee");
  EXPECT_EQ(file_.ReadText(narrow, 9), nullptr);
  EXPECT_EQ(file_.GetNextChar(), -1);
  file_.Seek(0, 0);
  EXPECT_EQ(file_.GetNextWideChar(), 'o');
  EXPECT_EQ(file_.FillInputBuffer(), 3u);
  EXPECT_EQ(file_.Getc(), L'n');
}

TEST_F(EncodedFile, HalvesOfPairsMeetWhereTheyAreWrittenOneByOne) {
  for (const TextEncoding encoding : {EncodingANSI, EncodingUTF8, EncodingUTF16BE}) {
    Open("w+", encoding);
    for (const int unit : {0xD83D, 0xDE00, 0xD83D, 0x78, 0xDE00, 0xD83D}) {
      file_.Putc(static_cast<unsigned short>(unit));
    }
    file_.SeekToBegin();
    if (encoding == EncodingANSI) file_.SetCodePage(65001);
    EXPECT_EQ(Lines(), std::vector<std::wstring>{L"\xD83D\xDE00\xFFFDx\xFFFD\xFFFD"});
    file_.Close();
  }
}

TEST_F(EncodedFile, ReadingAndWritingFollowEachOther) {
  PutFile(path_, "one\ntwo\nthree\n");
  Open("r+", EncodingUTF8);
  std::wstring line;
  file_.ReadString(line);
  file_.WriteString(L"TWO");
  file_.ReadString(line);
  EXPECT_EQ(line, L"");
  file_.ReadString(line);
  EXPECT_EQ(line, L"three");
  file_.WriteString(L"four");
  file_.Flush();
  EXPECT_EQ(BytesOfFile(path_), "one\nTWO\nthree\nfour");
}

TEST_F(EncodedFile, CopiesShareTheStream) {
  PutFile(path_, "one\ntwo\nthree\n");
  Open("r", EncodingUTF8);
  std::wstring line;
  file_.ReadString(line);
  File copy(file_);
  file_.ReadString(line);
  EXPECT_EQ(copy.GetPosition(), 8);
  File other;
  other = copy;
  EXPECT_EQ(other.Getc(), L't');
  EXPECT_EQ(other.GetFilePath(), path_);
  other.Close();
  EXPECT_FALSE(copy.IsOpen());
  EXPECT_EQ(copy.Getc(), wchar_t(0xFFFF));
  Open("r", EncodingUTF8);
  file_.Close();
}

TEST_F(EncodedFile, AClosedFileTakesAndGivesNothing) {
  std::wstring line;
  EXPECT_EQ(file_.GetEncoding(), EncodingUnknown);
  EXPECT_EQ(file_.Getc(), wchar_t(0xFFFF));
  EXPECT_EQ(file_.UnGetc(L'x'), L'x') << "which is all that it takes";
  EXPECT_EQ(file_.Getc(), L'x');
  EXPECT_EQ(file_.Getc(), wchar_t(0xFFFF));
  EXPECT_EQ(file_.Putc('x'), 0xFFFF);
  EXPECT_FALSE(file_.ReadString(line));
  file_.WriteString(L"x");
  file_.Flush();
  file_.Close();
  EXPECT_EQ(file_.SeekToBegin(), -1);
  EXPECT_EQ(file_.SeekToEnd(), -1);
  EXPECT_EQ(file_.GetPosition(), -1);
  EXPECT_EQ(file_.GetLength(), -1);
  EXPECT_TRUE(file_.EndOfFile());
  file_.SetCodePage(70000);
  EXPECT_EQ(file_.GetCodePage(), 0xFFFFu);
}

TEST_F(EncodedFile, MisuseAndFaultsAreTold) {
  const auto open = [&](const std::string& path, const std::string& mode, int sharing,
                        int encoding) {
    File file;
    return ErrorOf([&] {
      file.Open(path, mode, static_cast<File::Sharing>(sharing),
                static_cast<TextEncoding>(encoding), 0, false, false);
    });
  };
  const std::string unable = "10: Unable to open '" + path_ + "'.\n";
  EXPECT_EQ(open(path_, "r", 3, 0), unable + "No such file or directory");
  EXPECT_EQ(open(path_, "q", 3, 0), unable + "Invalid argument");
  EXPECT_EQ(open(folder_.Path(), "r", 3, 1),
            "10: Unable to open '" + folder_.Path() + "'.\nIs a directory");
  EXPECT_EQ(open("", "r", 3, 0).substr(0, 2), "2:");
  EXPECT_EQ(open(path_, "", 3, 0).substr(0, 2), "2:");
  EXPECT_EQ(open(path_, "w", 4, 0).substr(0, 2), "2:");
  EXPECT_EQ(open(path_, "w", 3, 5).substr(0, 2), "4:");
  EXPECT_EQ(BytesOfFile(path_), "");
  {
    PutFile(path_, "x");
    const File alone(path_, "r", File::ShareDenyAll, EncodingUTF8, 0, false, false);
    EXPECT_EQ(open(path_, "r", 3, 1), unable + "Resource temporarily unavailable");
    EXPECT_EQ(open(path_, "w", 3, 1), unable + "Resource temporarily unavailable");
  }
  std::remove(path_.c_str());
  EXPECT_FALSE(file_.OpenNoThrow(path_, "r", File::ShareDenyNone, EncodingUTF8, 0, false, true));
  EXPECT_FALSE(file_.IsOpen());
  Open("w", EncodingUTF8);
  EXPECT_EQ(CodeOf([&] { Open("w", EncodingUTF8); }), ERR_INTERNAL) << "open";
  EXPECT_EQ(CodeOf([&] { file_.Getc(); }), ERR_READ);
  EXPECT_EQ(CodeOf([&] { file_.Seek(-1, 0); }), ERR_SEEK);
  EXPECT_EQ(CodeOf([&] { file_.ReadText(static_cast<char*>(nullptr), 2); }), ERR_INTERNAL);
  file_.Close();
  Open("r", EncodingUTF8);
  EXPECT_EQ(CodeOf([&] { file_.WriteString(L"x"); }), ERR_WRITE);
  file_.Close();
  File full("/dev/full", "w", File::ShareDenyNone, EncodingUTF8, 0, false, false);
  full.WriteString(L"x");
  const std::string text = "/dev/full'.\nNo space left on device";
  EXPECT_EQ(ErrorOf([&] { full.Flush(); }), "14: Unable to write '" + text);
  EXPECT_EQ(ErrorOf([&] { full.WriteString(std::wstring(100000, L'x')); }),
            "14: Unable to write '" + text);
  EXPECT_EQ(ErrorOf([&] { full.Close(); }), "11: Unable to close '" + text);
  EXPECT_FALSE(full.IsOpen());
}

TEST_F(EncodedFile, AnUnfinishedFileIsRemovedIfItsOpenerAskedForThat) {
  for (const bool removes : {true, false}) {
    {
      File file(path_, "w", File::ShareDenyNone, EncodingUTF8, 0, false, removes);
      file.WriteString(L"x");
    }
    EXPECT_EQ(BytesOfFile(path_), removes ? "" : "\xEF\xBB\xBFx");
  }
}

TEST_F(EncodedFile, ACodePageThatIsNoneReadsAndWritesNothing) {
  PutFile(path_, "abc\n");
  Open("r+", EncodingANSI, 4711);
  EXPECT_EQ(Lines(), std::vector<std::wstring>());
  file_.WriteString(L"x");
  file_.Close();
  EXPECT_EQ(BytesOfFile(path_), "abc\n");
}

TEST_F(EncodedFile, ALineThatIsNoTextIsNotTheEnd) {
  PutFile(path_, "a\n~\nb\n~\n");
  Open("r", EncodingANSI, 52936);
  EXPECT_EQ(Lines(), (std::vector<std::wstring>{L"a", L"b"}));
  EXPECT_EQ(file_.GetPosition(), 8);
}

TEST_F(EncodedFile, WhatCanNotBeExaminedKeepsItsEncodingAndLosesItsMark) {
  const struct {
    const char* why;
    std::string bytes;
    TextEncoding encoding;
  } rows[] = {
      {"without a mark", "ab\n", EncodingUTF8},
      {"a mark",
       "\xEF\xBB\xBF"
       "ab\n",
       EncodingUTF8},
      {"of two bytes", "\xFE\xFF\0a\0b"s, EncodingUTF16BE},
      {"narrow", "ab", EncodingANSI},
  };
  for (const auto& row : rows) {
    for (const bool trust : {true, false}) {
      SCOPED_TRACE(row.why);
      ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
      std::thread writer([&] { PutFile(path_, row.bytes); });
      Open("r", row.encoding, 1252, trust);
      EXPECT_EQ(file_.GetEncoding(), row.encoding);
      EXPECT_EQ(Lines(), std::vector<std::wstring>{L"ab"});
      writer.join();
      file_.Close();
      std::remove(path_.c_str());
    }
  }
  File made("/proc/self/status", "r", File::ShareDenyNone, EncodingUTF8, 0, false, false);
  EXPECT_EQ(made.GetEncoding(), EncodingUTF8) << "has no size, and bytes";
  EXPECT_EQ(made.Getc(), L'N');
}

TEST_F(EncodedFile, BehindALineThatMemoryDoesNotHoldIsTheNextOne) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  const std::wstring longLine(100000, L'x');
  for (const TextEncoding encoding : {EncodingANSI, EncodingUTF8, EncodingUTF16BE}) {
    Open("w", encoding, 1252);
    file_.WriteString(longLine + L"\r\nnext");
    file_.Close();
    bool failed = true;
    for (std::size_t succeeding = 0; failed; ++succeeding) {
      SCOPED_TRACE(succeeding);
      Open("r", encoding, 1252);
      std::wstring line;
      {
        const testing::FailingAllocations exhausted(succeeding);
        failed = CatchesBadAlloc([&] { file_.ReadString(line); });
      }
      if (failed) {
        ASSERT_TRUE(file_.ReadString(line));
        // Nothing was read of the first one if there was not even a block.
        if (line == longLine) file_.ReadString(line);
        EXPECT_EQ(line, L"next");
        EXPECT_FALSE(file_.ReadString(line));
      }
      file_.Close();
      ASSERT_LT(succeeding, 1000u);
    }
  }
}

TEST_F(EncodedFile, ALongLineTakesAFewTimesItsSize) {
  constexpr std::size_t kSize = 4'000'000;
  for (const unsigned int page : {0u, 1252u}) {
    PutFile(path_, std::string(kSize, 'x') + "\ny");
    Open("r", EncodingANSI, page);
    const testing::AllocationPeak peak;
    std::wstring line;
    ASSERT_TRUE(file_.ReadString(line));
    EXPECT_EQ(line.size(), kSize);
    // A growing text is there twice for a moment, the new half of it unused.
    EXPECT_LT(peak.Bytes(), 4 * kSize * sizeof(wchar_t));
    file_.Close();
  }
}

TEST_F(EncodedFile, CopiesMayReadLinesInSeveralThreads) {
  constexpr int kLines = 20000;
  std::string text;
  for (int i = 0; i < kLines; ++i)
    text += std::to_string(i) + std::string(static_cast<std::size_t>(i % 50), 'x') + "\n";
  PutFile(path_, text);
  for (const unsigned int page : {0u, 1252u}) {
    Open("r", EncodingANSI, page);
    OpenedFile copies[] = {file_, file_};
    std::vector<bool> seen[2];
    const auto read = [&](int which) {
      seen[which].resize(kLines);
      wchar_t chunk[256];
      std::wstring line;
      for (bool chunks = which != 0;; chunks = !chunks) {
        if (chunks ? !copies[which].ReadText(chunk, 256) : !copies[which].ReadString(line)) return;
        const std::wstring got = chunks ? std::wstring(chunk).substr(0, wcslen(chunk) - 1) : line;
        const auto number = static_cast<std::size_t>(std::stoi(got));
        EXPECT_EQ(got.size(), std::to_wstring(number).size() + number % 50) << "a whole line";
        seen[which][number] = true;
      }
    };
    std::thread other(read, 1);
    read(0);
    other.join();
    for (std::size_t i = 0; i < kLines; ++i) ASSERT_NE(seen[0][i], seen[1][i]) << i;
    file_.Close();
  }
}

TEST_F(EncodedFile, BytesAreReadAsBytesWhateverTheEncoding) {
  PutFile(path_, "a\r\nb\r\0\n"s);
  Open("r", EncodingUTF16LE);
  char text[8];
  for (const std::string& line : {"a\n"s, "b\n"s, "\0\n"s}) {
    ASSERT_NE(file_.ReadText(text, 8), nullptr);
    EXPECT_EQ(std::string(text, line.size() + 1), line + '\0');
  }
}

TEST_F(EncodedFile, StateOfAPageWithSwitchesEndsWithTheLine) {
  PutFile(path_, "\x1B$B$\"\x1B(Ba\r\n\x1B$B$\"\nb");
  Open("r", EncodingANSI, 50220);
  EXPECT_EQ(Lines(), (std::vector<std::wstring>{L"\u3042a", L"\u3042", L"b"}));
}

}  // namespace
}  // namespace vlm
