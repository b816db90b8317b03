#pragma once

/// \file
/// The signals that end a process, and what can be done in their handler.
///
///     vlm::platform::CrashEnd Report(const vlm::platform::CrashFacts& facts);
///     vlm::platform::InstallCrashSignals(&Report);

#include <velum/platform/Types.h>

namespace vlm::platform {

/// A crash, as the system tells of it. Texts are static.
struct CrashFacts {
  EXCEPTION_RECORD record{};       ///< The same in the words of the published interface.
  int signal = 0;                  ///< The signal's number.
  int code = 0;                    ///< Its code, which says why it came.
  const char* signalName = "";     ///< Such as "SIGSEGV".
  const char* codeName = "";       ///< Such as "SEGV_MAPERR"; empty for an unknown one.
  long sender = 0;                 ///< The process that sent the signal; 0 if nobody did.
  const char* uncaught = nullptr;  ///< The exception that nobody caught, see UncaughtException.h.
  long process = 0;                ///< This process.
  long thread = 0;                 ///< The thread that crashed.
  char threadName[16] = {};        ///< The thread's name, terminated.
  void* context = nullptr;         ///< The processor's state, see CrashContext.h.
};

/// How the process is to end.
enum class CrashEnd {
  kBySignal,  ///< As it would without a handler: the parent sees the signal, a core may be left.
  kByExit     ///< With the exit status 128 + signal.
};

/// Reports a crash. Runs in the handler, in the thread that crashed, for the first crash of the
/// process alone; threads that crash meanwhile wait. Most other signals are blocked.
using CrashReporter = CrashEnd (*)(const CrashFacts& facts);

/// Has crashes reported, and keeps the library in memory from now on.
void InstallCrashSignals(CrashReporter reporter) noexcept;

/// True once crashes are reported.
[[nodiscard]] bool AreCrashesReported() noexcept;

/// Runs a step of a reporter; false if it crashed or took more than so many seconds, of which 0 is
/// no limit. What the step holds then is not released: it has nothing to destroy. A step runs no
/// other one.
bool RunStep(unsigned int seconds, void (*step)(void*), void* argument) noexcept;

/// True in the thread that runs `main`.
[[nodiscard]] bool IsMainThread() noexcept;
/// Gives the calling thread a stack for the handler; null if the system has no memory for it.
[[nodiscard]] void* GiveCrashStack() noexcept;
/// Takes away what `GiveCrashStack` gave the calling thread, and brings back what it had before.
void TakeCrashStack(void* stack) noexcept;

}  // namespace vlm::platform
