#include <velum/platform/detail/CrashContext.h>

#include <ucontext.h>

namespace vlm::platform {

#if defined(__x86_64__)

namespace {

std::uint64_t ValueOf(const void* context, int number) noexcept {
  return static_cast<std::uint64_t>(
      static_cast<const ucontext_t*>(context)->uc_mcontext.gregs[number]);
}

}  // namespace

std::uintptr_t InstructionOf(const void* context) noexcept { return ValueOf(context, REG_RIP); }

std::uintptr_t StackPointerOf(const void* context) noexcept { return ValueOf(context, REG_RSP); }

Access AccessOf(const void* context) noexcept {
  // Of the bits of a page fault's error code, the second is set for writing.
  constexpr std::uint64_t kPageFault = 14;
  if (ValueOf(context, REG_TRAPNO) != kPageFault) return Access::kUnknown;
  return ValueOf(context, REG_ERR) & 2 ? Access::kWrite : Access::kRead;
}

void SetInstruction(void* context, std::uintptr_t instruction, std::uintptr_t stack) noexcept {
  auto& registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
  registers[REG_RIP] = static_cast<greg_t>(instruction);
  registers[REG_RSP] = static_cast<greg_t>(stack);
}

std::size_t RegistersOf(const void* context, std::array<Register, 24>& out) noexcept {
  constexpr struct {
    const char* name;
    int number;
  } kShown[] = {{"rax", REG_RAX}, {"rbx", REG_RBX},    {"rcx", REG_RCX}, {"rdx", REG_RDX},
                {"rsi", REG_RSI}, {"rdi", REG_RDI},    {"rbp", REG_RBP}, {"rsp", REG_RSP},
                {"r8", REG_R8},   {"r9", REG_R9},      {"r10", REG_R10}, {"r11", REG_R11},
                {"r12", REG_R12}, {"r13", REG_R13},    {"r14", REG_R14}, {"r15", REG_R15},
                {"rip", REG_RIP}, {"eflags", REG_EFL}, {"err", REG_ERR}, {"trapno", REG_TRAPNO},
                {"cr2", REG_CR2}};
  std::size_t count = 0;
  for (const auto& shown : kShown) out[count++] = {shown.name, ValueOf(context, shown.number)};
  return count;
}

#else

std::uintptr_t InstructionOf(const void*) noexcept { return 0; }
std::uintptr_t StackPointerOf(const void*) noexcept { return 0; }
Access AccessOf(const void*) noexcept { return Access::kUnknown; }
void SetInstruction(void*, std::uintptr_t, std::uintptr_t) noexcept {}
std::size_t RegistersOf(const void*, std::array<Register, 24>&) noexcept { return 0; }

#endif

}  // namespace vlm::platform
