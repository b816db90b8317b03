#include <velum/diagnostics/ScopedLogMessage.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>

#include <exception>

namespace vlm {
namespace {

constexpr int kScopes = 8;

const char* Checked(const char* name) {
  if (!name) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  return name;
}

}  // namespace

ScopedLogMessage::ScopedLogMessage(const char* name) : name_(Checked(name)) {
  g_Logger.SendVA(kScopes, "Enter %s", name);
}

ScopedLogMessage::~ScopedLogMessage() {
  if (std::uncaught_exceptions() > 0) return;
  try {
    g_Logger.SendVA(kScopes, "Exit %s", name_.c_str());
  } catch (...) {
    // A destructor has nobody to tell.
  }
}

}  // namespace vlm
