#include <velum/diagnostics/RecentLines.h>

#include <velum/diagnostics/detail/RecentLines.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vlm {
namespace {

using Word = std::uint64_t;

constexpr std::uint64_t kLines = 100;
constexpr std::size_t kLongest = 1024;
constexpr std::string_view kCut = "...";
static_assert(kRecentLogBytes == kLines * (kLongest + 1) + 1);
static_assert(std::atomic<Word>::is_always_lock_free);

/// The stamp of a slot that holds line `number`, counted from 0 and never again; one less while it
/// is being written.
constexpr std::uint64_t StampOf(std::uint64_t number) { return 2 * number + 2; }

/// One line. A reader that finds the same stamp before and after has read the whole of one line:
/// the words are written by release and read by acquire, so that who has read a word of a later
/// line finds that line's stamp, too.
struct Slot {
  std::atomic<std::uint64_t> stamp{0};
  std::atomic<std::uint64_t> size{0};
  std::array<std::atomic<Word>, kLongest / sizeof(Word)> words{};
};

constinit std::array<Slot, kLines> theSlots{};
constinit std::atomic<std::uint64_t> theCount{0};

/// How many bytes of a line are kept, if `room` are there: no character is cut.
std::size_t WholeCharacters(std::string_view line, std::size_t room) noexcept {
  std::size_t size = room;
  while (size > room - 3 && (static_cast<unsigned char>(line[size]) & 0xC0) == 0x80) --size;
  // What has four continuation bytes is no UTF-8.
  return (static_cast<unsigned char>(line[size]) & 0xC0) == 0x80 ? room : size;
}

/// Gives the size of line `number` if it is still there, otherwise -1.
std::int64_t SizeOf(std::uint64_t number) noexcept {
  const Slot& slot = theSlots[number % kLines];
  if (slot.stamp.load(std::memory_order_acquire) != StampOf(number)) return -1;
  const std::uint64_t size = slot.size.load(std::memory_order_acquire);
  if (slot.stamp.load(std::memory_order_relaxed) != StampOf(number)) return -1;
  return static_cast<std::int64_t>(size);
}

/// Copies line `number`, of `size` bytes; false if it is there no more.
bool Copy(std::uint64_t number, char* out, std::size_t size) noexcept {
  const Slot& slot = theSlots[number % kLines];
  if (slot.stamp.load(std::memory_order_acquire) != StampOf(number)) return false;
  for (std::size_t at = 0; at < size; at += sizeof(Word)) {
    const Word word = slot.words[at / sizeof(Word)].load(std::memory_order_acquire);
    std::memcpy(out + at, &word, std::min(sizeof(Word), size - at));
  }
  return slot.stamp.load(std::memory_order_relaxed) == StampOf(number);
}

}  // namespace

namespace detail {

void KeepRecentLine(std::string_view line) noexcept {
  const bool fits = line.size() <= kLongest;
  const std::size_t kept = fits ? line.size() : WholeCharacters(line, kLongest - kCut.size());
  const std::size_t size = fits ? kept : kept + kCut.size();

  const std::uint64_t number = theCount.load(std::memory_order_relaxed);
  Slot& slot = theSlots[number % kLines];
  slot.stamp.store(StampOf(number) - 1, std::memory_order_relaxed);
  slot.size.store(size, std::memory_order_release);
  for (std::size_t at = 0; at < size; at += sizeof(Word)) {
    char bytes[sizeof(Word)] = {};
    if (at + sizeof(Word) <= kept) {
      std::memcpy(bytes, line.data() + at, sizeof(Word));
    } else {
      for (std::size_t i = at; i < std::min(at + sizeof(Word), size); ++i) {
        bytes[i - at] = i < kept ? line[i] : kCut[i - kept];
      }
    }
    Word word;
    std::memcpy(&word, bytes, sizeof(Word));
    slot.words[at / sizeof(Word)].store(word, std::memory_order_release);
  }
  slot.stamp.store(StampOf(number), std::memory_order_release);
  theCount.store(number + 1, std::memory_order_release);
}

}  // namespace detail

std::size_t CopyRecentLogLines(char* out, std::size_t size) noexcept {
  if (!out || size == 0) return 0;
  const std::uint64_t end = theCount.load(std::memory_order_acquire);
  std::uint64_t begin = end;
  for (std::size_t room = size - 1; begin > 0 && end - begin < kLines; --begin) {
    const std::int64_t length = SizeOf(begin - 1);
    if (length < 0 || static_cast<std::size_t>(length) >= room) break;
    room -= static_cast<std::size_t>(length) + 1;
  }
  std::size_t used = 0;
  for (; begin < end; ++begin) {
    const std::int64_t length = SizeOf(begin);
    if (length < 0 || !Copy(begin, out + used, static_cast<std::size_t>(length))) continue;
    used += static_cast<std::size_t>(length);
    out[used++] = '\n';
  }
  out[used] = '\0';
  return used;
}

}  // namespace vlm
