#pragma once

/// \file
/// The error that the library throws, and the functions that throw it.
///
///     try {
///       vlm::ThrowErrorImpl(__FILE_NAME__, __LINE__, vlm::ERR_FIND, "Colors.ini");
///     } catch (const vlm::Exception& error) {
///       puts(error.GetDescription().c_str());  // Unable to find 'Colors.ini'.
///     }

#include <velum/core/Api.h>
#include <velum/core/ErrorCodes.h>  // IWYU pragma: export
#include <velum/core/GString.h>

#include <cstdarg>

namespace vlm {

/// A failure: where it happened and what happened.
///
/// A value, thrown by value and caught by reference. It is no `std::exception`, so that a handler
/// for those does not take it for one of the standard library's. It belongs to the thread that
/// catches it; a copy on another thread still tells where it was made.
class VELUM_API Exception {
 public:
  /// An error of `module` raised at `line` of `srcFile`, with a message ready to be shown. `code`
  /// is the number of the message, 0 for one of the raiser's own.
  Exception(const GString& module, const GString& srcFile, int line, int code,
            const GString& description);
  /// A copy, with the thread of the original.
  Exception(const Exception&) = default;
  /// Copies all of another error, its thread included.
  Exception& operator=(const Exception&) = default;
  ~Exception() = default;

  /// The message.
  [[nodiscard]] const GString& GetDescription() const noexcept { return description_; }
  /// The module that raised the error, such as "Velum".
  [[nodiscard]] const GString& GetModule() const noexcept { return module_; }
  /// The source file that raised the error, without its folder.
  [[nodiscard]] const GString& GetSrcFile() const noexcept { return srcFile_; }
  /// The number of the message, see `ErrorCode`.
  [[nodiscard]] int GetErrCode() const noexcept { return code_; }
  /// The line of the source file.
  [[nodiscard]] int GetSrcLine() const noexcept { return line_; }
  /// The system's number of the thread on which the error was made.
  [[nodiscard]] unsigned long GetThreadId() const noexcept { return threadId_; }

 private:
  unsigned long threadId_;
  int code_;
  int line_;
  GString module_;
  GString srcFile_;
  GString description_;
};

/// The user canceled what was going on: no fault, but it unwinds like one.
///
/// The library throws it nowhere itself; applications do.
class VELUM_API UserAbortException : public Exception {
 public:
  /// An error with code 0 and the message "User canceled the operation".
  UserAbortException(const GString& module, const GString& srcFile, int line);
  /// A copy, with the thread of the original.
  UserAbortException(const UserAbortException&) = default;
  /// Copies all of another error, its thread included.
  UserAbortException& operator=(const UserAbortException&) = default;
  ~UserAbortException() = default;
};

/// Throws an `Exception` of the module "Velum".
///
/// The message is that of `code`, filled with the arguments that `ErrorCode` lists; text goes in as
/// `const char*`. For `ERR_CUSTOM` the first argument is the format, see `FormatString`, and its
/// arguments follow. A message that `FormatString` can't give is empty.
///
/// *Errors*: always `Exception`. A `code` that is no `ErrorCode` gives `ERR_INTERNAL` from "Error".
[[noreturn]] VELUM_API void ThrowErrorImpl(const GString& srcFile, int line, int code, ...);

/// `ThrowErrorImpl` for a module of the caller's own.
[[noreturn]] VELUM_API void ThrowVelumError(const GString& module, const GString& srcFile, int line,
                                            int code, ...);

/// `ThrowVelumError` with an argument list, in which the format of `ERR_CUSTOM` comes first.
[[noreturn]] VELUM_API void ThrowVelumErrorVA(const GString& module, const GString& srcFile,
                                              int line, int code, va_list arguments);

}  // namespace vlm
