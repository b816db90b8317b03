#include <velum/platform/detail/CodePages.h>

#include <velum/platform/detail/AsciiBlocks.h>
#include <velum/platform/detail/CodePageNames.h>
#include <velum/platform/detail/Utf8.h>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <bit>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace vlm::platform {

namespace {

// ICU's own callbacks give U+001A for some bad bytes and drop characters that are invisible; these
// give the same answer for every page.
void ReplaceBadBytes(const void*, UConverterToUnicodeArgs* args, const char*, int32_t,
                     UConverterCallbackReason reason, UErrorCode* status) {
  if (reason > UCNV_IRREGULAR) return;
  *status = U_ZERO_ERROR;
  constexpr UChar kSubstitute = kReplacement;
  ucnv_cbToUWriteUChars(args, &kSubstitute, 1, 0, status);
}

void ReplaceMissingCharacter(const void*, UConverterFromUnicodeArgs* args, const UChar*, int32_t,
                             UChar32, UConverterCallbackReason reason, UErrorCode* status) {
  if (reason > UCNV_IRREGULAR) return;
  *status = U_ZERO_ERROR;
  ucnv_cbFromUWriteSub(args, 0, status);
}

struct Closer {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};

struct Converter {
  std::unique_ptr<UConverter, Closer> handle;
  bool rotatesControls = false;
  std::vector<wchar_t> characters{};  ///< what each byte is, if all characters are single bytes
  bool keepsAscii = false;            ///< of these, whether ASCII is what it is everywhere
};

// ICU's tables of the DOS pages read the bytes 1A, 1C and 7F as U+001C, U+007F and U+001A, after a
// habit of mainframes; the system passes them unchanged.
UChar TurnBack(UChar unit) {
  return unit == 0x1C ? 0x1A : unit == 0x7F ? 0x1C : unit == 0x1A ? 0x7F : unit;
}

UChar Turn(UChar unit) {
  return unit == 0x1A ? 0x1C : unit == 0x1C ? 0x7F : unit == 0x7F ? 0x1A : unit;
}

constexpr std::size_t kChunk = 512;

/// Hands the text over piece by piece: `take(units, count)`.
template <class Take>
void DecodePieces(const Converter& converter, std::string_view text, Take take) {
  UConverter* const handle = converter.handle.get();
  ucnv_resetToUnicode(handle);
  const char* source = text.data();
  UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
  while (status == U_BUFFER_OVERFLOW_ERROR) {
    UChar chunk[kChunk];
    UChar* target = chunk;
    status = U_ZERO_ERROR;
    ucnv_toUnicode(handle, &target, chunk + kChunk, &source, text.data() + text.size(), nullptr,
                   true, &status);
    if (converter.rotatesControls) std::transform(chunk, target, chunk, TurnBack);
    take(chunk, static_cast<std::size_t>(target - chunk));
  }
}

std::size_t DecodeWithIcu(const Converter& converter, std::string_view text, wchar_t* out) {
  std::size_t count = 0;
  DecodePieces(converter, text, [&](const UChar* units, std::size_t length) {
    if (out) std::copy_n(units, length, out + count);
    count += length;
  });
  return count;
}

/// What each byte of a page of single bytes is; empty for another page.
std::vector<wchar_t> SingleBytes(const Converter& converter) {
  const UConverterType type = ucnv_getType(converter.handle.get());
  if (type != UCNV_SBCS && type != UCNV_LATIN_1 && type != UCNV_US_ASCII) return {};
  std::vector<wchar_t> characters(0x100);
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const auto byte = static_cast<char>(i);
    if (DecodeWithIcu(converter, {&byte, 1}, nullptr) != 1) return {};
    DecodeWithIcu(converter, {&byte, 1}, &characters[i]);
  }
  return characters;
}

bool KeepsAscii(const std::vector<wchar_t>& characters) {
  constexpr std::size_t kAscii = 0x80;
  if (characters.size() < kAscii) return false;
  for (std::size_t i = 0; i < kAscii; ++i) {
    if (characters[i] != static_cast<wchar_t>(i)) return false;
  }
  return true;
}

/// Looks every byte up; of a block, only what is not ASCII.
void DecodeSingleBytes(const Converter& converter, std::string_view text, wchar_t* out) {
  const wchar_t* const characters = converter.characters.data();
  const auto decode = [&](std::size_t i) {
    out[i] = characters[static_cast<unsigned char>(text[i])];
  };
  std::size_t at = 0;
  if (converter.keepsAscii) {
    for (; text.size() - at >= kAsciiBlock; at += kAsciiBlock) {
      WidenBlock(text.data() + at, out + at);
      for (unsigned int others = NotAscii(text.data() + at); others != 0; others &= others - 1) {
        decode(at + static_cast<std::size_t>(std::countr_zero(others)));
      }
    }
  }
  for (; at < text.size(); ++at) decode(at);
}

