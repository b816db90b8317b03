#pragma once

/// \file
/// What the machine is and what it has, for reports.
///
///     puts(vlm::GetOSNameAndVersion().c_str());  // Debian GNU/Linux 12, Version 6.1, build 0
///     const bool vectors = vlm::CPUHasFeature(1ul << 26, nullptr);
///
/// Threads: any thread may call these functions; nothing is kept between calls.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <cstdint>

namespace vlm {

/// The name of the system as its release file (`os-release`) has it, such as "Debian GNU/Linux 12
/// (bookworm)"; the kernel's name where there is no such file; empty if the kernel does not tell
/// its version.
[[nodiscard]] VELUM_API GString GetOSName();

/// The name of the system and the first three numbers of its kernel: ", Version 6.1, build 0" for
/// "6.1.0-13". A number that the kernel does not give is 0.
///
/// - A system without a name: empty.
[[nodiscard]] VELUM_API GString GetOSNameAndVersion();

/// The bytes of physical memory that programs can get at this moment without swapping, the caches
/// that the system would give up included; 0 if the system does not tell.
[[nodiscard]] VELUM_API std::uint64_t GetPhysicalMemory();

/// Tells whether the processor has one of the features of `mask`, bits of register EDX after leaf 1
/// of the CPUID instruction. If `name` is not null, it becomes the name of the highest feature that
/// is asked for, whether the processor has it or not.
///
/// - A mask of 0: false, and `name` stays. Bits beyond the 32 of the register count as 0.
/// - A processor without that instruction: false.
VELUM_API bool CPUHasFeature(unsigned long mask, GString* name);

}  // namespace vlm
