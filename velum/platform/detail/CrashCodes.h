#pragma once

/// \file
/// What a signal is called here, and what its kin is called on the other platform.
///
///     const auto kind = vlm::platform::KindOfSignal(SIGFPE, FPE_INTDIV);
///     // kind.exception is 0xC0000094, "Integer Division by Zero" over there

#include <cstdint>

namespace vlm::platform {

/// The exceptions that a signal's facts may make of another; see `KindOfSignal` for the rest.
enum : std::uint32_t {
  kStackOverflow = 0xC00000FD,      ///< Memory beyond the end of the stack was used.
  kUncaughtException = 0xE06D7363,  ///< `std::terminate` was called.
};

/// A signal with its code. Texts are static.
struct SignalKind {
  const char* signalName = "";  ///< Such as "SIGFPE".
  const char* codeName = "";    ///< Such as "FPE_INTDIV"; empty for an unknown one.
  std::uint32_t exception = 0;  ///< The code of the published interface.
};

/// Looks a signal up, with its code; a code that is not known gives the signal's usual exception.
[[nodiscard]] SignalKind KindOfSignal(int signal, int code) noexcept;

}  // namespace vlm::platform
