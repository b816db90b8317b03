#pragma once

/// \file
/// OpenType files taken apart, changed and put together again, for tests of what reads them.
///
///     using vlm::testing::FontFile;
///     FontFile font = FontFile::Read("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
///     font.Put16("head", 18, 0);  // an em square of 0 units
///     std::ofstream(path) << font.Bytes();

#include <cstddef>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vlm::testing {

/// The tables of a face. A value.
class FontFile {
 public:
  /// Takes a file of one face apart; without tables if it can't be read.
  [[nodiscard]] static FontFile Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    FontFile font;
    const std::size_t count = bytes.empty() ? 0 : Get(bytes, 4, 2);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t row = 12 + 16 * i;
      font.tables[bytes.substr(row, 4)] =
          bytes.substr(Get(bytes, row + 8, 4), Get(bytes, row + 12, 4));
    }
    return font;
  }

  /// The number of two bytes at a place in a table.
  [[nodiscard]] int S16(const std::string& tag, std::size_t place) const {
    return static_cast<short>(Get(tables.at(tag), place, 2));
  }
  /// Puts another number there.
  void Put16(const std::string& tag, std::size_t place, unsigned int value) {
    tables.at(tag).replace(place, 2, Number(value, 2));
  }
  /// Makes all bytes of a table 0.
  void Zero(const std::string& tag) { tables.at(tag).assign(tables.at(tag).size(), '\0'); }
  /// Puts another name of the same length everywhere.
  void Rename(const std::string& from, const std::string& to) {
    Replace(from, to);
    Replace(Wide(from), Wide(to));
  }

  /// Makes `name` its only names, of family and of all: regular, in English, for Windows.
  void SetNames(const std::string& name) {
    const std::string wide = Wide(name);
    const std::string style = Wide("Regular");
    std::string rows;
    std::string text;
    for (const auto& [id, bytes] : {std::pair{1, wide}, std::pair{2, style}, std::pair{4, wide}}) {
      rows += Number(3, 2) + Number(1, 2) + Number(0x409, 2) + Number(std::size_t(id), 2) +
              Number(bytes.size(), 2) + Number(text.size(), 2);
      text += bytes;
    }
    tables["name"] = Number(0, 2) + Number(3, 2) + Number(6 + rows.size(), 2) + rows + text;
  }

  /// The file; or what stands at `base` in a larger one.
  [[nodiscard]] std::string Bytes(std::size_t base = 0) const {
    std::string head = Number(0x00010000, 4) + Number(tables.size(), 2) + std::string(6, '\0');
    std::string body;
    const std::size_t begin = base + 12 + 16 * tables.size();
    for (const auto& [tag, bytes] : tables) {
      head += tag + Number(0, 4) + Number(begin + body.size(), 4) + Number(bytes.size(), 4);
      body += bytes;
      body.resize((body.size() + 3) / 4 * 4);
    }
    return head + body;
  }

  /// The file in the wrapping of the web (WOFF), nothing compressed.
  [[nodiscard]] std::string Woff() const {
    const std::string sfnt = Bytes();
    std::string rows;
    std::string body;
    const std::size_t begin = 44 + 20 * tables.size();
    for (const auto& [tag, bytes] : tables) {
      const std::string size = Number(bytes.size(), 4);
      rows += tag + Number(begin + body.size(), 4) + size + size + Number(0, 4);
      body += bytes;
      body.resize((body.size() + 3) / 4 * 4);
    }
    return "wOFF" + Number(0x00010000, 4) + Number(begin + body.size(), 4) +
           Number(tables.size(), 2) + Number(0, 2) + Number(sfnt.size(), 4) +
           Number(0x00010000, 4) + std::string(20, '\0') + rows + body;
  }

  /// A file of several faces.
  [[nodiscard]] static std::string Collection(const std::vector<FontFile>& fonts) {
    std::string head = "ttcf" + Number(0x00010000, 4) + Number(fonts.size(), 4);
    std::string body;
    const std::size_t begin = head.size() + 4 * fonts.size();
    for (const FontFile& font : fonts) {
      head += Number(begin + body.size(), 4);
      body += font.Bytes(begin + body.size());
    }
    return head + body;
  }

  /// A named instance of a variable font.
  struct Instance {
    unsigned int weight;
    unsigned int width;  ///< in percent
  };
  /// Makes it a variable font with the given instances, named by the first names of the font. Its
  /// axis of weight from 100 to 900 changes no glyph; that of width from 50 to 100 makes the cells
  /// of all up to 400 units narrower.
  void MakeVariable(const std::vector<Instance>& instances) {
    const auto fixed = [](unsigned int value) { return Number(std::size_t{value} << 16, 4); };
    const auto count = static_cast<unsigned int>(instances.size());
    std::string fvar = Numbers({1, 0, 16, 2, 2, 20, count, 12});
    fvar += "wght" + fixed(100) + fixed(400) + fixed(900) + Numbers({0, 2});
    fvar += "wdth" + fixed(50) + fixed(100) + fixed(100) + Numbers({0, 2});
    unsigned int name = 1;
    for (const Instance& instance : instances) {
      fvar += Numbers({name++, 0}) + fixed(instance.weight) + fixed(instance.width);
    }
    tables["fvar"] = fvar;
    const auto glyphs = static_cast<std::size_t>(S16("maxp", 4));
    tables["gvar"] = Numbers({1, 0, 2, 0}) + Number(20 + 2 * (glyphs + 1), 4) + Number(glyphs, 2) +
                     Number(0, 2) + Number(20 + 2 * (glyphs + 1), 4) +
                     std::string(2 * (glyphs + 1), '\0');
    const unsigned int narrowest = 0xC000;  // -1
    const std::string region = Numbers({2, 1, 0, 0, 0, narrowest, narrowest, 0});
    const std::string change = Numbers({1, 1, 1, 0, 0x10000 - 400});
    const std::string store = Numbers({1}) + Number(12, 4) + Numbers({1}) +
                              Number(12 + region.size(), 4) + region + change;
    const std::string map = Numbers({0, 1}) + std::string(1, '\0');  // all glyphs share the change
    tables["HVAR"] =
        Numbers({1, 0}) + Number(20, 4) + Number(20 + store.size(), 4) + Number(0, 8) + store + map;
  }

  /// Makes it a font of symbols: the characters from U+F021 to U+F07E are the glyphs from 100 on.
  void MakeSymbols() {
    constexpr unsigned int kFirst = 0xF021, kLast = 0xF07E, kEnd = 0xFFFF;
    const unsigned int toGlyph = 100 + 0x10000 - kFirst;
    // One map, at 12, of the fourth format: the ends and beginnings of two stretches, and what is
    // added to a character of each.
    tables["cmap"] = Numbers({0, 1, 3, 0, 0, 12}) + Numbers({4, 32, 0, 4, 4, 1, 0}) +
                     Numbers({kLast, kEnd, 0, kFirst, kEnd}) + Numbers({toGlyph, 1, 0, 0});
  }

  std::map<std::string, std::string> tables;  ///< The bytes of each table, by its tag.

 private:
  static std::size_t Get(const std::string& bytes, std::size_t place, std::size_t width) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
      value = value << 8 | static_cast<unsigned char>(bytes.at(place + i));
    }
    return value;
  }
  static std::string Number(std::size_t value, std::size_t width) {
    std::string bytes(width, '\0');
    for (std::size_t i = width; i-- > 0; value >>= 8) bytes[i] = static_cast<char>(value & 0xFF);
    return bytes;
  }
  /// Numbers of two bytes.
  static std::string Numbers(std::initializer_list<unsigned int> values) {
    std::string bytes;
    for (const unsigned int value : values) bytes += Number(value & 0xFFFF, 2);
    return bytes;
  }
  static std::string Wide(const std::string& text) {
    std::string wide;
    for (const char c : text) wide += {'\0', c};
    return wide;
  }
  void Replace(const std::string& from, const std::string& to) {
    std::string& names = tables.at("name");
    for (std::size_t at = 0; (at = names.find(from, at)) != std::string::npos; at += to.size()) {
      names.replace(at, from.size(), to);
    }
  }
};

/// Writes a configuration of fontconfig for which the fonts of one folder are all there are, and
/// gives its path.
inline std::string WriteFontConfiguration(const std::string& folder, const std::string& fonts) {
  const std::string path = folder + "/fonts.conf";
  std::ofstream(path) << "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                      << "<fontconfig><dir>" << fonts << "</dir><cachedir>" << folder
                      << "/cache</cachedir></fontconfig>";
  return path;
}

}  // namespace vlm::testing
