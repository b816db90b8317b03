#include <velum/diagnostics/DllCache.h>

#include <velum/diagnostics/Logger.h>
#include <velum/files/detail/PathText.h>
#include <velum/platform/detail/Modules.h>
#include <velum/platform/detail/SharedObject.h>

#include <memory>
#include <string>

namespace vlm {

namespace {

/// A library that is unloaded unless it is released.
struct Close {
  void operator()(HINSTANCE module) const noexcept { platform::CloseSharedObject(module); }
};
using Held = std::unique_ptr<HINSTANCE__, Close>;

/// The version of a library that is not loaded yet; empty if it can't be told.
std::string VersionOf(const GString& name) {
  const std::string path = platform::SharedObjectFile(name.c_str());
  platform::ModuleFile file;
  return !path.empty() && platform::ReadModuleFile(path, file) ? file.version : std::string();
}

}  // namespace

template class Singleton<CDllCache>;

bool DllEntryLess::operator()(const GString& a, const GString& b) const noexcept {
  const char* left = a.c_str();
  const char* right = b.c_str();
  while (*left && (*left == *right || detail::FoldAscii(*left) == detail::FoldAscii(*right))) {
    ++left;
    ++right;
  }
  const auto rank = [](char c) { return static_cast<unsigned char>(detail::FoldAscii(c)); };
  return rank(*left) < rank(*right);
}

CDllCache::CDllCache() = default;

CDllCache::~CDllCache() { Flush(true); }

HINSTANCE CDllCache::Load(const GString& name) {
  if (const DllEntry* const entry = Entry(name)) {
    ++entry->refCount;
    return entry->module;
  }
  if (g_Logger.IsEnabled()) {
    const std::string version = VersionOf(name);
    if (version.empty()) {
      g_Logger.SendVA(LogInformation, "Loading module '%s'", name.c_str());
    } else {
      g_Logger.SendVA(LogInformation, "Loading module '%s' (ver %s)", name.c_str(),
                      version.c_str());
    }
  }
  Held module(static_cast<HINSTANCE>(platform::OpenSharedObject(name.c_str())));
  if (!module) {
    g_Logger.SendVA(LogFailure, "DLL cache failed to load '%s'", name.c_str());
    return nullptr;
  }
  const auto [entry, isNew] = entries_.insert(DllEntry{module.get(), 1, name});
  // While it was loaded the library may have asked for itself.
  if (isNew) {
    (void)module.release();
  } else {
    ++entry->refCount;
  }
  return entry->module;
}

bool CDllCache::AddRef(HINSTANCE module) noexcept {
  const DllEntry* const entry = Entry(module);
  if (entry) ++entry->refCount;
  return entry != nullptr;
}

bool CDllCache::DecRef(HINSTANCE module) noexcept {
  const DllEntry* const entry = Entry(module);
  if (!entry || entry->refCount < 1) return false;
  --entry->refCount;
  return true;
}

void CDllCache::Flush(bool all) noexcept {
  // A library that goes may call the cache.
  Entries gone;
  for (auto at = entries_.begin(); at != entries_.end();) {
    const auto present = at++;
    if (all || present->refCount <= 0) gone.insert(entries_.extract(present));
  }
  for (const DllEntry& entry : gone) platform::CloseSharedObject(entry.module);
}

const DllEntry* CDllCache::Entry(const GString& name) const noexcept {
  const auto found = entries_.find(name);
  return found == entries_.end() ? nullptr : &*found;
}

const DllEntry* CDllCache::Entry(HINSTANCE module) const noexcept {
  for (const DllEntry& entry : entries_) {
    if (entry.module == module) return &entry;
  }
  return nullptr;
}

}  // namespace vlm
