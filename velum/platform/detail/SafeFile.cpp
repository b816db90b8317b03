#include <velum/platform/detail/SafeFile.h>

#include <velum/platform/detail/SteadyTicks.h>
#include <velum/platform/detail/Uninterrupted.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace vlm::platform {
namespace {

constexpr int kPatienceMs = 2000;
/// A pipe that is ready takes as much at once.
constexpr std::size_t kAtOnce = 4096;

std::int64_t NowMs() noexcept { return SteadyNanoseconds() / 1'000'000; }

/// Waits until a descriptor is ready; false after that time.
bool IsReady(int file, short event, std::int64_t limitMs) noexcept {
  const std::int64_t end = NowMs() + limitMs;
  for (std::int64_t left = limitMs; left >= 0; left = end - NowMs()) {
    pollfd wanted{file, event, 0};
    const int count = ::poll(&wanted, 1, static_cast<int>(left));
    if (count > 0) return true;
    if (count == 0 || errno != EINTR) break;
  }
  return false;
}

/// Opened without waiting, what is opened may wait again: who writes asks first.
int OpenAtOnce(const char* path, int flags, mode_t permissions) noexcept {
  return ::open(path, flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, permissions);
}

/// The first letter of a line that is typed within the limit; 0 for an empty one, -1 for none.
int FirstLetter(std::int64_t limitMs) noexcept {
  const std::int64_t end = NowMs() + limitMs;
  int letter = 0;
  for (std::int64_t left = limitMs; left > 0; left = end - NowMs()) {
    char c = 0;
    if (!IsReady(STDIN_FILENO, POLLIN, left)) return -1;
    const ssize_t count = ::read(STDIN_FILENO, &c, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return -1;
    if (c == '\n' || c == '\r') return letter;
    if (letter == 0 && c != ' ' && c != '\t') letter = c;
  }
  return -1;
}

}  // namespace

int OpenPrivateFile(const char* path) noexcept {
  // An old file would keep its permissions, and those who have it open.
  ::unlink(path);
  return OpenAtOnce(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, S_IRUSR | S_IWUSR);
}

int OpenToAppend(const char* path, bool keeps) noexcept {
  constexpr mode_t kEverybody = 0666;
  struct stat status {};
  if (!keeps && ::lstat(path, &status) == 0 && S_ISREG(status.st_mode)) ::unlink(path);
  const int empties = keeps ? 0 : O_TRUNC;
  return OpenAtOnce(path, O_WRONLY | O_CREAT | O_APPEND | empties, kEverybody);
}

int OpenToRead(const char* path) noexcept { return OpenAtOnce(path, O_RDONLY, 0); }

std::int64_t ReadSafely(int file, char* out, std::size_t size) noexcept {
  return Uninterrupted([&] { return ::read(file, out, size); });
}

bool WriteSafely(int file, std::string_view text) noexcept {
  while (!text.empty()) {
    if (!IsReady(file, POLLOUT, kPatienceMs)) {
      errno = ETIMEDOUT;
      return false;
    }
    const ssize_t count = ::write(file, text.data(), std::min(text.size(), kAtOnce));
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool CloseSafely(int file) noexcept { return ::close(file) == 0; }

bool MoveSafely(const char* from, const char* to) noexcept { return std::rename(from, to) == 0; }

void RemoveSafely(const char* path) noexcept { ::unlink(path); }

bool IsTerminal(int file) noexcept {
  termios settings{};
  return ::tcgetattr(file, &settings) == 0;
}

Answer AskAtTerminal(std::string_view question, int seconds) noexcept {
  const auto isMine = [](int file) { return ::tcgetpgrp(file) == ::getpgrp(); };
  if (!IsTerminal(STDIN_FILENO) || !IsTerminal(STDERR_FILENO) || !isMine(STDIN_FILENO) ||
      !isMine(STDERR_FILENO)) {
    return Answer::kNobody;
  }
  ::tcflush(STDIN_FILENO, TCIFLUSH);
  const std::int64_t end = NowMs() + std::int64_t{seconds} * 1000;
  while (WriteSafely(STDERR_FILENO, question)) {
    switch (FirstLetter(end - NowMs())) {
      case -1:
        WriteSafely(STDERR_FILENO, "\n");
        return Answer::kNobody;
      case 'n':
      case 'N':
        return Answer::kNo;
      case 0:
      case 'y':
      case 'Y':
        return Answer::kYes;
    }
  }
  return Answer::kNobody;
}

}  // namespace vlm::platform
