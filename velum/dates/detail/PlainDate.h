#pragma once

/// \file
/// Reads the commonest dates at one go: three numbers with "/" or "-", alone or with a blank and a
/// time by the 24-hour clock.
///
///     double date;
///     detail::TextForm form;
///     detail::ReadPlainDate("12/25/2010 10:20:30", KQDateTextOptions(), date, form);

#include <velum/dates/DateText.h>
#include <velum/dates/detail/TextShape.h>

namespace vlm::detail {

/// Gives what `ReadDateText` and `FormOfText` give; false, with nothing written, for a text that is
/// for them to judge.
[[nodiscard]] bool ReadPlainDate(const char* text, const KQDateTextOptions& options, double& date,
                                 TextForm& form) noexcept;

}  // namespace vlm::detail
