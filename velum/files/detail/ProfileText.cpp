#include <velum/files/detail/ProfileText.h>

#include <velum/files/detail/PathText.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vlm::detail {

namespace {

constexpr std::size_t kMostHeld = 1 << 20;
constexpr std::size_t kLongestName = kMostHeld / 4;

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  return TrimRight(text);
}

bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return FoldAscii(x) == FoldAscii(y);
         });
}

bool IsQuoted(std::string_view value) {
  return value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
}

std::string_view WithoutQuotes(std::string_view value) {
  return IsQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

/// The text that reads back as `value`.
std::string AsStored(std::string_view value) {
  std::string stored(value);
  return Trim(value) != value || IsQuoted(value) ? '"' + stored + '"' : stored;
}

enum class LineKind { kBlank, kComment, kHeader, kEntry, kOther };

/// What a line says, in views of its text.
struct LineContent {
  explicit LineContent(std::string_view line) : text(Trim(line)) {
    if (text.empty()) return;
    if (text[0] == ';' || text[0] == '#') {
      kind = LineKind::kComment;
    } else if (text[0] == '[') {
      kind = LineKind::kHeader;
      name = Trim(text.substr(1, text.find(']') - 1));
    } else if (const std::size_t equals = text.find('='); equals != std::string_view::npos) {
      kind = LineKind::kEntry;
      name = TrimRight(text.substr(0, equals));
      // Of the whole line: an empty value stands behind all blanks.
      value = Trim(line.substr(line.find('=') + 1));
    } else {
      kind = LineKind::kOther;
    }
  }

  LineKind kind = LineKind::kBlank;
  std::string_view text;
  std::string_view name;   ///< Of a section or an entry.
  std::string_view value;  ///< Of an entry, with its quotes.
};

/// Walks through the lines of one section, and learns on the way what its end is like.
class SectionWalk {
 public:
  SectionWalk(ByteSource& source, std::string_view section)
      : lines_(source, kMostHeld), name_(Trim(section)) {}

  /// Has the section's entries held whole, however long they are.
  void HoldEntriesWhole() { holdsEntries_ = true; }

  /// Goes on to the next line of the section, behind its header; false at its end.
  bool Next() {
    if (!inside_ && !FindHeader()) return false;
    if (!Advance()) return false;
    if (content_.kind == LineKind::kHeader) {
      isFollowed_ = true;
      return false;
    }
    Learn();
    return true;
  }

  [[nodiscard]] const LineContent& Content() const { return content_; }
  [[nodiscard]] const ProfileLine& Line() const { return line_; }
  [[nodiscard]] const ProfileLines& Lines() const { return lines_; }
  /// True if the present line is an entry of this name.
  [[nodiscard]] bool IsEntry(std::string_view key) const {
    return content_.kind == LineKind::kEntry && SameName(content_.name, key);
  }

  /// True if the section is there. What follows is known at its end, or at the end of the file.
  [[nodiscard]] bool IsFound() const { return inside_; }
  [[nodiscard]] std::uint64_t HeaderOffset() const { return header_; }
  /// Where the section ends, behind its last blank lines.
  [[nodiscard]] std::uint64_t EndOffset() const {
    return isFollowed_ && block_.isOpen ? block_.begin : isFollowed_ ? line_.begin : line_.end;
  }
  /// Where a new entry belongs: behind the section's last line that is not blank.
  [[nodiscard]] std::uint64_t LastEnd() const { return Last().end; }
  /// True if that line has an end of its own.
  [[nodiscard]] bool LastIsEnded() const { return !Last().ending.empty(); }
  /// The end that a line added there gets: that of the line before it, or else of the first line.
  [[nodiscard]] std::string Ending() const {
    if (!Last().ending.empty()) return Last().ending;
    return firstEnding_.empty() ? "\n" : firstEnding_;
  }

  [[nodiscard]] bool FileIsEmpty() const { return lineCount_ == 0; }
  [[nodiscard]] bool FileEndsBlank() const { return content_.kind == LineKind::kBlank; }
  [[nodiscard]] bool FileIsEnded() const { return !line_.ending.empty(); }
  [[nodiscard]] std::uint64_t FileEnd() const {
    return lineCount_ == 0 ? lines_.FirstOffset() : line_.end;
  }
  [[nodiscard]] std::string FileEnding() const {
    if (FileIsEnded()) return std::string(line_.ending);
    return firstEnding_.empty() ? "\n" : firstEnding_;
  }

 private:
  /// A line behind which something may be added.
  struct Place {
    std::uint64_t end = 0;
    std::string ending;
  };
  /// Comments behind a blank line: if a header follows they speak of that one's section.
  struct CommentBlock {
    bool isOpen = false;
    std::uint64_t begin = 0;
    Place before;
  };

  bool Advance() {
    if (!lines_.Next(line_)) return false;
    if (lineCount_++ == 0) firstEnding_ = line_.ending;
    content_ = LineContent(line_.text);
    return true;
  }

  bool FindHeader() {
    while (Advance()) {
      if (content_.kind != LineKind::kHeader || !SameName(content_.name, name_)) continue;
      inside_ = true;
      if (holdsEntries_) lines_.HoldEntriesWhole();
      header_ = line_.begin;
      last_ = {line_.end, std::string(line_.ending)};
      return true;
    }
    return false;
  }

  void Learn() {
    const bool isBlank = content_.kind == LineKind::kBlank;
    const bool isComment = content_.kind == LineKind::kComment;
    if (isComment && wasBlank_) block_ = {true, line_.begin, last_};
    if (!isComment) block_.isOpen = false;
    if (!isBlank) {
      last_.end = line_.end;
      last_.ending = line_.ending;
    }
    wasBlank_ = isBlank;
  }

  [[nodiscard]] const Place& Last() const {
    return isFollowed_ && block_.isOpen ? block_.before : last_;
  }

  ProfileLines lines_;
  std::string_view name_;
  ProfileLine line_{};
  LineContent content_{{}};
  std::uint64_t lineCount_ = 0;
  std::string firstEnding_;
  bool holdsEntries_ = false;
  bool inside_ = false;
  bool isFollowed_ = false;  ///< The present line is the next section's header.
  bool wasBlank_ = false;
  std::uint64_t header_ = 0;
  Place last_;
  CommentBlock block_;
};

bool HasAny(std::string_view text, std::string_view characters) {
  return text.find_first_of(characters) != std::string_view::npos;
}

void RequireStorable(std::string_view section, std::string_view key, std::string_view value) {
  using namespace std::string_view_literals;
  constexpr std::string_view kEnds = "\r\n\0"sv;
  if (key.empty()) throw ProfileRefusal{"The key is empty"};
  if (HasAny(section, kEnds)) throw ProfileRefusal{"The section has a line end or a byte 0"};
  if (HasAny(key, kEnds)) throw ProfileRefusal{"The key has a line end or a byte 0"};
  if (HasAny(value, kEnds)) throw ProfileRefusal{"The value has a line end or a byte 0"};
  if (HasAny(section, "]")) throw ProfileRefusal{"The section has a ']'"};
  if (HasAny(key, "=")) throw ProfileRefusal{"The key has a '='"};
  if (HasAny(key.substr(0, 1), "[;#")) throw ProfileRefusal{"The key begins with '[', ';' or '#'"};
  if (std::max(section.size(), key.size()) > kLongestName) {
    throw ProfileRefusal{"The name is too long"};
  }
}

/// The text as the file stores it.
///
/// *Errors*: `ProfileRefusal`.
std::string Encoded(const ProfileLines& lines, std::string_view text) {
  std::optional<std::string> encoded = lines.Encoded(text);
  if (!encoded) throw ProfileRefusal{"It is in UTF-16, and the text is not UTF-8"};
  return *std::move(encoded);
}

std::optional<ProfileChange> ChangeOfValue(const SectionWalk& walk, std::string_view value) {
  const ProfileLine& line = walk.Line();
  const LineContent& content = walk.Content();
  if (!line.isCut && WithoutQuotes(content.value) == value) return std::nullopt;
  const auto begin = static_cast<std::size_t>(content.value.data() - line.text.data());
  const std::size_t end = begin + content.value.size();
  return ProfileChange{walk.Lines().OffsetOf(line, begin),
                       line.isCut ? line.textEnd : walk.Lines().OffsetOf(line, end),
                       Encoded(walk.Lines(), AsStored(value))};
}

}  // namespace

