#include <velum/platform/detail/FontFallback.h>

#include <velum/platform/detail/Shaper.h>
#include <velum/platform/detail/Utf8.h>

#include <fontconfig/fontconfig.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace vlm::platform {

namespace {

constexpr char32_t kNonJoiner = 0x200C;
constexpr char32_t kJoiner = 0x200D;
/// Longer clusters are cut; those of real text have a handful.
constexpr std::size_t kLongestCluster = 32;
/// How many answers for clusters are kept; a text has far fewer that differ.
constexpr std::size_t kMostClusters = 4096;
constexpr std::uint16_t kNotAsked = 0xFFFF;

bool IsSpace(char32_t code) {
  return code == ' ' ||
         (code >= 0xA0 && u_charType(static_cast<UChar32>(code)) == U_SPACE_SEPARATOR);
}

bool IsRegionalIndicator(char32_t code) { return code >= 0x1F1E6 && code <= 0x1F1FF; }

bool IsPicture(char32_t code) {
  return code >= 0xA9 &&
         u_hasBinaryProperty(static_cast<UChar32>(code), UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
}

/// True for marks and joiners, which are nothing without the character before them.
bool Extends(char32_t code) {
  if (code < 0x300) return false;
  constexpr std::uint32_t kMarks = U_GC_MN_MASK | U_GC_MC_MASK | U_GC_ME_MASK;
  return code == kNonJoiner || code == kJoiner ||
         (U_MASK(u_charType(static_cast<UChar32>(code))) & kMarks) != 0;
}

/// True if `code` makes one picture, flag or syllable with what is before it: the last character
/// `before`, and the first of its cluster, `first`.
bool Merges(char32_t code, char32_t before, char32_t first, bool isSecond) {
  if (before == kJoiner && IsPicture(code)) return IsPicture(first);
  if (code < 0x1100) return false;
  const bool isSkin = code >= 0x1F3FB && code <= 0x1F3FF;
  const bool isTag = code >= 0xE0020 && code <= 0xE007F;
  if (isSkin || isTag) return true;
  if (IsRegionalIndicator(code)) return isSecond && IsRegionalIndicator(first);
  const int syllable =
      u_getIntPropertyValue(static_cast<UChar32>(code), UCHAR_HANGUL_SYLLABLE_TYPE);
  return syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO;
}

/// A character with all that belongs to it.
struct Cluster {
  std::size_t first;
  std::size_t length;
  std::array<char32_t, kLongestCluster> codes;
  std::size_t count;
  bool isMerged;  ///< It has more than one character that could stand alone.

  /// True for white space and what is invisible.
  [[nodiscard]] bool IsNeutral() const {
    return std::all_of(codes.begin(), codes.begin() + count,
                       [](char32_t code) { return IsSpace(code) || IsInvisible(code); });
  }
};

/// True for what nothing can belong to.
bool IsControl(char32_t code) {
  if (code < 0xA0) return code < 0x20 || code >= 0x7F;
  return code == 0x2028 || code == 0x2029;
}

/// Reads the cluster at `first`, which is before the end; without what merges if `isPlain`.
Cluster ReadCluster(std::wstring_view text, std::size_t first, bool isPlain = false) {
  Cluster cluster{first, 0, {}, 0, false};
  const wchar_t* at = text.data() + first;
  const wchar_t* const end = text.data() + text.size();
  cluster.codes[cluster.count++] = NextCodePoint(at, end);
  const bool isControl = IsControl(cluster.codes[0]);
  while (at != end && cluster.count < kLongestCluster && !isControl) {
    const wchar_t* next = at;
    const char32_t code = NextCodePoint(next, end);
    if (!Extends(code)) {
      const char32_t before = cluster.codes[cluster.count - 1];
      if (isPlain || !Merges(code, before, cluster.codes[0], cluster.count == 1)) break;
      cluster.isMerged = true;
    }
    cluster.codes[cluster.count++] = code;
    at = next;
  }
  cluster.length = static_cast<std::size_t>(at - text.data()) - first;
  return cluster;
}

/// Gives a cluster's form with letters and their marks made one, or taken apart. False if that is
/// no other form.
bool Normalize(const Cluster& cluster, bool composes, Cluster& normal) {
  const auto first = static_cast<UChar32>(cluster.codes[0]);
  const UProperty check = composes ? UCHAR_NFC_QUICK_CHECK : UCHAR_NFD_QUICK_CHECK;
  if (cluster.count == 1 && u_getIntPropertyValue(first, check) == UNORM_YES) return false;
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* const normalizer =
      composes ? unorm2_getNFCInstance(&status) : unorm2_getNFDInstance(&status);
  std::array<UChar32, kLongestCluster> codes;
  std::copy_n(cluster.codes.begin(), cluster.count, codes.begin());
  std::array<UChar, 2 * kLongestCluster> units, changed;
  std::int32_t length = 0;
  u_strFromUTF32(units.data(), units.size(), &length, codes.data(),
                 static_cast<std::int32_t>(cluster.count), &status);
  length =
      unorm2_normalize(normalizer, units.data(), length, changed.data(), changed.size(), &status);
  u_strToUTF32(codes.data(), codes.size(), &length, changed.data(), length, &status);
  if (U_FAILURE(status)) return false;
  normal.count = static_cast<std::size_t>(length);
  std::copy_n(codes.begin(), normal.count, normal.codes.begin());
  return !std::equal(normal.codes.begin(), normal.codes.begin() + normal.count,
                     cluster.codes.begin(), cluster.codes.begin() + cluster.count);
}

bool CoversAll(const FcCharSet* characters, const Cluster& cluster) {
  const auto covers = [characters](char32_t code) {
    return IsInvisible(code) || FcCharSetHasChar(characters, code) ||
           (IsSpace(code) && FcCharSetHasChar(characters, ' '));
  };
  return std::all_of(cluster.codes.begin(), cluster.codes.begin() + cluster.count, covers);
}

/// The forms of a cluster that look the same.
struct Wanted {
  std::array<Cluster, 3> forms;
  std::size_t count = 1;

  explicit Wanted(const Cluster& cluster) {
    forms[0] = cluster;
    for (const bool composes : {true, false}) {
      if (Normalize(cluster, composes, forms[count])) ++count;
    }
  }
};

/// A face, and which characters it has.
struct Font {
  const FontEntry* entry;
  const FcCharSet* characters;

  [[nodiscard]] bool Covers(const Wanted& wanted) const {
    return std::any_of(wanted.forms.begin(), wanted.forms.begin() + wanted.count,
                       [this](const Cluster& form) { return CoversAll(characters, form); });
  }
};

/// The fonts that come before others: that of the text, and the other one that was used last, null
/// for none.
struct Preferred {
  const Font* own;
  const Font* other;
};

/// Where a cluster stands.
struct Place {
  std::size_t first;
  std::size_t length;
};

/// All fonts, those that fontconfig prefers first; null if it can't tell.
FcFontSet* SortFonts(FcConfig* configuration) {
  FcPattern* const pattern = FcPatternCreate();
  if (!pattern) return nullptr;
  FcConfigSubstitute(configuration, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcFontSet* const fonts = FcFontSort(configuration, pattern, FcFalse, nullptr, &result);
  FcPatternDestroy(pattern);
  return fonts;
}

/// The face that a name alone stands for: of those nearest to normal weight the first.
std::map<std::string, const FontEntry*> FindPlainFaces(const std::vector<FontEntry>& entries) {
  const auto distance = [](const FontEntry& entry) {
    return std::abs(entry.record.otmTextMetrics.tmWeight - 400) / 100;
  };
  std::map<std::string, const FontEntry*> faces;
  for (const FontEntry& entry : entries) {
    const FontEntry*& face = faces[entry.familyName];
    if (!face || distance(entry) < distance(*face)) face = &entry;
  }
  return faces;
}

}  // namespace

struct FontFallback::State {
  using Page = std::array<std::uint16_t, 256>;

  FcFontSet* sorted = nullptr;  ///< Owns the sets of characters.
  std::vector<Font> fonts;      ///< Those to choose from, the best first.
  std::map<std::string, const Font*> fontsByName;
  /// The place of the first font that has a character, or their number, by the character's upper
  /// bits and its lower 8.
  std::vector<std::unique_ptr<Page>> pages{0x1100};
  /// The same for clusters of several characters.
  std::unordered_map<std::u32string, std::size_t> clusters;

  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (sorted) FcFontSetDestroy(sorted);
  }

  [[nodiscard]] std::size_t FirstWith(char32_t code) {
    auto& page = pages[code >> 8];
    if (!page) {
      page = std::make_unique<Page>();
      page->fill(kNotAsked);
    }
    std::uint16_t& answer = (*page)[code & 0xFF];
    if (answer == kNotAsked) {
      const auto found = std::find_if(fonts.begin(), fonts.end(), [code](const Font& font) {
        return FcCharSetHasChar(font.characters, code);
      });
      answer = static_cast<std::uint16_t>(found - fonts.begin());
    }
    return answer;
  }

  [[nodiscard]] std::size_t FirstWithAll(const Wanted& wanted) {
    const Cluster& cluster = wanted.forms[0];
    if (clusters.size() == kMostClusters) clusters.clear();
    const auto [entry, isNew] =
        clusters.try_emplace(std::u32string(cluster.codes.data(), cluster.count), fonts.size());
    if (!isNew) return entry->second;
    // A space or a control says nothing of the faces that have what follows.
    const bool isOpen = IsSpace(cluster.codes[0]) || IsInvisible(cluster.codes[0]);
    for (std::size_t i = 0; i < wanted.count; ++i) {
      const std::size_t first = isOpen ? 0 : FirstWith(wanted.forms[i].codes[0]);
      entry->second = std::min(entry->second, first);
    }
    const auto covers = [&wanted](const Font& font) { return font.Covers(wanted); };
    const auto start = fonts.begin() + static_cast<std::ptrdiff_t>(entry->second);
    const auto found = std::find_if(start, fonts.end(), covers);
    return entry->second = static_cast<std::size_t>(found - fonts.begin());
  }

  /// The font that has all of a cluster; null if none has.
  [[nodiscard]] const Font* FindAll(const Cluster& cluster, const Preferred& preferred) {
    if (CoversAll(preferred.own->characters, cluster)) return preferred.own;
    const Wanted wanted(cluster);
    for (const Font* const font : {preferred.own, preferred.other}) {
      if (font && font->Covers(wanted)) return font;
    }
    const bool isPlain = cluster.count == 1 && wanted.count == 1;
    const std::size_t first = isPlain ? FirstWith(cluster.codes[0]) : FirstWithAll(wanted);
    return first < fonts.size() ? &fonts[first] : nullptr;
  }

  /// The font for a cluster; null if there is none.
  [[nodiscard]] const Font* Choose(const Cluster& cluster, const Preferred& preferred) {
    const Font* const font = FindAll(cluster, preferred);
    if (font || cluster.count == 1) return font;
    // Better the letter without its marks than neither.
    Cluster letter = cluster;
    letter.count = 1;
    return FindAll(letter, preferred);
  }

  /// The clusters of a text, without merged ones that no font has.
  [[nodiscard]] std::vector<Place> FindClusters(std::wstring_view text, const Font* own) {
    std::vector<Place> places;
    for (std::size_t position = 0; position < text.size();) {
      Cluster cluster = ReadCluster(text, position);
      if (cluster.isMerged && !FindAll(cluster, {own, nullptr})) {
        cluster = ReadCluster(text, position, true);
      }
      places.push_back({position, cluster.length});
      position += cluster.length;
    }
    return places;
  }
};

FontFallback::FontFallback(std::unique_ptr<State> state) : state_(std::move(state)) {}

FontFallback::~FontFallback() = default;

FontFallback* FontFallback::Instance() {
  static const std::unique_ptr<FontFallback> instance = [] {
    const FontCatalog& catalog = FontCatalog::Instance();
    auto state = std::make_unique<State>();
    if (catalog.Configuration()) state->sorted = SortFonts(catalog.Configuration());
    std::map<std::pair<std::string, unsigned int>, const FontEntry*> entriesByPlace;
    for (const auto& [name, entry] : FindPlainFaces(catalog.Fonts())) {
      entriesByPlace[{entry->file, entry->index}] = entry;
    }
    for (int i = 0; state->sorted && i < state->sorted->nfont; ++i) {
      FcPattern* const pattern = state->sorted->fonts[i];
      FcChar8* file = nullptr;
      int index = 0;
      FcCharSet* characters = nullptr;
      if (FcPatternGetString(pattern, FC_FILE, 0, &file) != FcResultMatch ||
          FcPatternGetInteger(pattern, FC_INDEX, 0, &index) != FcResultMatch ||
          FcPatternGetCharSet(pattern, FC_CHARSET, 0, &characters) != FcResultMatch) {
        continue;
      }
      const auto found = entriesByPlace.find(
          {reinterpret_cast<const char*>(file), static_cast<unsigned int>(index)});
      if (found == entriesByPlace.end() || state->fonts.size() == kNotAsked - 1) continue;
      state->fonts.push_back({found->second, characters});
      entriesByPlace.erase(found);
    }
    for (const Font& font : state->fonts) state->fontsByName[font.entry->familyName] = &font;
    if (state->fonts.empty()) return std::unique_ptr<FontFallback>();
    return std::unique_ptr<FontFallback>(new FontFallback(std::move(state)));
  }();
  return instance.get();
}

std::vector<FontStretch> FontFallback::Cut(std::wstring_view text, const FontEntry& own,
                                           bool isReversed) {
  const auto found = state_->fontsByName.find(own.familyName);
  if (found == state_->fontsByName.end()) return {{0, text.size(), &own}};
  Preferred preferred{found->second, nullptr};
  std::vector<Place> places = state_->FindClusters(text, preferred.own);
  if (isReversed) std::reverse(places.begin(), places.end());
  const auto read = [text](const Place& place) {
    return ReadCluster(text.substr(0, place.first + place.length), place.first);
  };

  // What leads goes with what it leads to.
  const Font* current = preferred.own;
  for (const Place& place : places) {
    const Cluster cluster = read(place);
    if (cluster.IsNeutral()) continue;
    current = state_->Choose(cluster, preferred);
    break;
  }
  std::vector<FontStretch> stretches;
  std::size_t position = 0;
  for (const Place& place : places) {
    const Cluster cluster = read(place);
    const bool stays = cluster.IsNeutral() && (!current || CoversAll(current->characters, cluster));
    if (!stays) current = state_->Choose(cluster, preferred);
    if (current && current != preferred.own) preferred.other = current;
    const FontEntry* const font = current ? current->entry : nullptr;
    if (stretches.empty() || stretches.back().font != font)
      stretches.push_back({position, 0, font});
    stretches.back().length += place.length;
    position += place.length;
  }
  return stretches;
}

}  // namespace vlm::platform
