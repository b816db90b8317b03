#include <velum/diagnostics/DynLib.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/detail/QuietLog.h>
#include <velum/platform/detail/SharedObject.h>

#include <utility>

namespace vlm {

CDynLib::CDynLib() noexcept = default;

CDynLib::CDynLib(const GString& name) : name_(name) {}

CDynLib::CDynLib(const CDynLib& other) : name_(other.name_) {}

CDynLib::~CDynLib() { Unload(); }

bool CDynLib::Load(const GString& name) {
  Unload();
  name_ = name;
  return Load();
}

void CDynLib::Unload() noexcept {
  if (!module_) return;
  detail::LogQuietly(LogInformation, "Unloading library %s", name_.c_str());
  platform::CloseSharedObject(module_);
  module_ = nullptr;
}

void* CDynLib::GetSymbol(const char* name) {
  if (!module_) {
    if (name_.empty()) ThrowErrorImpl("DynLib", __LINE__, ERR_INTERNAL);
    if (!Load()) return nullptr;
  }
  return name ? platform::FindSymbol(module_, name) : nullptr;
}

CDynLib& CDynLib::operator=(const CDynLib& other) {
  if (this == &other) return *this;
  GString name(other.name_);
  Unload();
  name_ = std::move(name);
  return *this;
}

bool CDynLib::Load() {
  g_Logger.SendVA(LogInformation, "Loading library %s", name_.c_str());
  module_ = static_cast<HINSTANCE>(platform::OpenSharedObject(name_.c_str()));
  return module_ != nullptr;
}

}  // namespace vlm
