#pragma once

/// \file
/// What `std::terminate` was called for, kept for the handler of the signal that follows.
///
///     vlm::platform::KeepUncaughtExceptions(&TellWhat);
///     vlm::platform::AskUncaughtException();  // in the handler of SIGABRT, in a step
///     const char* text = vlm::platform::UncaughtException();

#include <velum/platform/detail/SafeText.h>

namespace vlm::platform {

/// Appends what an exception says that is being handled; `throw;` throws it again.
using TellException = void (*)(SafeText& out);

/// Has `std::terminate` keep the type of the exception that nobody caught before it aborts.
void KeepUncaughtExceptions(TellException tell) noexcept;

/// Adds to the text what the exception says of itself. This calls the exception's own code, which
/// may crash or never return: what was known before is kept then.
void AskUncaughtException();

/// What brought the calling thread to terminate, such as "std::runtime_error: no wells", or the
/// type's name in the form of the compiler; null if nothing did. Safe in the handler of a signal.
[[nodiscard]] const char* UncaughtException() noexcept;

}  // namespace vlm::platform
