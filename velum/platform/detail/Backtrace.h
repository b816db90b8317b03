#pragma once

/// \file
/// The return addresses on a thread's stack, from where it crashed.
///
///     vlm::platform::PrepareBacktrace();                              // once, outside of a
///     handler const auto frames = vlm::platform::Backtrace(context, code);   // in the handler

#include <velum/platform/detail/LoadedCode.h>

#include <cstdint>
#include <span>

namespace vlm::platform {

/// Loads what `Backtrace` needs, and gets memory for its result.
void PrepareBacktrace() noexcept;

/// The addresses from where the processor was inwards, in the state `context` that the handler of a
/// signal was given, outwards to where the thread began: first that of the instruction, then return
/// addresses; up to 262,144 of them.
///
/// - The stack or its descriptions are damaged: those that could be found, the instruction's at
///   least. It may crash then.
/// - A call led to where no code is: the trace goes on with the caller.
/// - A processor that CrashContext.h does not know: the addresses of the handler come first.
///
/// *Lifetime*: of the next call. One thread calls it at a time.
[[nodiscard]] std::span<void* const> Backtrace(void* context, const LoadedCode& code) noexcept;

}  // namespace vlm::platform
