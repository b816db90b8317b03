#include <velum/files/ConfigFile.h>

#include <velum/files/FileUtilities.h>
#include <velum/files/test/FileErrors.h>

#include <testing/FileBytes.h>
#include <testing/TemporaryFolder.h>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace vlm {
namespace {

using testing::TemporaryFolder;

/// How the plain texts of the tables lie in a file.
enum class Form { kBytes, kMarked, kWideLow, kWideHigh };
constexpr Form kForms[] = {Form::kBytes, Form::kMarked, Form::kWideLow, Form::kWideHigh};

std::string Encoded(const std::string& text, Form form) {
  if (form == Form::kBytes) return text;
  if (form == Form::kMarked) return "\xEF\xBB\xBF" + text;
  const bool lowFirst = form == Form::kWideLow;
  std::string bytes = lowFirst ? "\xFF\xFE" : "\xFE\xFF";
  for (const char c : text) bytes += lowFirst ? std::string{c, '\0'} : std::string{'\0', c};
  return bytes;
}

class ConfigFile : public ::testing::Test {
 protected:
  void Put(const std::string& bytes) const { testing::PutFile(path_, bytes); }
  std::string Bytes() const { return testing::BytesOfFile(path_); }
  std::string Text(const std::string& section, const std::string& key) const {
    GString value = "not touched";
    return config_.Read(section, key, value) ? value.String() : "none" + value.String();
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.Path("plots.ini");
  std::string lock_ = folder_.Path(".plots.ini.velum-lock");
  CConfigFile config_{path_};
};

TEST_F(ConfigFile, FindsEntriesByTheRulesOfTheForm) {
  const struct {
    const char* why;
    const char* file;
    const char* value;
  } rows[] = {
      {"plain", "[s]\nk=v\n", "v"},
      {"names in any case, with blanks", " [ S ] \n\t K\t= v \n", "v"},
      {"behind the bracket", "[s] k=1 [t]\nk=v", "v"},
      {"the bracket is missing", "[s\nk=v", "v"},
      {"the first section counts", "[s]\nx=1\n[s]\nk=v\n", "none"},
      {"the first entry counts", "[s]\nk=v\nk=w\n", "v"},
      {"another section's", "[s]\n[t]\nk=v\n", "none"},
      {"before all sections", "k=v\n[s]\n", "none"},
      {"a comment", "[s]\n;k=v\n #k=v\n", "none"},
      {"no comment", "[s]\nk=v ; w # x\n", "v ; w # x"},
      {"the first sign counts", "[s]\nk==v=\n", "=v="},
      {"quotes", "[s]\nk=\" v \"\n", " v "},
      {"quotes of the other kind", "[s]\nk=' \"v'\n", " \"v"},
      {"one pair only", "[s]\nk=\"\"v\"\"\n", "\"v\""},
      {"quotes that do not match", "[s]\nk='v\"\n", "'v\""},
      {"one quote", "[s]\nk=\"\n", "\""},
      {"quotes around nothing", "[s]\nk=''\n", "none"},
      {"nothing", "[s]\nk=\n", "none"},
      {"no sign", "[s]\nk\n", "none"},
      {"carriage returns", "[s]\rj=1\rk=v\r", "v"},
      {"mixed ends", "[s]\n\rj=1\r\n\nk=v\r\r\n", "v"},
  };
  for (const auto& row : rows) {
    for (const Form form : kForms) {
      Put(Encoded(row.file, form));
      EXPECT_EQ(Text("s", "k"), row.value) << row.why << ", form " << static_cast<int>(form);
    }
  }
  Put(std::string("[s]\nk=a\0b\n", 11));
  EXPECT_EQ(Text(" s", "K\t"), std::string("a\0b", 3)) << "a byte 0";
  std::remove(path_.c_str());
  EXPECT_EQ(Text("s", "k"), "none") << "no file";
}

TEST_F(ConfigFile, WritesLeaveEveryOtherByte) {
  const struct {
    const char* why;
    const char* before;
    const char* value;
    const char* after;
  } rows[] = {
      {"empty file", "", "v", "[s]\nk=v\n"},
      {"only the value", "#1\r\n[S] x\r\n K = old \t\r\ny\r\n", "v",
       "#1\r\n[S] x\r\n K = v \t\r\ny\r\n"},
      {"the value was empty", "[s]\nk =  \n", "v", "[s]\nk =  v\n"},
      {"to nothing", "[s]\nk = old\n", "", "[s]\nk = \n"},
      {"the first entry", "[s]\nk=1\nk=2\n", "v", "[s]\nk=v\nk=2\n"},
      {"the same", "[s]\nk = v", "v", "[s]\nk = v"},
      {"the same in quotes", "[s]\nk='v'", "v", "[s]\nk='v'"},
      {"blank ends", "[s]\nk=1", " v", "[s]\nk=\" v\""},
      {"own quotes", "[s]\nk=1", "'v'", "[s]\nk=\"'v'\""},
      {"quotes inside", "[s]\nk=1", "a\"", "[s]\nk=a\""},
      {"before closing blank lines", "[s]\nj=1\n\n\n[t]\n", "v", "[s]\nj=1\nk=v\n\n\n[t]\n"},
      {"behind comments", "[s]\nj=1\n;c\n[t]\n", "v", "[s]\nj=1\n;c\nk=v\n[t]\n"},
      {"comments of the next", "[s]\nj=1\n\n;c\n;d\n[t]\n", "v", "[s]\nj=1\nk=v\n\n;c\n;d\n[t]\n"},
      {"comments of its own", "[s]\n\n;c\n\n[t]\n", "v", "[s]\n\n;c\nk=v\n\n[t]\n"},
      {"comments at the end", "[s]\n\n;c\n", "v", "[s]\n\n;c\nk=v\n"},
      {"empty section", "[s]\r\n[t]\r\n", "v", "[s]\r\nk=v\r\n[t]\r\n"},
      {"the end of the line before", "#\n[s]\rj=1\r\r\n", "v", "#\n[s]\rj=1\rk=v\r\r\n"},
      {"no end at the end", "[s]\r\nj=1", "v", "[s]\r\nj=1\r\nk=v"},
      {"no end anywhere", "[s]", "v", "[s]\nk=v"},
      {"new section", "[t]\r\nk=1\r\n", "v", "[t]\r\nk=1\r\n\r\n[s]\r\nk=v\r\n"},
      {"new section behind a blank line", "x\n\n", "v", "x\n\n[s]\nk=v\n"},
      {"new section, no end at the end", "x\r\ny", "v", "x\r\ny\r\n\r\n[s]\r\nk=v"},
  };
  for (const auto& row : rows) {
    for (const Form form : kForms) {
      Put(Encoded(row.before, form));
      config_.Write("s", " k", row.value);
      // A file without a byte has no mark that could tell its form.
      EXPECT_EQ(Bytes(), Encoded(row.after, form))
          << row.why << ", form " << static_cast<int>(form);
      EXPECT_EQ(Text("s", "k"), *row.value ? row.value : "none") << row.why;
    }
  }
  EXPECT_FALSE(FileExists(lock_));
}

TEST_F(ConfigFile, RemovesLinesAndNoMore) {
  const struct {
    const char* why;
    const char* before;
    const char* withoutEntry;
    const char* withoutSection;
  } rows[] = {
      {"in the middle", "a\r\n[s]\r\nj=1\r\nk=2\r\n[t]\r\n", "a\r\n[s]\r\nj=1\r\n[t]\r\n",
       "a\r\n[t]\r\n"},
      {"at the end", "[t]\n[s]\nk=2", "[t]\n[s]\n", "[t]\n"},
      {"the first ones", "[s]\nk=1\nk=2\n[s]\n", "[s]\nk=2\n[s]\n", "[s]\n"},
      {"with its comments", "[s]\n;c\nk=1\n\n;d\n[t]", "[s]\n;c\n\n;d\n[t]", ";d\n[t]"},
      {"missing", "[t]\nk=1\n;", "[t]\nk=1\n;", "[t]\nk=1\n;"},
      {"empty", "", "", ""},
  };
  for (const auto& row : rows) {
    for (const Form form : kForms) {
      Put(Encoded(row.before, form));
      config_.RemoveEntry("S", "K");
      EXPECT_EQ(Bytes(), Encoded(row.withoutEntry, form)) << row.why;
      Put(Encoded(row.before, form));
      config_.RemoveSection("S");
      EXPECT_EQ(Bytes(), Encoded(row.withoutSection, form)) << row.why;
    }
  }
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    lines.back() += text[i];
    if (text[i] == '\n' || (text[i] == '\r' && text[i + 1] != '\n')) lines.emplace_back();
  }
  return lines;
}

TEST_F(ConfigFile, TakingTheNewLineOutOfARandomFileGivesTheOldOne) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::vector<std::string> pieces = {"[s]",  "[t]", "[S",   "k=1", " K =2",
                                           "j=",   "k",   ";k=3", "",    " \t",
                                           "\xFF", "==",  "\n",   "\r",  "\r\n"};
  for (int round = 0; round < 300; ++round) {
    std::string before;
    for (auto i = random() % 20; i > 0; --i) {
      before += pieces[random() % pieces.size()];
      if (random() % 4) before += pieces[pieces.size() - 1 - random() % 3];
    }
    Put(before);
    config_.Write("s", "k", "VALUE");
    EXPECT_EQ(Text("s", "k"), "VALUE");
    const std::string after = Bytes();
    if (after.starts_with(before)) {
      // Added at the end, with a line end or a section before it.
      std::string added = after.substr(before.size());
      std::erase_if(added, [](char c) { return c == '\n' || c == '\r'; });
      EXPECT_TRUE(added == "k=VALUE" || added == "[s]k=VALUE") << before;
      continue;
    }
    std::vector<std::string> lines = LinesOf(after);
    const auto isNew = [](const std::string& line) { return line.find("VALUE") != line.npos; };
    const auto place = std::find_if(lines.begin(), lines.end(), isNew);
    ASSERT_NE(place, lines.end());
    std::vector<std::string> old = LinesOf(before);
    if (old.size() == lines.size()) old.erase(old.begin() + (place - lines.begin()));
    lines.erase(place);
    EXPECT_EQ(lines, old) << before;
  }
}

