#pragma once

/// \file
/// What a report of a crash says of it, the same in the log and in the handler of a signal.
///
///     vlm::detail::TellException(record, &TakeLine, &log);

#include <velum/platform/Types.h>

#include <cstdint>
#include <string_view>

namespace vlm::detail {

/// The title of the section.
inline constexpr char kExceptionTitle[] = "Exception Info";

/// The name of an exception's code; "Unknown" for any other.
[[nodiscard]] const char* ExceptionName(std::uint32_t code) noexcept;

/// Takes one line, without a line feed.
using TakeLine = void (*)(std::string_view line, void* user);

/// Has `take` called with each line of the section. Safe in the handler of a signal.
void TellException(const EXCEPTION_RECORD& record, TakeLine take, void* user);

}  // namespace vlm::detail
