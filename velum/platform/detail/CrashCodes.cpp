#include <velum/platform/detail/CrashCodes.h>

#include <velum/platform/Types.h>

#include <signal.h>

namespace vlm::platform {
namespace {

constexpr std::uint32_t kMisalignment = 0x80000002;
constexpr std::uint32_t kBreakpoint = 0x80000003;
constexpr std::uint32_t kSingleStep = 0x80000004;
constexpr std::uint32_t kPagingError = 0xC0000006;
constexpr std::uint32_t kIllegalInstruction = 0xC000001D;
constexpr std::uint32_t kNoncontinuable = 0xC0000025;
constexpr std::uint32_t kBoundsExceeded = 0xC000008C;
constexpr std::uint32_t kFloatDivision = 0xC000008E;
constexpr std::uint32_t kFloatInexact = 0xC000008F;
constexpr std::uint32_t kFloatInvalid = 0xC0000090;
constexpr std::uint32_t kFloatOverflow = 0xC0000091;
constexpr std::uint32_t kFloatUnderflow = 0xC0000093;
constexpr std::uint32_t kIntegerDivision = 0xC0000094;
constexpr std::uint32_t kIntegerOverflow = 0xC0000095;
constexpr std::uint32_t kPrivileged = 0xC0000096;

struct Signal {
  int number;
  const char* name;
  std::uint32_t usual;
};
constexpr Signal kSignals[] = {
    {SIGSEGV, "SIGSEGV", EXCEPTION_ACCESS_VIOLATION},
    {SIGBUS, "SIGBUS", kPagingError},
    {SIGILL, "SIGILL", kIllegalInstruction},
    {SIGFPE, "SIGFPE", kFloatInvalid},
    {SIGTRAP, "SIGTRAP", kBreakpoint},
    {SIGABRT, "SIGABRT", kNoncontinuable},
};

struct Code {
  int signal;
  int number;
  const char* name;
  std::uint32_t exception;
};
constexpr Code kCodes[] = {
    {SIGSEGV, SEGV_MAPERR, "SEGV_MAPERR", EXCEPTION_ACCESS_VIOLATION},
    {SIGSEGV, SEGV_ACCERR, "SEGV_ACCERR", EXCEPTION_ACCESS_VIOLATION},
    {SIGSEGV, SEGV_BNDERR, "SEGV_BNDERR", kBoundsExceeded},
    {SIGBUS, BUS_ADRALN, "BUS_ADRALN", kMisalignment},
    {SIGBUS, BUS_ADRERR, "BUS_ADRERR", kPagingError},
    {SIGBUS, BUS_OBJERR, "BUS_OBJERR", kPagingError},
    {SIGILL, ILL_ILLOPC, "ILL_ILLOPC", kIllegalInstruction},
    {SIGILL, ILL_ILLOPN, "ILL_ILLOPN", kIllegalInstruction},
    {SIGILL, ILL_PRVOPC, "ILL_PRVOPC", kPrivileged},
    {SIGILL, ILL_PRVREG, "ILL_PRVREG", kPrivileged},
    {SIGFPE, FPE_INTDIV, "FPE_INTDIV", kIntegerDivision},
    {SIGFPE, FPE_INTOVF, "FPE_INTOVF", kIntegerOverflow},
    {SIGFPE, FPE_FLTDIV, "FPE_FLTDIV", kFloatDivision},
    {SIGFPE, FPE_FLTOVF, "FPE_FLTOVF", kFloatOverflow},
    {SIGFPE, FPE_FLTUND, "FPE_FLTUND", kFloatUnderflow},
    {SIGFPE, FPE_FLTRES, "FPE_FLTRES", kFloatInexact},
    {SIGFPE, FPE_FLTINV, "FPE_FLTINV", kFloatInvalid},
    {SIGFPE, FPE_FLTSUB, "FPE_FLTSUB", kBoundsExceeded},
    {SIGTRAP, TRAP_BRKPT, "TRAP_BRKPT", kBreakpoint},
    {SIGTRAP, TRAP_TRACE, "TRAP_TRACE", kSingleStep},
};

/// Codes that any signal may have.
constexpr struct {
  int number;
  const char* name;
} kAnySignal[] = {
    {SI_USER, "SI_USER"}, {SI_KERNEL, "SI_KERNEL"}, {SI_QUEUE, "SI_QUEUE"}, {SI_TKILL, "SI_TKILL"}};

}  // namespace

SignalKind KindOfSignal(int signal, int code) noexcept {
  SignalKind kind;
  for (const Signal& one : kSignals) {
    if (one.number == signal) kind = {one.name, "", one.usual};
  }
  for (const Code& one : kCodes) {
    if (one.signal != signal || one.number != code) continue;
    kind.codeName = one.name;
    kind.exception = one.exception;
  }
  for (const auto& one : kAnySignal) {
    if (one.number == code) kind.codeName = one.name;
  }
  return kind;
}

}  // namespace vlm::platform
