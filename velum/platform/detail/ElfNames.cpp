#include <velum/platform/detail/ElfNames.h>

#include <velum/platform/detail/Ascii.h>
#include <velum/platform/detail/InputFile.h>
#include <velum/platform/detail/Uninterrupted.h>

#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace vlm::platform {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);
// The records of versions are the same in both classes.
using Version = ElfW(Verdef);
using VersionName = ElfW(Verdaux);

// More than any linker makes, so that a damaged count costs no time.
constexpr std::size_t kMostSegments = 256;
constexpr std::size_t kMostEntries = 1024;
constexpr std::size_t kMostVersions = 4096;
constexpr std::size_t kLongestName = 255;

constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char kByteOrder =
    __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;

/// The header of the file that holds this code, where the loader has put it: the linker defines it.
extern "C" [[gnu::visibility("hidden")]] const Header __ehdr_start;

/// Reads small records that follow each other without asking the file for each.
class Window {
 public:
  explicit Window(const ByteSource& file) : file_(file) {}

  /// The bytes from `offset` on, `count` of them or as many as there are; at most `kSize`.
  std::string_view At(std::uint64_t offset, std::size_t count) {
    if (offset < offset_ || offset - offset_ > held_ || held_ - (offset - offset_) < count) {
      offset_ = offset;
      held_ = file_.Read(offset, bytes_, kSize);
    }
    const auto start = static_cast<std::size_t>(offset - offset_);
    return {bytes_ + start, std::min(count, held_ - start)};
  }

  template <class Record>
  bool Get(std::uint64_t offset, Record& record) {
    const std::string_view bytes = At(offset, sizeof(record));
    if (bytes.size() < sizeof(record)) return false;
    std::memcpy(&record, bytes.data(), sizeof(record));
    return true;
  }

 private:
  static constexpr std::size_t kSize = 4096;

  const ByteSource& file_;
  std::uint64_t offset_ = 0;
  std::size_t held_ = 0;
  char bytes_[kSize];
};

/// A stretch of the file.
struct Part {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
};

/// The part of the file that the loader puts at `address`, to the end of its segment.
Part PartAt(const std::vector<Segment>& segments, std::uint64_t address) {
  for (const Segment& segment : segments) {
    if (segment.p_type != PT_LOAD || address < segment.p_vaddr) continue;
    const std::uint64_t inside = address - segment.p_vaddr;
    if (inside >= segment.p_filesz || segment.p_offset > UINT64_MAX - segment.p_filesz) continue;
    return {segment.p_offset + inside, segment.p_filesz - inside};
  }
  return {};
}

/// What the loader's table says.
struct Table {
  Part strings;
  Part versions;
  std::size_t versionCount = 0;
  std::uint64_t soname = 0;
  bool hasSoname = false;
};

Table ReadTable(Window& window, const std::vector<Segment>& segments, const Segment& dynamic) {
  Table table;
  std::uint64_t stringBytes = 0;
  const std::size_t count = static_cast<std::size_t>(
      std::min<std::uint64_t>(dynamic.p_filesz / sizeof(Entry), kMostEntries));
  if (dynamic.p_offset > UINT64_MAX - count * sizeof(Entry)) return table;
  Entry entry;
  for (std::size_t i = 0; i < count; ++i) {
    if (!window.Get(dynamic.p_offset + i * sizeof(entry), entry) || entry.d_tag == DT_NULL) break;
    const std::uint64_t value = entry.d_un.d_val;
    switch (entry.d_tag) {
      case DT_STRTAB:
        table.strings = PartAt(segments, value);
        break;
      case DT_STRSZ:
        stringBytes = value;
        break;
      case DT_VERDEF:
        table.versions = PartAt(segments, value);
        break;
      case DT_VERDEFNUM:
        table.versionCount =
            static_cast<std::size_t>(std::min<std::uint64_t>(value, kMostVersions));
        break;
      case DT_SONAME:
        table.soname = value;
        table.hasSoname = true;
        break;
      default:
        break;
    }
  }
  table.strings.size = std::min(table.strings.size, stringBytes);
  return table;
}

/// A text of the table of strings; empty if it does not end, is too long, or has bytes that would
/// break a line of a report.
std::string TextAt(Window& window, const Part& strings, std::uint64_t at) {
  if (at >= strings.size) return {};
  const std::string_view bytes = window.At(
      strings.offset + at,
      static_cast<std::size_t>(std::min<std::uint64_t>(strings.size - at, kLongestName + 1)));
  const std::size_t length = bytes.find('\0');
  if (length == std::string_view::npos) return {};
  const std::string_view text = bytes.substr(0, length);
  return std::any_of(text.begin(), text.end(), IsControl) ? std::string() : std::string(text);
}

/// The order of two numbers of dots and digits: below, at or above 0. A missing part is below 0.
int CompareNumbers(std::string_view a, std::string_view b) {
  constexpr std::int64_t kLargest = 1'000'000'000'000;
  const auto take = [](std::string_view& text) {
    std::int64_t part = text.empty() ? -1 : 0;
    for (; !text.empty() && text.front() != '.'; text.remove_prefix(1)) {
      if (part < kLargest) part = part * 10 + (text.front() - '0');
    }
    if (!text.empty()) text.remove_prefix(1);
    return part;
  };
  while (!a.empty() || !b.empty()) {
    const std::int64_t x = take(a);
    const std::int64_t y = take(b);
    if (x != y) return x < y ? -1 : 1;
  }
  return 0;
}