TEST_F(ConfigFile, NumbersAreStrictAndHaveThePointInEveryLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"C", "de_DE.UTF-8"}) {
    ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
    std::remove(path_.c_str());
    config_.Write("s", "i", std::numeric_limits<int>::min());
    config_.Write("s", "u", 4294967295u);
    config_.Write("s", "d", -0.1234567890123456);
    config_.Write("s", "e", 1e300);
    config_.Write("s", "f", std::numeric_limits<double>::infinity());
    config_.Write("s", "g", -std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Bytes(),
              "[s]\ni=-2147483648\nu=4294967295\nd=-0.12345678901235\ne=1e+300\nf=inf\ng=nan\n");
    int i = 0;
    unsigned u = 0;
    double d = 0;
    EXPECT_TRUE(config_.Read("s", "i", i) && i == std::numeric_limits<int>::min());
    EXPECT_TRUE(config_.Read("s", "u", u) && u == 4294967295u);
    EXPECT_TRUE(config_.Read("s", "d", d) && d == -0.12345678901235);
    EXPECT_TRUE(config_.Read("s", "e", d) && d == 1e300);
    EXPECT_FALSE(config_.Read("s", "f", d));

    Put("[s]\na=12abc\nc=2,5\n");
    i = 7;
    u = 7;
    d = 7;
    EXPECT_TRUE(!config_.Read("s", "a", i) && i == 0) << "no number";
    EXPECT_TRUE(config_.Read("s", "a", u) && u == 12) << "lenient";
    EXPECT_TRUE(!config_.Read("s", "c", d) && d == 0) << "no point";
    i = 7;
    d = 7;
    EXPECT_TRUE(!config_.Read("s", "b", i) && i == 7) << "missing";
    EXPECT_TRUE(!config_.Read("s", "b", d) && d == 7) << "missing";
  }
  std::setlocale(LC_ALL, before.c_str());
}

