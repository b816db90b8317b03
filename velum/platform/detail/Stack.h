#pragma once

/// \file
/// How much stack a thread has left, and more of it where that is not enough.
///
///     if (vlm::platform::StackLeft() < 128 * 1024) vlm::platform::RunOnNewStack(64 << 20, Go,
///     &work);

#include <cstddef>

namespace vlm::platform {

/// Gives how many bytes of stack the calling thread has left, about.
[[nodiscard]] std::size_t StackLeft() noexcept;

/// Runs `task` in a thread with a stack of `bytes` bytes, waits for it, and throws what it throws.
/// Gives false where the system has no thread to give; the task did not run then.
///
/// *Cost*: some ten microseconds; the system provides memory only as the stack is used.
[[nodiscard]] bool RunOnNewStack(std::size_t bytes, void (*task)(void*), void* argument);

}  // namespace vlm::platform
