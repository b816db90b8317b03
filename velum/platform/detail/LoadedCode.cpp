#include <velum/platform/detail/LoadedCode.h>

#include <velum/platform/detail/SafeFile.h>

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace vlm::platform {
namespace {

/// Takes a number in base 16 and the separator behind it off a line.
std::uintptr_t TakeHex(std::string_view& line) noexcept {
  std::uintptr_t value = 0;
  const auto result = std::from_chars(line.data(), line.data() + line.size(), value, 16);
  line.remove_prefix(static_cast<std::size_t>(result.ptr - line.data()));
  if (!line.empty()) line.remove_prefix(1);
  return value;
}

/// Takes a word and the blanks behind it off a line.
std::string_view TakeWord(std::string_view& line) noexcept {
  const std::string_view word = line.substr(0, line.find(' '));
  line.remove_prefix(word.size());
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  return word;
}

}  // namespace

bool LoadedCode::Read() noexcept {
  count_ = 0;
  pathsUsed_ = 0;
  const int file = OpenToRead("/proc/self/maps");
  if (file < 0) return false;
  std::size_t kept = 0;
  for (;;) {
    const std::int64_t count = ReadSafely(file, input_.data() + kept, input_.size() - kept);
    if (count <= 0) break;
    std::string_view rest(input_.data(), kept + static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1)) {
      TakeLine(rest.substr(0, end));
    }
    // A line longer than the room is taken in pieces, of which none but the first reads as one.
    kept = rest.size() == input_.size() ? 0 : rest.size();
    std::memmove(input_.data(), rest.data(), kept);
  }
  CloseSafely(file);
  if (count_ > 0 && modules_[count_ - 1].codeEnd == 0) --count_;
  return count_ > 0;
}

void LoadedCode::TakeLine(std::string_view line) noexcept {
  // 55d0c0000000-55d0c0001000 r-xp 00001000 08:01 1234    /usr/bin/gridder
  const std::uintptr_t begin = TakeHex(line);
  const std::uintptr_t end = TakeHex(line);
  const std::string_view rights = TakeWord(line);
  const std::string_view offset = TakeWord(line);
  TakeWord(line);
  TakeWord(line);
  if (rights.size() != 4 || begin >= end) return;
  const bool isCode = rights[2] == 'x';
  const std::string_view path = line.empty() && isCode ? "[anonymous]" : line;
  if (path.empty()) return;

  CodeModule* last = count_ > 0 ? &modules_[count_ - 1] : nullptr;
  const bool isFirst = offset.find_first_not_of('0') == offset.npos;
  if (!last || last->path != path || isFirst) {
    // What had no code is no module.
    if (last && last->codeEnd == 0) {
      pathsUsed_ -= last->path.size();
      --count_;
    }
    if (count_ == modules_.size() || path.size() > paths_.size() - pathsUsed_) return;
    char* const place = paths_.data() + pathsUsed_;
    std::memcpy(place, path.data(), path.size());
    pathsUsed_ += path.size();
    last = &modules_[count_++];
    *last = {begin, end, 0, 0, path.front() == '/', rights[0] == 'r', {place, path.size()}};
  }
  last->end = end;
  if (!isCode) return;
  if (last->codeEnd == 0) last->codeBegin = begin;
  last->codeEnd = end;
}

const CodeModule* LoadedCode::Find(std::uintptr_t address) const noexcept {
  for (std::size_t i = 0; i < count_; ++i) {
    if (address >= modules_[i].begin && address < modules_[i].end) return &modules_[i];
  }
  return nullptr;
}

bool LoadedCode::IsCode(std::uintptr_t address) const noexcept {
  const CodeModule* const module = Find(address);
  return module && address >= module->codeBegin && address < module->codeEnd;
}

std::string_view BuildId(const CodeModule& module) noexcept {
  using Header = ElfW(Ehdr);
  using Segment = ElfW(Phdr);
  using Note = ElfW(Nhdr);
  const std::size_t size = module.end - module.begin;
  const auto* const base = reinterpret_cast<const char*>(module.begin);
  if (!module.isFile || !module.isReadable || size < sizeof(Header) ||
      std::memcmp(base, ELFMAG, SELFMAG) != 0) {
    return {};
  }
  Header header;
  std::memcpy(&header, base, sizeof(header));
  std::uintptr_t firstLoaded = 0;
  for (std::size_t i = 0; i < header.e_phnum; ++i) {
    const std::size_t at = header.e_phoff + i * sizeof(Segment);
    if (at > size - sizeof(Segment)) break;
    Segment segment;
    std::memcpy(&segment, base + at, sizeof(segment));
    if (segment.p_type == PT_LOAD && segment.p_offset == 0) firstLoaded = segment.p_vaddr;
    if (segment.p_type != PT_NOTE || segment.p_vaddr - firstLoaded > size ||
        segment.p_filesz > size - (segment.p_vaddr - firstLoaded)) {
      continue;
    }
    std::string_view notes(base + (segment.p_vaddr - firstLoaded), segment.p_filesz);
    while (notes.size() > sizeof(Note)) {
      Note note;
      std::memcpy(&note, notes.data(), sizeof(note));
      const std::size_t name = sizeof(note) + (std::size_t{note.n_namesz} + 3) / 4 * 4;
      const std::size_t whole = name + (std::size_t{note.n_descsz} + 3) / 4 * 4;
      if (whole > notes.size()) break;
      if (note.n_type == NT_GNU_BUILD_ID &&
          notes.substr(sizeof(note), 4) == std::string_view("GNU", 4)) {
        return notes.substr(name, note.n_descsz);
      }
      notes.remove_prefix(whole);
    }
  }
  return {};
}

}  // namespace vlm::platform