TEST_F(ConfigFile, SectionsComeAsLinesOfAnySize) {
  std::vector<GString> lines = {"before"};
  EXPECT_TRUE(config_.ReadSection("s", lines));
  EXPECT_EQ(lines.size(), 1u) << "no file";
  Put("[s]\n red = '1' 2\n;c\n\nplain text\n=x\ny=\n[t]\nz=1");
  EXPECT_TRUE(config_.ReadSection("S", lines));
  const std::vector<GString> expected = {"before", "red='1' 2", "plain text", "=x", "y="};
  EXPECT_EQ(lines, expected);
  std::string large = "[s]\n";
  for (int i = 0; i < 3000; ++i) large += "key" + std::to_string(i) + "=value\n";
  Put(large + "long=" + std::string(3'000'000, 'x'));
  lines.clear();
  config_.ReadSection("s", lines);
  config_.ReadSection("s", lines);
  ASSERT_EQ(lines.size(), 6002u);
  EXPECT_EQ(lines[6000], "key2999=value");
  EXPECT_EQ(lines[6001].size(), 3'000'005u);
}

TEST_F(ConfigFile, ValuesOf1023BytesAreTooLong) {
  GString value;
  for (const int length : {1022, 1023, 5000}) {
    config_.Write("s", "k", GString(static_cast<unsigned>(length), 'x'));
    const int code = test::CodeOf([&] { config_.Read("s", "k", value); });
    EXPECT_EQ(code, length < 1023 ? -1 : ERR_INTERNAL) << length;
  }
  EXPECT_EQ(test::CodeOf([] { CConfigFile(""); }), ERR_INTERNAL);
  EXPECT_EQ(test::CodeOf([] { CConfigFile(GString(300, 'x')); }), ERR_INVALID_PARAMETER);
}

