#include <velum/files/BufferedFile.h>
#include <velum/files/File.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/test/FileErrors.h>

#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

// Every failure of the system in this file is provoked for real: a device that is full, folders
// where a file is meant, descriptors that are closed or opened for something else, a process
// without permission.

namespace vlm {
namespace {

using test::CodeOf;
using test::ErrorOf;
using testing::BytesOfFile;
using testing::PutFile;
using testing::TemporaryFolder;

/// How either class opens, so that one test holds for both.
void OpenTo(CFile& file, const std::string& path, bool write) {
  file.Open(path, write ? CFile::AccessReadWrite : CFile::AccessRead,
            write ? CFile::ModeCreateAlways : CFile::ModeOpenExisting, CFile::ShareDenyNone);
}
void OpenTo(CBufferedFile& file, const std::string& path, bool write) {
  file.Open(path, write ? "w+b" : "rb", CBufferedFile::ShareDenyNone, false);
}

template <class File>
class BothFiles : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string path_ = folder_.Path("a.bin");
  File file_;
};
using Files = ::testing::Types<CFile, CBufferedFile>;
TYPED_TEST_SUITE(BothFiles, Files);

TYPED_TEST(BothFiles, HoldTheSameBytesOnDiskAndInMemory) {
  unsigned char bytes[8] = {};
  for (const int where : {0, 1, 2}) {
    TypeParam& file = this->file_;
    where == 0 ? OpenTo(file, this->path_, true) : where == 1 ? file.Open() : file.Open(bytes, 8);
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.IsMemoryFile(), where > 0);
    EXPECT_EQ(file.GetBuffer() != nullptr, where == 2) << "nothing was written yet";
    EXPECT_EQ(file.GetFilePath(), where == 0 ? this->path_ : std::string());
    file.Write("12345678", 8);
    EXPECT_EQ(file.Seek(-6, TypeParam::OriginCurrent), 2);
    EXPECT_EQ(file.GetLength(), 8);
    EXPECT_EQ(file.GetPosition(), 2);
    char text[9] = {};
    EXPECT_EQ(file.Read(text, 3), 3u);
    EXPECT_STREQ(text, "345");
    EXPECT_FALSE(file.EndOfFile());
    EXPECT_EQ(file.Read(text, 9), 3u);
    EXPECT_EQ(file.Read(text, 1), 0u);
    EXPECT_TRUE(file.EndOfFile());
    file.SeekToBegin();
    file.ReadN(text, 8);
    EXPECT_STREQ(text, "12345678");
    EXPECT_EQ(file.SeekToEnd(), 8);
    EXPECT_EQ(CodeOf([&] { file.Seek(-9, TypeParam::OriginEnd); }), ERR_SEEK);
    EXPECT_EQ(file.GetPosition(), 8);
    file.Flush();
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_TRUE(file.GetFilePath().empty());
  }
  EXPECT_EQ(BytesOfFile(this->path_), "12345678");
}

TYPED_TEST(BothFiles, AClosedFileTakesAndGivesNothing) {
  TypeParam& file = this->file_;
  char byte = 'x';
  file.Write("x", 1);
  EXPECT_EQ(file.Read(&byte, 1), 0u);
  EXPECT_EQ(CodeOf([&] { file.Write(nullptr, 0); }), ERR_INTERNAL);
  EXPECT_EQ(CodeOf([&] { file.Read(nullptr, 0); }), ERR_INTERNAL);
  EXPECT_EQ(file.GetLength(), -1);
  EXPECT_EQ(file.GetPosition(), -1);
  EXPECT_TRUE(file.EndOfFile());
  EXPECT_EQ(file.GetBuffer(), nullptr);
  file.Flush();
  file.Close();
}

TYPED_TEST(BothFiles, OpeningFailsWithTheSystemsTextAndLeavesTheFileClosed) {
  const std::string folder = this->folder_.Path();
  const struct {
    const char* why;
    std::string path;
    bool write;
    std::string text;
  } rows[] = {
      {"a missing file", this->path_, false, "No such file or directory"},
      {"a missing folder", folder + "/no/a", true, "No such file or directory"},
      {"a folder, to be read", folder, false, "Is a directory"},
      {"a folder, to be written", folder, true, "Is a directory"},
      {"a drive", "c:\\a.txt", true, "No such file or directory"},
      {"a file as a folder", "\\dev\\null\\a", false, "Not a directory"},
  };
  for (const auto& row : rows) {
    const std::string error = "10: Unable to open '" + row.path + "'.\n" + row.text;
    EXPECT_EQ(ErrorOf([&] { OpenTo(this->file_, row.path, row.write); }), error) << row.why;
    EXPECT_FALSE(this->file_.IsOpen()) << row.why;
  }
  EXPECT_EQ(CodeOf([&] { OpenTo(this->file_, "", false); }), ERR_INTERNAL);
  this->file_.Open();
  EXPECT_EQ(CodeOf([&] { OpenTo(this->file_, this->path_, true); }), ERR_INTERNAL) << "open";
  this->file_.Open();
  this->file_.Close();
  OpenTo(this->file_, this->path_, true);
  EXPECT_EQ(CodeOf([&] { this->file_.Open(); }), ERR_INTERNAL) << "memory over a file";
}

