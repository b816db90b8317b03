#pragma once

/// \file
/// Lines of the log from where nothing may be raised.

#include <velum/diagnostics/Logger.h>

namespace vlm::detail {

/// Sends a formatted line to the log of the process. What the log can't take is lost.
template <class T>
void LogQuietly(int type, const char* format, T argument) noexcept {
  try {
    g_Logger.SendVA(type, format, argument);
  } catch (...) {
    // The application learns that its log can't be written when it writes there itself.
  }
}

}  // namespace vlm::detail
