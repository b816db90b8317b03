#pragma once

/// \file
/// How much stack a thread has left, and more of it where that is not enough.
///
///     if (vlm::platform::StackLeft() > 128 * 1024) return Go(&work);
///     if (!vlm::platform::RunOnNewStack(64 << 20, &Go, &work)) throw TooDeep();

#include <cstddef>
#include <cstdint>

namespace vlm::platform {

/// The lowest address of the stack that the system gave the calling thread; 0 if it does not tell.
/// Allocates: it is not for the handler of a signal.
[[nodiscard]] std::uintptr_t LowestOfStack() noexcept;

/// Gives how many bytes of stack the calling thread has left, about.
[[nodiscard]] std::size_t StackLeft() noexcept;

/// Runs `task` in a thread with a stack of `bytes` bytes, waits for it, and throws what it throws.
/// Gives false where the system has no thread to give; the task did not run then.
///
/// *Cost*: some ten microseconds; the system provides memory only as the stack is used.
[[nodiscard]] bool RunOnNewStack(std::size_t bytes, void (*task)(void*), void* argument);

}  // namespace vlm::platform
