#pragma once

/// \file
/// What painting asks of Cairo's contexts and surfaces.

#include <cairo.h>

namespace vlm::platform {

/// Keeps what a context is set to, its path included, and brings it back.
class KeptState {
 public:
  /// Keeps the state; the context has no path then.
  explicit KeptState(cairo_t* context);
  KeptState(const KeptState&) = delete;
  KeptState& operator=(const KeptState&) = delete;
  ~KeptState();

 private:
  cairo_t* context_;
  cairo_path_t* path_ = nullptr;
};

/// True if a surface keeps shapes, not pixels.
[[nodiscard]] bool IsOfVectors(cairo_surface_t* surface);

}  // namespace vlm::platform