TYPED_TEST(BothFiles, AFileWithoutPermissionIsRefusedToAnOrdinaryUser) {
  PutFile(this->path_, "x");
  ASSERT_EQ(chmod(this->path_.c_str(), 0), 0);
  ASSERT_EQ(chmod(this->folder_.Path().c_str(), 0755), 0);
  const pid_t child = fork();  // Who is root may open anything, so the child steps down.
  if (child == 0) {
    if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
    const std::string error = ErrorOf([&] { OpenTo(this->file_, this->path_, false); });
    _exit(error == "10: Unable to open '" + this->path_ + "'.\nPermission denied" ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TYPED_TEST(BothFiles, AFullDiskIsAnErrorOfWritingOrClosing) {
  const std::string text = "/dev/full'.\nNo space left on device";
  OpenTo(this->file_, "/dev/full", true);
  const std::string large(1 << 20, 'x');
  EXPECT_EQ(ErrorOf([&] { this->file_.Write(large.data(), 1 << 20); }),
            "14: Unable to write '" + text);
  EXPECT_TRUE(this->file_.IsOpen());
  this->file_.Abort(false);
  CBufferedFile file("\\dev\\full", "w", CBufferedFile::ShareDenyAll, false);
  file.WriteString("fits the buffer");
  const std::string windows = "\\dev\\full'.\nNo space left on device";
  EXPECT_EQ(ErrorOf([&] { file.Flush(); }), "14: Unable to write '" + windows);
  file.WriteString("fits as well");
  EXPECT_EQ(ErrorOf([&] { file.Close(); }), "11: Unable to close '" + windows);
  EXPECT_FALSE(file.IsOpen());
}

TYPED_TEST(BothFiles, ReadingWhatMayOnlyBeWrittenIsAnError) {
  CFile file(this->path_, CFile::AccessWrite, CFile::ModeCreateNew, CFile::ShareDenyNone);
  CBufferedFile stream(this->path_, "a", CBufferedFile::ShareDenyNone, false);
  const std::string error = "13: Unable to read '" + this->path_ + "'.\nBad file descriptor";
  char byte = 0;
  EXPECT_EQ(ErrorOf([&] { file.Read(&byte, 1); }), error);
  EXPECT_EQ(ErrorOf([&] { stream.Read(&byte, 1); }), error);
  EXPECT_EQ(ErrorOf([&] { stream.Getc(); }), error);
  EXPECT_EQ(ErrorOf([&] { stream.ReadString(&byte, 2); }), error);
  std::string line;
  EXPECT_EQ(ErrorOf([&] { stream.ReadString(line); }), error);
  EXPECT_EQ(std::ferror(stream.GetHandle()), 0) << "the flag is cleared";
}

TYPED_TEST(BothFiles, OnlyWhatWasOpenedHereIsClosedByTheDestructor) {
  const int handle = open("/dev/null", O_RDWR);
  std::FILE* const stream = fdopen(dup(handle), "r+");
  {
    CFile file(handle);
    CBufferedFile buffered(stream);
    EXPECT_TRUE(file.IsOpen() && buffered.IsOpen());
  }
  EXPECT_NE(fcntl(handle, F_GETFD), -1);
  EXPECT_EQ(std::fputc('x', stream), 'x');
  CFile(handle).Close();
  EXPECT_EQ(fcntl(handle, F_GETFD), -1);
  CBufferedFile(stream).Abort(false);
  const std::string bad = "'.\nBad file descriptor";
  CFile gone(handle);
  gone.SetFilePath("gone");
  EXPECT_EQ(ErrorOf([&] { (void)gone.EndOfFile(); }), "0: EOF: Bad file handle");
  EXPECT_EQ(ErrorOf([&] { gone.Flush(); }), "14: Unable to write 'gone" + bad);
  EXPECT_EQ(ErrorOf([&] { gone.SeekToEnd(); }), "15: Unable to seek 'gone" + bad);
  EXPECT_EQ(ErrorOf([&] { gone.Close(); }), "11: Unable to close 'gone" + bad);
}

TEST(File, AReadThatEndsEarlySaysSo) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("four");
  PutFile(path, "four");
  char text[10];
  CFile file(path, CFile::AccessRead, CFile::ModeOpenExisting, CFile::ShareDenyWrite);
  EXPECT_EQ(ErrorOf([&] { file.ReadN(text, 10); }),
            "13: Unable to read '" + path + "'.\nUnexpected end of file.");
  CBufferedFile stream(path, "r", CBufferedFile::ShareDenyNone, false);
  EXPECT_EQ(ErrorOf([&] { stream.ReadN(text, 10); }),
            "24: Unexpected end of file reading '" + path + "'.");
  CFile memory;
  memory.Open(text, 4);
  EXPECT_EQ(ErrorOf([&] { memory.ReadN(text, 10); }),
            "13: Unable to read ''.\nUnexpected end of file.");
}

TEST(File, ModesCreateKeepEmptyAndAppendAsTheyAreNamed) {
  const TemporaryFolder folder;
  const struct {
    CFile::Mode mode;
    const char* there;    ///< What an existing file holds after a write of "xy".
    const char* missing;  ///< What a new one holds.
  } rows[] = {
      {CFile::ModeCreateNew, nullptr, "xy"},        {CFile::ModeCreateAlways, "xy", "xy"},
      {CFile::ModeOpenExisting, "xyc", nullptr},    {CFile::ModeOpenAlways, "xyc", "xy"},
      {CFile::ModeTruncateExisting, "xy", nullptr}, {CFile::ModeAppend, "abcxy", "xy"},
  };
  for (const auto& row : rows) {
    for (const bool exists : {true, false}) {
      const std::string path = folder.Path("f" + std::to_string(row.mode) + (exists ? "e" : "m"));
      if (exists) PutFile(path, "abc");
      const char* const expected = exists ? row.there : row.missing;
      CFile file;
      EXPECT_EQ(file.OpenNoThrow(path, CFile::AccessWrite, row.mode, CFile::ShareDenyAll),
                expected != nullptr)
          << row.mode << exists;
      file.Write("xy", 2);
      file.Abort(false);
      EXPECT_EQ(BytesOfFile(path), expected ? expected : exists ? "abc" : "") << row.mode << exists;
    }
  }
  CFile unknown("/dev/null", static_cast<CFile::Access>(9), CFile::ModeOpenExisting,
                CFile::ShareDenyNone);
  EXPECT_EQ(CodeOf([&] { unknown.Write("x", 1); }), ERR_WRITE) << "it may only be read";
  const std::string emptied = folder.Path("f2e");
  CFile reader(emptied, CFile::AccessRead, CFile::ModeCreateAlways, CFile::ShareDenyNone);
  EXPECT_EQ(reader.GetLength(), 0) << "emptied, though opened to be read";
}

TEST(File, PipesHaveNoPositionAndNoEnd) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  CFile in(ends[0]), out(ends[1]);
  out.Write("abc", 3);
  out.Flush();
  EXPECT_FALSE(in.EndOfFile());
  EXPECT_EQ(ErrorOf([&] { (void)in.GetLength(); }), "15: Unable to seek ''.\nIllegal seek");
  out.Close();
  char text[4] = {};
  EXPECT_EQ(in.Read(text, 4), 3u);
  in.Close();
  EXPECT_EQ(CodeOf([&] { in.Seek(0, CFile::OriginBegin); }), ERR_INTERNAL) << "closed";
}

TEST(File, AbortRemovesTheFileOnlyWhenTold) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  CFile file;
  for (const bool remove : {false, true}) {
    OpenTo(file, path, true);
    file.Abort(remove);
    EXPECT_EQ(FileExists(path), !remove);
  }
  file.SetFilePath(folder.Path());
  file.Abort(true);
  EXPECT_TRUE(FileExists(folder.Path())) << "never a folder";
}

