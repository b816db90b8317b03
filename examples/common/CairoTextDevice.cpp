#include <examples/common/CairoTextDevice.h>

#include <examples/common/FaceMetrics.h>
#include <examples/common/Handles.h>

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace vlm::examples {
namespace {

// Text is laid out at this size and scaled by the context, so that a text measures the same at
// every height, also at a height far below Pango's smallest unit.
constexpr double kLayoutEm = 64.0;
constexpr double kEmsPerUnit = 1.0 / (kLayoutEm * PANGO_SCALE);

// The thickness of a rule in a share of the em.
constexpr double kRuleThickness = 0.05;

PangoPtr<PangoLayout> MakeLayout() {
  const PangoPtr<PangoContext> pango(
      pango_font_map_create_context(pango_cairo_font_map_get_default()));
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  pango_cairo_context_set_font_options(pango.get(), options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(pango.get(), FALSE);
  // The user's language would choose among the fonts that can stand in for a missing character.
  pango_context_set_language(pango.get(), pango_language_from_string("en"));

  PangoPtr<PangoLayout> layout(pango_layout_new(pango.get()));
  pango_layout_set_auto_dir(layout.get(), FALSE);
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
  return layout;
}

FontDescriptionPtr Describe(const std::string& face, unsigned int weight, bool italic) {
  FontDescriptionPtr description(pango_font_description_new());
  pango_font_description_set_family(description.get(), face.c_str());
  pango_font_description_set_weight(description.get(),
                                    static_cast<PangoWeight>(100 * std::clamp(weight, 1U, 10U)));
  pango_font_description_set_style(description.get(),
                                   italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  pango_font_description_set_absolute_size(description.get(), kLayoutEm * PANGO_SCALE);
  return description;
}

// Ink and advance of the one line of a layout, in ems, from the left end of its baseline.
struct LineExtents {
  double inkLeft;
  double inkRight;
  double advance;
};

LineExtents MeasureLine(PangoLayout* layout) {
  PangoRectangle ink;
  PangoRectangle logical;
  pango_layout_line_get_extents(pango_layout_get_line_readonly(layout, 0), &ink, &logical);
  return {ink.x * kEmsPerUnit, (ink.x + ink.width) * kEmsPerUnit, logical.width * kEmsPerUnit};
}

// Beyond these Cairo takes the context's matrix for singular, or overflows, and the context is of
// no more use.
bool IsDrawable(double height) { return height > 1e-6 && height < 1e6; }

bool IsFinite(const Vec2d& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

void AddStroke(cairo_t* context, double advance, double top, double thickness) {
  cairo_rectangle(context, 0.0, -top, advance, thickness);
}

}  // namespace

void SetSourceColor(cairo_t* context, Color4b color) {
  cairo_set_source_rgba(context, color.R / 255.0, color.G / 255.0, color.B / 255.0,
                        color.A / 255.0);
}

struct CairoTextDevice::Font {
  FontDescriptionPtr description;
  KQTextIF::_TXTMETRICS metrics;  // for a height of 1
};

CairoTextDevice::CairoTextDevice(cairo_t* context, double height)
    : AttributedTextDevice(height), context_(context) {
  if (context == nullptr) throw std::invalid_argument("a text device needs a Cairo context");
  layout_ = MakeLayout().release();
  cairo_reference(context_);
}

CairoTextDevice::~CairoTextDevice() {
  g_object_unref(layout_);
  cairo_destroy(context_);
}

const CairoTextDevice::Font& CairoTextDevice::CurrentFont() {
  const bool italic = (Now().style & TEXT_STYLE_ITALIC) != 0;
  std::unique_ptr<Font>& font = fonts_[FontKey(Now().face, Now().weight, italic)];
  if (font == nullptr) {
    FontDescriptionPtr description = Describe(Now().face, Now().weight, italic);
    const PangoPtr<PangoFont> loaded(
        pango_context_load_font(pango_layout_get_context(layout_), description.get()));
    if (loaded == nullptr) throw std::runtime_error("no font is installed");
    font = std::make_unique<Font>(Font{std::move(description), ReadEmMetrics(loaded.get())});
  }
  return *font;
}

const CairoTextDevice::Font& CairoTextDevice::LayOut(const GString& text) {
  const Font& font = CurrentFont();
  pango_layout_set_font_description(layout_, font.description.get());
  // Pango warns on the terminal about malformed text.
  const std::unique_ptr<char, Releaser<g_free>> valid(
      g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())));
  pango_layout_set_text(layout_, valid.get(), -1);
  return font;
}

void CairoTextDevice::GetBounds(const GString& text, Box2d& box) {
  const Font& font = LayOut(text);
  LineExtents line = MeasureLine(layout_);
  if ((Now().style & (TEXT_STYLE_UNDERLINE | TEXT_STYLE_STRIKEOUT)) != 0) {
    line.inkLeft = std::min(line.inkLeft, 0.0);
    line.inkRight = std::max(line.inkRight, line.advance);
  }
  const double height = Now().height;
  box.Set(line.inkLeft * height, -font.metrics.ascent * height, line.inkRight * height,
          font.metrics.descent * height);
}

void CairoTextDevice::GetExtent(const GString& text, Vec2d& extent) {
  const Font& font = LayOut(text);
  extent.Set(MeasureLine(layout_).advance * Now().height, font.metrics.height * Now().height);
}

void CairoTextDevice::GetMetrics(_TXTMETRICS& metrics) {
  metrics = ScaleMetrics(CurrentFont().metrics, Now().height);
}

bool CairoTextDevice::Draw(const Vec2d& position, const GString& text) {
  if (!IsDrawable(Now().height) || !IsFinite(position)) return true;
  const Font& font = LayOut(text);
  cairo_save(context_);
  cairo_translate(context_, position.x, position.y);
  SetSourceColor(context_, Now().color);
  cairo_scale(context_, Now().height, Now().height);
  cairo_new_path(context_);
  const double advance = MeasureLine(layout_).advance;
  const _TXTMETRICS& metrics = font.metrics;
  if ((Now().style & TEXT_STYLE_UNDERLINE) != 0) {
    AddStroke(context_, advance, metrics.underscorePosition, metrics.underscoreSize);
  }
  if ((Now().style & TEXT_STYLE_STRIKEOUT) != 0) {
    AddStroke(context_, advance, metrics.strikeoutPosition, metrics.strikeoutSize);
  }
  cairo_fill(context_);

  cairo_scale(context_, 1.0 / kLayoutEm, 1.0 / kLayoutEm);
  PangoLayoutLine* line = pango_layout_get_line_readonly(layout_, 0);
  cairo_move_to(context_, 0.0, 0.0);
  if (cairo_surface_get_type(cairo_get_target(context_)) == CAIRO_SURFACE_TYPE_IMAGE) {
    // On an image glyphs snap to whole pixels, which spoils the spacing of small letters; their
    // outlines don't.
    pango_cairo_layout_line_path(context_, line);
    cairo_fill(context_);
  } else {
    pango_cairo_show_layout_line(context_, line);
  }
  cairo_restore(context_);
  return cairo_status(context_) == CAIRO_STATUS_SUCCESS;
}

bool CairoTextDevice::DrawLine(const Vec2d& from, const Vec2d& to) {
  if (!IsDrawable(Now().height) || !IsFinite(from) || !IsFinite(to)) return true;
  cairo_save(context_);
  SetSourceColor(context_, Now().color);
  cairo_set_line_width(context_, kRuleThickness * Now().height);
  cairo_set_line_cap(context_, CAIRO_LINE_CAP_BUTT);
  cairo_new_path(context_);
  cairo_move_to(context_, from.x, from.y);
  cairo_line_to(context_, to.x, to.y);
  cairo_stroke(context_);
  cairo_restore(context_);
  return cairo_status(context_) == CAIRO_STATUS_SUCCESS;
}

}  // namespace vlm::examples
