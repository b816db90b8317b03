#pragma once

/// \file
/// The file that a crash leaves.
///
///     const int error = vlm::detail::WriteCrashDump(file, "Gridder", facts);

#include <velum/platform/detail/CrashSignals.h>
#include <velum/platform/detail/SafeText.h>

namespace vlm::detail {

/// Writes the whole of a dump to an open file, part by part: a part that crashes or takes too long
/// is left out, and the file says so. Gives 0, or the system's error if the file does not take it.
///
/// For the handler of a signal, and the one thread that reports there.
[[nodiscard]] int WriteCrashDump(int file, const char* application,
                                 const platform::CrashFacts& facts) noexcept;

/// Describes the signal, such as "Signal = 11 (SIGSEGV, SEGV_MAPERR)".
void TellSignal(const platform::CrashFacts& facts, platform::SafeText& out) noexcept;

/// How many seconds a step of a report may take.
inline constexpr unsigned int kStepSeconds = 10;

/// Runs a step of a report, see `platform::RunStep`.
template <class Work>
[[gnu::visibility("hidden")]] bool RunReportStep(unsigned int seconds, Work work) noexcept {
  return platform::RunStep(
      seconds, [](void* argument) { (*static_cast<Work*>(argument))(); }, &work);
}

}  // namespace vlm::detail
