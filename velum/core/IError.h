#pragma once

/// \file
/// An error as an object that an application implements.
///
///     void Log(const vlm::IError& error) {
///       printf("%d: %s\n", error.ErrCode(), error.Description().c_str());
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// An error that can say its number and its message. Nothing in the library implements it.
class VELUM_API IError {
 public:
  IError() = default;
  /// Copies the base, which holds nothing.
  IError(const IError&) = default;
  /// Copies the base, which holds nothing.
  IError& operator=(const IError&) = default;
  virtual ~IError() = default;

  /// The number of the error, see `ErrorCode`.
  [[nodiscard]] virtual int ErrCode() const = 0;
  /// The message, ready to be shown.
  [[nodiscard]] virtual GString Description() const = 0;
};

}  // namespace vlm
