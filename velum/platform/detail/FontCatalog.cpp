#include <velum/platform/detail/FontCatalog.h>

#include <velum/platform/detail/Ascii.h>
#include <velum/platform/detail/FileSystem.h>
#include <velum/platform/detail/Folders.h>
#include <velum/platform/detail/FontTables.h>
#include <velum/platform/detail/OutlineFont.h>

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <tuple>
#include <utility>

namespace vlm::platform {

namespace {

constexpr std::size_t kFaceNameBytes = sizeof(LOGFONTA::lfFaceName) - 1;

/// True if a name stands before another one, in any case of ASCII letters.
bool NameLess(std::string_view a, std::string_view b) noexcept {
  const auto folded = [](char c) { return static_cast<unsigned char>(FoldAscii(c)); };
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [&](char x, char y) { return folded(x) < folded(y); });
}

int Integer(const FcPattern* pattern, const char* object, int otherwise) {
  int value = 0;
  return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : otherwise;
}

bool Bool(const FcPattern* pattern, const char* object) {
  FcBool value = FcFalse;
  return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch && value == FcTrue;
}

/// A name of the pattern: the last English one, or the first if none is English. A family's last is
/// that of up to four styles; the ones before it hold all styles.
std::string Name(const FcPattern* pattern, const char* object, const char* languages) {
  std::string name;
  FcChar8* text = nullptr;
  for (int i = 0; FcPatternGetString(pattern, object, i, &text) == FcResultMatch; ++i) {
    FcChar8* language = nullptr;
    const bool isEnglish = FcPatternGetString(pattern, languages, i, &language) == FcResultMatch &&
                           std::strncmp(reinterpret_cast<const char*>(language), "en", 2) == 0;
    if (i == 0 || isEnglish) name = reinterpret_cast<const char*>(text);
  }
  return name;
}

/// What fontconfig found out about a weight, on the scale of records.
int Weight(const FcPattern* pattern) {
  double weight = 0;
  if (FcPatternGetDouble(pattern, FC_WEIGHT, 0, &weight) != FcResultMatch) return 400;
  const double converted = FcWeightToOpenTypeDouble(weight);
  return converted > 0 ? static_cast<int>(std::lround(std::min(converted, 1000.0))) : 400;
}

/// The width of a face in percent of a normal one.
double Width(const FcPattern* pattern) {
  double width = 0;
  const bool isKnown = FcPatternGetDouble(pattern, FC_WIDTH, 0, &width) == FcResultMatch;
  return isKnown && width > 0 ? width : 100.0;
}

/// How wide a named instance is beside its variable font, which is listed before it.
double RelativeWidth(const FcFontSet& set, int instance) {
  const auto file = [&](int i) {
    FcChar8* name = nullptr;
    FcPatternGetString(set.fonts[i], FC_FILE, 0, &name);
    return std::string_view(name ? reinterpret_cast<const char*>(name) : "");
  };
  const int index = Integer(set.fonts[instance], FC_INDEX, 0) & 0xFFFF;
  for (int i = instance; i-- > 0;) {
    if (Integer(set.fonts[i], FC_INDEX, 0) == index && file(i) == file(instance) &&
        !Bool(set.fonts[i], FC_VARIABLE)) {
      return Width(set.fonts[instance]) / Width(set.fonts[i]);
    }
  }
  return 1.0;
}

/// Fills the measures of a face; says what is wrong if that can't be done.
std::string Measure(const FcPattern* pattern, FontEntry& font) {
  std::string problem;
  const FontTables tables = ReadFontTables(font.file, font.index, font.record, problem);
  if (tables == FontTables::kDamaged) return problem;
  if (tables == FontTables::kAbsent) {
    const auto outline = OutlineFont::Open(font.file, font.index);
    if (!outline) return "the file can't be read";
    if (!outline->FillRecord(font.record)) return "its measures make no sense";
  }
  // Tables tell of the whole variable font, and other formats tell little.
  if (tables == FontTables::kAbsent || font.index >> 16 != 0) {
    font.record.otmTextMetrics.tmWeight = Weight(pattern);
    font.record.otmTextMetrics.tmItalic = Integer(pattern, FC_SLANT, 0) != 0;
  }
  if (Bool(pattern, FC_SYMBOL)) font.record.otmTextMetrics.tmCharSet = 2;
  return problem;
}

constexpr std::size_t kMostUnlisted = 200;

/// True if a file is named as those of outline fonts are.
bool HasFontSuffix(std::string_view file) {
  const std::size_t dot = file.rfind('.');
  if (dot == std::string_view::npos) return false;
  const std::string_view suffix = file.substr(dot + 1);
  const auto is = [suffix](std::string_view known) {
    return !NameLess(suffix, known) && !NameLess(known, suffix);
  };
  for (const std::string_view known :
       {"ttf", "ttc", "otf", "otc", "pfa", "pfb", "t1", "woff", "woff2"}) {
    if (is(known)) return true;
  }
  return false;
}

/// Says which files of the folders of fonts are left out because nothing can be made of them:
/// fontconfig does not list these. At most `kMostUnlisted` are looked at.
void FindUnreadable(FcConfig* configuration, const FcFontSet& set,
                    std::vector<std::string>& skipped) {
  std::vector<std::string_view> listed;
  for (int i = 0; i < set.nfont; ++i) {
    FcChar8* file = nullptr;
    if (FcPatternGetString(set.fonts[i], FC_FILE, 0, &file) == FcResultMatch) {
      listed.emplace_back(reinterpret_cast<const char*>(file));
    }
  }
  std::sort(listed.begin(), listed.end());
  const std::unique_ptr<FcStrList, decltype(&FcStrListDone)> folders(
      FcConfigGetFontDirs(configuration), &FcStrListDone);
  std::size_t unlisted = 0;
  while (const FcChar8* const folder = folders ? FcStrListNext(folders.get()) : nullptr) {
    const std::string path = reinterpret_cast<const char*>(folder);
    std::vector<std::string> names;
    if (!ListFolder(path, names)) continue;
    for (const std::string& name : names) {
      const std::string file = path + '/' + name;
      if (!HasFontSuffix(file) || std::binary_search(listed.begin(), listed.end(), file)) continue;
      if (++unlisted > kMostUnlisted) return;
      // What can be read is left out by the configuration.
      if (!IsRegularFile(file.c_str()) || OutlineFont::Open(file, 0)) continue;
      skipped.push_back(file + ": it can't be read");
    }
  }
}

double WidthToHeight(const TEXTMETRICA& metrics) {
  return static_cast<double>(metrics.tmAveCharWidth) / metrics.tmHeight;
}

}  // namespace

