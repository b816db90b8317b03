#pragma once

/// \file
/// Libraries that stay loaded, found again by their names.
///
///     auto& cache = vlm::CDllCache::GetInstance();
///     if (vlm::HINSTANCE module = cache.Load("libz.so.1")) {
///       puts(vlm::GetModuleFilename(module).c_str());
///       cache.DecRef(module);
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/Singleton.h>
#include <velum/platform/Types.h>

#include <set>

namespace vlm {

/// A library that is kept loaded.
struct DllEntry {
  HINSTANCE module;      ///< The library.
  mutable int refCount;  ///< The references to it; no part of the order.
  GString name;          ///< The name that it was loaded by.
};

/// The order of entries: by their names, whose ASCII letters are folded to small ones.
struct VELUM_API DllEntryLess {
  using is_transparent = void;  ///< Names are looked for without an entry.

  /// True if `a` stands before `b`.
  [[nodiscard]] bool operator()(const DllEntry& a, const DllEntry& b) const noexcept {
    return (*this)(a.name, b.name);
  }
  /// True if `a` stands before the name `b`.
  [[nodiscard]] bool operator()(const DllEntry& a, const GString& b) const noexcept {
    return (*this)(a.name, b);
  }
  /// True if the name `a` stands before `b`.
  [[nodiscard]] bool operator()(const GString& a, const DllEntry& b) const noexcept {
    return (*this)(a, b.name);
  }
  /// True if the name `a` stands before the name `b`.
  [[nodiscard]] bool operator()(const GString& a, const GString& b) const noexcept;
};

/// Keeps libraries loaded and counts who needs them.
///
/// One object for the process, which owns its libraries and lets those go that are left when the
/// process ends. A library is only unloaded by `Flush` and then. Names are those of `CDynLib`;
/// they are told apart without regard to the case of ASCII letters. Two names of one file are two
/// entries with the same module, of which `AddRef` and `DecRef` mean the first.
///
/// Threads: nothing here is locked.
class VELUM_API CDllCache : public Singleton<CDllCache> {
 public:
  /// Gives the library `name` with one more reference, and loads it if the cache does not have it;
  /// null if that fails.
  ///
  /// `g_Logger` is told before a library is loaded, with type `LogInformation`, and of a failure,
  /// with type `LogFailure`. The first line has the version that `CModQuery` gives, if the file can
  /// be found without the loader's cache: the name has a folder, or the library is loaded already,
  /// or it lies in one of the folders that the loader searches.
  ///
  /// *Errors*: those of the log; `std::bad_alloc`. The cache is then as it was.
  /// *Cost*: logarithmic in the number of libraries for one that is there.
  HINSTANCE Load(const GString& name);
  /// Counts one more reference; false for a module that the cache does not have.
  bool AddRef(HINSTANCE module) noexcept;
  /// Counts one reference less, and unloads nothing; false for a module that the cache does not
  /// have, and for one without a reference.
  bool DecRef(HINSTANCE module) noexcept;
  /// Unloads the libraries without a reference; with `all` every one, whatever its count.
  void Flush(bool all) noexcept;

 private:
  friend class Singleton<CDllCache>;
  using Entries = std::set<DllEntry, DllEntryLess>;

  [[gnu::visibility("hidden")]] CDllCache();
  [[gnu::visibility("hidden")]] ~CDllCache();

  [[gnu::visibility("hidden")]] const DllEntry* Entry(const GString& name) const noexcept;
  [[gnu::visibility("hidden")]] const DllEntry* Entry(HINSTANCE module) const noexcept;

  Entries entries_;
};

extern template class Singleton<CDllCache>;

}  // namespace vlm
