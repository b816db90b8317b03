#pragma once

/// \file
/// Holds what shaping keeps of one face.
///
///     vlm::ScopedScriptCache cache;
///     if (*cache.CachePtr() == nullptr) puts("nothing is kept yet");

#include <velum/core/Api.h>

namespace vlm {

/// Owns a shaping cache, or nothing: its handle is null at first.
///
/// Caches are made by the library alone. One thread uses an object at a time.
class VELUM_API ScopedScriptCache {
 public:
  ScopedScriptCache() noexcept;
  ScopedScriptCache(const ScopedScriptCache&) = delete;
  ScopedScriptCache& operator=(const ScopedScriptCache&) = delete;
  /// Frees the cache.
  ~ScopedScriptCache();

  /// Where the handle is kept. What is written there is owned.
  ///
  /// *Lifetime*: that of the object.
  [[nodiscard]] void** CachePtr() noexcept { return &cache_; }
  /// Frees the cache and takes another one. The one that it holds already stays.
  void CachePtr(void* const& cache);

 private:
  [[gnu::visibility("hidden")]] void FreeCache() noexcept;

  void* cache_ = nullptr;
};

}  // namespace vlm
