#include <velum/platform/detail/Displays.h>

#include <velum/platform/detail/Folders.h>
#include <velum/platform/detail/InputFile.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace vlm::platform {
namespace {

constexpr int kLargest = 1 << 20;

std::string FirstLine(const std::string& path) {
  const std::string text = TextOfFile(path);
  return text.substr(0, text.find('\n'));
}

/// Reads two numbers with a separator between them.
std::optional<Resolution> ReadResolution(const std::string& text, char separator) {
  Resolution size;
  char found = 0;
  if (std::sscanf(text.c_str(), "%7d%c%7d", &size.width, &found, &size.height) != 3 ||
      found != separator || size.width < 1 || size.height < 1 || size.width > kLargest ||
      size.height > kLargest) {
    return std::nullopt;
  }
  return size;
}

}  // namespace

DisplayFacts ReadDisplayFacts(const std::string& classes) {
  DisplayFacts facts;
  for (const char* const variable : {"WAYLAND_DISPLAY", "DISPLAY"}) {
    const char* const value = std::getenv(variable);
    if (value && facts.name.empty()) facts.name = value;
  }
  const std::string drm = classes + "/drm/";
  std::vector<std::string> outputs;
  if (ListFolder(drm, outputs)) {
    std::sort(outputs.begin(), outputs.end());
    facts.monitors = 0;
    for (const std::string& output : outputs) {
      if (FirstLine(drm + output + "/status") != "connected") continue;
      ++*facts.monitors;
      if (!facts.screen) facts.screen = ReadResolution(FirstLine(drm + output + "/modes"), 'x');
    }
  }
  const std::string console = classes + "/graphics/fb0/";
  facts.whole = ReadResolution(FirstLine(console + "virtual_size"), ',');
  const int bits = std::atoi(FirstLine(console + "bits_per_pixel").c_str());
  if (bits > 0) facts.bitsPerPixel = bits;
  return facts;
}

}  // namespace vlm::platform
