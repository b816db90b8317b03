#include <examples/logview/Palette.h>

#include <velum/core/StringFormat.h>

#include <iterator>

namespace vlm::logview {
namespace {

// Told apart by eyes that don't see red or green, and dark enough for text on white.
constexpr struct {
  unsigned char red, green, blue;
  int terminal;  // Of the terminal's 256 colours, one that shows on black and on white.
} kColors[] = {{0, 92, 158, 32},  {186, 74, 0, 166}, {0, 122, 88, 36},   {150, 40, 120, 169},
               {122, 92, 0, 136}, {70, 70, 170, 99}, {160, 30, 40, 160}, {70, 90, 100, 67}};

}  // namespace

Color4b LaneColor(std::size_t lane) {
  const auto& color = kColors[lane % std::size(kColors)];
  return Color4b(color.red, color.green, color.blue, 255);
}

std::string OnTerminal(const std::string& text, std::size_t lane) {
  return ToString("\x1b[38;5;%dm", kColors[lane % std::size(kColors)].terminal) + text + "\x1b[0m";
}

}  // namespace vlm::logview
