// What is done here is wrong on purpose; sanitizers leave this file alone.

#include <examples/crashlab/Ways.h>

#include <velum/core/GString.h>
#include <velum/diagnostics/CrashHandler.h>
#include <velum/diagnostics/Logger.h>

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace vlm::crashlab {
namespace {

// Volatile, so that the compiler does not see what is going to happen.
double* volatile theDepths = nullptr;
void (*volatile theFormat)() = nullptr;
volatile int theCount = 0;

[[gnu::noinline]] void WriteNull() { theDepths[0] = 12.5; }

[[gnu::noinline]] void CallNull() { theFormat(); }

[[gnu::noinline]] int Subdivide(int level) {
  volatile char block[512];
  block[0] = static_cast<char>(level);
  const int below = theCount == 0 ? Subdivide(level + 1) : 0;
  return below + block[0];
}

[[gnu::noinline]] void OverflowStack() { theCount = Subdivide(0); }

[[gnu::noinline]] void OverflowStackOfThread() {
  std::thread([] {
    const CrashStack stack;
    OverflowStack();
  }).join();
}

[[gnu::noinline]] void Abort() { std::abort(); }

[[gnu::noinline]] void Throw() { throw std::runtime_error("line 7 has no wells"); }

[[gnu::noinline]] void Divide() { theCount = 1000 / theCount; }

[[gnu::noinline]] void WriteNullInThread() {
  std::thread([] { WriteNull(); }).join();
}

// Reads a file through memory after somebody has cut it.
[[gnu::noinline]] void ReadCutFile() {
  constexpr std::size_t kSize = 4096;
  std::FILE* const file = std::tmpfile();
  if (!file || ::ftruncate(::fileno(file), kSize) != 0) return;
  void* const memory = ::mmap(nullptr, kSize, PROT_READ, MAP_SHARED, ::fileno(file), 0);
  if (memory == MAP_FAILED || ::ftruncate(::fileno(file), 0) != 0) return;
  theCount = *static_cast<volatile char*>(memory);
}

[[gnu::noinline]] void RunIllegalInstruction() {
#ifdef __x86_64__
  __asm__ volatile("ud2");
#else
  __builtin_trap();
#endif
}

// Crashes while another thread is in the middle of a log line, and will stay there.
[[gnu::noinline]] void CrashBesideLockedLog() {
  static std::atomic<bool> isInside{false};
  g_Logger.SetOutputCallback(
      [](int, const GString&, void*) {
        isInside = true;
        for (;;) ::pause();
      },
      nullptr);
  std::thread([] { g_Logger.Send(LogInformation, "Waiting for the licence"); }).detach();
  while (!isInside) std::this_thread::yield();
  WriteNull();
}

constexpr Way kWays[] = {
    {"null-write", "writes through a null pointer", WriteNull, SIGSEGV},
    {"null-call", "calls a function through a null pointer", CallNull, SIGSEGV},
    {"stack-overflow", "calls itself until the stack is full", OverflowStack, SIGSEGV},
    {"thread-overflow", "the same in a thread, which has a CrashStack", OverflowStackOfThread,
     SIGSEGV},
    {"abort", "calls abort", Abort, SIGABRT},
    {"exception", "throws an exception that nobody catches", Throw, SIGABRT},
    {"division", "divides an integer by zero", Divide, SIGFPE},
    {"thread", "writes through a null pointer in another thread", WriteNullInThread, SIGSEGV},
    {"bus", "reads memory whose file is gone", ReadCutFile, SIGBUS},
    {"illegal", "runs an instruction that the processor refuses", RunIllegalInstruction, SIGILL},
    {"log-locked", "writes through null while another thread holds the log's lock",
     CrashBesideLockedLog, SIGSEGV},
};

}  // namespace

std::span<const Way> AllWays() { return kWays; }

const Way* FindWay(std::string_view name) {
  for (const Way& way : kWays) {
    if (way.name == name) return &way;
  }
  return nullptr;
}

}  // namespace vlm::crashlab
