#include <velum/diagnostics/detail/ExceptionText.h>

#include <velum/platform/detail/SafeText.h>

namespace vlm::detail {
namespace {

using platform::SafeText;

constexpr struct {
  std::uint32_t code;
  const char* name;
} kNames[] = {
    {0x80000002, "Misalignment"},
    {0x80000003, "Breakpoint"},
    {0x80000004, "SingleStep"},
    {0xC0000005, "Access Violation"},
    {0xC0000006, "Paging error"},
    {0xC000001D, "Illegal Instruction Encountered"},
    {0xC0000025, "Noncontinuable Exception"},
    {0xC0000026, "Invalid Disposition"},
    {0xC000008C, "Bounds Exceeded"},
    {0xC000008D, "Float: Denormal Operand"},
    {0xC000008E, "Float: Division by Zero"},
    {0xC000008F, "Float: Inexact Result"},
    {0xC0000090, "Float: Invalid Operation"},
    {0xC0000091, "Float: Overflow"},
    {0xC0000092, "Float: StackCheck"},
    {0xC0000093, "Float: Undeflow"},
    {0xC0000094, "Integer Division by Zero"},
    {0xC0000095, "Integer: Overflow"},
    {0xC0000096, "Privileged Instruction Encountered"},
    {0xC00000FD, "Stack Overflow"},
};

constexpr int kCodeDigits = 8;

std::uint64_t NumberOf(const void* address) noexcept {
  return reinterpret_cast<std::uintptr_t>(address);
}

}  // namespace

const char* ExceptionName(std::uint32_t code) noexcept {
  for (const auto& one : kNames) {
    if (one.code == code) return one.name;
  }
  return "Unknown";
}

void TellException(const EXCEPTION_RECORD& record, TakeLine take, void* user) {
  char room[160];
  const auto tell = [&](const SafeText& line) { take(line.View(), user); };
  tell(SafeText(room)
           .Put("Code = ")
           .Hex(record.ExceptionCode, kCodeDigits)
           .Put(" (")
           .Put(ExceptionName(record.ExceptionCode))
           .Put(")"));
  if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters == 2) {
    tell(SafeText(room)
             .Put("Attempt to ")
             .Put(record.ExceptionInformation[0] != 0 ? "write" : "read")
             .Put(" at address ")
             .Pointer(record.ExceptionInformation[1]));
  }
  tell(SafeText(room).Put("Flags = ").Hex(record.ExceptionFlags, kCodeDigits));
  tell(SafeText(room).Put("Address = ").Pointer(NumberOf(record.ExceptionAddress)));
}

}  // namespace vlm::detail
