#pragma once

/// \file
/// Logs when a scope is entered and left.
///
///     void Grid::Build() {
///       const vlm::ScopedLogMessage scope("Grid::Build");  // Enter Grid::Build
///       ...                                                // Exit Grid::Build
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Sends "Enter name" to `g_Logger` when it is made, and "Exit name" when it ends, both with
/// type `LogScope`, if its mask has that.
///
/// A value: a copy has the same name, enters nothing, and tells of its own end.
class VELUM_API ScopedLogMessage {
 public:
  /// Enters the scope `name`.
  ///
  /// *Errors*: `ERR_INTERNAL` for null; what `CLogger::Send` throws.
  explicit ScopedLogMessage(const char* name);
  /// A copy.
  ScopedLogMessage(const ScopedLogMessage&) = default;
  /// Takes the other's name.
  ScopedLogMessage& operator=(const ScopedLogMessage&) = default;
  /// Leaves the scope. While an exception unwinds the thread's stack, nothing is sent; what logging
  /// throws is swallowed.
  ~ScopedLogMessage();

 private:
  GString name_;
};

}  // namespace vlm
