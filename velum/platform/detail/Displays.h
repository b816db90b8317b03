#pragma once

/// \file
/// The displays of the machine, as far as the kernel and the environment tell.
///
///     const vlm::platform::DisplayFacts facts = vlm::platform::ReadDisplayFacts("/sys/class");
///     if (facts.monitors) printf("%d\n", *facts.monitors);

#include <optional>
#include <string>

namespace vlm::platform {

/// A width and a height in pixels.
struct Resolution {
  int width = 0;   ///< In pixels.
  int height = 0;  ///< In pixels.
};

/// What is known of the displays; what is not is missing.
struct DisplayFacts {
  std::string name;                  ///< The display that programs draw on; empty for none.
  std::optional<int> monitors;       ///< How many are connected.
  std::optional<Resolution> screen;  ///< The first mode of the first one that is connected.
  std::optional<Resolution> whole;   ///< What the console's memory of pixels holds.
  std::optional<int> bitsPerPixel;   ///< How many bits of it make a pixel.
};

/// Reads what stands in the folders `drm` and `graphics` of the kernel's folder of devices by
/// class, a path of the system's own, and the display that the environment names: `WAYLAND_DISPLAY`
/// or `DISPLAY`.
[[nodiscard]] DisplayFacts ReadDisplayFacts(const std::string& classes);

}  // namespace vlm::platform
