#include <velum/platform/detail/CrashSignals.h>

#include <velum/platform/detail/CrashCodes.h>
#include <velum/platform/detail/CrashContext.h>
#include <velum/platform/detail/SharedObject.h>
#include <velum/platform/detail/Stack.h>
#include <velum/platform/detail/SteadyTicks.h>
#include <velum/platform/detail/UncaughtException.h>

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <limits>

namespace vlm::platform {
namespace {

constexpr int kCrashSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP, SIGABRT};
/// What may still end the process while it reports.
constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGQUIT, SIGHUP};
/// How long a thread that crashed second waits while nothing goes on, in tenths of a second.
constexpr int kPatience = 300;

constinit std::atomic<CrashReporter> theReporter{nullptr};
/// The thread that reports, and its process, which may be the one that this one was forked from; 0
/// before the first crash.
constinit std::atomic<std::uint64_t> theOwner{0};
constexpr int kProcessShift = 32;

/// Where a step that fails goes on; the owner's alone.
sigjmp_buf theWayOut;
constinit std::atomic<bool> theStepRuns{false};
/// Counts the begins and ends of steps, for those who wait.
constinit std::atomic<unsigned int> theProgress{0};
constinit std::atomic<bool> theStepHasNoLimit{false};
/// What ends a step that takes too long, as the system calls it; the owner's alone.
constinit int theTimer = -1;
/// When a step has taken too long, in seconds of the steady clock.
constinit std::atomic<std::int64_t> theDeadline{0};

/// Stands at the low end of each stack that the library gives, where the handler finds it.
struct StackHead {
  static constexpr std::uint64_t kMark = 0x6B63617453686372;

  std::uint64_t mark;
  std::uintptr_t lowest;  // Of the thread's usual stack.
  rlim_t limit;           // Of the main thread's stack, when that was the lowest.
  stack_t before;
};

constexpr std::size_t kStackSize = std::size_t{256} * 1024;

/// Frees the thread from its alternate stack for the time of a handler, so that the handler can set
/// another one. Of the system's headers, which can't be included beside the C library's.
constexpr int kDisarms = std::numeric_limits<int>::min();

/// For what goes wrong in the report, which would else begin again at the top of the stack that the
/// report runs on.
alignas(16) constinit std::byte theSecondStack[std::size_t{64} * 1024];

/// How large the main thread's stack may become, which may change; any other's does not.
rlim_t LimitOfStack() noexcept {
  rlimit limit{};
  return IsMainThread() && ::getrlimit(RLIMIT_STACK, &limit) == 0 ? limit.rlim_cur : RLIM_INFINITY;
}

/// Whether a thread has used memory beyond the end of its stack. Known of threads that run their
/// handler on a stack of ours; others could not have come here for that.
bool IsStackOverflow(const ucontext_t& context, std::uintptr_t address) noexcept {
  constexpr std::uintptr_t kGuard = std::uintptr_t{1} << 20;
  // So far behind the end a large frame may lie.
  constexpr std::uintptr_t kFar = std::uintptr_t{256} << 20;
  constexpr std::uintptr_t kPage = 4096;
  const auto* const head = static_cast<const StackHead*>(context.uc_stack.ss_sp);
  if ((context.uc_stack.ss_flags & SS_DISABLE) || context.uc_stack.ss_size < sizeof(StackHead) ||
      !head || head->mark != StackHead::kMark || head->lowest == 0) {
    return false;
  }
  std::uintptr_t lowest = head->lowest;
  const rlim_t limit = LimitOfStack();
  if (head->limit != RLIM_INFINITY && limit != RLIM_INFINITY) lowest += head->limit - limit;
  const std::uintptr_t top = StackPointerOf(&context);
  const std::uintptr_t deepest = std::min(top, lowest);
  return top < lowest + 2 * kPage && deepest + kFar >= lowest &&  //
         address < lowest + kPage && address + kGuard >= deepest;
}

