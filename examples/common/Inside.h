#pragma once

/// \file
/// Drawing that keeps to a window.
///
///     const vlm::examples::Inside inside(context, window);
///     cairo_paint(context);  // the window alone

#include <velum/geometry/Box2.h>

#include <cairo.h>

namespace vlm::examples {

/// Keeps to a window for as long as it lives, and then gives the context back as it was. It does
/// not own the context.
class Inside {
 public:
  /// Saves the context, which is left without a path, and clips it.
  Inside(cairo_t* context, const Box2d& window) : context_(context) {
    cairo_save(context_);
    cairo_rectangle(context_, window.xMin(), window.yMin(), window.xRange(), window.yRange());
    cairo_clip(context_);
    cairo_new_path(context_);
  }
  Inside(const Inside&) = delete;
  Inside& operator=(const Inside&) = delete;
  ~Inside() { cairo_restore(context_); }

 private:
  cairo_t* context_;
};

}  // namespace vlm::examples
