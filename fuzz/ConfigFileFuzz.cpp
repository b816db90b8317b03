// Takes any bytes for a file of settings and changes it in memory as CConfigFile does. What was
// written reads back, nothing is written twice, and every other entry of the file stays. Lines are
// held against a splitter that has the whole text at once.
#include <velum/files/detail/PathText.h>
#include <velum/files/detail/ProfileText.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using vlm::GString;
using vlm::detail::ProfileChange;
using vlm::detail::ProfileFile;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

class Bytes : public vlm::detail::ByteSource {
 public:
  explicit Bytes(std::string_view bytes) : left_(bytes) {}
  std::int64_t Read(char* data, std::size_t count) override {
    const std::size_t given = left_.copy(data, count);
    left_.remove_prefix(given);
    return static_cast<std::int64_t>(given);
  }

 private:
  std::string_view left_;
};

template <class Question>
auto Ask(const std::string& file, Question question) {
  Bytes bytes(file);
  return question(ProfileFile(bytes));
}

std::vector<GString> SectionOf(const std::string& file, const char* section) {
  std::vector<GString> lines;
  Ask(file, [&](ProfileFile asked) { asked.AppendSection(section, lines); });
  return lines;
}

// Takes the first entry of a key out of the lines of a section.
std::vector<GString> Without(std::vector<GString> lines, const GString& key) {
  const GString wanted = vlm::detail::FoldAscii(key);
  const auto isEntry = [&](const GString& line) {
    const unsigned equals = line.find('=');
    return equals != GString::npos && vlm::detail::FoldAscii(line.substr(0, equals)) == wanted;
  };
  const auto entry = std::find_if(lines.begin(), lines.end(), isEntry);
  if (entry != lines.end()) lines.erase(entry);
  return lines;
}

std::string Applied(const std::string& file, const ProfileChange& change) {
  Require(change.first <= change.last && change.last <= file.size(), "a change is in the file");
  return file.substr(0, change.first) + change.bytes + file.substr(change.last);
}

void CheckLines(const std::string& file, std::size_t mostHeld) {
  const bool isWide = file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF");
  Bytes bytes(file);
  vlm::detail::ProfileLines lines(bytes, mostHeld);
  vlm::detail::ProfileLine line{};
  std::uint64_t end = lines.FirstOffset();
  while (lines.Next(line)) {
    Require(line.begin == end && line.textEnd >= line.begin, "lines follow each other");
    Require(line.end == line.textEnd + line.ending.size() * (isWide ? 2 : 1), "ends are counted");
    end = line.end;
    if (isWide) continue;
    const std::string_view text(file.data() + line.begin, line.textEnd - line.begin);
    Require(text.find_first_of("\r\n") == text.npos, "a line has no end inside");
    Require(file.substr(line.textEnd, line.ending.size()) == line.ending, "the end is the file's");
    Require(text.starts_with(line.text), "the text is the file's");
    Require(line.isCut == (line.text.size() < text.size()), "what is cut says so");
    Require(!line.isCut || line.text.size() + 1 >= mostHeld, "enough is held");
  }
  // Half a character at the end of UTF-16 is in none.
  Require(end == file.size() - (isWide ? file.size() % 2 : 0), "all bytes are in lines");
  Require(lines.IsOdd() == (isWide && file.size() % 2 == 1), "half a character is noticed");
}

void CheckWrite(std::string& file, const char* key, const std::string& value) {
  const auto write = [&](ProfileFile asked) { return asked.ChangeForEntry("s", key, value); };
  const std::vector<GString> before = SectionOf(file, "s");
  const std::vector<GString> others = SectionOf(file, "t");
  const std::optional<ProfileChange> change = Ask(file, write);
  if (change) file = Applied(file, *change);
  const auto back = Ask(file, [&](ProfileFile asked) { return asked.Value("S", key); });
  Require(back && back->text == value, "what was written reads back");
  Require(!Ask(file, write), "nothing is written twice");
  Require(Without(SectionOf(file, "s"), key) == Without(before, key), "the others stay");
  Require(SectionOf(file, "t") == others, "the other section stays");
}

void CheckRemove(std::string& file, const char* key) {
  const std::vector<GString> before = SectionOf(file, "s");
  const std::vector<GString> others = SectionOf(file, "t");
  const auto remove = [&](ProfileFile asked) { return asked.ChangeToRemoveEntry("s", key); };
  if (const std::optional<ProfileChange> change = Ask(file, remove)) file = Applied(file, *change);
  Require(SectionOf(file, "s") == Without(before, key), "one entry is gone");
  Require(SectionOf(file, "t") == others, "the other section stays");
}

void CheckRemoveSection(std::string& file) {
  const std::vector<GString> others = SectionOf(file, "t");
  const auto remove = [](ProfileFile asked) { return asked.ChangeToRemoveSection("s"); };
  if (const std::optional<ProfileChange> change = Ask(file, remove)) file = Applied(file, *change);
  Require(SectionOf(file, "t") == others, "the other section stays");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  // Two bytes say what is done; what stands between them and a line feed is the value.
  const unsigned choice = data[0];
  const unsigned held = data[1];
  std::string file(reinterpret_cast<const char*>(data) + 2,
                   std::min<std::size_t>(size - 2, 1 << 17));
  const std::string value = file.substr(0, file.find('\n'));
  file.erase(0, value.size() + 1);
  CheckLines(file, 2 + held * 2);
  const char* const keys[] = {"k", "K", "k\xC3\xB6", "j"};
  const char* const key = keys[choice / 4 % 4];
  try {
    if (choice & 1) CheckRemove(file, "k");
    CheckWrite(file, key, value);
    if (choice & 2) CheckRemoveSection(file);
    CheckWrite(file, "j", "1");
  } catch (const vlm::detail::ProfileRefusal&) {
  }
  return 0;
}