Converter Open(unsigned int codePage) {
  const char* const name = CodePageName(codePage);
  if (!name) return {};
  UErrorCode status = U_ZERO_ERROR;
  Converter converter{{ucnv_open(name, &status), {}}};
  if (U_FAILURE(status)) return {};
  UConverter* const handle = converter.handle.get();
  ucnv_setToUCallBack(handle, ReplaceBadBytes, nullptr, nullptr, nullptr, &status);
  ucnv_setFromUCallBack(handle, ReplaceMissingCharacter, nullptr, nullptr, nullptr, &status);
  ucnv_setSubstString(handle, u"?", 1, &status);
  UChar probe[4] = {};
  ucnv_toUChars(handle, probe, 4, "\x1A", 1, &status);
  converter.rotatesControls = probe[0] == 0x1C;
  converter.characters = SingleBytes(converter);
  converter.keepsAscii = KeepsAscii(converter.characters);
  return converter;
}

/// The thread's converter for a code page, null for none. Opening one takes microseconds, so each
/// thread keeps those that it has used.
const Converter* FindConverter(unsigned int codePage) {
  thread_local std::map<unsigned int, Converter> converters;
  const auto found = converters.find(codePage);
  if (found != converters.end()) return &found->second;
  Converter converter = Open(codePage);
  if (!converter.handle) return nullptr;
  return &converters.emplace(codePage, std::move(converter)).first->second;
}

std::size_t EncodeWithIcu(const Converter& converter, std::wstring_view text, char* out) {
  UConverter* const handle = converter.handle.get();
  ucnv_resetFromUnicode(handle);
  std::size_t count = 0;
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    UChar units[kChunk];
    std::size_t filled = 0;
    while (at != end && filled < kChunk - 1) {
      wchar_t pair[2];
      const std::size_t length = PutWide(NextCodePoint(at, end), pair);
      for (std::size_t i = 0; i < length; ++i) units[filled++] = static_cast<UChar>(pair[i]);
    }
    if (converter.rotatesControls) std::transform(units, units + filled, units, Turn);
    const UChar* source = units;
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
      char chunk[kChunk];
      char* target = chunk;
      status = U_ZERO_ERROR;
      ucnv_fromUnicode(handle, &target, chunk + kChunk, &source, units + filled, nullptr, at == end,
                       &status);
      if (out) std::copy(chunk, target, out + count);
      count += static_cast<std::size_t>(target - chunk);
    }
  }
  return count;
}

}  // namespace

bool IsCodePage(unsigned int codePage) { return IsUtf8Page(codePage) || FindConverter(codePage); }

std::size_t NarrowToWide(std::string_view text, unsigned int codePage, wchar_t* out) {
  if (IsUtf8Page(codePage)) return Utf8ToWide(text, out);
  const Converter* const converter = text.empty() ? nullptr : FindConverter(codePage);
  if (!converter) return 0;
  if (converter->characters.empty()) return DecodeWithIcu(*converter, text, out);
  if (out) DecodeSingleBytes(*converter, text, out);
  return text.size();
}

void AppendWide(std::string_view text, unsigned int codePage, std::wstring& out) {
  const Converter* const converter = IsUtf8Page(codePage) ? nullptr : FindConverter(codePage);
  if (converter && converter->characters.empty()) {
    DecodePieces(*converter, text, [&](const UChar* units, std::size_t length) {
      const std::size_t at = out.size();
      out.resize(at + length);
      std::copy_n(units, length, out.begin() + static_cast<std::ptrdiff_t>(at));
    });
    return;
  }
  const std::size_t at = out.size();
  if (converter) {
    out.resize(at + text.size());
    DecodeSingleBytes(*converter, text, out.data() + at);
    return;
  }
  out.resize(at + NarrowToWide(text, codePage, nullptr));
  NarrowToWide(text, codePage, out.data() + at);
}

std::size_t WideToNarrow(std::wstring_view text, unsigned int codePage, char* out) {
  if (IsUtf8Page(codePage)) return WideToUtf8(text, out);
  const Converter* const converter = FindConverter(codePage);
  return converter ? EncodeWithIcu(*converter, text, out) : 0;
}

}  // namespace vlm::platform
