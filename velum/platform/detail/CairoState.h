#pragma once

/// \file
/// What painting asks of Cairo's contexts and surfaces.
///
///     const vlm::platform::KeptState kept(context);
///     cairo_set_line_width(context, 2);  // until the end of the scope

#include <cairo.h>

#include <memory>

namespace vlm::platform {

/// Gives a reference to a context back.
struct ContextReleaser {
  /// Gives it back.
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
/// Owns a reference to a context.
using ContextPtr = std::unique_ptr<cairo_t, ContextReleaser>;

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

/// What Cairo does to the coordinates of a surface's contexts, once their matrix is applied, before
/// they count its pixels. Only groups, parts of surfaces and applications make it something else
/// than the identity.
[[nodiscard]] cairo_matrix_t DeviceMatrix(cairo_surface_t* surface);

}  // namespace vlm::platform
