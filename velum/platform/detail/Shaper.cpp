#include <velum/platform/detail/Shaper.h>

#include <velum/platform/detail/OutlineFont.h>
#include <velum/platform/detail/TextRuns.h>
#include <velum/platform/detail/Utf8.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H
#include <hb-ot.h>
#include <hb.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <utility>

namespace vlm::platform {

namespace {

constexpr char32_t kZeroWidthSpace = 0x200B;
constexpr char32_t kJoiner = 0x200D;
/// How many characters are shaped at once, and that many more to come to a good place for a cut:
/// the time for marks, joiners and selectors grows with the square of their number.
constexpr std::size_t kSlice = 256;

template <auto Destroy>
struct Destroyer {
  template <class T>
  void operator()(T* object) const {
    Destroy(object);
  }
};

using Blob = std::unique_ptr<hb_blob_t, Destroyer<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroyer<hb_face_destroy>>;
using Font = std::unique_ptr<hb_font_t, Destroyer<hb_font_destroy>>;
using Buffer = std::unique_ptr<hb_buffer_t, Destroyer<hb_buffer_destroy>>;
using FontFunctions = std::unique_ptr<hb_font_funcs_t, Destroyer<hb_font_funcs_destroy>>;

/// The tag that shaping knows a script by; invalid where it shall find out by itself.
hb_script_t ShapingScript(std::uint16_t script) {
  if (script == kCombiningScript || script == USCRIPT_COMMON) return HB_SCRIPT_INVALID;
  const char* const name = uscript_getShortName(static_cast<UScriptCode>(script));
  return name ? hb_script_from_string(name, -1) : HB_SCRIPT_INVALID;
}

bool IsOfCategory(char32_t code, std::uint32_t categories) {
  return (U_MASK(u_charType(static_cast<UChar32>(code))) & categories) != 0;
}

/// True for what is invisible, but is looked for in the face by shaping.
bool IsUnknownToShaping(char32_t code) {
  if (code == 0x180F || (code >= 0x1BCA0 && code <= 0x1BCA3)) return true;
  constexpr std::uint32_t kCategories = U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK | U_GC_LO_MASK;
  return IsOfCategory(code, kCategories) && IsInvisible(code);
}

/// Where the slice that begins at `first` ends: at best before a character that stands alone.
std::size_t SliceEnd(const std::vector<std::uint32_t>& codes, std::size_t first) {
  if (codes.size() - first <= 2 * kSlice) return codes.size();
  const auto standsAlone = [&codes](std::size_t i) {
    return codes[i] != kJoiner && codes[i - 1] != kJoiner && !IsOfCategory(codes[i], U_GC_M_MASK);
  };
  std::size_t end = first + kSlice;
  while (end < first + 2 * kSlice && !standsAlone(end)) ++end;
  return end;
}

/// A table of a face that FreeType has opened.
hb_blob_t* LoadTable(hb_face_t*, hb_tag_t tag, void* freeTypeFace) {
  const auto face = static_cast<FT_Face>(freeTypeFace);
  FT_ULong size = 0;
  if (FT_Load_Sfnt_Table(face, tag, 0, nullptr, &size) != 0 || size == 0) return nullptr;
  auto* const bytes = static_cast<char*>(std::malloc(size));
  if (!bytes) return nullptr;
  if (FT_Load_Sfnt_Table(face, tag, 0, reinterpret_cast<FT_Byte*>(bytes), &size) != 0) {
    std::free(bytes);
    return nullptr;
  }
  return hb_blob_create(bytes, static_cast<unsigned int>(size), HB_MEMORY_MODE_WRITABLE, bytes,
                        std::free);
}

/// The glyph of a character in a face that FreeType has opened.
hb_bool_t FindGlyph(hb_font_t*, void* freeTypeFace, hb_codepoint_t code, hb_codepoint_t* glyph,
                    void*) {
  *glyph = FT_Get_Char_Index(static_cast<FT_Face>(freeTypeFace), code);
  return *glyph != 0;
}

}  // namespace

bool IsInvisible(char32_t code) noexcept {
  if (code < 0xAD) return code < 0x20 || (code >= 0x7F && code < 0xA0);
  if (code == 0x2028 || code == 0x2029) return true;
  return u_hasBinaryProperty(static_cast<UChar32>(code), UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

struct Shaper::State {
  std::unique_ptr<OutlineFont> outline;  ///< Of a file that shaping can't read by itself.
  Font font;
  Buffer buffer;
  std::vector<std::uint32_t> codes;  ///< Kept between calls for its memory.
  /// The glyphs of the first characters, which are most of what is asked for.
  std::array<std::uint16_t, 0x180> firstGlyphs{};

  [[nodiscard]] bool HasOwnGlyph(char32_t code) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(font.get(), code, &glyph) != 0;
  }
  [[nodiscard]] std::uint16_t Find(char32_t code) const {
    if (IsInvisible(code)) return kNoGlyph;
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(font.get(), code, &glyph) && IsOfCategory(code, U_GC_ZS_MASK)) {
      hb_font_get_nominal_glyph(font.get(), ' ', &glyph);
    }
    return static_cast<std::uint16_t>(std::min<hb_codepoint_t>(glyph, kNoGlyph));
  }
  [[nodiscard]] std::uint16_t Glyph(char32_t code) const {
    return code < firstGlyphs.size() ? firstGlyphs[code] : Find(code);
  }
};

Shaper::Shaper(std::unique_ptr<State> state) : state_(std::move(state)) {}

Shaper::~Shaper() = default;

std::unique_ptr<Shaper> Shaper::Open(const std::string& file, unsigned int index) {
  const Blob blob(hb_blob_create_from_file_or_fail(file.c_str()));
  if (!blob) return nullptr;
  auto state = std::make_unique<State>();
  const unsigned int count = hb_face_count(blob.get());
  Face face;
  if (count != 0) {
    if ((index & 0xFFFF) >= count) return nullptr;
    face.reset(hb_face_create(blob.get(), index & 0xFFFF));
  } else {
    state->outline = OutlineFont::Open(file, index);
    if (!state->outline) return nullptr;
    const FT_Face handle = state->outline->Handle();
    face.reset(hb_face_create_for_tables(LoadTable, handle, nullptr));
    hb_face_set_glyph_count(face.get(), static_cast<unsigned int>(handle->num_glyphs));
  }
  if (hb_face_get_glyph_count(face.get()) == 0) return nullptr;
  state->font.reset(hb_font_create(face.get()));
  state->buffer.reset(hb_buffer_create());
  if (index >> 16 != 0) hb_font_set_var_named_instance(state->font.get(), (index >> 16) - 1);
  if (state->outline) {
    // Type 1 fonts have names of glyphs in place of a table of characters.
    const FontFunctions functions(hb_font_funcs_create());
    hb_font_funcs_set_nominal_glyph_func(functions.get(), FindGlyph, nullptr, nullptr);
    state->font.reset(hb_font_create_sub_font(Font(std::move(state->font)).get()));
    hb_font_set_funcs(state->font.get(), functions.get(), state->outline->Handle(), nullptr);
  }
  hb_font_make_immutable(state->font.get());
  for (std::size_t code = 0; code < state->firstGlyphs.size(); ++code) {
    state->firstGlyphs[code] = state->Find(static_cast<char32_t>(code));
  }
  return std::unique_ptr<Shaper>(new Shaper(std::move(state)));
}

bool Shaper::Has(char32_t code) const noexcept { return state_->Glyph(code) != DefaultGlyph(); }

bool Shaper::Shape(std::wstring_view text, std::uint16_t script, bool isRightToLeft,
                   std::vector<std::uint16_t>& glyphs) {
  std::vector<std::uint32_t>& codes = state_->codes;
  codes.clear();
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const char32_t code = NextCodePoint(at, end);
    const bool isHidden = IsUnknownToShaping(code) && !state_->HasOwnGlyph(code);
    codes.push_back(isHidden ? kZeroWidthSpace : code);
  }
  if (codes.size() > std::numeric_limits<int>::max()) return false;

