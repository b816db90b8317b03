#pragma once

/// \file
/// The device that labels are drawn with: outline faces, or plain lines.
///
///     vlm::examples::LabelDevice device(context, 14.0, "KQ Roman");
///     const vlm::examples::LabelLayout label(device.Get(), "Depth (m)");

#include <examples/common/CairoTextDevice.h>
#include <examples/common/StrokedTextDevice.h>

#include <optional>
#include <string>

struct _cairo;

namespace vlm::examples {

/// A `StrokedTextDevice` if a stroked face is named, or else a `CairoTextDevice`. Has identity; one
/// thread uses it at a time.
class LabelDevice {
 public:
  /// Makes a device for a height of the em.
  ///
  /// *Errors*: those of the device.
  LabelDevice(struct _cairo* context, double height, const std::string& strokedFace) {
    if (strokedFace.empty()) {
      outlines_.emplace(context, height);
    } else {
      lines_.emplace(context, height, strokedFace);
    }
  }

  /// The device.
  [[nodiscard]] KQTextIF& Get() {
    if (lines_) return *lines_;
    return *outlines_;
  }

 private:
  std::optional<CairoTextDevice> outlines_;
  std::optional<StrokedTextDevice> lines_;
};

}  // namespace vlm::examples
