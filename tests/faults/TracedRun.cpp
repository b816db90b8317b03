#include "TracedRun.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace vlm::faults {
namespace {

#ifdef __x86_64__

namespace fs = std::filesystem;

using Registers = user_regs_struct;

/// How a call names the file that it is about.
enum class Names { kPath, kPathAt, kDescriptor };

struct Call {
  long number;
  const char* name;
  Names names;
};

constexpr Call kCalls[] = {
    {SYS_open, "open", Names::kPath},
    {SYS_creat, "open", Names::kPath},
    {SYS_openat, "open", Names::kPathAt},
    {SYS_write, "write", Names::kDescriptor},
    {SYS_pwrite64, "write", Names::kDescriptor},
    {SYS_writev, "writev", Names::kDescriptor},
    {SYS_ftruncate, "cut", Names::kDescriptor},
    {SYS_fsync, "sync", Names::kDescriptor},
    {SYS_fdatasync, "sync", Names::kDescriptor},
    {SYS_close, "close", Names::kDescriptor},
    {SYS_rename, "rename", Names::kPath},
    {SYS_renameat, "rename", Names::kPathAt},
    {SYS_renameat2, "rename", Names::kPathAt},
};

const Call* FindCall(long number) {
  for (const Call& call : kCalls) {
    if (call.number == number) return &call;
  }
  return nullptr;
}

std::string TextAt(pid_t child, std::uint64_t address) {
  std::string text;
  while (text.size() < PATH_MAX) {
    char block[64];
    // Up to the end of a page: the next one may not be there.
    const std::size_t size = sizeof(block) - address % sizeof(block);
    iovec here{block, size};
    iovec there{reinterpret_cast<void*>(address), size};
    if (::process_vm_readv(child, &here, 1, &there, 1, 0) != static_cast<ssize_t>(size))
      return text;
    for (std::size_t i = 0; i < size; ++i) {
      if (block[i] == 0) return text;
      text += block[i];
    }
    address += size;
  }
  return text;
}

std::string PathOf(pid_t child, int descriptor) {
  char path[PATH_MAX];
  const std::string link = "/proc/" + std::to_string(child) + "/fd/" + std::to_string(descriptor);
  const ssize_t length = ::readlink(link.c_str(), path, sizeof(path));
  return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

/// True if what the process has open there is open for writing.
bool IsForWriting(pid_t child, int descriptor) {
  // The permissions of the link are those of the descriptor.
  const std::string link = "/proc/" + std::to_string(child) + "/fd/" + std::to_string(descriptor);
  struct stat status {};
  return ::lstat(link.c_str(), &status) == 0 && (status.st_mode & S_IWUSR) != 0;
}

/// Whether a call is about a file of the folder that is, or may be, written.
bool Counts(pid_t child, const Call& call, const Registers& registers, const std::string& folder) {
  if (call.names == Names::kDescriptor) {
    const int descriptor = static_cast<int>(registers.rdi);
    return PathOf(child, descriptor).starts_with(folder) && IsForWriting(child, descriptor);
  }
  const bool isAt = call.names == Names::kPathAt;
  if (!TextAt(child, isAt ? registers.rsi : registers.rdi).starts_with(folder)) return false;
  if (std::string(call.name) != "open" || call.number == SYS_creat) return true;
  const auto flags = static_cast<int>(isAt ? registers.rdx : registers.rsi);
  return (flags & O_ACCMODE) != O_RDONLY;
}

/// Whether a call can't be done on a full disk: it writes, or makes a file.
bool TakesRoom(pid_t child, const Call& call, const Registers& registers) {
  const std::string name = call.name;
  if (name.starts_with("write")) return true;
  const bool isAt = call.names == Names::kPathAt;
  return name == "open" && !fs::exists(TextAt(child, isAt ? registers.rsi : registers.rdi));
}

/// Follows a process from call to call.
class Tracer {
 public:
  Tracer(pid_t child, const std::string& folder, const FaultAt& at)
      : child_(child), folder_(folder), at_(at) {}

  void Follow(TracedRun& run) {
    for (int signal = 0;;) {
      // Fails for one that has just been killed, which the next line tells.
      ::ptrace(PTRACE_SYSCALL, child_, nullptr, signal);
      int status = 0;
      if (::waitpid(child_, &status, 0) != child_) return;
      if (WIFEXITED(status)) {
        run.result = WEXITSTATUS(status);
        return;
      }
      if (WIFSIGNALED(status)) {
        run.isKilled = true;
        return;
      }
      const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
      signal = isCall ? 0 : WSTOPSIG(status);
      if (isCall) Stop(run);
    }
  }

 private:
  void Stop(TracedRun& run) {
    Registers registers{};
    ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
    isInside_ = !isInside_;
    if (isInside_) {
      Enter(run, registers);
    } else if (answer_) {
      registers.rax = static_cast<std::uint64_t>(*answer_);
      ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
      answer_.reset();
    }
  }

  void Enter(TracedRun& run, Registers& registers) {
    const Call* const call = FindCall(static_cast<long>(registers.orig_rax));
    if (!call || !Counts(child_, *call, registers, folder_)) return;
    run.calls.emplace_back(call->name);
    const int number = static_cast<int>(run.calls.size()) - 1;
    const bool isLater = at_.fault == FileFault::kStaysFull && at_.call >= 0 && number > at_.call;
    if (number != at_.call && !(isLater && TakesRoom(child_, *call, registers))) return;
    switch (at_.fault) {
      case FileFault::kKilled:
        ::kill(child_, SIGKILL);
        return;
      case FileFault::kShort:
        registers.rdx /= 2;
        break;
      case FileFault::kNoSpace:
      case FileFault::kStaysFull:
      case FileFault::kBroken:
        answer_ = at_.fault == FileFault::kBroken ? -EIO : -ENOSPC;
        // A descriptor is closed whatever close says.
        if (call->number != SYS_close) registers.orig_rax = static_cast<std::uint64_t>(-1);
    }
    ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
  }

  const pid_t child_;
  const std::string& folder_;
  const FaultAt at_;
  bool isInside_ = false;
  std::optional<long> answer_;  // what the call of now is to give
};

#endif

}  // namespace

TracedRun RunTraced([[maybe_unused]] const std::string& folder,
                    [[maybe_unused]] int (*work)(const std::string&),
                    [[maybe_unused]] const FaultAt& at) {
  TracedRun run;
#ifdef __x86_64__
  constexpr int kForbidden = 125;
  const pid_t child = ::fork();
  if (child == 0) {
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(kForbidden);
    ::raise(SIGSTOP);
    ::_exit(work(folder));
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFSTOPPED(status)) {
    run.canTrace = false;
    return run;
  }
  ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  Tracer(child, folder, at).Follow(run);
#else
  run.canTrace = false;
#endif
  return run;
}

}  // namespace vlm::faults
