#include <examples/common/FontFile.h>

#include <velum/core/WideText.h>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace vlm::examples {
namespace {

constexpr unsigned int kWesternCodePage = 1252;
constexpr unsigned int kSymbolArea = 0xF000;

template <class T, void (*destroy)(T*)>
struct Destroyer {
  void operator()(T* object) const { destroy(object); }
};
using PatternPtr = std::unique_ptr<FcPattern, Destroyer<FcPattern, FcPatternDestroy>>;
using ObjectsPtr = std::unique_ptr<FcObjectSet, Destroyer<FcObjectSet, FcObjectSetDestroy>>;
using FontsPtr = std::unique_ptr<FcFontSet, Destroyer<FcFontSet, FcFontSetDestroy>>;

// A family or style in English: its last name, since a family's first may be that of a larger one.
std::string EnglishName(const FcPattern* font, const char* object, const char* languages) {
  std::string name;
  FcChar8* text = nullptr;
  for (int i = 0; FcPatternGetString(font, object, i, &text) == FcResultMatch; ++i) {
    FcChar8* language = nullptr;
    const bool isEnglish = FcPatternGetString(font, languages, i, &language) == FcResultMatch &&
                           std::strncmp(reinterpret_cast<const char*>(language), "en", 2) == 0;
    if (i == 0 || isEnglish) name = reinterpret_cast<const char*>(text);
  }
  return name;
}

FontsPtr ListFamily(const std::string& family) {
  const PatternPtr pattern(FcPatternCreate());
  FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddBool(pattern.get(), FC_OUTLINE, FcTrue);
  const ObjectsPtr objects(FcObjectSetBuild(FC_FAMILY, FC_FAMILYLANG, FC_STYLE, FC_STYLELANG,
                                            FC_FILE, FC_INDEX, FC_WEIGHT, FC_SLANT, FC_VARIABLE,
                                            static_cast<const char*>(nullptr)));
  return FontsPtr(FcFontList(nullptr, pattern.get(), objects.get()));
}

// The name of the style, which stands behind the record; empty in a record without names.
std::string StyleOf(const OUTLINETEXTMETRICA& record) {
  if (record.otmpStyleName == 0) return {};
  return reinterpret_cast<const char*>(&record) + record.otmpStyleName;
}

struct Place {
  std::string path;
  unsigned int index;
};

// Of the files of the family the one of the same style, or else the nearest in slant and weight.
std::optional<Place> FindPlace(const CFaceInfo& face) {
  const std::string family = face.GetFamilyName().String();
  const std::string style = StyleOf(face.GetOTM());
  const TEXTMETRICA& metrics = face.GetOTM().otmTextMetrics;
  std::optional<Place> best;
  std::tuple<bool, bool, double> least;
  const FontsPtr fonts = ListFamily(family);
  for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
    const FcPattern* font = fonts->fonts[i];
    FcChar8* path = nullptr;
    FcBool isVariable = FcFalse;
    int index = 0;
    int slant = 0;
    double weight = FC_WEIGHT_REGULAR;
    FcPatternGetBool(font, FC_VARIABLE, 0, &isVariable);
    if (isVariable == FcTrue || EnglishName(font, FC_FAMILY, FC_FAMILYLANG) != family ||
        FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch ||
        FcPatternGetInteger(font, FC_INDEX, 0, &index) != FcResultMatch) {
      continue;
    }
    FcPatternGetInteger(font, FC_SLANT, 0, &slant);
    FcPatternGetDouble(font, FC_WEIGHT, 0, &weight);
    const std::tuple<bool, bool, double> distance(
        EnglishName(font, FC_STYLE, FC_STYLELANG) != style, (slant != 0) != (metrics.tmItalic != 0),
        std::abs(FcWeightToOpenTypeDouble(weight) - metrics.tmWeight));
    if (best && least <= distance) continue;
    best = Place{reinterpret_cast<const char*>(path), static_cast<unsigned int>(index)};
    least = distance;
  }
  return best;
}

}  // namespace

std::shared_ptr<const FontFile> FontFile::Open(const CFaceInfo& face) {
  const std::optional<Place> place = FindPlace(face);
  if (!place) {
    throw std::runtime_error("no font file for the face '" + face.GetFaceName().String() + "'");
  }
  return std::shared_ptr<const FontFile>(new FontFile(place->path, place->index));
}

FontFile::FontFile(std::string path, unsigned int index) : path_(std::move(path)), index_(index) {
  if (FT_Init_FreeType(&library_) != 0) throw std::runtime_error("FreeType can't be set up");
  if (FT_New_Face(library_, path_.c_str(), static_cast<FT_Long>(index_), &face_) != 0 ||
      !FT_IS_SCALABLE(face_)) {
    FT_Done_FreeType(library_);
    throw std::runtime_error("cannot read the font file '" + path_ + "'");
  }
  // Fonts whose characters are numbers and no letters have a charmap of their own.
  if (face_->charmap == nullptr) FT_Select_Charmap(face_, FT_ENCODING_MS_SYMBOL);
}

FontFile::~FontFile() { FT_Done_FreeType(library_); }

unsigned int FontFile::GlyphOfCode(unsigned short code) const {
  if (code == 0 || code > CFaceInfo::GMListMax) return FT_Get_Char_Index(face_, code);
  if (face_->charmap != nullptr && face_->charmap->encoding == FT_ENCODING_MS_SYMBOL) {
    const unsigned int glyph = FT_Get_Char_Index(face_, kSymbolArea + code);
    return glyph != 0 ? glyph : FT_Get_Char_Index(face_, code);
  }
  const AtoW character(std::string(1, static_cast<char>(code)), kWesternCodePage);
  return FT_Get_Char_Index(face_, static_cast<FT_ULong>(character[0]));
}

}  // namespace vlm::examples
