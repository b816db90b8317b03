#pragma once

/// \file
/// Formats a given local time, for the date and time directives of math text.
///
///     detail::FormatDateTimeText("%#I:%M %p", time);  // "3:07 PM"

#include <ctime>
#include <string>

namespace vlm::detail {

/// Formats a time with a format of `strftime`, in which the flag `#` drops leading zeros.
///
/// - `#` on anything but a number without sign has no effect.
/// - A percent sign that begins no directive stands for itself.
/// - A result of 128 bytes or more is empty.
[[nodiscard]] std::string FormatDateTimeText(const char* format, const std::tm& time);

}  // namespace vlm::detail
