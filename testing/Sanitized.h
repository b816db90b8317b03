#pragma once

/// \file
/// How much a test over random input does in a build that is slow.
///
///     for (int i = 0; i < Rounds(2000); ++i) { ... }

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VELUM_IS_SANITIZED
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VELUM_IS_SANITIZED
#endif

namespace vlm::testing {

/// Whether the build has the address or the thread sanitizer, which make it ten times as slow.
#ifdef VELUM_IS_SANITIZED
inline constexpr bool kIsSanitized = true;
#undef VELUM_IS_SANITIZED
#else
inline constexpr bool kIsSanitized = false;
#endif

/// Whether the compiler optimizes.
#ifdef __OPTIMIZE__
inline constexpr bool kIsOptimized = true;
#else
inline constexpr bool kIsOptimized = false;
#endif

/// How many rounds to do of `full`: all of them, or in a build that is sanitized or not optimized a
/// tenth, but one at least.
constexpr int Rounds(int full) {
  const bool isSlow = kIsSanitized || !kIsOptimized;
  return isSlow && full > 10 ? full / 10 : isSlow ? 1 : full;
}

}  // namespace vlm::testing
