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
///     // All that libvelum itself asks for, by whatever way; what the test asks for is there.
///     vlm::testing::FailingAllocations exhausted(2, 1, vlm::testing::Asker::Library);
///
/// FailingAllocations.cpp replaces `operator new` in the program that it is part of, and
/// FailingMalloc.cpp `malloc` and its kin. So they are no part of the library of test tools: a
/// program names them among its own sources.

#include <cstddef>

namespace vlm::testing {

/// False in a build with clang's thread sanitizer, which keeps `operator new` to itself: tests that
/// need failures are skipped there.
#ifdef __has_feature
inline constexpr bool kAllocationsCanFail = !__has_feature(thread_sanitizer);
#else
inline constexpr bool kAllocationsCanFail = true;
#endif

/// Whose allocations fail.
enum class Asker {
  Anyone,   ///< Everybody's by `operator new`.
  Library,  ///< Those by code of libvelum, or of the standard library when libvelum has called it;
            ///< `malloc`, `calloc` and `realloc` too if FailingMalloc.cpp is part of the program.
};

/// While it lives, allocations of the thread that made it fail: from the first one, or after some
/// that succeed, and for good, or until some have failed. Memory with an alignment of its own is
/// not touched.
///
/// One inside the life of another takes its place and gives it back.
class FailingAllocations {
 public:
  /// The first `succeeding` allocations succeed, the next `failing` throw `std::bad_alloc`, and all
  /// others succeed again: so what fails can still make its own exception.
  /// Of other askers than `asker` none fails, and none is counted.
  explicit FailingAllocations(std::size_t succeeding = 0,
                              std::size_t failing = static_cast<std::size_t>(-1),
                              Asker asker = Asker::Anyone) noexcept;
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations();

  /// True once an allocation has failed.
  [[nodiscard]] bool HaveFailed() const noexcept { return failed_; }

  /// True if the allocation that is asked for has to fail. `operator new` asks it, with the address
  /// that it returns to.
  static bool NextFails(const void* caller) noexcept;
  /// The same for `malloc` and its kin.
  static bool NextMallocFails(const void* caller) noexcept;

 private:
  static thread_local FailingAllocations* active_;

  FailingAllocations* const outer_;
  std::size_t succeeding_;
  std::size_t failing_;
  const Asker asker_;
  bool failed_ = false;
};

/// The bytes that the program has of `malloc` and its kin and has not given back. Only with
/// FailingMalloc.cpp.
[[nodiscard]] std::ptrdiff_t HeldOfMalloc() noexcept;

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