std::string NewestVersion(Window& records, Window& texts, const Table& table) {
  std::string newest;
  std::uint64_t at = 0;
  for (std::size_t i = 0; i < table.versionCount; ++i) {
    Version version;
    if (at >= table.versions.size || !records.Get(table.versions.offset + at, version)) break;
    if (version.vd_version != VER_DEF_CURRENT) break;
    VersionName name;
    const std::uint64_t nameAt = at + version.vd_aux;
    // The base version is the name of the file.
    if (!(version.vd_flags & VER_FLG_BASE) && nameAt < table.versions.size &&
        records.Get(table.versions.offset + nameAt, name)) {
      std::string number = NumberOfVersion(TextAt(texts, table.strings, name.vda_name));
      if (CompareNumbers(newest, number) < 0) newest = std::move(number);
    }
    if (version.vd_next == 0) break;
    at += version.vd_next;
  }
  return newest;
}

/// Reads the list of segments, which may be empty; false for a file of another kind.
bool ReadSegments(const ByteSource& file, Window& window, std::vector<Segment>& segments) {
  Header header;
  if (!window.Get(0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_ident[EI_CLASS] != kClass || header.e_ident[EI_DATA] != kByteOrder ||
      header.e_machine != __ehdr_start.e_machine || header.e_phentsize != sizeof(Segment) ||
      header.e_phnum > kMostSegments) {
    return false;
  }
  if (header.e_phnum == 0) return true;
  segments.resize(header.e_phnum);
  const std::size_t bytes = segments.size() * sizeof(Segment);
  return file.Read(header.e_phoff, segments.data(), bytes) == bytes;
}

}  // namespace

ByteSource::~ByteSource() = default;

std::size_t FileBytes::Read(std::uint64_t offset, void* data, std::size_t count) const {
  std::size_t done = 0;
  while (done < count && offset <= INT64_MAX - done) {
    const ssize_t got = Uninterrupted([&] {
      return ::pread(file_.Descriptor(), static_cast<char*>(data) + done, count - done,
                     static_cast<off_t>(offset + done));
    });
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

bool ReadElfNames(const ByteSource& file, ElfNames& names) {
  names = {};
  Window window(file);
  std::vector<Segment> segments;
  if (!ReadSegments(file, window, segments)) return false;
  const auto dynamic = std::find_if(segments.begin(), segments.end(), [](const Segment& segment) {
    return segment.p_type == PT_DYNAMIC;
  });
  if (dynamic == segments.end()) return true;
  const Table table = ReadTable(window, segments, *dynamic);
  Window texts(file);
  if (table.hasSoname) names.soname = TextAt(texts, table.strings, table.soname);
  names.newestVersion = NewestVersion(window, texts, table);
  return true;
}

bool IsCutElf(const ByteSource& file, std::uint64_t size) {
  Window window(file);
  std::vector<Segment> segments;
  return ReadSegments(file, window, segments) &&
         std::any_of(segments.begin(), segments.end(), [size](const Segment& segment) {
           return segment.p_type == PT_LOAD &&
                  (segment.p_filesz > size || segment.p_offset > size - segment.p_filesz);
         });
}

std::string VersionIn(const ElfNames& names) {
  const auto isWhole = [](std::string_view text) { return text.find('.') != text.npos; };
  const std::string_view number = NumberInSoname(names.soname);
  const bool isNewer =
      isWhole(names.newestVersion) || CompareNumbers(names.newestVersion, number) > 0;
  return isWhole(number) || !isNewer ? std::string(number) : names.newestVersion;
}

std::string_view NumberInSoname(std::string_view soname) {
  constexpr std::string_view kInfix = ".so";
  const std::size_t at = soname.rfind(kInfix);
  if (at == std::string_view::npos) return {};
  std::string_view number = soname.substr(at + kInfix.size());
  if (number.empty()) {
    const std::size_t dash = soname.substr(0, at).rfind('-');
    if (dash == std::string_view::npos) return {};
    number = soname.substr(dash + 1, at - dash - 1);
  } else if (number.front() == '.') {
    number.remove_prefix(1);
  }
  const bool isNumber = !number.empty() && IsDigit(number.front()) && IsDigit(number.back()) &&
                        number.find_first_not_of("0123456789.") == std::string_view::npos;
  return isNumber ? number : std::string_view();
}

std::string NumberOfVersion(std::string_view name) {
  constexpr std::size_t kMostDigits = 9;
  // Digits that belong to the word before them, as in FLOAT128, are no version.
  const std::size_t word = name.find_last_not_of("0123456789._");
  const std::size_t before = word == std::string_view::npos ? word : name.find('_', word + 1);
  if (word != std::string_view::npos && before == std::string_view::npos) return {};
  std::string_view rest = name.substr(before == std::string_view::npos ? 0 : before + 1);
  std::string number;
  while (!rest.empty()) {
    const std::size_t digits = std::min(rest.find_first_of("._"), rest.size());
    if (digits > kMostDigits) return {};
    if (digits > 0) {
      if (!number.empty()) number += '.';
      number += rest.substr(0, digits);
    }
    rest.remove_prefix(std::min(digits + 1, rest.size()));
  }
  return number;
}

}  // namespace vlm::platform
