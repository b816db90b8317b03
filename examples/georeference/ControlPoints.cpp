#include <examples/georeference/ControlPoints.h>

#include <examples/common/Program.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <istream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace vlm::georeference {
namespace {

constexpr std::string_view kBlanks = " \t\r";

// Reads exactly as many numbers as there is room for.
template <std::size_t count>
bool AreNumbers(std::string_view line, std::array<double, count>& numbers) {
  for (double& number : numbers) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return false;
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    if (!line.empty() && kBlanks.find(line.front()) == std::string_view::npos) return false;
  }
  return line.find_first_not_of(kBlanks) == std::string_view::npos;
}

// Hands over the numbers of each line.
template <std::size_t count, class Consumer>
void ReadRows(std::istream& stream, const char* what, const Consumer& consume) {
  std::array<double, count> numbers;
  std::string line;
  for (std::size_t number = 1; std::getline(stream, line); ++number) {
    const std::size_t start = line.find_first_not_of(kBlanks);
    if (start == std::string::npos || line[start] == '#') continue;
    if (!AreNumbers(line, numbers)) {
      throw std::runtime_error("line " + std::to_string(number) + ": " + what);
    }
    consume(numbers);
  }
}

}  // namespace

ControlPoints ReadControlPoints(std::istream& stream) {
  ControlPoints points;
  ReadRows<4>(stream, "a control point is four numbers", [&](const auto& numbers) {
    points.sheet.Points().emplace_back(numbers[0], numbers[1]);
    points.map.Points().emplace_back(numbers[2], numbers[3]);
  });
  return points;
}

ControlPoints ReadControlPointFile(const std::string& path) {
  std::ifstream file = examples::OpenInput(path);
  try {
    return ReadControlPoints(file);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

RPoints ReadPoints(std::istream& stream) {
  RPoints points;
  ReadRows<2>(stream, "a point is two numbers",
              [&](const auto& numbers) { points.Points().emplace_back(numbers[0], numbers[1]); });
  return points;
}

}  // namespace vlm::georeference