TEST(BufferedFile, AFileThatWasNotClosedProperlyIsRemovedOnRequest) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  for (const bool close : {false, true}) {
    {
      CBufferedFile file(path, "w", CBufferedFile::ShareDenyAll, true);
      file.WriteString("x");
      if (close) file.Close();
    }
    EXPECT_EQ(FileExists(path), close);
  }
}

TEST(BufferedFile, ModesAreThoseOfTheCLibrary) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  const struct {
    const char* mode;
    bool opens;
    const char* holds;  ///< After "xy" was written over or behind "abc", if it can be.
  } rows[] = {
      {"r", true, "abc"},     {"rb", true, "abc"},           {"r+t", true, "xyc"},
      {"w", true, "xy"},      {"wbe+", true, "xy"},          {"a", true, "abcxy"},
      {"a+c", true, "abcxy"}, {"wx", false, "abc"},          {"ax", false, "abc"},
      {"rx", false, "abc"},   {"q", false, "abc"},           {"r++", false, "abc"},
      {"+r", false, "abc"},   {"w,ccs=UTF-8", false, "abc"},
  };
  for (const auto& row : rows) {
    PutFile(path, "abc");
    CBufferedFile file;
    EXPECT_EQ(file.OpenNoThrow(path, row.mode, CBufferedFile::ShareDenyNone, false), row.opens)
        << row.mode;
    const bool writes = std::string(row.holds) != "abc";
    if (file.IsOpen() && writes) file.WriteString("xy");
    file.Abort(false);
    EXPECT_EQ(BytesOfFile(path), row.holds) << row.mode;
  }
  CBufferedFile file;
  EXPECT_EQ(ErrorOf([&] { file.Open(path, "q", CBufferedFile::ShareDenyNone, false); }),
            "10: Unable to open '" + path + "'.\nInvalid argument");
  const auto opens = [&](const char* name, const char* mode, int sharing) {
    return CodeOf(
        [&] { file.OpenNoThrow(name, mode, static_cast<CBufferedFile::Sharing>(sharing), false); });
  };
  EXPECT_EQ(opens("", "r", 0), ERR_INTERNAL);
  EXPECT_EQ(opens(path.c_str(), "", 0), ERR_INTERNAL);
  EXPECT_EQ(opens(path.c_str(), "r", 4), ERR_INTERNAL);
}

