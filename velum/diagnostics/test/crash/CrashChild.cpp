// A program that crashes in the way that its first argument names; the others are NAME=VALUE.
//
//   app=NAME       the name for SetCrashHandler; the program's own otherwise
//   log=PATH       the file of g_Logger, with a line in it unless early=1
//   question=A     yes, no, crash, abort, fork, overflow: what the application's question does
//   alert=A        tell, hang: what the application's alert does
//   mask=N         the types that the log takes
//   drop=1         may not write where it stands
//   old=1          there is a dump that everybody may read
//   linked=1       its dump would be a link to another file
//   room=N         how many bytes a file may have

#include <velum/core/Exception.h>
#include <velum/diagnostics/CrashHandler.h>
#include <velum/diagnostics/Logger.h>

#include <fcntl.h>
#include <fenv.h>
#include <malloc.h>
#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

volatile int theZero = 0;
int* volatile theNull = nullptr;
void (*volatile theNoFunction)() = nullptr;

[[gnu::noinline]] int WriteNull() {
  *theNull = 1;
  return theZero;
}

[[gnu::noinline]] int Recurse(int depth) {
  volatile char room[256];
  room[0] = static_cast<char>(depth);
  const int deeper = theZero == 0 ? Recurse(depth + 1) : 0;
  return deeper + room[0];
}

/// Overwrites its own frame and those of its callers, and returns to what is no address.
[[gnu::noinline]] void SmashStack() {
  void* (*volatile fill)(void*, int, std::size_t) = &std::memset;
  char room[16];
  fill(room, 'A', 256);
}

struct CrashingText : std::exception {
  const char* what() const noexcept override { return WriteNull() ? "" : "never"; }
};

struct HangingText : std::exception {
  const char* what() const noexcept override {
    for (;;) ::pause();
  }
};

/// Calls itself with frames larger than any guard.
[[gnu::noinline]] int RecurseWide(int depth) {
  volatile char room[3 << 20];
  room[sizeof(room) / 2] = static_cast<char>(depth);
  const int deeper = theZero == 0 ? RecurseWide(depth + 1) : 0;
  return deeper + room[0];
}

/// Overflows a stack that was made larger later.
void OverflowRaisedStack() {
  rlimit limit{};
  ::getrlimit(RLIMIT_STACK, &limit);
  limit.rlim_cur += rlim_t{8} << 20;
  ::setrlimit(RLIMIT_STACK, &limit);
  theZero = Recurse(0);
}

/// Crashes with an alternate stack of the program's own, whose lowest page can't be read.
void CrashOnOwnStack() {
  stack_t own{};
  own.ss_size = 1 << 17;
  own.ss_sp =
      ::mmap(nullptr, own.ss_size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (::mprotect(own.ss_sp, 4096, PROT_NONE) != 0 || ::sigaltstack(&own, nullptr) != 0)
    std::_Exit(3);
  WriteNull();
}

long PagesOfAddressSpace() {
  long pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages;
}

/// Sets the handler in many threads; fails if much of what they had stays.
void SetInThreads() {
  constexpr int kThreads = 200;
  constexpr long kPagesOfStack = 64;
  const auto run = [] { std::thread([] { vlm::SetCrashHandler("Child"); }).join(); };
  run();
  const long before = PagesOfAddressSpace();
  for (int i = 0; i < kThreads; ++i) run();
  if (PagesOfAddressSpace() - before > kThreads / 2 * kPagesOfStack) std::_Exit(4);
}

void Throw() { throw std::out_of_range("no row 12"); }
void (*volatile theThrower)() = &Throw;
void ThrowThroughNoexcept() noexcept { theThrower(); }

/// Reads a page of a file that has none.
void ReadBeyondFile() {
  char name[] = "crash-child-XXXXXX";
  const int file = ::mkstemp(name);
  ::unlink(name);
  if (::ftruncate(file, 1) != 0) std::_Exit(3);
  auto* const page =
      static_cast<volatile char*>(::mmap(nullptr, 4096, PROT_READ, MAP_SHARED, file, 0));
  if (::ftruncate(file, 0) != 0) std::_Exit(3);
  theZero = page[0];
}

/// Runs the end of a thread, with a stack of its own for the handler.
void InThread(void (*end)(), bool hasStack = true) {
  std::thread([=] {
    ::pthread_setname_np(::pthread_self(), "a worker");
    if (hasStack) {
      const vlm::CrashStack stack;
      end();
    } else {
      end();
    }
  }).join();
}

/// Crashes while another thread is in the middle of a line, and stays there.
void CrashWhileLogIsLocked() {
  static std::atomic<bool> isInside{false};
  vlm::g_Logger.SetOutputCallback(
      [](int, const vlm::GString&, void*) {
        isInside = true;
        for (;;) ::pause();
      },
      nullptr);
  std::thread([] { vlm::g_Logger.Send(vlm::LogAll, "never ends"); }).detach();
  while (!isInside) std::this_thread::yield();
  WriteNull();
}

void CrashInCallback() {
  vlm::g_Logger.SetOutputCallback([](int, const vlm::GString&, void*) { WriteNull(); }, nullptr);
  vlm::g_Logger.Send(vlm::LogAll, "crashes");
}

void CrashInManyThreads() {
  constexpr int kThreads = 8;
  static std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([] {
      ++ready;
      while (ready < kThreads) {
      }
      WriteNull();
    });
  }
  for (std::thread& thread : threads) thread.join();
}

