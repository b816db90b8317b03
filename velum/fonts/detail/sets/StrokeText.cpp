#include <velum/fonts/detail/sets/StrokeText.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace vlm::sets {

std::vector<Polyline> ReadStrokes(std::istream& text) {
  std::vector<Polyline> lines(1);
  Point point;
  char comma = 0;
  while (text >> point.x >> comma >> point.y) {
    if (comma != ',') throw Failure("a point is written x,y");
    lines.back().push_back(point);
    if (text.peek() == ';') {
      text.get();
      lines.emplace_back();
    }
  }
  if (!text.eof() || lines.back().empty()) throw Failure("strokes end in something else");
  return lines;
}

Face ReadMarkers(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Failure("cannot read " + path);
  Face face;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream words(line);
    unsigned int code = 0;
    Glyph glyph;
    if (!(words >> code >> glyph.left >> glyph.right) || code > 255) {
      throw Failure(path + ": not a marker: " + line);
    }
    glyph.lines = ReadStrokes(words);
    face[static_cast<unsigned char>(code)] = std::move(glyph);
  }
  return face;
}

}  // namespace vlm::sets
