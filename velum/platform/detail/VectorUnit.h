#pragma once

/// \file
/// How wide the processor's vector instructions are.
///
///     return vlm::platform::HasFourWide() ? SumFourWide(numbers) : Sum(numbers);

namespace vlm::platform {

/// Tells whether processor and system run AVX2 instructions, which work on four doubles at a time.
/// *Cost*: that of reading a flag.
[[nodiscard]] inline bool HasFourWide() noexcept {
#ifdef __x86_64__
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

}  // namespace vlm::platform
