#include <examples/common/FaceMetrics.h>

#include <cairo-ft.h>
#include <freetype/tttables.h>
#include <pango/pangocairo.h>

#include <cmath>
#include <stdexcept>

namespace vlm::examples {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

// Holds the FreeType face of a font for as long as it is read.
class LockedFace {
 public:
  explicit LockedFace(cairo_scaled_font_t* font)
      : font_(font), face_(cairo_ft_scaled_font_lock_face(font)) {
    if (face_ == nullptr) throw std::runtime_error("a font has no file that can be read");
  }
  LockedFace(const LockedFace&) = delete;
  LockedFace& operator=(const LockedFace&) = delete;
  ~LockedFace() { cairo_ft_scaled_font_unlock_face(font_); }

  FT_Face operator->() const { return face_; }

  template <class Table>
  [[nodiscard]] const Table* Find(FT_Sfnt_Tag tag) const {
    return static_cast<const Table*>(FT_Get_Sfnt_Table(face_, tag));
  }

 private:
  cairo_scaled_font_t* font_;
  FT_Face face_;
};

// Where a family has no italic, fontconfig gives the upright face with a slanting matrix.
double SimulatedItalicAngle(cairo_scaled_font_t* font) {
  cairo_matrix_t matrix;
  cairo_scaled_font_get_font_matrix(font, &matrix);
  return matrix.xy == 0.0 ? 0.0 : std::atan(matrix.xy / matrix.yy);
}

}  // namespace

KQTextIF::_TXTMETRICS ReadEmMetrics(PangoFont* font) {
  cairo_scaled_font_t* scaledFont = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font));
  const LockedFace face(scaledFont);
  if (face->units_per_EM == 0) throw std::runtime_error("a bitmap font has no metrics in ems");
  const double unit = 1.0 / face->units_per_EM;

  KQTextIF::_TXTMETRICS metrics{};
  metrics.emSquare = face->units_per_EM;
  metrics.ascent = face->ascender * unit;
  metrics.descent = -face->descender * unit;
  metrics.height = metrics.ascent + metrics.descent;
  metrics.internalLeading = metrics.height - 1.0;
  metrics.externalLeading = (face->height - face->ascender + face->descender) * unit;
  metrics.maxCharWidth = face->max_advance_width * unit;
  metrics.aveCharWidth = metrics.maxCharWidth;
  metrics.simulatedItalicAngle = SimulatedItalicAngle(scaledFont);
  metrics.underscoreSize = face->underline_thickness * unit;
  // FreeType gives the middle of the stroke.
  metrics.underscorePosition = face->underline_position * unit + 0.5 * metrics.underscoreSize;
  metrics.strikeoutSize = metrics.underscoreSize;
  metrics.strikeoutPosition = 0.25;
  metrics.breakChar = ' ';
  if (const auto* os2 = face.Find<TT_OS2>(FT_SFNT_OS2)) {
    metrics.aveCharWidth = os2->xAvgCharWidth * unit;
    metrics.strikeoutSize = os2->yStrikeoutSize * unit;
    metrics.strikeoutPosition = os2->yStrikeoutPosition * unit;
    metrics.defaultChar = os2->usDefaultChar;
    metrics.breakChar = os2->usBreakChar;
  }
  if (const auto* post = face.Find<TT_Postscript>(FT_SFNT_POST)) {
    metrics.italicAngle = static_cast<double>(post->italicAngle) / 65536.0 * kRadiansPerDegree;
  }
  if (const auto* head = face.Find<TT_Header>(FT_SFNT_HEAD)) {
    metrics.minimumPpem = head->Lowest_Rec_PPEM;
  }
  return metrics;
}

KQTextIF::_TXTMETRICS ScaleMetrics(const KQTextIF::_TXTMETRICS& metrics, double height) {
  KQTextIF::_TXTMETRICS scaled = metrics;
  for (double* length :
       {&scaled.height, &scaled.ascent, &scaled.descent, &scaled.internalLeading,
        &scaled.externalLeading, &scaled.aveCharWidth, &scaled.maxCharWidth, &scaled.strikeoutSize,
        &scaled.strikeoutPosition, &scaled.underscoreSize, &scaled.underscorePosition}) {
    *length *= height;
  }
  return scaled;
}

}  // namespace vlm::examples
