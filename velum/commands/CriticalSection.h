#pragma once

/// \file
/// Mutual exclusion of threads.
///
///     const std::lock_guard<vlm::CCriticalSection> lock(section);

#include <velum/core/Api.h>

#include <mutex>

namespace vlm {

/// What one thread of the process at a time holds. The thread that holds it may take it again, and
/// gives it up as often as it took it.
///
/// `lock`, `unlock` and `try_lock` are the same operations under the names of the standard library,
/// so that `std::lock_guard` and its kin work.
class VELUM_API CCriticalSection {
 public:
  /// A section that nobody holds.
  CCriticalSection();
  CCriticalSection(const CCriticalSection&) = delete;
  CCriticalSection& operator=(const CCriticalSection&) = delete;
  /// Nobody holds it any more.
  ~CCriticalSection();

  /// Takes the section, and waits as long as another thread holds it.
  void Lock();
  /// Takes the section if no other thread holds it; tells whether it did.
  [[nodiscard]] bool TryLock() noexcept;
  /// Gives the section up once; the calling thread holds it.
  void Unlock() noexcept;

  void lock() { Lock(); }                                       ///< `Lock`.
  [[nodiscard]] bool try_lock() noexcept { return TryLock(); }  ///< `TryLock`.
  void unlock() noexcept { Unlock(); }                          ///< `Unlock`.

 private:
  std::recursive_mutex mutex_;
};

}  // namespace vlm
