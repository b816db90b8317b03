#include <velum/fonts/ScopedScriptCache.h>

#include <velum/platform/detail/Shaper.h>

namespace vlm {

ScopedScriptCache::ScopedScriptCache() noexcept = default;

ScopedScriptCache::~ScopedScriptCache() { FreeCache(); }

void ScopedScriptCache::CachePtr(void* const& cache) {
  if (cache == cache_) return;
  // The reference may be to the handle that is about to be cleared.
  void* const taken = cache;
  FreeCache();
  cache_ = taken;
}

void ScopedScriptCache::FreeCache() noexcept {
  delete static_cast<platform::Shaper*>(cache_);
  cache_ = nullptr;
}

}  // namespace vlm
