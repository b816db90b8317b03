#pragma once

/// \file
/// The form in which a date was typed, found by the shape of its text.
///
///     const detail::TextForm form = detail::FormOfText("25-Dec-10 3:45 PM");
///     form.date;  // KQDateTime::DATE_D_MMM_YY
///     form.time;  // KQDateTime::TIME_H_MM_AMPM

#include <velum/dates/DateTime.h>

namespace vlm::detail {

/// The types of a text, 0 where it has none. A plain value.
struct TextForm {
  KQDateTime::DATE_FORMAT_TYPE date;
  KQDateTime::TIME_FORMAT_TYPE time;
};

/// Finds the types by the first pattern of each table that stands in the text's shape.
///
/// The shape has an x for an ASCII letter, an n for a digit, of a run of white space its last
/// character, and else the characters as they are.
[[nodiscard]] TextForm FormOfText(const char* text) noexcept;

}  // namespace vlm::detail
