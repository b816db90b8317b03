#pragma once

/// \file
/// What `std::terminate` was called for, kept for the handler of the signal that follows.
///
///     vlm::platform::KeepUncaughtExceptions(&TellWhat);
///     const char* text = vlm::platform::UncaughtException();  // in the handler of SIGABRT

#include <velum/platform/detail/SafeText.h>

namespace vlm::platform {

/// Appends what an exception says that is being handled; `throw;` throws it again.
using TellException = void (*)(SafeText& out);

/// Has `std::terminate` keep the type and the text of the exception that nobody caught before it
/// aborts.
void KeepUncaughtExceptions(TellException tell) noexcept;

/// What brought the calling thread to terminate, such as "std::runtime_error: no wells"; null if
/// nothing did. Safe in the handler of a signal.
[[nodiscard]] const char* UncaughtException() noexcept;

}  // namespace vlm::platform