std::optional<ProfileValue> ProfileFile::Value(std::string_view section, std::string_view key) {
  SectionWalk walk(source_, section);
  key = Trim(key);
  while (!key.empty() && walk.Next()) {
    if (!walk.IsEntry(key)) continue;
    return ProfileValue{std::string(WithoutQuotes(walk.Content().value)), walk.Line().isCut};
  }
  return std::nullopt;
}

void ProfileFile::AppendSection(std::string_view section, std::vector<GString>& lines) {
  SectionWalk walk(source_, section);
  walk.HoldEntriesWhole();
  while (walk.Next()) {
    const LineContent& content = walk.Content();
    if (content.kind == LineKind::kEntry) {
      std::string line(content.name);
      line += '=';
      line += content.value;
      lines.emplace_back(std::move(line));
    } else if (content.kind == LineKind::kOther) {
      lines.emplace_back(std::string(content.text));
    }
  }
}

std::optional<ProfileChange> ProfileFile::ChangeForEntry(std::string_view section,
                                                         std::string_view key,
                                                         std::string_view value) {
  key = Trim(key);
  section = Trim(section);
  RequireStorable(section, key, value);
  SectionWalk walk(source_, section);
  while (walk.Next()) {
    if (walk.IsEntry(key)) return ChangeOfValue(walk, value);
  }
  if (walk.Lines().IsOdd()) {
    throw ProfileRefusal{"It is in UTF-16, and half a character is left over at its end"};
  }
  const std::string entry = std::string(key) + '=' + AsStored(value);
  if (walk.IsFound()) {
    const std::string ending = walk.Ending();
    const std::string text = walk.LastIsEnded() ? entry + ending : ending + entry;
    return ProfileChange{walk.LastEnd(), walk.LastEnd(), Encoded(walk.Lines(), text)};
  }
  // The file ends as it did, with the end of a line or without.
  const std::string ending = walk.FileEnding();
  const bool isEnded = walk.FileIsEmpty() || walk.FileIsEnded();
  std::string text = '[' + std::string(section) + ']' + ending + entry;
  if (!walk.FileIsEmpty() && !walk.FileEndsBlank()) text.insert(0, ending);
  if (isEnded) {
    text += ending;
  } else {
    text.insert(0, ending);
  }
  return ProfileChange{walk.FileEnd(), walk.FileEnd(), Encoded(walk.Lines(), text)};
}

std::optional<ProfileChange> ProfileFile::ChangeToRemoveEntry(std::string_view section,
                                                              std::string_view key) {
  SectionWalk walk(source_, section);
  key = Trim(key);
  while (!key.empty() && walk.Next()) {
    if (walk.IsEntry(key)) return ProfileChange{walk.Line().begin, walk.Line().end, {}};
  }
  return std::nullopt;
}

std::optional<ProfileChange> ProfileFile::ChangeToRemoveSection(std::string_view section) {
  SectionWalk walk(source_, section);
  while (walk.Next()) {
  }
  if (!walk.IsFound()) return std::nullopt;
  return ProfileChange{walk.HeaderOffset(), walk.EndOffset(), {}};
}

}  // namespace vlm::detail