TEST(BufferedFile, LinesAreTheSameOnDiskAndInMemory) {
  const std::string long254(254, 'a'), long255(255, 'b'), long9000(9000, 'c');
  const std::string nul("d\0e", 3);
  const std::string text =
      "\n\r\none\r\n" + long254 + "\n" + long255 + "\n" + long9000 + "\n\rx\r\r\n" + nul + "\nlast";
  const std::vector<std::string> lines = {"",       "",      "one", long254, long255,
                                          long9000, "\rx\r", nul,   "last"};
  const TemporaryFolder folder;
  const std::string path = folder.Path("lines");
  PutFile(path, text);
  for (const bool memory : {false, true}) {
    CBufferedFile file;
    std::string bytes = text;
    memory ? file.Open(bytes.data(), static_cast<unsigned int>(bytes.size()))
           : file.Open(path, "r", CBufferedFile::ShareDenyNone, false);
    std::string line;
    for (const std::string& expected : lines) {
      ASSERT_TRUE(file.ReadString(line));
      EXPECT_EQ(line, expected);
    }
    EXPECT_FALSE(file.ReadString(line));
    EXPECT_EQ(line, "");
    EXPECT_TRUE(file.EndOfFile());
    file.Rewind();
    char piece[4];
    for (const char* const expected : {"\n", "\r\n", "one", "\r\n", "aaa"}) {
      EXPECT_STREQ(file.ReadString(piece, 4), expected);
    }
    file.Seek(2, CBufferedFile::OriginBegin);
    EXPECT_EQ(file.UnGetc('Z'), 'Z');
    EXPECT_EQ(file.Getc(), 'Z');
    EXPECT_EQ(file.UnGetc('Y'), 'Y');
    ASSERT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "Y") << "what was put back is read first";
    ASSERT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "one");
  }
}

TEST(BufferedFile, PrintfWritesTheSameTextOnDiskAndInMemory) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a");
  for (const bool memory : {false, true}) {
    CBufferedFile file;
    EXPECT_EQ(file.Printf("x"), -1) << "closed";
    memory ? file.Open() : file.Open(path, "w+", CBufferedFile::ShareDenyNone, false);
    EXPECT_EQ(file.Printf("%s %I64d|", "a", std::int64_t{1} << 40), 16);
    EXPECT_EQ(file.Putc('b'), 'b');
    file.Rewind();
    std::string line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, "a 1099511627776|b");
    file.SeekToEnd();
    const auto longText = [&] { EXPECT_EQ(file.Printf("%9000d", 1), 9000); };
    EXPECT_EQ(CodeOf(longText), memory ? ERR_WRITE : -1) << "beyond what FormatString gives";
  }
}

TEST(BufferedFile, OffsetsBeyond32BitsAreOutOfRange) {
  CBufferedFile file("/dev/null", "r", CBufferedFile::ShareDenyNone, false);
  const auto far = [&] { file.Seek(std::int64_t{1} << 31, CBufferedFile::OriginBegin); };
  EXPECT_EQ(ErrorOf(far), "15: Unable to seek '/dev/null'.\nout of range");
  file.Close();
  EXPECT_EQ(file.Seek(std::int64_t{1} << 31, CBufferedFile::OriginBegin), -1);
  file.Open();
  EXPECT_EQ(ErrorOf(far), "15: Unable to seek 'memory file'.\nout of range");
}

}  // namespace
}  // namespace vlm