TEST_F(ConfigFile, WhatCannotBeStoredIsRefused) {
  Put("[s]\nk=1\n");
  const struct {
    std::string section, key, value, reason;
  } rows[] = {
      {"s", " ", "v", "The key is empty"},
      {"s", "k", "a\nk=b", "The value has a line end or a byte 0"},
      {"s", "k", "a\r", "The value has a line end or a byte 0"},
      {"s", "k", std::string(1, '\0'), "The value has a line end or a byte 0"},
      {"s", "j\n[t]", "v", "The key has a line end or a byte 0"},
      {"s\n", "k", "v", "The section has a line end or a byte 0"},
      {"s]", "k", "v", "The section has a ']'"},
      {"s", "a=b", "v", "The key has a '='"},
      {"s", "[t]", "v", "The key begins with '[', ';' or '#'"},
      {"s", " #k", "v", "The key begins with '[', ';' or '#'"},
  };
  std::string shown = path_;
  for (char& c : shown) c = c == '/' ? '\\' : c;
  for (const auto& row : rows) {
    EXPECT_EQ(test::ErrorOf([&] { config_.Write(row.section, row.key, row.value); }),
              "14: Unable to write '" + shown + "'.\n" + row.reason);
    EXPECT_EQ(Bytes(), "[s]\nk=1\n");
  }
  EXPECT_EQ(test::CodeOf([&] { config_.Write("s", std::string(300'000, 'k'), "v"); }), ERR_WRITE);
  Put(Encoded("[s]\n", Form::kWideHigh));
  EXPECT_EQ(test::CodeOf([&] { config_.Write("s", "k", "\xFF"); }), ERR_WRITE);
  const std::string text =
      "Gr\xC3\xB6\xC3\x9F"
      "e \xF0\x9D\x84\x9E";
  config_.Write("s", text, text);
  config_.Write("s", text, text + "2");
  EXPECT_EQ(Text("s", text), text + "2");
}

TEST_F(ConfigFile, HalfACharacterAtTheEndStays) {
  const auto odd = [](const char* text) { return Encoded(text, Form::kWideLow) + "x"; };
  for (const char* const end : {"", "\n"}) {
    const std::string before = std::string("[s]\nj=1") + end;
    Put(odd(before.c_str()));
    EXPECT_EQ(Text("s", "j"), "1");
    EXPECT_EQ(test::CodeOf([&] { config_.Write("s", "k", "v"); }), ERR_WRITE) << "nothing is added";
    EXPECT_EQ(Bytes(), odd(before.c_str()));
    config_.Write("s", "j", "2");
    EXPECT_EQ(Bytes(), odd((std::string("[s]\nj=2") + end).c_str()));
    config_.RemoveEntry("s", "j");
    EXPECT_EQ(Bytes(), odd("[s]\n"));
    config_.RemoveSection("s");
    EXPECT_EQ(Bytes(), odd(""));
  }
}

/// What another process gives back that does `work`, as the user nobody if this one may do all.
int InChild(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && setresuid(kNobody, kNobody, kNobody) != 0) _exit(99);
    _exit(work());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(ConfigFile, AFailedWriteLeavesTheOldFileAndNothingElse) {
  const std::string old = "[s]\nk=1\n";
  Put(old);
  const auto write = [&] { return test::CodeOf([&] { config_.Write("s", "k", "2"); }); };
  const auto writeTheSame = [&] { return test::CodeOf([&] { config_.Write("s", "k", "1"); }); };
  const std::function<int()> writeInFullDisk = [&] {
    const rlimit limit = {4, 4};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    return write();
  };
  const struct {
    const char* why;
    mode_t folder, file;
    std::function<int()> work;
    int code;
  } rows[] = {
      {"allowed", 0777, 0666, writeTheSame, 255},
      {"the disk is full", 0777, 0666, writeInFullDisk, ERR_WRITE},
      {"the folder may not be written", 0555, 0666, write, ERR_WRITE},
      {"nothing to write", 0555, 0666, writeTheSame, 255},
      {"the file may not be written", 0777, 0444, write, ERR_WRITE},
      {"the file can't be read", 0777, 0222, write, ERR_WRITE},
      {"the file can't be read, nothing to remove", 0777, 0222,
       [&] { return test::CodeOf([&] { config_.RemoveSection("t"); }); }, ERR_WRITE},
  };
  for (const auto& row : rows) {
    chmod(folder_.Path().c_str(), row.folder);
    chmod(path_.c_str(), row.file);
    EXPECT_EQ(InChild(row.work), row.code & 0xFF) << row.why;
    chmod(folder_.Path().c_str(), 0777);
    chmod(path_.c_str(), 0666);
    EXPECT_EQ(Bytes(), old) << row.why;
    EXPECT_FALSE(FileExists(lock_)) << row.why;
  }
  const CConfigFile folder(folder_.Path());
  EXPECT_EQ(test::CodeOf([&] { folder.Write("s", "k", "v"); }), ERR_WRITE) << "a folder";
  const CConfigFile nowhere(folder_.Path("none/a.ini"));
  EXPECT_EQ(test::CodeOf([&] { nowhere.Write("s", "k", "v"); }), ERR_WRITE) << "no folder";
  EXPECT_EQ(test::CodeOf([&] { nowhere.RemoveEntry("s", "k"); }), -1) << "no folder";
  ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
  const CConfigFile pipe(folder_.Path("pipe"));
  GString value;
  EXPECT_FALSE(pipe.Read("s", "k", value));
  EXPECT_EQ(test::CodeOf([&] { pipe.Write("s", "k", "v"); }), ERR_WRITE) << "a pipe";
}

TEST_F(ConfigFile, TheNewFileHasThePermissionsAndTheLinksOfTheOldOne) {
  Put("[s]\nk=1\n");
  ASSERT_EQ(chmod(path_.c_str(), 0640), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(path_.c_str(), 1234, 5678), 0);
  }
  struct stat before {};
  struct stat after {};
  stat(path_.c_str(), &before);
  const std::string other = folder_.Path("other.ini");
  const std::string linkName = folder_.Path("link.ini");
  ASSERT_EQ(link(path_.c_str(), other.c_str()), 0);
  ASSERT_EQ(symlink("plots.ini", linkName.c_str()), 0);
  CConfigFile(linkName).Write("s", "k", 2);
  stat(path_.c_str(), &after);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(after.st_gid, before.st_gid);
  EXPECT_EQ(Bytes(), "[s]\nk=2\n") << "through the symbolic link";
  lstat(linkName.c_str(), &after);
  EXPECT_TRUE(S_ISLNK(after.st_mode));
  GString value;
  EXPECT_TRUE(CConfigFile(other).Read("s", "k", value) && value == "1") << "through the hard link";

  ASSERT_EQ(symlink("new.ini", folder_.Path("ahead.ini").c_str()), 0);
  CConfigFile(folder_.Path("ahead.ini")).Write("s", "k", 3);
  EXPECT_TRUE(CConfigFile(folder_.Path("new.ini")).Read("s", "k", value)) << "a link to nothing";
  ASSERT_EQ(symlink("circle", folder_.Path("circle").c_str()), 0);
  const CConfigFile circle(folder_.Path("circle"));
  EXPECT_EQ(test::CodeOf([&] { circle.Write("s", "k", 3); }), ERR_WRITE);
}

TEST_F(ConfigFile, OnlyALeftoverMakesWayForTheLock) {
  Put("[s]\nk=1\n");
  const std::string own = folder_.Path("own");
  std::ofstream(own) << "mine";
  const struct {
    const char* why;
    std::function<int()> make;
  } refused[] = {
      {"a second name of another file", [&] { return link(own.c_str(), lock_.c_str()); }},
      {"a symbolic link", [&] { return symlink(own.c_str(), lock_.c_str()); }},
      {"a folder", [&] { return mkdir(lock_.c_str(), 0700); }},
      {"a pipe", [&] { return mkfifo(lock_.c_str(), 0600); }},
  };
  for (const auto& row : refused) {
    ASSERT_EQ(row.make(), 0) << row.why;
    EXPECT_EQ(test::CodeOf([&] { config_.Write("s", "k", "2"); }), ERR_WRITE) << row.why;
    EXPECT_EQ(remove(lock_.c_str()), 0) << row.why << " is still there";
    EXPECT_EQ(Bytes(), "[s]\nk=1\n") << row.why;
  }
  std::string kept;
  EXPECT_TRUE(std::ifstream(own) >> kept && kept == "mine");
  std::ofstream(path_ + ".lock") << "mine";

  // Left by another user, or by this one with a mask that forbids all.
  chmod(folder_.Path().c_str(), 0777);
  chmod(path_.c_str(), 0666);
  std::ofstream(lock_) << "[s]\nk=";
  chmod(lock_.c_str(), 0444);
  const int code = InChild([&] { return test::CodeOf([&] { config_.Write("s", "k", "3"); }); });
  EXPECT_EQ(code, 255);
  EXPECT_EQ(Bytes(), "[s]\nk=3\n");
  EXPECT_FALSE(FileExists(lock_));
  struct stat status {};
  EXPECT_TRUE(stat((path_ + ".lock").c_str(), &status) == 0 && status.st_size == 4);
}

TEST_F(ConfigFile, ProcessesThatWriteAtOnceLoseNobodysEntry) {
  constexpr int kProcesses = 2;
  constexpr int kWrites = 1000;
  Put("; kept\n[0]\n");
  chmod(folder_.Path().c_str(), 0777);
  chmod(path_.c_str(), 0666);
  // What a killed process leaves is in nobody's way.
  std::ofstream(lock_) << "[0]\nk=";
  pid_t children[kProcesses];
  for (int number = 0; number < kProcesses; ++number) {
    children[number] = fork();
    if (children[number] != 0) continue;
    // Two users, if this one may become them.
    const uid_t user = 65534 - static_cast<uid_t>(number);
    if (geteuid() == 0 && setresuid(user, user, user) != 0) _exit(99);
    const int code = test::CodeOf([&] {
      for (int i = 0; i < kWrites; ++i) {
        config_.Write(std::to_string(number), "k" + std::to_string(i), i);
      }
    });
    _exit(code == -1 ? 0 : code);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  for (int number = 0; number < kProcesses; ++number) {
    std::vector<GString> lines;
    config_.ReadSection(std::to_string(number), lines);
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(kWrites));
    for (int i = 0; i < kWrites; ++i) {
      const std::string digits = std::to_string(i);
      ASSERT_EQ(lines[static_cast<std::size_t>(i)].String(), "k" + digits + "=" + digits);
    }
  }
  EXPECT_TRUE(Bytes().starts_with("; kept\n[0]\n"));
  EXPECT_FALSE(FileExists(lock_));
}

TEST_F(ConfigFile, LinesGoOnFromOnePieceOfTheFileToTheNext) {
  constexpr std::size_t kPiece = 1 << 16;
  for (const Form form : kForms) {
    const std::size_t width = form == Form::kWideLow || form == Form::kWideHigh ? 2 : 1;
    for (std::size_t length = kPiece / width - 16; length < kPiece / width; ++length) {
      const std::string comment = ";" + std::string(length, 'x') + "\r\n";
      Put(Encoded("[s]\r\n" + comment + "k=1\r\n" + comment, form));
      config_.Write("s", "k", "v");
      ASSERT_EQ(Bytes(), Encoded("[s]\r\n" + comment + "k=v\r\n" + comment, form)) << length;
    }
  }
}

TEST_F(ConfigFile, ALineOfAnyLengthIsReadInLittleMemory) {
  constexpr long kLong = 256L << 20;
  std::ofstream(path_) << "[t]\nlong=x";
  ASSERT_EQ(truncate(path_.c_str(), kLong), 0);
  std::ofstream(path_, std::ios::app) << "\n[s]\n \t;";
  ASSERT_EQ(truncate(path_.c_str(), 2 * kLong), 0);
  std::ofstream(path_, std::ios::app) << "\n" << std::string(kLong / 4, ' ') << "\nk=v\n[";
  ASSERT_EQ(truncate(path_.c_str(), 3 * kLong), 0);
  const int result = InChild([&] {
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    GString value;
    const bool isRead = config_.Read("s", "k", value) && value == "v";
    const bool isTooLong = test::CodeOf([&] { config_.Read("t", "long", value); }) == ERR_INTERNAL;
    std::vector<GString> lines;
    config_.ReadSection("s", lines);
    getrusage(RUSAGE_SELF, &after);
    const bool isSmall = after.ru_maxrss - before.ru_maxrss < 32 << 10;
    return isRead && isTooLong && lines == std::vector<GString>{"k=v"} && isSmall ? 0 : 1;
  });
  EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace vlm
