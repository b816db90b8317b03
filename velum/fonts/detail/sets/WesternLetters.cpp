#include <velum/fonts/detail/sets/WesternLetters.h>

#include <velum/fonts/detail/sets/StrokeText.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vlm::sets {

namespace {

constexpr int kSmallHeight = 14;
constexpr int kGap = 2;

struct Extent {
  Point low{std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
  Point high{std::numeric_limits<int>::min(), std::numeric_limits<int>::min()};
};

Extent ExtentOf(const std::vector<Polyline>& lines) {
  Extent extent;
  for (const Polyline& line : lines) {
    for (const auto [x, y] : line) {
      extent.low = {std::min(extent.low.x, x), std::min(extent.low.y, y)};
      extent.high = {std::max(extent.high.x, x), std::max(extent.high.y, y)};
    }
  }
  return extent;
}

void AddMoved(const std::vector<Polyline>& lines, Point by, Glyph& glyph) {
  for (Polyline line : lines) {
    for (Point& point : line) point = {point.x + by.x, point.y + by.y};
    glyph.lines.push_back(std::move(line));
  }
}

/// Takes the dot from an i.
void RemoveDot(Glyph& glyph) {
  std::erase_if(glyph.lines,
                [](const Polyline& line) { return ExtentOf({line}).low.y > kSmallHeight; });
}

Glyph Above(Glyph glyph, char letter, const std::vector<Polyline>& mark) {
  if (letter == 'i') RemoveDot(glyph);
  const Extent extent = ExtentOf(glyph.lines);
  AddMoved(mark, {(extent.low.x + extent.high.x) / 2, extent.high.y + kGap}, glyph);
  return glyph;
}

Glyph Below(Glyph glyph, const std::vector<Polyline>& mark) {
  const Extent extent = ExtentOf(glyph.lines);
  AddMoved(mark, {(extent.low.x + extent.high.x) / 2, extent.low.y}, glyph);
  return glyph;
}

Glyph Through(Glyph glyph) {
  const auto [low, high] = ExtentOf(glyph.lines);
  glyph.lines.push_back({{low.x, low.y - 1}, {high.x, high.y + 1}});
  return glyph;
}

/// Turns a sign by half a circle; it then hangs below the height of small letters.
Glyph Turned(Glyph glyph) {
  for (Polyline& line : glyph.lines) {
    for (Point& point : line) point = {-point.x, kSmallHeight - point.y};
  }
  std::swap(glyph.left, glyph.right);
  glyph.left = -glyph.left;
  glyph.right = -glyph.right;
  return glyph;
}

/// A mark in a cell of its own.
Glyph Alone(const std::vector<Polyline>& mark, int height) {
  const auto [low, high] = ExtentOf(mark);
  Glyph glyph{low.x - kGap, high.x + kGap, {}};
  AddMoved(mark, {0, height}, glyph);
  return glyph;
}

/// Adds a letter of another size, its middle and its baseline at a place.
void AddScaled(std::vector<Polyline> letter, double scale, Point place, Glyph& glyph) {
  for (Polyline& line : letter) {
    for (Point& point : line) {
      point = {static_cast<int>(std::lround(point.x * scale)),
               static_cast<int>(std::lround(point.y * scale))};
    }
  }
  const auto [low, high] = ExtentOf(letter);
  AddMoved(letter, {place.x - (low.x + high.x) / 2, place.y}, glyph);
}

template <class... Value>
void ReadValues(std::istream& words, Value&... values) {
  if (!(words >> ... >> values)) throw Failure("something is missing");
}

/// The strokes behind the colon that comes next.
std::vector<Polyline> StrokesBehindColon(std::istream& words) {
  char colon = 0;
  if (!(words >> colon) || colon != ':') throw Failure("a colon stands before strokes");
  return ReadStrokes(words);
}

class Table {
 public:
  explicit Table(Face& face) : face_(face) {}

  void Read(std::istream& words) {
    std::string kind;
    words >> kind;
    if (kind == "mark") {
      std::string name;
      std::getline(words >> std::ws, name, ':');
      marks_[name] = ReadStrokes(words);
      return;
    }
    unsigned int code = 0;
    if (!(words >> code) || code < 128 || code > 255) throw Failure("a code is 128 to 255");
    Glyph& glyph = face_[static_cast<unsigned char>(code)];
    if (kind == "strokes" || kind == "cell") {
      ReadValues(words, glyph.left, glyph.right);
      if (kind == "strokes") glyph.lines = StrokesBehindColon(words);
    } else if (kind == "copy") {
      unsigned int other = 0;
      ReadValues(words, other);
      glyph = face_.at(static_cast<unsigned char>(other));
    } else if (kind == "alone") {
      std::string mark;
      int height = 0;
      ReadValues(words, mark, height);
      glyph = Alone(marks_.at(mark), height);
    } else {
      ReadLetter(kind, words, glyph);
    }
  }

 private:
  /// Reads what is made from a letter of the face.
  void ReadLetter(const std::string& kind, std::istream& words, Glyph& glyph) {
    char letter = 0;
    ReadValues(words, letter);
    const Glyph& base = face_.at(static_cast<unsigned char>(letter));
    if (kind == "over") {
      const auto [low, high] = ExtentOf(base.lines);
      glyph = base;
      AddMoved(StrokesBehindColon(words), {(low.x + high.x) / 2, 0}, glyph);
      return;
    }
    if (kind == "add") {
      int percent = 0;
      Point place;
      ReadValues(words, percent, place.x, place.y);
      AddScaled(base.lines, percent / 100.0, place, glyph);
      return;
    }
    std::string mark;
    if (kind == "above" || kind == "below") ReadValues(words, mark);
    if (kind == "above") {
      glyph = Above(base, letter, marks_.at(mark));
    } else if (kind == "below") {
      glyph = Below(base, marks_.at(mark));
    } else if (kind == "through") {
      glyph = Through(base);
    } else if (kind == "turned") {
      glyph = Turned(base);
    } else {
      throw Failure("what is '" + kind + "'?");
    }
  }

  Face& face_;
  std::map<std::string, std::vector<Polyline>> marks_;
};

}  // namespace

void AddWesternLetters(const std::string& path, Face& face) {
  std::ifstream file(path);
  if (!file) throw Failure("cannot read " + path);
  Table table(face);
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream words(line);
    try {
      table.Read(words);
    } catch (const std::exception& error) {
      throw Failure(path + ": " + line + ": " + error.what());
    }
  }
}

}  // namespace vlm::sets
