#pragma once

/// \file
/// Declares the classes of dates and numbers, for headers that only name them.
///
///     #include <velum/dates/Forward.h>
///     vlm::GString LabelOf(double tick, const vlm::NumberFormatSpec& format);

namespace vlm {

class KQDateTime;
class NumberFormatSpec;
struct KQDateTextOptions;

}  // namespace vlm
