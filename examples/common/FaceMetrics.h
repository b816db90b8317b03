#pragma once

/// \file
/// The metrics of a face, read from the tables of its font file.
///
///     vlm::KQTextIF::_TXTMETRICS metrics = vlm::examples::ReadEmMetrics(font);
///     double lineHeight = 12.0 * (metrics.height + metrics.externalLeading);

#include <velum/mathtext/TextIF.h>

struct _PangoFont;

namespace vlm::examples {

/// Reads the metrics of a face for a height of one em: every length is a share of the em.
///
/// Ascent and descent are both positive. `underscorePosition` and `strikeoutPosition` are the upper
/// edges of the strokes, measured upwards from the baseline. `italicAngle` and
/// `simulatedItalicAngle` are negative where the letters lean to the right; the second is 0 unless
/// the face is an upright one that is slanted to stand for an italic.
///
/// *Errors*: `std::runtime_error` if the font has no file that can be read.
[[nodiscard]] KQTextIF::_TXTMETRICS ReadEmMetrics(struct _PangoFont* font);

/// The same metrics for a text height: the lengths are multiplied, angles and codes stay.
[[nodiscard]] KQTextIF::_TXTMETRICS ScaleMetrics(const KQTextIF::_TXTMETRICS& metrics,
                                                 double height);

}  // namespace vlm::examples
