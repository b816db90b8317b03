#pragma once

/// \file
/// The processor's state as the handler of a signal gets it.
///
///     const std::uintptr_t address = vlm::platform::InstructionOf(context);

#include <array>
#include <cstddef>
#include <cstdint>

namespace vlm::platform {

/// A register of the processor.
struct Register {
  const char* name = "";    ///< As the processor's makers call it.
  std::uint64_t value = 0;  ///< What it held.
};

/// What the processor tells of an access to memory that failed.
enum class Access { kUnknown, kRead, kWrite };

/// The address of the instruction; 0 where this processor is not known.
[[nodiscard]] std::uintptr_t InstructionOf(const void* context) noexcept;
/// The address of the top of the stack; 0 where this processor is not known.
[[nodiscard]] std::uintptr_t StackPointerOf(const void* context) noexcept;
/// What was tried when a page was refused.
[[nodiscard]] Access AccessOf(const void* context) noexcept;

/// Sets both, for whoever walks the stack.
void SetInstruction(void* context, std::uintptr_t instruction, std::uintptr_t stack) noexcept;

/// The registers that a report shows; none where this processor is not known. Gives how many of
/// `out` are in use.
[[nodiscard]] std::size_t RegistersOf(const void* context, std::array<Register, 24>& out) noexcept;

}  // namespace vlm::platform
