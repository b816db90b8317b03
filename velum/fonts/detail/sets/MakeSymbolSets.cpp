// Makes the library's symbol sets. The build runs it.

#include <velum/fonts/detail/sets/GlyphShapes.h>
#include <velum/fonts/detail/sets/HersheyFont.h>
#include <velum/fonts/detail/sets/StrokeText.h>
#include <velum/fonts/detail/sets/SymbolSetFile.h>
#include <velum/fonts/detail/sets/WesternLetters.h>

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

namespace {

using namespace vlm::sets;

/// What becomes of a font.
enum class Form { kPlain, kWestern, kWithSymbols, kFixedPitch };

struct Row {
  const char* file;
  const char* font;
  Form form;
};

constexpr Row kTextSets[] = {
    {"KQhelv.sym", "futuram", Form::kWestern},     {"KQroman.sym", "timesr", Form::kWestern},
    {"KQsymbol.sym", "greek", Form::kWithSymbols}, {"set1.sym", "rowmans", Form::kPlain},
    {"set2.sym", "greeks", Form::kPlain},          {"set3.sym", "scripts", Form::kPlain},
    {"set4.sym", "timesr", Form::kPlain},          {"set5.sym", "greekc", Form::kPlain},
    {"set6.sym", "timesi", Form::kPlain},          {"set7.sym", "rowmand", Form::kPlain},
    {"set8.sym", "scriptc", Form::kPlain},         {"set9.sym", "rowmant", Form::kPlain},
    {"set10.sym", "timesrb", Form::kPlain},        {"set11.sym", "timesib", Form::kPlain},
    {"set12.sym", "gothiceng", Form::kPlain},      {"set13.sym", "gothicger", Form::kPlain},
    {"set14.sym", "gothicita", Form::kPlain},      {"set15.sym", "gothgrt", Form::kPlain},
    {"set16.sym", "cursive", Form::kPlain},        {"set1fs.sym", "rowmans", Form::kFixedPitch},
    {"set4fs.sym", "timesr", Form::kFixedPitch},   {"set6fs.sym", "timesi", Form::kFixedPitch},
    {"set10fs.sym", "timesrb", Form::kFixedPitch}, {"set11fs.sym", "timesib", Form::kFixedPitch},
    {"set1int.sym", "rowmans", Form::kWestern},    {"set10int.sym", "timesrb", Form::kWestern},
};

/// Glyphs that a font has wrong, and a font that has them right.
struct Mend {
  const char* font;
  const char* codes;
  const char* from;
};

// Braces with corners, a semicolon for a quotation mark, a J without a width, arrows for carets,
// full stops above the baseline, no glyphs for the letters that the Greek alphabet leaves over.
constexpr Mend kMends[] = {
    {"futuram", "{}", "rowmand"}, {"greekc", "\"", "rowmant"},    {"rowmant", "J", "timesrb"},
    {"rowmans", "^", "greek"},    {"greeks", "^", "greek"},       {"scripts", "^", "greek"},
    {"greekc", "^", "timesr"},    {"rowmand", "^", "futuram"},    {"scriptc", "^", "timesi"},
    {"rowmant", "^", "timesrb"},  {"gothgrt", "^", "gothicger"},  {"timesr", ".,:;", "greekc"},
    {"greek", ".,:;", "greeks"},  {"cursive", ".,:;", "scripts"}, {"greeks", "YZyz", "greek"},
    {"greekc", "YZyz", "timesg"},
};

constexpr int kFixedWidth = 22;
constexpr int kMarkerWidth = 24;
constexpr int kMarkerRadius = 10;

Face ReadFont(const std::string& folder, const std::string& font) {
  Face face = ReadHersheyFont(folder + "/" + font + ".jhf");
  for (const Mend& mend : kMends) {
    if (font != mend.font) continue;
    const Face from = ReadHersheyFont(folder + "/" + mend.from + ".jhf");
    for (const char code : std::string_view(mend.codes)) {
      face[static_cast<unsigned char>(code)] = from.at(static_cast<unsigned char>(code));
    }
  }
  return face;
}

/// Adds signs of maps and of mathematics, those of the codes from 33 on from 161 on, in the height
/// of the letters.
void AddSymbols(const std::string& fonts, Face& face) {
  Face symbols = ReadFont(fonts, "symbolic");
  FitIn(-7, 25, 8, symbols);
  for (unsigned int code = 33; code < 127; ++code) {
    face[static_cast<unsigned char>(code + 128)] = symbols.at(static_cast<unsigned char>(code));
  }
}

void MakeTextSets(const std::string& fonts, const std::string& tables, const std::string& out) {
  for (const auto& [file, font, form] : kTextSets) {
    Face face = ReadFont(fonts, font);
    // What stands for "delete" is no letter.
    face.erase(127);
    if (form == Form::kWestern) AddWesternLetters(tables + "/Western.txt", face);
    if (form == Form::kWithSymbols) AddSymbols(fonts, face);
    if (form == Form::kFixedPitch) MakeFixedPitch(kFixedWidth, face);
    // A text is drawn from the left edges of its letters, and readers keep no edges.
    BeginAtZero(face);
    WriteSymbolSet(face, out + "/" + file);
  }
}

void MakeMarkerSets(const std::string& tables, const std::string& out) {
  Face face = ReadMarkers(tables + "/Markers.txt");
  face[' '] = {-(kMarkerWidth / 2), kMarkerWidth / 2, {}};
  WriteSymbolSet(face, out + "/centered.sym");
  MakeFixedPitch(kMarkerWidth, face);
  // They stand on the baseline and to the right of their place, as letters do.
  BeginAtZero(face);
  MoveUp(kMarkerRadius, face);
  WriteSymbolSet(face, out + "/default.sym");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: velum_symbol_sets FONTS TABLES OUT\n", stderr);
    return 2;
  }
  try {
    MakeTextSets(argv[1], argv[2], argv[3]);
    MakeMarkerSets(argv[2], argv[3]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velum_symbol_sets: %s\n", error.what());
    return 1;
  }
  return 0;
}