/// Has the C library find its heap damaged while it holds the lock of it, which it takes only where
/// there are threads.
void OverrunHeap() {
  constexpr std::size_t kLarge = 20'000;
  std::thread([] {
    for (;;) ::pause();
  }).detach();
  auto* volatile block = static_cast<char*>(std::malloc(kLarge));
  const std::size_t usable = ::malloc_usable_size(block);
  for (std::size_t i = 0; i < 16; ++i) block[usable + i] = '\xFF';
  theZero = std::malloc(2 * kLarge) != nullptr;
}

/// Crashes in a thread while this one waits in a call, which nothing is to end.
void CrashBesideRead() {
  int ends[2] = {};
  char byte = 0;
  if (::pipe(ends) != 0) std::_Exit(3);
  std::thread([] { WriteNull(); }).detach();
  if (::read(ends[0], &byte, 1) != 1) std::_Exit(4);
}

/// Crashes in a thread while another one takes the signals of the process, and a third sets the
/// process's own alarm again and again.
void CrashBesideSignalThread() {
  sigset_t usual;
  ::sigfillset(&usual);
  for (const int crash : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGTRAP, SIGABRT}) {
    ::sigdelset(&usual, crash);
  }
  ::pthread_sigmask(SIG_BLOCK, &usual, nullptr);
  std::thread([] {
    for (;;) {
      const itimerval late{{0, 0}, {30, 0}};
      ::setitimer(ITIMER_REAL, &late, nullptr);
      ::usleep(100'000);
    }
  }).detach();
  std::thread([] { WriteNull(); }).detach();
  for (int taken = 0;;) ::sigwait(&usual, &taken);
}

void LeaveThreadBehind() {
  std::thread thread([] {
    for (;;) ::pause();
  });
  // Its destructor terminates.
}

const std::map<std::string, void (*)()>& Ways() {
  static const std::map<std::string, void (*)()> ways{
      {"null-write", [] { WriteNull(); }},
      {"null-read", [] { theZero = *theNull; }},
      {"null-call",
       [] {
         theNoFunction();
         theZero = 1;
       }},
      {"wild-read", [] { theZero = *reinterpret_cast<volatile int*>(0x4141414141414141); }},
      {"stack-overflow", [] { theZero = Recurse(0); }},
      {"thread-stack-overflow", [] { InThread([] { theZero = Recurse(0); }); }},
      {"bare-thread-stack-overflow", [] { InThread([] { theZero = Recurse(0); }, false); }},
      {"thread-null-write", [] { InThread([] { WriteNull(); }, false); }},
      {"abort", [] { std::abort(); }},
      {"throw", [] { throw std::runtime_error("no wells\nat all"); }},
      {"throw-velum", [] { vlm::ThrowErrorImpl("Child", 1, vlm::ERR_FIND, "Colors.ini"); }},
      {"throw-number", [] { throw 7; }},
      {"large-frame-overflow", [] { theZero = RecurseWide(0); }},
      {"raised-stack-overflow", [] { OverflowRaisedStack(); }},
      {"own-stack", [] { CrashOnOwnStack(); }},
      {"throw-hanging-text", [] { throw HangingText(); }},
      {"throw-crashing-text", [] { throw CrashingText(); }},
      {"throw-through-noexcept", [] { ThrowThroughNoexcept(); }},
      {"terminate", [] { LeaveThreadBehind(); }},
      {"divide", [] { theZero = 1000 / theZero; }},
      {"float-divide",
       [] {
         ::feenableexcept(FE_DIVBYZERO);
         volatile double zero = 0;
         zero = 1 / zero;
       }},
      {"bus", [] { ReadBeyondFile(); }},
      {"illegal", [] { __asm__ volatile("ud2"); }},
      {"breakpoint", [] { __asm__ volatile("int3"); }},
      {"kill",
       [] {
         if (::fork() == 0) ::_exit(::kill(::getppid(), SIGSEGV));
         ::pause();
       }},
      {"heap-overrun", [] { OverrunHeap(); }},
      {"log-is-locked", [] { CrashWhileLogIsLocked(); }},
      {"log-callback", [] { CrashInCallback(); }},
      {"beside-read", [] { CrashBesideRead(); }},
      {"beside-signal-thread", [] { CrashBesideSignalThread(); }},
      {"set-in-threads", [] { SetInThreads(); }},
      {"vfork",
       [] {
         if (::vfork() == 0) ::_exit(WriteNull());
         std::abort();
       }},
      {"smashed-stack", [] { SmashStack(); }},
      {"many-threads", [] { CrashInManyThreads(); }},
  };
  return ways;
}