  glyphs.clear();
  hb_buffer_t* const buffer = state_->buffer.get();
  for (std::size_t first = 0, next = 0; first < codes.size(); first = next) {
    next = SliceEnd(codes, first);
    hb_buffer_clear_contents(buffer);
    // Letters at the ends join with those beyond.
    hb_buffer_add_utf32(buffer, codes.data(), static_cast<int>(codes.size()),
                        static_cast<unsigned int>(first), static_cast<int>(next - first));
    hb_buffer_set_direction(buffer, isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, ShapingScript(script));
    hb_buffer_set_language(buffer, HB_LANGUAGE_INVALID);
    hb_buffer_guess_segment_properties(buffer);
    hb_shape(state_->font.get(), buffer, nullptr, 0);
    if (!hb_buffer_allocation_successful(buffer)) return false;
    unsigned int count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &count);
    for (unsigned int i = 0; i < count; ++i) {
      glyphs.push_back(
          static_cast<std::uint16_t>(std::min<hb_codepoint_t>(infos[i].codepoint, kNoGlyph)));
    }
  }
  return true;
}

void Shaper::Map(std::wstring_view text, std::vector<std::uint16_t>& glyphs) const {
  glyphs.clear();
  glyphs.reserve(text.size());
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const wchar_t* const start = at;
    glyphs.push_back(state_->Glyph(NextCodePoint(at, end)));
    if (at - start > 1) glyphs.push_back(kNoGlyph);
  }
}

}  // namespace vlm::platform
