#include <velum/core/Exception.h>

#include <velum/core/detail/ErrorMessages.h>
#include <velum/platform/detail/SystemMessages.h>

#include <typeinfo>

namespace vlm {

namespace {

constexpr const char* kModule = "Velum";

// Nothing here throws this one, but its type information belongs to the library all the same, so
// that every module of a program catches what another one throws.
[[gnu::used]] const std::type_info* const kAbortType = &typeid(UserAbortException);

Exception MakeException(const GString& module, const GString& srcFile, int line, int code,
                        va_list arguments) {
  if (code < ERR_CUSTOM || code > ERR_POLYGON_CLIPPING) {
    return {kModule, "Error", __LINE__, ERR_INTERNAL, detail::kErrorMessages[ERR_INTERNAL]};
  }
  const char* const format =
      code == ERR_CUSTOM ? va_arg(arguments, const char*) : detail::kErrorMessages[code];
  GString description;
  description.FormatStringVA(format, arguments);
  return {module, srcFile, line, code, description};
}

}  // namespace

Exception::Exception(const GString& module, const GString& srcFile, int line, int code,
                     const GString& description)
    : threadId_(platform::CurrentThreadNumber()),
      code_(code),
      line_(line),
      module_(module),
      srcFile_(srcFile),
      description_(description) {}

UserAbortException::UserAbortException(const GString& module, const GString& srcFile, int line)
    : Exception(module, srcFile, line, ERR_CUSTOM, "User canceled the operation") {}

void ThrowVelumErrorVA(const GString& module, const GString& srcFile, int line, int code,
                       va_list arguments) {
  throw MakeException(module, srcFile, line, code, arguments);
}

void ThrowVelumError(const GString& module, const GString& srcFile, int line, int code, ...) {
  va_list arguments;
  va_start(arguments, code);
  const Exception error = MakeException(module, srcFile, line, code, arguments);
  va_end(arguments);
  throw error;
}

void ThrowErrorImpl(const GString& srcFile, int line, int code, ...) {
  va_list arguments;
  va_start(arguments, code);
  const Exception error = MakeException(kModule, srcFile, line, code, arguments);
  va_end(arguments);
  throw error;
}

}  // namespace vlm
