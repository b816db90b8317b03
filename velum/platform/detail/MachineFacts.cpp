#include <velum/platform/detail/MachineFacts.h>

#include <velum/platform/detail/Ascii.h>
#include <velum/platform/detail/InputFile.h>

#include <sched.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <utility>

namespace vlm::platform {

namespace {

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// The number at the start of a text, which is stepped over; the largest for one that is larger.
std::uint64_t TakeNumber(std::string_view& text) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t number = 0;
  for (; !text.empty() && IsDigit(text.front()); text.remove_prefix(1)) {
    const auto digit = static_cast<std::uint64_t>(text.front() - '0');
    number = number > (kLargest - digit) / 10 ? kLargest : number * 10 + digit;
  }
  return number;
}

std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

/// Steps over a key and the mark behind it; false, and no step, if the line does not begin so.
bool TakeKey(std::string_view& line, std::string_view key, char mark) {
  if (line.size() <= key.size() || line.substr(0, key.size()) != key || line[key.size()] != mark) {
    return false;
  }
  line.remove_prefix(key.size() + 1);
  return true;
}

/// Takes a value off a text as a shell reads it: in quotes it goes on behind the line's end.
std::string TakeValue(std::string_view& text) {
  constexpr std::string_view kEscapedInQuotes = "$`\"\\\n";
  std::string value;
  char quote = '\0';
  while (!text.empty() && (quote || !(IsBlank(text.front()) || text.front() == '\n'))) {
    char c = text.front();
    text.remove_prefix(1);
    if (quote ? c == quote : c == '"' || c == '\'') {
      quote = quote ? '\0' : c;
      continue;
    }
    if (c == '\\' && quote != '\'' && !text.empty() &&
        (!quote || kEscapedInQuotes.find(text.front()) != std::string_view::npos)) {
      c = text.front();
      text.remove_prefix(1);
      if (c == '\n') continue;
    }
    value += c;
  }
  return value;
}

/// What `key` stands for in a release file, up to a control character; empty if it is not there or
/// too long for a name.
std::string ReleaseValue(std::string_view text, std::string_view key) {
  constexpr std::size_t kLongest = 256;
  std::string value;
  while (!text.empty()) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const std::string_view name = text.substr(0, text.find_first_of("= \t\n"));
    const bool isKnown = name == key;
    text.remove_prefix(name.size());
    if (name.find('#') == std::string_view::npos && !text.empty() && text.front() == '=') {
      text.remove_prefix(1);
      std::string given = TakeValue(text);
      // The last line counts, as for a shell.
      if (isKnown) value = std::move(given);
    }
    TakeLine(text);
  }
  value.erase(std::find_if(value.begin(), value.end(), IsControl), value.end());
  return value.size() > kLongest ? std::string() : value;
}

std::uint64_t PageSize() { return static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)); }

/// The addresses that programs get: on 64-bit processors 47 bits of them, unless they ask for more.
constexpr std::uint64_t kAddresses =
    sizeof(void*) == 8 ? std::uint64_t{1} << 47 : std::uint64_t{3} << 30;

void ReadAddresses(MemoryFacts& facts) {
  rlimit limit{};
  facts.address = kAddresses;
  if (::getrlimit(RLIMIT_AS, &limit) == 0) {
    facts.address = std::min<std::uint64_t>(facts.address, limit.rlim_cur);
  }
  const std::string pages = TextOfFile("/proc/self/statm");
  std::string_view rest(pages);
  const std::uint64_t used = TakeNumber(rest) * PageSize();
  facts.addressFree = facts.address - std::min(facts.address, used);
}

/// The four registers after a leaf of the CPUID instruction: EAX, EBX, ECX, EDX; zeros if there is
/// no such leaf or no such instruction.
struct Leaf {
#if defined(__x86_64__) || defined(__i386__)
  explicit Leaf(unsigned number) {
    if (!__get_cpuid(number, &words[0], &words[1], &words[2], &words[3])) std::fill_n(words, 4, 0u);
  }
#else
  explicit Leaf(unsigned) {}
#endif
  unsigned words[4] = {};
};

/// The text that registers hold, without the blanks around it.
std::string TextOfWords(const unsigned* words, std::size_t count) {
  std::string text(count * sizeof(unsigned), '\0');
  std::memcpy(text.data(), words, text.size());
  text.resize(std::min(text.find('\0'), text.size()));
  text.erase(0, text.find_first_not_of(' '));
  text.resize(text.find_last_not_of(' ') + 1);
  return text;
}

