#include <velum/platform/detail/CairoState.h>

namespace vlm::platform {

KeptState::KeptState(cairo_t* context) : context_(context) {
  if (cairo_has_current_point(context)) path_ = cairo_copy_path(context);
  cairo_save(context);
  cairo_new_path(context);
}

KeptState::~KeptState() {
  cairo_new_path(context_);
  cairo_restore(context_);
  if (!path_) return;
  cairo_append_path(context_, path_);
  cairo_path_destroy(path_);
}

bool IsOfVectors(cairo_surface_t* surface) {
  switch (cairo_surface_get_type(surface)) {
    case CAIRO_SURFACE_TYPE_PDF:
    case CAIRO_SURFACE_TYPE_PS:
    case CAIRO_SURFACE_TYPE_SVG:
    case CAIRO_SURFACE_TYPE_SCRIPT:
    case CAIRO_SURFACE_TYPE_RECORDING:
      return true;
    default:
      return false;
  }
}

cairo_matrix_t DeviceMatrix(cairo_surface_t* surface) {
  cairo_matrix_t matrix{1, 0, 0, 1, 0, 0};
  cairo_surface_get_device_scale(surface, &matrix.xx, &matrix.yy);
  cairo_surface_get_device_offset(surface, &matrix.x0, &matrix.y0);
  return matrix;
}

}  // namespace vlm::platform