/// Puts the facts together; what reads memory that is not ours comes last.
void Collect(int signal, const siginfo_t& info, void* context, CrashFacts& facts) noexcept {
  constexpr std::uint32_t kNoncontinuable = 1;
  const SignalKind kind = KindOfSignal(signal, info.si_code);
  facts.signal = signal;
  facts.code = info.si_code;
  facts.signalName = kind.signalName;
  facts.codeName = kind.codeName;
  facts.process = ::getpid();
  facts.thread = ::gettid();
  ::prctl(PR_GET_NAME, facts.threadName);
  facts.context = context;
  const bool wasSent = info.si_code <= 0;
  const bool hasSender =
      info.si_code == SI_USER || info.si_code == SI_QUEUE || info.si_code == SI_TKILL;
  if (hasSender && info.si_pid != facts.process) facts.sender = info.si_pid;

  EXCEPTION_RECORD& record = facts.record;
  record.ExceptionCode = kind.exception;
  record.ExceptionAddress = reinterpret_cast<void*>(InstructionOf(context));
  if (signal == SIGABRT) {
    record.ExceptionFlags = kNoncontinuable;
    facts.uncaught = UncaughtException();
    if (facts.uncaught) record.ExceptionCode = kUncaughtException;
  }
  if (wasSent || (signal != SIGSEGV && signal != SIGBUS)) return;
  // The processor does not tell which address it was that can't be one at all.
  const std::uintptr_t address = info.si_code == SI_KERNEL
                                     ? ~std::uintptr_t{0}
                                     : reinterpret_cast<std::uintptr_t>(info.si_addr);
  record.NumberParameters = 2;
  record.ExceptionInformation[0] = AccessOf(context) == Access::kWrite ? 1 : 0;
  record.ExceptionInformation[1] = address;
  if (signal == SIGSEGV && IsStackOverflow(*static_cast<const ucontext_t*>(context), address)) {
    record.ExceptionCode = kStackOverflow;
  }
}

/// Reports the crash in the calling thread, which owns the report.
CrashEnd ReportHere(int signal, const siginfo_t& info, void* context) noexcept {
  constexpr unsigned int kSeconds = 10;
  CrashFacts facts;
  auto collect = [&] { Collect(signal, info, context, facts); };
  RunStep(
      kSeconds, [](void* work) { (*static_cast<decltype(collect)*>(work))(); }, &collect);
  // The exception is known by its type; code of its own tells more.
  if (facts.uncaught) {
    RunStep(
        kSeconds, [](void*) { AskUncaughtException(); }, nullptr);
    facts.uncaught = UncaughtException();
  }
  const CrashReporter reporter = theReporter;
  return reporter ? reporter(facts) : CrashEnd::kBySignal;
}

void SetDefault(int signal) noexcept {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  ::sigaction(signal, &action, nullptr);
}

/// Lets the signal have its usual effect once the handler returns, with what it said at first.
void EndBySignal(int signal, siginfo_t* info, void* context) noexcept {
  // The system spares the first process of a container the effect of a signal that was sent.
  if (info->si_code <= 0 && ::getpid() == 1) ::_exit(128 + signal);
  SetDefault(signal);
  sigset_t one;
  ::sigemptyset(&one);
  ::sigaddset(&one, signal);
  ::pthread_sigmask(SIG_BLOCK, &one, nullptr);
  ::sigdelset(&static_cast<ucontext_t*>(context)->uc_sigmask, signal);
  if (::syscall(SYS_rt_tgsigqueueinfo, ::getpid(), ::gettid(), signal, info) != 0) {
    ::syscall(SYS_tgkill, ::getpid(), ::gettid(), signal);
  }
}

/// The calling thread as an owner.
std::uint64_t Self() noexcept {
  return static_cast<std::uint64_t>(::getpid()) << kProcessShift |
         static_cast<std::uint32_t>(::gettid());
}

bool IsOf(pid_t process, std::uint64_t owner) noexcept {
  return owner != 0 && static_cast<pid_t>(owner >> kProcessShift) == process;
}

/// Has the calling thread report unless another one of this process does; gives who does.
std::uint64_t TakeReport() noexcept {
  const std::uint64_t self = Self();
  std::uint64_t owner = theOwner;
  while (!IsOf(::getpid(), owner)) {
    if (theOwner.compare_exchange_weak(owner, self)) return self;
  }
  return owner;
}

/// Leaves the step that the calling thread, which reports, is in; returns if it is in none.
void LeaveStep() noexcept {
  if (theStepRuns.exchange(false)) ::siglongjmp(theWayOut, 1);
}

