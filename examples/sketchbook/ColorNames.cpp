#include <examples/sketchbook/ColorNames.h>

#include <velum/core/StringText.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace vlm::sketchbook {
namespace {

struct NamedColor {
  std::string_view name;  // in small letters
  const Color4b* color;
};

// In the order of the names.
constexpr NamedColor kColors[] = {
    {"aliceblue", &Color4b::AliceBlue},
    {"antiquewhite", &Color4b::AntiqueWhite},
    {"aqua", &Color4b::Aqua},
    {"aquamarine", &Color4b::Aquamarine},
    {"azure", &Color4b::Azure},
    {"beige", &Color4b::Beige},
    {"bisque", &Color4b::Bisque},
    {"black", &Color4b::Black},
    {"blanchedalmond", &Color4b::BlanchedAlmond},
    {"blue", &Color4b::Blue},
    {"blueviolet", &Color4b::BlueViolet},
    {"brown", &Color4b::Brown},
    {"burlywood", &Color4b::BurlyWood},
    {"cadetblue", &Color4b::CadetBlue},
    {"chartreuse", &Color4b::Chartreuse},
    {"chocolate", &Color4b::Chocolate},
    {"coral", &Color4b::Coral},
    {"cornflowerblue", &Color4b::CornflowerBlue},
    {"cornsilk", &Color4b::Cornsilk},
    {"crimson", &Color4b::Crimson},
    {"cyan", &Color4b::Cyan},
    {"darkblue", &Color4b::DarkBlue},
    {"darkcyan", &Color4b::DarkCyan},
    {"darkgoldenrod", &Color4b::DarkGoldenrod},
    {"darkgray", &Color4b::DarkGray},
    {"darkgreen", &Color4b::DarkGreen},
    {"darkkhaki", &Color4b::DarkKhaki},
    {"darkmagenta", &Color4b::DarkMagenta},
    {"darkolivegreen", &Color4b::DarkOliveGreen},
    {"darkorange", &Color4b::DarkOrange},
    {"darkorchid", &Color4b::DarkOrchid},
    {"darkred", &Color4b::DarkRed},
    {"darksalmon", &Color4b::DarkSalmon},
    {"darkseagreen", &Color4b::DarkSeaGreen},
    {"darkslateblue", &Color4b::DarkSlateBlue},
    {"darkslategray", &Color4b::DarkSlateGray},
    {"darkturquoise", &Color4b::DarkTurquoise},
    {"darkviolet", &Color4b::DarkViolet},
    {"deeppink", &Color4b::DeepPink},
    {"deepskyblue", &Color4b::DeepSkyBlue},
    {"dimgray", &Color4b::DimGray},
    {"dkgray", &Color4b::Dkgray},
    {"dodgerblue", &Color4b::DodgerBlue},
    {"firebrick", &Color4b::Firebrick},
    {"floralwhite", &Color4b::FloralWhite},
    {"forestgreen", &Color4b::ForestGreen},
    {"fuchsia", &Color4b::Fuchsia},
    {"gainsboro", &Color4b::Gainsboro},
    {"ghostwhite", &Color4b::GhostWhite},
    {"gold", &Color4b::Gold},
    {"goldenrod", &Color4b::Goldenrod},
    {"gray", &Color4b::Gray},
    {"green", &Color4b::Green},
    {"greenyellow", &Color4b::GreenYellow},
    {"honeydew", &Color4b::Honeydew},
    {"hotpink", &Color4b::HotPink},
    {"indianred", &Color4b::IndianRed},
    {"indigo", &Color4b::Indigo},
    {"ivory", &Color4b::Ivory},
    {"khaki", &Color4b::Khaki},
    {"lavender", &Color4b::Lavender},
    {"lavenderblush", &Color4b::LavenderBlush},
    {"lawngreen", &Color4b::LawnGreen},
    {"lemonchiffon", &Color4b::LemonChiffon},
    {"lightblue", &Color4b::LightBlue},
    {"lightcoral", &Color4b::LightCoral},
    {"lightcyan", &Color4b::LightCyan},
    {"lightgoldenrodyellow", &Color4b::LightGoldenrodYellow},
    {"lightgray", &Color4b::LightGray},
    {"lightgreen", &Color4b::LightGreen},
    {"lightpink", &Color4b::LightPink},
    {"lightsalmon", &Color4b::LightSalmon},
    {"lightseagreen", &Color4b::LightSeaGreen},
    {"lightskyblue", &Color4b::LightSkyBlue},
    {"lightslategray", &Color4b::LightSlateGray},
    {"lightsteelblue", &Color4b::LightSteelBlue},
    {"lightyellow", &Color4b::LightYellow},
    {"lime", &Color4b::Lime},
    {"limegreen", &Color4b::LimeGreen},
    {"linen", &Color4b::Linen},
    {"ltgray", &Color4b::Ltgray},
    {"magenta", &Color4b::Magenta},
    {"maroon", &Color4b::Maroon},
    {"mediumaquamarine", &Color4b::MediumAquamarine},
    {"mediumblue", &Color4b::MediumBlue},
    {"mediumorchid", &Color4b::MediumOrchid},
    {"mediumpurple", &Color4b::MediumPurple},
    {"mediumseagreen", &Color4b::MediumSeaGreen},
    {"mediumslateblue", &Color4b::MediumSlateBlue},
    {"mediumspringgreen", &Color4b::MediumSpringGreen},
    {"mediumturquoise", &Color4b::MediumTurquoise},
    {"mediumvioletred", &Color4b::MediumVioletRed},
    {"midnightblue", &Color4b::MidnightBlue},
    {"mintcream", &Color4b::MintCream},
    {"mistyrose", &Color4b::MistyRose},
    {"moccasin", &Color4b::Moccasin},
    {"navajowhite", &Color4b::NavajoWhite},
    {"navy", &Color4b::Navy},
    {"oldlace", &Color4b::OldLace},
    {"olive", &Color4b::Olive},
    {"olivedrab", &Color4b::OliveDrab},
    {"orange", &Color4b::Orange},
    {"orangered", &Color4b::OrangeRed},
    {"orchid", &Color4b::Orchid},
    {"palegoldenrod", &Color4b::PaleGoldenrod},
    {"palegreen", &Color4b::PaleGreen},
    {"paleturquoise", &Color4b::PaleTurquoise},
    {"palevioletred", &Color4b::PaleVioletRed},
    {"papayawhip", &Color4b::PapayaWhip},
    {"peachpuff", &Color4b::PeachPuff},
    {"peru", &Color4b::Peru},
    {"pink", &Color4b::Pink},
    {"plum", &Color4b::Plum},
    {"powderblue", &Color4b::PowderBlue},
    {"purple", &Color4b::Purple},
    {"red", &Color4b::Red},
    {"rosybrown", &Color4b::RosyBrown},
    {"royalblue", &Color4b::RoyalBlue},
    {"saddlebrown", &Color4b::SaddleBrown},
    {"salmon", &Color4b::Salmon},
    {"sandybrown", &Color4b::SandyBrown},
    {"seagreen", &Color4b::SeaGreen},
    {"seashell", &Color4b::SeaShell},
    {"sienna", &Color4b::Sienna},
    {"silver", &Color4b::Silver},
    {"skyblue", &Color4b::SkyBlue},
    {"slateblue", &Color4b::SlateBlue},
    {"slategray", &Color4b::SlateGray},
    {"snow", &Color4b::Snow},
    {"springgreen", &Color4b::SpringGreen},
    {"steelblue", &Color4b::SteelBlue},
    {"tan", &Color4b::Tan},
    {"teal", &Color4b::Teal},
    {"thistle", &Color4b::Thistle},
    {"tomato", &Color4b::Tomato},
    {"transparentwhite", &Color4b::TransparentWhite},
    {"turquoise", &Color4b::Turquoise},
    {"violet", &Color4b::Violet},
    {"wheat", &Color4b::Wheat},
    {"white", &Color4b::White},
    {"whitesmoke", &Color4b::WhiteSmoke},
    {"yellow", &Color4b::Yellow},
    {"yellowgreen", &Color4b::YellowGreen},
};

std::optional<Color4b> ReadDigits(std::string_view digits) {
  std::uint32_t word = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), word, 16);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  if (digits.size() == 6) word = word << 8 | ALPHA_MAX;
  Color4b color;
  color.SetRGBA(word);
  return color;
}

}  // namespace

std::optional<Color4b> ReadColor(const GString& text) {
  const std::string name = ToLower(text);
  if (name == "none") return Color4b::TransparentWhite;
  if (name.starts_with('#') && (name.size() == 7 || name.size() == 9)) {
    return ReadDigits(std::string_view(name).substr(1));
  }
  const auto* const found =
      std::lower_bound(std::begin(kColors), std::end(kColors), name,
                       [](const NamedColor& candidate, const std::string& wanted) {
                         return candidate.name < wanted;
                       });
  if (found == std::end(kColors) || found->name != name) return std::nullopt;
  return *found->color;
}

}  // namespace vlm::sketchbook
