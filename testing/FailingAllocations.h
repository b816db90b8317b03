#pragma once

/// \file
/// Memory that runs out when a test wants it to, and memory that is measured.
///
///     vlm::testing::FailingAllocations exhausted(2);  // two allocations succeed, then none
///     EXPECT_THROW(history.Do(command), std::bad_alloc);
///
///     const vlm::testing::AllocationPeak peak;
///     Load(stream);
///     EXPECT_LT(peak.Bytes(), 1u << 20);
///
/// FailingAllocations.cpp replaces `operator new` in the program that it is part of. So it is no
/// part of the library of test tools: a program names it among its own sources.

#include <cstddef>

namespace vlm::testing {

/// False in a build with clang's thread sanitizer, which keeps `operator new` to itself: tests that
/// need failures are skipped there.
#ifdef __has_feature
inline constexpr bool kAllocationsCanFail = !__has_feature(thread_sanitizer);
#else
inline constexpr bool kAllocationsCanFail = true;
#endif

/// While it lives, allocations of the thread that made it by `operator new` fail: from the first
/// one, or after some that succeed, and for good, or until some have failed. `malloc` and memory
/// with an alignment of its own are not touched.
///
/// One inside the life of another takes its place and gives it back.
class FailingAllocations {
 public:
  /// The first `succeeding` allocations succeed, the next `failing` throw `std::bad_alloc`, and all
  /// others succeed again: so what fails can still make its own exception.
  explicit FailingAllocations(std::size_t succeeding = 0,
                              std::size_t failing = static_cast<std::size_t>(-1)) noexcept;
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations();

  /// True once an allocation has failed.
  [[nodiscard]] bool HaveFailed() const noexcept { return failed_; }

  /// True if the allocation that is asked for has to fail. `operator new` asks it.
  static bool NextFails() noexcept;

 private:
  static thread_local FailingAllocations* active_;

  FailingAllocations* const outer_;
  std::size_t succeeding_;
  std::size_t failing_;
  bool failed_ = false;
};

/// Measures the memory of `operator new`, of all threads of the program, while it lives. One lives
/// at a time.
class AllocationPeak {
 public:
  AllocationPeak() noexcept;
  AllocationPeak(const AllocationPeak&) = delete;
  AllocationPeak& operator=(const AllocationPeak&) = delete;

  /// The most bytes that were held at once so far, beyond those held when it was made.
  [[nodiscard]] std::size_t Bytes() const noexcept;

 private:
  const std::ptrdiff_t before_;
};

}  // namespace vlm::testing
