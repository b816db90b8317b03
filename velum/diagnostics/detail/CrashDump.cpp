#include <velum/diagnostics/detail/CrashDump.h>

#include <velum/diagnostics/RecentLines.h>
#include <velum/diagnostics/detail/ExceptionText.h>
#include <velum/platform/Types.h>
#include <velum/platform/detail/Backtrace.h>
#include <velum/platform/detail/CrashContext.h>
#include <velum/platform/detail/LoadedCode.h>
#include <velum/platform/detail/SafeFile.h>
#include <velum/platform/detail/UtcTime.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vlm::detail {
namespace {

using platform::CodeModule;
using platform::CrashFacts;
using platform::LoadedCode;
using platform::SafeText;

constexpr char kFirstLine[] = "Velum crash dump 1\n";
constexpr int kAddressDigits = 16;

// What is too large for the stack of a handler.
constinit LoadedCode theCode;
constinit platform::Backtrace theTrace;
constinit std::array<char, kRecentLogBytes> theLines{};
constinit char theText[4096] = {};

/// A text file. Keeps the first error.
class DumpFile {
 public:
  explicit DumpFile(int file) noexcept : file_(file) {}

  void Put(std::string_view text) noexcept {
    if (error_ == 0 && !platform::WriteSafely(file_, text)) error_ = errno == 0 ? EIO : errno;
  }
  void Title(std::string_view title) noexcept {
    char room[160];
    SafeText text(room);
    text.Put("\n").Put(title).Put("\n");
    for (std::size_t i = 0; i < title.size(); ++i) text.Put("-");
    Put(text.Put("\n").View());
  }
  [[nodiscard]] int Error() const noexcept { return error_; }

 private:
  int file_;
  int error_ = 0;
};

void WriteHead(DumpFile& out, const char* application, const CrashFacts& facts) noexcept {
  char room[1024];
  out.Put(kFirstLine);
  out.Put(SafeText(room).Put("Application: ").PutPrintable(application).Put("\n").View());
  SafeText line(room);
  line.Put("Time: ");
  platform::PutUtcTime(line);
  out.Put(line.Put("\n").View());
  out.Put(SafeText(room)
              .Put("Process: ")
              .Decimal(facts.process)
              .Put(", thread: ")
              .Decimal(facts.thread)
              .Put(" (")
              .PutPrintable(facts.threadName)
              .Put(")\n")
              .View());
}

void WriteException(DumpFile& out, const CrashFacts& facts) noexcept {
  out.Title(kExceptionTitle);
  TellException(
      facts.record,
      [](std::string_view line, void* file) {
        static_cast<DumpFile*>(file)->Put(line);
        static_cast<DumpFile*>(file)->Put("\n");
      },
      &out);
  SafeText text(theText);
  TellSignal(facts, text);
  if (facts.record.NumberParameters == 2) {
    text.Put(", memory at ").Pointer(facts.record.ExceptionInformation[1]);
  }
  text.Put("\n");
  if (facts.uncaught) text.Put("Uncaught exception = ").PutPrintable(facts.uncaught).Put("\n");
  out.Put(text.View());
}

void WriteRegisters(DumpFile& out, const CrashFacts& facts) noexcept {
  std::array<platform::Register, 24> registers;
  const std::size_t count = platform::RegistersOf(facts.context, registers);
  if (count == 0) return;
  out.Title("Registers");
  char room[64];
  for (const platform::Register& one : std::span(registers).first(count)) {
    SafeText line(room);
    line.Put(one.name);
    while (line.View().size() < std::string_view("eflags").size()) line.Put(" ");
    out.Put(line.Put(" = ").Hex(one.value, kAddressDigits).Put("\n").View());
  }
}

void WriteFrame(DumpFile& out, std::size_t number, std::uintptr_t address) noexcept {
  char room[512];
  SafeText line(room, sizeof(room) - 1);
  line.Put("#").Decimal(static_cast<std::int64_t>(number));
  do {
    line.Put(" ");
  } while (line.View().size() < 5);
  line.Hex(address, kAddressDigits).Put("  ");
  // A return address may be the first one behind a module.
  const CodeModule* const module = theCode.Find(number == 0 ? address : address - 1);
  if (module) {
    line.PutPrintable(module->path.substr(module->path.rfind('/') + 1))
        .Put(" + 0x")
        .Hex(address - module->begin);
  } else {
    line.Put("(no module)");
  }
  out.Put(line.View());
  out.Put("\n");
}

void WriteOuterFrames(DumpFile& out) noexcept {
  for (std::size_t i = 1; i < theTrace.Count(); ++i) {
    if (i == platform::Backtrace::kInner && theTrace.LeftOut() > 0) {
      char room[64];
      out.Put(SafeText(room)
                  .Put("(")
                  .Decimal(static_cast<std::int64_t>(theTrace.LeftOut()))
                  .Put(" frames are left out)\n")
                  .View());
      i += theTrace.LeftOut();
    }
    WriteFrame(out, i, theTrace[i]);
  }
}

void WriteModule(DumpFile& out, const CodeModule& module) noexcept {
  char room[512];
  SafeText line(room);
  line.Hex(module.begin, kAddressDigits).Put("-").Hex(module.end, kAddressDigits).Put("  ");
  std::string_view id;
  // Its first page may be gone with its file.
  RunReportStep(kStepSeconds, [&] { id = platform::BuildId(module); });
  for (const char byte : id.substr(0, 64)) line.Hex(static_cast<unsigned char>(byte), 2);
  out.Put(line.Put(id.empty() ? "-  " : "  ").View());
  out.Put(module.path);
  out.Put("\n");
}

}  // namespace

void TellSignal(const CrashFacts& facts, SafeText& out) noexcept {
  out.Put("Signal = ").Decimal(facts.signal).Put(" (").Put(facts.signalName).Put(", ");
  if (*facts.codeName != '\0') {
    out.Put(facts.codeName);
  } else {
    out.Put("code ").Decimal(facts.code);
  }
  out.Put(")");
  if (facts.sender != 0) out.Put(" from process ").Decimal(facts.sender);
}

int WriteCrashDump(int file, const char* application, const CrashFacts& facts) noexcept {
  DumpFile out(file);
  const auto part = [&out](auto write) {
    if (!RunReportStep(kStepSeconds, write)) out.Put("(the rest of this part is lost)\n");
  };
  part([&] { WriteHead(out, application, facts); });
  part([&] { WriteException(out, facts); });
  part([&] { WriteRegisters(out, facts); });
  part([&] { theCode.Read(); });
  out.Title("Stack trace");
  theTrace.Begin(facts.context);
  part([&] { WriteFrame(out, 0, theTrace[0]); });
  const std::uintptr_t instruction = platform::InstructionOf(facts.context);
  const std::uintptr_t stack = platform::StackPointerOf(facts.context);
  const bool isWhole = RunReportStep(kStepSeconds, [&] { theTrace.Walk(facts.context, theCode); });
  // A walk that crashed may have left others there.
  platform::SetInstruction(facts.context, instruction, stack);
  part([&] { WriteOuterFrames(out); });
  if (!isWhole) out.Put("(the rest could not be walked)\n");
  out.Title("Loaded modules");
  for (std::size_t i = 0; i < theCode.Count(); ++i) {
    if (theCode[i].isFile) WriteModule(out, theCode[i]);
  }
  out.Title("Last log lines");
  part([&] { out.Put({theLines.data(), CopyRecentLogLines(theLines.data(), theLines.size())}); });
  return out.Error();
}

}  // namespace vlm::detail
