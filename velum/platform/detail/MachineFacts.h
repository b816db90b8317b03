#pragma once

/// \file
/// What the system and the machine are, in figures.
///
///     vlm::platform::MemoryFacts memory;
///     if (vlm::platform::ReadMemoryFacts(memory)) Report(memory.physicalFree);

#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::platform {

/// The kernel: its name and the first three numbers of its release.
struct KernelFacts {
  std::string name;    ///< "Linux".
  unsigned major = 0;  ///< 6 of "6.1.0-13".
  unsigned minor = 0;  ///< 1 of it.
  unsigned build = 0;  ///< 0 of it.
};

/// Asks the kernel what it is; false if it does not tell.
[[nodiscard]] bool ReadKernelFacts(KernelFacts& facts);

/// The name of the system from its release file; empty if there is none.
[[nodiscard]] std::string ReleaseName();

/// The name of a system from the text of its release file: PRETTY_NAME, or else NAME and VERSION.
/// The text is lines of `KEY=value`, the values quoted as a shell does it. What a line of a report
/// can't hold ends the name.
[[nodiscard]] std::string ReleaseNameIn(std::string_view text);

/// Memory, in bytes.
struct MemoryFacts {
  std::uint64_t physical = 0;      ///< What the machine has.
  std::uint64_t physicalFree = 0;  ///< What programs can get of it without swapping.
  std::uint64_t swap = 0;          ///< What can be swapped out.
  std::uint64_t swapFree = 0;      ///< What is left of that.
  std::uint64_t address = 0;       ///< The addresses that this process may use.
  std::uint64_t addressFree = 0;   ///< Those that it does not use.
};

/// Asks the system for its memory; false if it does not tell.
[[nodiscard]] bool ReadMemoryFacts(MemoryFacts& facts);

/// Finds the figure of `key` in a text of lines "key:   figure kB", in bytes; false if it is not
/// there.
[[nodiscard]] bool FindKilobytes(std::string_view text, std::string_view key, std::uint64_t& bytes);

/// The processor, in words.
struct ProcessorFacts {
  std::string vendor;      ///< "GenuineIntel".
  std::string name;        ///< The name that it is sold by.
  std::string identifier;  ///< "x86_64 Family 6 Model 158 Stepping 10".
};

/// Asks the processor what it is; texts that it does not give are empty.
[[nodiscard]] ProcessorFacts ReadProcessorFacts();

/// The number of processors that are running.
[[nodiscard]] unsigned ProcessorCount() noexcept;

/// The processors that this process may run on, bit 0 for the first; those beyond 64 are left out.
[[nodiscard]] std::uint64_t ProcessorMask() noexcept;

/// Register EDX after leaf 1 of the CPUID instruction; 0 on a processor without it.
[[nodiscard]] std::uint32_t ProcessorFeatures() noexcept;

}  // namespace vlm::platform
