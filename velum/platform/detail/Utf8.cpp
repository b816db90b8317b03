#include <velum/platform/detail/Utf8.h>

#include <cstdint>
#include <cstring>

namespace vlm::platform {

namespace {

/// Texts are looked at in blocks of this many elements, since most blocks are plain ASCII.
constexpr std::ptrdiff_t kBlock = 16;

bool IsAscii(const char* block) noexcept {
  std::uint64_t words[2];
  std::memcpy(words, block, sizeof(words));
  return ((words[0] | words[1]) & 0x8080808080808080u) == 0;
}

bool IsAscii(const wchar_t* block) noexcept {
  std::uint32_t all = 0;
  for (std::ptrdiff_t i = 0; i < kBlock; ++i) all |= static_cast<std::uint32_t>(block[i]);
  return all < 0x80;
}

constexpr std::size_t Put(char32_t code, wchar_t* out) noexcept { return PutWide(code, out); }
constexpr std::size_t Put(char32_t code, char* out) noexcept { return PutUtf8(code, out); }

constexpr std::size_t Count(char32_t code, const wchar_t*) noexcept {
  return code > 0xFFFF ? 2 : 1;
}
constexpr std::size_t Count(char32_t code, const char*) noexcept {
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

template <bool kWrite, class From, class To>
std::size_t Convert(const From* at, const From* end, To* out) noexcept {
  std::size_t count = 0;
  while (at != end) {
    const From* blockEnd = end;
    if (end - at >= kBlock) {
      blockEnd = at + kBlock;
      if (IsAscii(at)) {
        if constexpr (kWrite) {
          for (std::ptrdiff_t i = 0; i < kBlock; ++i)
            out[count + static_cast<std::size_t>(i)] = static_cast<To>(at[i]);
        }
        count += static_cast<std::size_t>(kBlock);
        at = blockEnd;
        continue;
      }
    }
    while (at < blockEnd) {
      const char32_t code = NextCodePoint(at, end);
      if constexpr (kWrite) {
        count += Put(code, out + count);
      } else {
        count += Count(code, out);
      }
    }
  }
  return count;
}

}  // namespace

std::size_t Utf8ToWide(std::string_view text, wchar_t* out) noexcept {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  return out ? Convert<true>(begin, end, out) : Convert<false>(begin, end, out);
}

std::size_t WideToUtf8(std::wstring_view text, char* out) noexcept {
  const wchar_t* const begin = text.data();
  const wchar_t* const end = begin + text.size();
  return out ? Convert<true>(begin, end, out) : Convert<false>(begin, end, out);
}

}  // namespace vlm::platform
