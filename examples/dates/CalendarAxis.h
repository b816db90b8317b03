#pragma once

/// \file
/// An axis of dates: ticks at round steps of the calendar.
///
///     const auto axis = vlm::dates::MakeCalendarAxis(39814.0, 40178.0, 8);
///     axis.labels;  // "Jan-09", "Mar-09", ...

#include <examples/common/Axis.h>

namespace vlm::dates {

/// Makes an axis between two stored numbers, in their numeric form, with at most `count` ticks: at
/// years, months, days, hours or minutes. A range of less than a minute is widened.
[[nodiscard]] examples::Axis MakeCalendarAxis(double first, double last, int count);

}  // namespace vlm::dates
