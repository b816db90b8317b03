#pragma once

/// \file
/// Owners for the counted objects of Cairo and Pango; each gives back its one reference.
///
///     const vlm::examples::SurfacePtr surface(
///         cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 64, 64));
///     const vlm::examples::ContextPtr context(cairo_create(surface.get()));

#include <cairo.h>
#include <pango/pango.h>

#include <memory>

namespace vlm::examples {

/// Gives back the object that a unique_ptr holds by calling a C function.
template <auto release>
struct Releaser {
  /// Releases one reference.
  template <class T>
  void operator()(T* object) const {
    release(object);
  }
};

/// Owns a cairo_t.
using ContextPtr = std::unique_ptr<cairo_t, Releaser<cairo_destroy>>;
/// Owns a cairo_surface_t.
using SurfacePtr = std::unique_ptr<cairo_surface_t, Releaser<cairo_surface_destroy>>;
/// Owns a PangoFontDescription.
using FontDescriptionPtr =
    std::unique_ptr<PangoFontDescription, Releaser<pango_font_description_free>>;
/// Owns any of Pango's reference-counted objects.
template <class T>
using PangoPtr = std::unique_ptr<T, Releaser<g_object_unref>>;

}  // namespace vlm::examples