std::size_t FaceNameBytes(std::string_view name) noexcept {
  if (name.size() <= kFaceNameBytes) return name.size();
  std::size_t bytes = kFaceNameBytes;
  const auto isInside = [&] { return (static_cast<unsigned char>(name[bytes]) & 0xC0) == 0x80; };
  while (bytes > kFaceNameBytes - 3 && isInside()) --bytes;
  return isInside() ? kFaceNameBytes : bytes;  // no UTF-8: bytes are as good as characters
}

const FontCatalog& FontCatalog::Instance() {
  static const FontCatalog catalog;
  return catalog;
}

FontCatalog::FontCatalog() {
  // The configuration that fontconfig shares may be replaced by others in the process.
  const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> configuration(
      FcInitLoadConfigAndFonts(), &FcConfigDestroy);
  if (!configuration) {
    status_ = FontCatalogStatus::kNoConfiguration;
    return;
  }
  const FcFontSet* const set = FcConfigGetFonts(configuration.get(), FcSetSystem);
  if (!set) {
    status_ = FontCatalogStatus::kNoFontSet;
    return;
  }
  for (int i = 0; i < set->nfont; ++i) {
    const FcPattern* const pattern = set->fonts[i];
    FcChar8* file = nullptr;
    if (!Bool(pattern, FC_SCALABLE) || !Bool(pattern, FC_OUTLINE) || Bool(pattern, FC_VARIABLE) ||
        FcPatternGetString(pattern, FC_FILE, 0, &file) != FcResultMatch) {
      continue;
    }
    FontEntry font;
    font.file = reinterpret_cast<const char*>(file);
    font.index = static_cast<unsigned int>(Integer(pattern, FC_INDEX, 0));
    font.familyName = Name(pattern, FC_FAMILY, FC_FAMILYLANG);
    font.faceName = font.familyName.substr(0, FaceNameBytes(font.familyName));
    font.styleName = Name(pattern, FC_STYLE, FC_STYLELANG);
    font.fullName = Name(pattern, FC_FULLNAME, FC_FULLNAMELANG);
    font.width = Width(pattern);
    const std::string problem = font.faceName.empty() ? "it has no name" : Measure(pattern, font);
    if (problem.empty() && font.index >> 16 != 0) {
      std::int32_t& width = font.record.otmTextMetrics.tmAveCharWidth;
      const double scaled = width * RelativeWidth(*set, i);
      width = static_cast<std::int32_t>(std::lround(std::clamp(scaled, 1.0, 32767.0)));
    }
    if (problem.empty()) {
      fonts_.push_back(std::move(font));
    } else {
      skipped_.push_back(font.file + ": " + problem);
    }
  }
  const auto order = [](const FontEntry& font) {
    const TEXTMETRICA& metrics = font.record.otmTextMetrics;
    return std::tuple<const std::string&, const std::string&, int, int, double, const std::string&,
                      unsigned int>(font.faceName, font.familyName, metrics.tmItalic != 0,
                                    metrics.tmWeight, std::abs(font.width - 100), font.file,
                                    font.index);
  };
  std::sort(fonts_.begin(), fonts_.end(), [&](const FontEntry& a, const FontEntry& b) {
    const bool isLess = NameLess(a.faceName, b.faceName);
    return isLess || (!NameLess(b.faceName, a.faceName) && order(a) < order(b));
  });
  FindUnreadable(configuration.get(), *set, skipped_);
  std::sort(skipped_.begin(), skipped_.end());
  configuration_ = FcConfigReference(configuration.get());
}

