#include <examples/overlay/Outlines.h>

#include <velum/geometry/Vec2.h>
#include <examples/common/Program.h>

#include <charconv>
#include <cmath>
#include <istream>
#include <stdexcept>
#include <string_view>

namespace vlm::overlay {
namespace {

// Lines that say something, one after the other.
class Lines {
 public:
  explicit Lines(std::istream& stream) : stream_(stream) {}

  bool Next(std::string& line) {
    while (std::getline(stream_, line)) {
      ++number_;
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (!line.empty() && line.front() != '#') return true;
    }
    return false;
  }

  [[noreturn]] void Refuse(const std::string& reason) const {
    throw std::runtime_error("line " + std::to_string(number_) + ": " + reason);
  }

 private:
  std::istream& stream_;
  std::size_t number_ = 0;
};

// Reads a number at the head of `text` and takes it off, with the blanks around it.
template <class Number>
bool TakeNumber(std::string_view& text, Number& number) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  while (text.starts_with(' ')) text.remove_prefix(1);
  return true;
}

Vec2d PointOf(std::string_view line, const Lines& lines) {
  Vec2d point;
  if (!TakeNumber(line, point.x) || !TakeNumber(line, point.y) || !line.empty() ||
      !std::isfinite(point.x) || !std::isfinite(point.y)) {
    lines.Refuse("a point is two numbers");
  }
  return point;
}

void ReadContour(std::string_view count, Lines& lines, GPolygon& shape) {
  unsigned int vertices = 0;
  if (!TakeNumber(count, vertices) || !count.empty()) {
    lines.Refuse("\"contour\" is followed by the number of its points");
  }
  std::vector<Vec2d> points;
  for (std::string line; points.size() < vertices;) {
    if (!lines.Next(line)) lines.Refuse("the file ends inside a contour");
    points.push_back(PointOf(line, lines));
  }
  shape.AddContours(points.data(), &vertices, 1);
}

}  // namespace

std::vector<Outline> ReadOutlines(std::istream& stream) {
  constexpr std::string_view kOutline = "outline ";
  constexpr std::string_view kContour = "contour ";
  std::vector<Outline> outlines;
  Lines lines(stream);
  for (std::string line; lines.Next(line);) {
    if (line.starts_with(kOutline)) {
      outlines.push_back({line.substr(kOutline.size()), {}});
    } else if (line.starts_with(kContour) && !outlines.empty()) {
      ReadContour(std::string_view(line).substr(kContour.size()), lines, outlines.back().shape);
    } else {
      lines.Refuse("neither \"outline NAME\" nor a contour of one");
    }
  }
  return outlines;
}

std::vector<Outline> ReadOutlineFile(const std::string& path) {
  std::ifstream file = examples::OpenInput(path);
  try {
    return ReadOutlines(file);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

}  // namespace vlm::overlay
