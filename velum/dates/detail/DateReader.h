#pragma once

/// \file
/// Reads the grammar of velum/dates/DateText.h.
///
///     double date;
///     detail::ReadDateText("25-Dec-10 3:45 PM", KQDateTextOptions(), date);  // 40537.65625

#include <velum/dates/DateText.h>

namespace vlm::detail {

/// Reads a date, a time or both as a stored number; false, with `date` unchanged, for anything
/// else.
[[nodiscard]] bool ReadDateText(const char* text, const KQDateTextOptions& options,
                                double& date) noexcept;

}  // namespace vlm::detail
