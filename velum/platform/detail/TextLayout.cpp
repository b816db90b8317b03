#include <velum/platform/detail/TextLayout.h>

#include <velum/platform/detail/CairoState.h>

#include <pango/pangocairo.h>

#include <algorithm>
#include <climits>
#include <cmath>

namespace vlm::platform {

namespace {

constexpr double kPixelsPerPoint = 96.0 / 72.0;

/// Moves a baseline that is level or upright to the nearest whole pixel across it.
void SnapBaseline(cairo_t* context, double& x, double& y) {
  cairo_matrix_t matrix;
  cairo_get_matrix(context, &matrix);
  const bool isLevel = matrix.yx == 0 && matrix.xy == 0;
  const bool isUpright = matrix.xx == 0 && matrix.yy == 0;
  if (!isLevel && !isUpright) return;
  // What Cairo calls the device has no scale and no offset of the surface yet.
  const cairo_matrix_t device = DeviceMatrix(cairo_get_group_target(context));
  const auto snap = [](double& at, double scale, double offset) {
    at = (std::round(at * scale + offset) - offset) / scale;
  };
  cairo_user_to_device(context, &x, &y);
  if (isLevel) {
    snap(y, device.yy, device.y0);
  } else {
    snap(x, device.xx, device.x0);
  }
  cairo_device_to_user(context, &x, &y);
}

}  // namespace

TextLayout::TextLayout() {
  PangoContext* const context = pango_font_map_create_context(pango_cairo_font_map_get_default());
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context, FALSE);
  // The user's language would choose among the fonts that stand in for a missing character.
  pango_context_set_language(context, pango_language_from_string("en"));
  layout_ = pango_layout_new(context);
  pango_layout_set_auto_dir(layout_, FALSE);
  g_object_unref(context);
}

TextLayout::~TextLayout() { g_object_unref(layout_); }

TextLayout& TextLayout::OfThread() {
  static thread_local TextLayout layout;
  return layout;
}

void TextLayout::Set(std::string_view text, const PaintFont& font) {
  if (font.family != font_.family || font.points != font_.points || font.isBold != font_.isBold) {
    PangoFontDescription* const description = pango_font_description_new();
    pango_font_description_set_family(description, font.family.c_str());
    pango_font_description_set_weight(description,
                                      font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(description,
                                             font.points * kPixelsPerPoint * PANGO_SCALE);
    pango_layout_set_font_description(layout_, description);
    pango_font_description_free(description);
    font_ = font;
  }
  text = text.substr(0, std::min(text.find('\0'), std::size_t{INT_MAX}));
  pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
}

void TextLayout::Measure(double& width, double& height) {
  pango_context_set_matrix(pango_layout_get_context(layout_), nullptr);
  PangoRectangle box;
  pango_layout_get_extents(layout_, nullptr, &box);
  width = static_cast<double>(box.width) / PANGO_SCALE;
  height = static_cast<double>(box.height) / PANGO_SCALE;
}

void TextLayout::Draw(cairo_t* context, const PaintPoint& corner, PaintAlignment across) {
  pango_layout_set_alignment(layout_, across == PaintAlignment::kNear     ? PANGO_ALIGN_LEFT
                                      : across == PaintAlignment::kCentre ? PANGO_ALIGN_CENTER
                                                                          : PANGO_ALIGN_RIGHT);
  pango_cairo_update_layout(context, layout_);
  if (IsOfVectors(cairo_get_group_target(context))) {
    cairo_move_to(context, corner.x, corner.y);
    pango_cairo_show_layout(context, layout_);
    return;
  }
  const double ascent = static_cast<double>(pango_layout_get_baseline(layout_)) / PANGO_SCALE;
  double x = corner.x;
  double y = corner.y + ascent;
  SnapBaseline(context, x, y);
  // Where there are pixels, Cairo sets glyphs on whole ones, which spoils the spacing of small
  // letters; their outlines stay where they belong.
  cairo_move_to(context, x, y - ascent);
  pango_cairo_layout_path(context, layout_);
  cairo_fill(context);
}

}  // namespace vlm::platform