bool AnswerYes(const char*, const char*) { return true; }
bool AnswerNo(const char*, const char*) { return false; }
bool AnswerCrash(const char*, const char*) { return WriteNull() != 0; }
bool AnswerOverflow(const char*, const char*) { return Recurse(0) != 0; }
bool AnswerFork(const char*, const char*) {
  const pid_t child = ::fork();
  if (child == 0) std::abort();
  int status = 0;
  ::waitpid(child, &status, 0);
  constexpr char kTold[] = "child ended by signal\n";
  if (WIFSIGNALED(status) && ::write(2, kTold, std::strlen(kTold)) < 0) std::_Exit(3);
  return true;
}
bool AnswerAbort(const char*, const char*) { std::abort(); }

void TellAlert(const char* title, const char* text) {
  for (const char* part : {"[", title, "] ", text, "\n"}) {
    if (::write(2, part, std::strlen(part)) < 0) std::_Exit(3);
  }
}
void HangAlert(const char*, const char*) {
  for (;;) ::pause();
}

using Options = std::map<std::string, std::string>;

void SetUp(Options options) {
  const rlimit noCore{0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);
  const std::map<std::string, vlm::CrashQuestion> questions{
      {"yes", AnswerYes},           {"no", AnswerNo},
      {"crash", AnswerCrash},       {"abort", AnswerAbort},
      {"overflow", AnswerOverflow}, {"fork", AnswerFork}};
  if (options.count("question")) vlm::SetCrashQuestion(questions.at(options["question"]));
  if (options.count("alert")) {
    vlm::SetCrashAlert(options["alert"] == "hang" ? HangAlert : TellAlert);
  }
  if (!options["log"].empty()) {
    vlm::g_Logger.SetOutputFile(options["log"], options["append"] == "1");
    vlm::g_Logger.Enable(true);
    if (options["early"] != "1") vlm::g_Logger.Send(vlm::LogInformation, "Loaded 12 wells");
  }
  if (options.count("mask")) vlm::g_Logger.SetType(std::stoi(options["mask"]));
  vlm::SetCrashHandler(options["app"]);
  if (options.count("drop")) {
    const std::string& log = options["log"];
    const std::string folder = log.substr(0, log.rfind('/'));
    const int failed =
        ::geteuid() == 0 ? ::seteuid(65534) : ::chmod(folder.c_str(), S_IRUSR | S_IXUSR);
    if (failed) std::_Exit(3);
  }
  const std::string dump = options["log"].substr(0, options["log"].rfind('/') + 1) + "Child.dmp";
  if (options.count("old")) {
    std::ofstream(dump) << "old";
    if (::chmod(dump.c_str(), 0666) != 0) std::_Exit(3);
  }
  if (options.count("blocked") && ::mkdir(dump.c_str(), 0700) != 0) std::_Exit(3);
  if (options.count("linked")) {
    const std::string& log = options["log"];
    if (::symlink((log + ".victim").c_str(), dump.c_str()) != 0) std::_Exit(3);
  }
  if (options.count("room")) {
    const rlimit room{std::stoul(options["room"]), RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &room);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  for (int i = 2; i < argc; ++i) {
    const std::string option = argv[i];
    const std::size_t end = option.find('=');
    if (end != option.npos) options[option.substr(0, end)] = option.substr(end + 1);
  }
  SetUp(options);
  const auto way = Ways().find(argc > 1 ? argv[1] : "");
  if (way == Ways().end()) return 2;
  way->second();
  return 0;
}
