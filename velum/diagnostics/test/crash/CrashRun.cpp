#include <velum/diagnostics/test/crash/CrashRun.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vlm::test {
namespace {

namespace fs = std::filesystem;

/// Becomes the program, with what it has open; never returns.
[[noreturn]] void Become(const std::string& program, std::vector<std::string> arguments) {
  std::vector<char*> given;
  for (std::string& one : arguments) given.push_back(one.data());
  given.push_back(nullptr);
  ::execv(program.c_str(), given.data());
  ::_exit(127);
}

/// Starts the program without a terminal; gives its number, and where to read what it says.
pid_t StartAlone(const std::string& program, const std::vector<std::string>& arguments,
                 int& output) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return -1;
  const pid_t child = ::fork();
  if (child == 0) {
    ::setsid();
    ::dup2(::open("/dev/null", O_RDONLY), 0);
    ::dup2(ends[1], 1);
    ::dup2(ends[1], 2);
    Become(program, arguments);
  }
  ::close(ends[1]);
  output = ends[0];
  return child;
}

pid_t StartAtTerminal(const std::string& program, const std::vector<std::string>& arguments,
                      int& output) {
  const pid_t child = ::forkpty(&output, nullptr, nullptr, nullptr);
  if (child == 0) Become(program, arguments);
  return child;
}

/// Drops what the address sanitizer says once of the handler's stack, which it does not know.
void DropSanitizersNotice(std::string& said) {
  const std::size_t found =
      said.find("==WARNING: ASan is ignoring requested __asan_handle_no_return");
  const std::size_t last = said.find("sanitizers/issues/189", found);
  if (found == said.npos || last == said.npos) return;
  const std::size_t begin = said.rfind("==", found - 1);
  said.erase(begin, said.find('\n', last) + 1 - begin);
}

}  // namespace

CrashRun::CrashRun(const std::string& way, const std::vector<std::string>& options,
                   const std::optional<std::string>& typed) {
  const std::string program = Path("child");
  fs::copy_file(fs::read_symlink("/proc/self/exe").parent_path() / "velum_crash_child", program);
  // The child may give up the right to come here.
  fs::permissions(folder_.Path(), fs::perms::owner_all | fs::perms::group_exec |
                                      fs::perms::others_exec | fs::perms::others_read);
  std::vector<std::string> arguments{program, way, "app=Child", "log=" + Path("a.log")};
  arguments.insert(arguments.end(), options.begin(), options.end());

  const auto start = std::chrono::steady_clock::now();
  int output = -1;
  process_ =
      typed ? StartAtTerminal(program, arguments, output) : StartAlone(program, arguments, output);
  if (process_ <= 0) return;
  bool isAnswered = false;
  std::array<char, 4096> bytes{};
  ssize_t count = 0;
  while ((count = ::read(output, bytes.data(), bytes.size())) > 0) {
    said_.append(bytes.data(), static_cast<std::size_t>(count));
    if (!typed || isAnswered || said_.find("[Y/n] ") == said_.npos) continue;
    isAnswered = true;
    EXPECT_GE(::write(output, typed->data(), typed->size()), 0);
  }
  DropSanitizersNotice(said_);
  ::waitpid(static_cast<pid_t>(process_), &status_, 0);
  ::close(output);
  fs::permissions(folder_.Path(), fs::perms::owner_all, fs::perm_options::add);
  time_ = std::chrono::steady_clock::now() - start;
}

int CrashRun::Signal() const { return WIFSIGNALED(status_) ? WTERMSIG(status_) : 0; }

int CrashRun::ExitStatus() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

std::string CrashRun::Log() const {
  const std::string text = Read("a.log");
  return text.starts_with("\n") ? text.substr(1) : text;
}

std::string CrashRun::Read(const std::string& name) const {
  std::ostringstream text;
  text << std::ifstream(Path(name)).rdbuf();
  return text.str();
}

}  // namespace vlm::test