std::int64_t NowInSeconds() noexcept { return SteadyNanoseconds() / 1'000'000'000; }

/// Makes a timer whose signal goes to the calling thread alone: one sent to the process could end
/// a call that another thread waits in, or be taken by a thread that waits for signals. By system
/// calls, since the C library's functions may ask for memory.
void MakeTimer() noexcept {
  sigevent event{};
  event.sigev_notify = SIGEV_THREAD_ID;
  event.sigev_signo = SIGALRM;
  event._sigev_un._tid = ::gettid();
  if (::syscall(SYS_timer_create, CLOCK_MONOTONIC, &event, &theTimer) != 0) theTimer = -1;
}

/// Has the timer send its signal after so many seconds; 0 stops it.
void SetTimer(unsigned int seconds) noexcept {
  itimerspec time{};
  time.it_value.tv_sec = static_cast<std::time_t>(seconds);
  ::syscall(SYS_timer_settime, theTimer, 0, &time, nullptr);
}

extern "C" void velum_on_crash_alarm(int) {
  const int error = errno;
  // The program may have alarms of its own.
  if (theOwner == Self() && NowInSeconds() >= theDeadline) LeaveStep();
  errno = error;
}

/// Waits for the process to end, which the first thread that crashed does; returns when nothing
/// goes on there.
void WaitForTheEnd() noexcept {
  constexpr timespec kTenth{0, 100'000'000};
  unsigned int seen = theProgress;
  for (int waited = 0; waited < kPatience; ++waited) {
    ::nanosleep(&kTenth, nullptr);
    if (seen != theProgress || theStepHasNoLimit) waited = 0;
    seen = theProgress;
  }
}

/// Lets in the signals that a step may raise or be ended by, whatever the thread had blocked.
void LetSignalsIn() noexcept {
  struct sigaction action {};
  action.sa_handler = &velum_on_crash_alarm;
  action.sa_flags = SA_ONSTACK | SA_RESTART;
  ::sigfillset(&action.sa_mask);
  ::sigaction(SIGALRM, &action, nullptr);
  sigset_t in;
  ::sigemptyset(&in);
  ::sigaddset(&in, SIGALRM);
  for (const int signal : kCrashSignals) ::sigaddset(&in, signal);
  ::pthread_sigmask(SIG_UNBLOCK, &in, nullptr);
}

/// Sets the second stack until the handler returns; refused where the program gave the thread a
/// stack of its own.
void UseSecondStack() noexcept {
  stack_t stack{};
  stack.ss_sp = theSecondStack;
  stack.ss_size = sizeof(theSecondStack);
  ::sigaltstack(&stack, nullptr);
}

extern "C" void velum_on_crash(int signal, siginfo_t* info, void* context) {
  const int error = errno;
  CrashEnd end = CrashEnd::kBySignal;
  const std::uint64_t before = theOwner;
  if (IsOf(::getppid(), before)) {
    // A child of a process that reports: the report is the parent's, and perhaps its memory, too.
  } else if (const std::uint64_t owner = TakeReport(); owner != before && owner == Self()) {
    theStepRuns = false;
    UseSecondStack();
    LetSignalsIn();
    MakeTimer();
    end = ReportHere(signal, *info, context);
  } else if (owner == Self()) {
    LeaveStep();
  } else {
    WaitForTheEnd();
  }
  if (end == CrashEnd::kByExit) ::_exit(128 + signal);
  EndBySignal(signal, info, context);
  errno = error;
}

}  // namespace

bool AreCrashesReported() noexcept { return theReporter != nullptr; }

void InstallCrashSignals(CrashReporter reporter) noexcept {
  KeepThisLibrary();
  theReporter = reporter;
  struct sigaction action {};
  action.sa_sigaction = &velum_on_crash;
  // A crash in the handler comes to the handler; whatever else may wait does.
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
  ::sigfillset(&action.sa_mask);
  for (const int signal : kCrashSignals) ::sigdelset(&action.sa_mask, signal);
  for (const int signal : kStopSignals) ::sigdelset(&action.sa_mask, signal);
  for (const int signal : kCrashSignals) ::sigaction(signal, &action, nullptr);
}

bool RunStep(unsigned int seconds, void (*step)(void*), void* argument) noexcept {
  ++theProgress;
  theStepHasNoLimit = seconds == 0;
  if (sigsetjmp(theWayOut, 1) != 0) {
    SetTimer(0);
    theStepHasNoLimit = false;
    ++theProgress;
    return false;
  }
  theDeadline = seconds == 0 ? INT64_MAX : NowInSeconds() + seconds;
  theStepRuns = true;
  SetTimer(seconds);
  step(argument);
  SetTimer(0);
  theStepRuns = false;
  theStepHasNoLimit = false;
  ++theProgress;
  return true;
}

bool IsMainThread() noexcept { return ::getpid() == ::gettid(); }

void* GiveCrashStack() noexcept {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  void* const memory = ::mmap(nullptr, kStackSize + page, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  ::mprotect(memory, page, PROT_NONE);
  auto* const head = reinterpret_cast<StackHead*>(static_cast<std::byte*>(memory) + page);
  *head = {StackHead::kMark, LowestOfStack(), LimitOfStack(), {}};
  stack_t stack{};
  stack.ss_sp = head;
  stack.ss_size = kStackSize;
  // An old system does not know the flag.
  for (const int flags : {kDisarms, 0}) {
    stack.ss_flags = flags;
    if (::sigaltstack(&stack, &head->before) == 0) return head;
  }
  ::munmap(memory, kStackSize + page);
  return nullptr;
}

void TakeCrashStack(void* stack) noexcept {
  if (!stack) return;
  auto* const head = static_cast<StackHead*>(stack);
  stack_t now{};
  // Another one that was given meanwhile stays, and comes back to this one.
  if (::sigaltstack(nullptr, &now) != 0 || now.ss_sp != stack ||
      ::sigaltstack(&head->before, nullptr) != 0) {
    return;
  }
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  ::munmap(static_cast<std::byte*>(stack) - page, kStackSize + page);
}

}  // namespace vlm::platform
