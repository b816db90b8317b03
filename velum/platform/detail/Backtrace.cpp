#include <velum/platform/detail/Backtrace.h>

#include <velum/platform/detail/CrashContext.h>

#include <unwind.h>

#include <cstring>

namespace vlm::platform {
namespace {

/// The return address that a call has just left on the stack; 0 if there is none.
std::uintptr_t CallerOf(std::uintptr_t stack, const LoadedCode& code) noexcept {
  std::uintptr_t caller = 0;
  if (stack == 0 || stack % sizeof(caller) != 0) return 0;
  std::memcpy(&caller, reinterpret_cast<const void*>(stack), sizeof(caller));
  return code.IsCode(caller) ? caller : 0;
}

/// A walk from the handler outwards, which takes what lies behind the crash.
struct Walker {
  Backtrace* trace;      // Null takes nothing.
  std::uintptr_t start;  // The first entries are those of the handler.
  bool isBehindStart;
  std::uintptr_t address = 0;
  std::uintptr_t frame = 0;
};

_Unwind_Reason_Code TakeFrame(_Unwind_Context* context, void* argument) noexcept {
  Walker& walker = *static_cast<Walker*>(argument);
  if (!walker.trace) return _URC_NO_REASON;
  const std::uintptr_t address = _Unwind_GetIP(context);
  const std::uintptr_t frame = _Unwind_GetCFA(context);
  if (!walker.isBehindStart) {
    walker.isBehindStart = address == walker.start;
    return _URC_NO_REASON;
  }
  // A damaged stack may lead to itself.
  if (address == walker.address && frame == walker.frame) return _URC_END_OF_STACK;
  walker.address = address;
  walker.frame = frame;
  if (address != 0) walker.trace->Add(address);
  return _URC_NO_REASON;
}

}  // namespace

void Backtrace::Prepare() noexcept {
  // The first walk may load what it needs, and ask for memory.
  Walker walker{nullptr, 0, false};
  _Unwind_Backtrace(&TakeFrame, &walker);
}

void Backtrace::Begin(const void* context) noexcept {
  count_ = 0;
  Add(InstructionOf(context));
}

void Backtrace::Add(std::uintptr_t address) noexcept {
  (count_ < kInner ? inner_[count_] : outer_[(count_ - kInner) % kOuter]) = address;
  ++count_;
}

void Backtrace::Walk(void* context, const LoadedCode& code) noexcept {
  const std::uintptr_t instruction = InstructionOf(context);
  const std::uintptr_t stack = StackPointerOf(context);
  // Where the processor is not known, it is not known either where the handler's entries end.
  Walker walker{this, instruction, stack == 0};
  const std::uintptr_t caller = code.IsCode(instruction) ? 0 : CallerOf(stack, code);
  if (caller != 0) {
    // As if the call were just being made: nothing could be walked from where no code is.
    Add(caller);
    walker.start = caller - 1;
    SetInstruction(context, caller - 1, stack + sizeof(void*));
  }
  _Unwind_Backtrace(&TakeFrame, &walker);
  if (caller != 0) SetInstruction(context, instruction, stack);
}

}  // namespace vlm::platform