/// Family, model and stepping as they are counted, from the signature that leaf 1 gives.
std::string FamilyText(unsigned signature) {
  const unsigned baseFamily = signature >> 8 & 0xF;
  const unsigned family = baseFamily == 0xF ? baseFamily + (signature >> 20 & 0xFF) : baseFamily;
  const bool isExtended = baseFamily == 6 || baseFamily == 0xF;
  const unsigned model = (signature >> 4 & 0xF) | (isExtended ? (signature >> 16 & 0xF) << 4 : 0);
  return " Family " + std::to_string(family) + " Model " + std::to_string(model) + " Stepping " +
         std::to_string(signature & 0xF);
}

}  // namespace

bool ReadKernelFacts(KernelFacts& facts) {
  utsname names{};
  if (::uname(&names) != 0) return false;
  facts.name = names.sysname;
  std::string_view release(names.release);
  for (unsigned* number : {&facts.major, &facts.minor, &facts.build}) {
    constexpr std::uint64_t kLargest = std::numeric_limits<unsigned>::max();
    *number = static_cast<unsigned>(std::min(TakeNumber(release), kLargest));
    if (release.empty() || release.front() != '.') break;
    release.remove_prefix(1);
  }
  return true;
}

std::string ReleaseName() {
  for (const char* file : {"/etc/os-release", "/usr/lib/os-release"}) {
    std::string name = ReleaseNameIn(TextOfFile(file));
    if (!name.empty()) return name;
  }
  return {};
}

std::string ReleaseNameIn(std::string_view text) {
  std::string name = ReleaseValue(text, "PRETTY_NAME");
  if (!name.empty()) return name;
  name = ReleaseValue(text, "NAME");
  const std::string version = ReleaseValue(text, "VERSION");
  return name.empty() || version.empty() ? name : name + ' ' + version;
}

bool ReadMemoryFacts(MemoryFacts& facts) {
  const std::string text = TextOfFile("/proc/meminfo");
  if (!FindKilobytes(text, "MemTotal", facts.physical)) return false;
  // Kernels before 3.14 do not count what their caches would give up.
  if (!FindKilobytes(text, "MemAvailable", facts.physicalFree) &&
      !FindKilobytes(text, "MemFree", facts.physicalFree)) {
    return false;
  }
  if (!FindKilobytes(text, "SwapTotal", facts.swap)) facts.swap = 0;
  if (!FindKilobytes(text, "SwapFree", facts.swapFree)) facts.swapFree = 0;
  ReadAddresses(facts);
  return true;
}

bool FindKilobytes(std::string_view text, std::string_view key, std::uint64_t& bytes) {
  while (!text.empty()) {
    std::string_view line = TakeLine(text);
    if (!TakeKey(line, key, ':')) continue;
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    if (line.empty() || !IsDigit(line.front())) return false;
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max() / 1024;
    bytes = std::min(TakeNumber(line), kLargest) * 1024;
    return true;
  }
  return false;
}

ProcessorFacts ReadProcessorFacts() {
  ProcessorFacts facts;
  utsname names{};
  if (::uname(&names) == 0) facts.identifier = names.machine;
  const unsigned signature = Leaf(1).words[0];
  if (signature != 0) facts.identifier += FamilyText(signature);
  const Leaf vendor(0);
  const unsigned letters[] = {vendor.words[1], vendor.words[3], vendor.words[2]};
  facts.vendor = TextOfWords(letters, std::size(letters));
  constexpr unsigned kFirst = 0x80000002;
  unsigned name[3 * 4];
  for (unsigned i = 0; i < 3; ++i) std::copy_n(Leaf(kFirst + i).words, 4, name + 4 * i);
  facts.name = TextOfWords(name, std::size(name));
  return facts;
}

unsigned ProcessorCount() noexcept {
  const long count = ::sysconf(_SC_NPROCESSORS_ONLN);
  return count < 1 ? 1 : static_cast<unsigned>(count);
}

std::uint64_t ProcessorMask() noexcept {
  cpu_set_t processors;
  CPU_ZERO(&processors);
  if (::sched_getaffinity(0, sizeof(processors), &processors) != 0) return 0;
  std::uint64_t mask = 0;
  for (unsigned i = 0; i < 64; ++i) {
    if (CPU_ISSET(i, &processors)) mask |= std::uint64_t{1} << i;
  }
  return mask;
}

std::uint32_t ProcessorFeatures() noexcept { return Leaf(1).words[3]; }

}  // namespace vlm::platform
