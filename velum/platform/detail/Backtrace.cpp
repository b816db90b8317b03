#include <velum/platform/detail/Backtrace.h>

#include <velum/platform/detail/CrashContext.h>

#include <execinfo.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstring>

namespace vlm::platform {
namespace {

constexpr int kMost = 262'144;

constinit void* theFew[64] = {};
constinit std::span<void*> theRoom{theFew};

/// The return address that a call has just left on the stack; 0 if there is none.
std::uintptr_t CallerOf(std::uintptr_t stack, const LoadedCode& code) noexcept {
  std::uintptr_t caller = 0;
  if (stack == 0 || stack % sizeof(caller) != 0) return 0;
  std::memcpy(&caller, reinterpret_cast<const void*>(stack), sizeof(caller));
  return code.IsCode(caller) ? caller : 0;
}

/// Walks the stack from here.
std::size_t WalkAll() noexcept {
  return static_cast<std::size_t>(
      std::max(0, ::backtrace(theRoom.data(), static_cast<int>(theRoom.size()))));
}

/// Walks the stack; what lies behind the instruction at `start` is moved to the front.
std::size_t Walk(std::uintptr_t start) noexcept {
  const std::size_t count = WalkAll();
  const auto end = theRoom.begin() + static_cast<std::ptrdiff_t>(count);
  const auto found = std::find(theRoom.begin(), end, reinterpret_cast<void*>(start));
  // The first entries are those of the handler.
  return static_cast<std::size_t>(std::copy(found, end, theRoom.begin()) - theRoom.begin());
}

}  // namespace

void PrepareBacktrace() noexcept {
  // The first call loads a library, which allocates.
  ::backtrace(theFew, static_cast<int>(std::size(theFew)));
  if (theRoom.size() == static_cast<std::size_t>(kMost)) return;
  void* const memory = ::mmap(nullptr, sizeof(void*) * kMost, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory != MAP_FAILED) theRoom = {static_cast<void**>(memory), kMost};
}

std::span<void* const> Backtrace(void* context, const LoadedCode& code) noexcept {
  const std::uintptr_t instruction = InstructionOf(context);
  const std::uintptr_t stack = StackPointerOf(context);
  // Where the processor is not known, the trace begins with the handler.
  if (stack == 0) return theRoom.first(WalkAll());
  const std::uintptr_t caller = code.IsCode(instruction) ? 0 : CallerOf(stack, code);
  std::size_t count = 0;
  if (caller == 0) {
    count = Walk(instruction);
  } else {
    // As if the call were just being made: nothing could be walked from where no code is.
    SetInstruction(context, caller - 1, stack + sizeof(void*));
    count = Walk(caller - 1);
    SetInstruction(context, instruction, stack);
    if (count == 0) count = 1;
    theRoom[0] = reinterpret_cast<void*>(caller);
    const std::size_t last = std::min(count, theRoom.size() - 1);
    std::copy_backward(theRoom.begin(), theRoom.begin() + static_cast<std::ptrdiff_t>(last),
                       theRoom.begin() + static_cast<std::ptrdiff_t>(last + 1));
    count = last + 1;
  }
  if (count == 0) count = 1;
  theRoom[0] = reinterpret_cast<void*>(instruction);
  return theRoom.first(count);
}

}  // namespace vlm::platform
