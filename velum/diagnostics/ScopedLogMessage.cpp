#include <velum/diagnostics/ScopedLogMessage.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>

#include <exception>

namespace vlm {
namespace {

const char* Checked(const char* name) {
  if (!name) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  return name;
}

/// Not by a format: a name may be longer than what can be formatted.
void Tell(const char* what, const GString& name) {
  if (g_Logger.GetType() & LogScope && g_Logger.IsEnabled()) g_Logger.Send(LogScope, what + name);
}

}  // namespace

ScopedLogMessage::ScopedLogMessage(const char* name) : name_(Checked(name)) {
  Tell("Enter ", name_);
}

ScopedLogMessage::~ScopedLogMessage() {
  if (std::uncaught_exceptions() > 0) return;
  try {
    Tell("Exit ", name_);
  } catch (...) {
    // A destructor has nobody to tell.
  }
}

}  // namespace vlm
