#include <examples/crashlab/Trial.h>

#include <signal.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace vlm::crashlab {
namespace {

namespace fs = std::filesystem;

struct PipeCloser {
  void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

std::string ReadIfThere(const std::string& path) {
  std::ostringstream text;
  std::ifstream file(path, std::ios::binary);
  if (file) text << file.rdbuf();
  return text.str();
}

std::runtime_error SystemFailure(const std::string& what) {
  return std::runtime_error(what + ": " + std::generic_category().message(errno));
}

std::string SignalName(int signal) {
  const char* const name = ::sigabbrev_np(signal);
  return name ? std::string("SIG") + name : "signal " + std::to_string(signal);
}

std::string DescribeEnd(int status, int expected) {
  constexpr int kSignalStatus = 128;
  const int code = WIFSIGNALED(status) ? 0 : WEXITSTATUS(status);
  if (!WIFSIGNALED(status) && code <= kSignalStatus) {
    throw std::runtime_error("the child did not crash; its status is " + std::to_string(code));
  }
  const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : code - kSignalStatus;
  if (signal != expected) {
    throw std::runtime_error("the child crashed by " + SignalName(signal) + " instead of " +
                             SignalName(expected));
  }
  if (WIFSIGNALED(status)) return "ended by " + SignalName(signal);
  return "ended with the status " + std::to_string(code) + ", 128 + " + SignalName(signal);
}

int RunChildProcess(const std::string& program, const Way& way, const std::string& logPath) {
  const pid_t child = ::fork();
  if (child == -1) throw SystemFailure("cannot start a child");
  if (child == 0) {
    ::execl(program.c_str(), program.c_str(), "--child", way.name, logPath.c_str(), nullptr);
    ::_exit(127);
  }
  int status = 0;
  while (::waitpid(child, &status, 0) == -1) {
    if (errno != EINTR) throw SystemFailure("cannot wait for the child");
  }
  return status;
}

// A word of a shell's command.
std::string Quoted(const std::string& text) {
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? "'\\''" : std::string(1, c);
  return word + "'";
}

std::string Resolve(const std::string& dumpPath) {
  const std::string command = Quoted(VELUM_RESOLVE_DUMP) + " " + Quoted(dumpPath);
  const std::unique_ptr<std::FILE, PipeCloser> pipe(::popen(command.c_str(), "r"));
  if (!pipe) throw SystemFailure("cannot run resolve-dump");
  std::string text;
  char bytes[4096];
  while (const std::size_t count = std::fread(bytes, 1, sizeof(bytes), pipe.get())) {
    text.append(bytes, count);
  }
  if (text.empty()) throw std::runtime_error("cannot resolve the dump");
  return text;
}

}  // namespace

Trial RunTrial(const Way& way) {
  const fs::path program = fs::read_symlink("/proc/self/exe");
  const fs::path stem = program.parent_path() / (std::string("crashlab-") + way.name);
  Trial trial;
  trial.logPath = stem.string() + ".log";
  trial.dumpPath = stem.string() + ".dmp";
  fs::remove(trial.dumpPath);
  trial.end = DescribeEnd(RunChildProcess(program.string(), way, trial.logPath), way.signal);
  trial.log = ReadIfThere(trial.logPath);
  trial.dump = ReadIfThere(trial.dumpPath);
  if (!trial.dump.empty()) trial.resolved = Resolve(trial.dumpPath);
  return trial;
}

}  // namespace vlm::crashlab
