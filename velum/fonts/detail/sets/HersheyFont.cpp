#include <velum/fonts/detail/sets/HersheyFont.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

namespace vlm::sets {

namespace {

// The letters stand on the line y = 9, and y goes down; the letter R is 0.
constexpr int kBaseline = 9;
constexpr char kOrigin = 'R';
constexpr std::size_t kHead = 8;

int Coordinate(char c) { return c - kOrigin; }

/// A glyph from the pairs of letters behind its head: its edges, and then points and " R" where the
/// pen is lifted.
Glyph ReadGlyph(const std::string& pairs) {
  Glyph glyph{Coordinate(pairs[0]), Coordinate(pairs[1]), {}};
  Polyline line;
  for (std::size_t i = 2; i + 1 < pairs.size(); i += 2) {
    if (pairs[i] != ' ') {
      line.push_back({Coordinate(pairs[i]), kBaseline - Coordinate(pairs[i + 1])});
    } else if (!line.empty()) {
      glyph.lines.push_back(std::exchange(line, {}));
    }
  }
  if (!line.empty()) glyph.lines.push_back(std::move(line));
  return glyph;
}

}  // namespace

Face ReadHersheyFont(const std::string& path) {
  constexpr unsigned int kFirst = 32, kLast = 127;
  std::ifstream file(path);
  if (!file) throw Failure("cannot read " + path);
  Face face;
  std::string text;
  for (unsigned int code = kFirst; code <= kLast && std::getline(file, text); ++code) {
    if (!text.empty() && text.back() == '\r') text.pop_back();
    const int count = text.size() > kHead ? std::atoi(text.substr(5, 3).c_str()) : 0;
    if (count < 1) throw Failure(path + ": a glyph has no edges");
    const std::size_t length = kHead + 2 * static_cast<std::size_t>(count);
    // A long glyph goes on in the next line.
    for (std::string more; text.size() < length && std::getline(file, more);) {
      if (!more.empty() && more.back() == '\r') more.pop_back();
      text += more;
    }
    if (text.size() < length) throw Failure(path + " ends inside a glyph");
    face[static_cast<unsigned char>(code)] = ReadGlyph(text.substr(kHead, length - kHead));
  }
  return face;
}

}  // namespace vlm::sets
