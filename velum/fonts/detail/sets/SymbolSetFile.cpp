#include <velum/fonts/detail/sets/SymbolSetFile.h>

#include <velum/fonts/detail/sets/GlyphShapes.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string>

namespace vlm::sets {

namespace {

constexpr std::size_t kMostOperations = 127;

void AddSigned(int number, std::string& bytes) {
  using Limits = std::numeric_limits<std::int8_t>;
  if (number < Limits::min() || number > Limits::max()) throw Failure("a number takes two bytes");
  bytes += static_cast<char>(number);
}

std::string BytesOf(unsigned char code, Glyph glyph) {
  constexpr int kMove = 3, kDraw = 2;
  for (Polyline& line : glyph.lines) {
    if (line.size() == 1) line.push_back(line.front());
  }
  LimitPoints(kMostOperations, glyph);
  std::string operations;
  for (const Polyline& line : glyph.lines) {
    for (const Point& point : line) {
      AddSigned(point.x, operations);
      AddSigned(point.y, operations);
      operations += static_cast<char>(&point == &line.front() ? kMove : kDraw);
    }
  }
  std::string bytes(1, static_cast<char>(code));
  AddSigned(glyph.left, bytes);
  AddSigned(glyph.right, bytes);
  AddSigned(static_cast<int>(operations.size() / 3), bytes);
  return bytes + operations;
}

}  // namespace

void WriteSymbolSet(const Face& face, const std::string& path) {
  std::string bytes = "SYM";
  for (const auto& [code, glyph] : face) {
    try {
      bytes += BytesOf(code, glyph);
    } catch (const Failure& failure) {
      throw Failure(path + ": code " + std::to_string(code) + ": " + failure.what());
    }
  }
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) throw Failure("cannot write " + path);
}

}  // namespace vlm::sets