FontCatalog::~FontCatalog() {
  if (configuration_) FcConfigDestroy(configuration_);
}

const FontEntry* FontCatalog::Find(const LOGFONTA& description,
                                   std::string_view familyName) const noexcept {
  const std::string_view name(description.lfFaceName,
                              ::strnlen(description.lfFaceName, sizeof(description.lfFaceName)));
  const int weight = description.lfWeight == 0 ? 400 : description.lfWeight;
  auto font = std::lower_bound(
      fonts_.begin(), fonts_.end(), name,
      [](const FontEntry& entry, std::string_view text) { return NameLess(entry.faceName, text); });
  const FontEntry* best = nullptr;
  std::tuple<bool, bool, double, double> least;
  for (; font != fonts_.end() && !NameLess(name, font->faceName); ++font) {
    const TEXTMETRICA& metrics = font->record.otmTextMetrics;
    const double width =
        description.lfWidth == 0 || description.lfHeight == 0
            ? 0.0
            : std::abs(static_cast<double>(description.lfWidth) / description.lfHeight -
                       WidthToHeight(metrics));
    const std::tuple<bool, bool, double, double> distance(
        font->familyName != familyName, (metrics.tmItalic != 0) != (description.lfItalic != 0),
        std::abs(static_cast<double>(metrics.tmWeight) - weight), width);
    if (!best || distance < least) {
      best = &*font;
      least = distance;
    }
  }
  return best;
}

}  // namespace vlm::platform
