#include <examples/logview/Listener.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace vlm::logview {
namespace {

constexpr std::size_t kLongestDatagram = 65'536;

volatile sig_atomic_t theStop = 0;

sigset_t StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  return signals;
}

/// Lets the signals come in while the program waits, and only then.
void TakeStopSignals() {
  const sigset_t signals = StopSignals();
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  struct sigaction action {};
  action.sa_handler = [](int) { theStop = 1; };
  for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

/// While datagrams keep the program from waiting, a signal is seen only here.
bool StopIsWanted() {
  if (theStop) return true;
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, SIGINT) == 1 || sigismember(&pending, SIGTERM) == 1;
}

[[noreturn]] void Fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::generic_category().message(errno));
}

}  // namespace

Listener::Listener(const std::string& address, int port)
    : socket_(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  const std::string what = "cannot listen at " + address + ":" + std::to_string(port);
  if (socket_ == -1) Fail(what);
  sockaddr_in at{};
  at.sin_family = AF_INET;
  at.sin_port = htons(static_cast<std::uint16_t>(port));
  socklen_t size = sizeof(at);
  auto* const plain = reinterpret_cast<sockaddr*>(&at);
  errno = EINVAL;  // What is no address sets none.
  if (::inet_pton(AF_INET, address.c_str(), &at.sin_addr) != 1 ||
      ::bind(socket_, plain, size) != 0 || ::getsockname(socket_, plain, &size) != 0) {
    const int error = errno;
    ::close(socket_);
    errno = error;
    Fail(what);
  }
  port_ = ntohs(at.sin_port);
  TakeStopSignals();
}

Listener::~Listener() { ::close(socket_); }

void Listener::StopAfter(double seconds) {
  end_ = Clock::now() +
         std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

std::optional<std::string> Listener::Next() {
  sigset_t mask;
  sigprocmask(SIG_BLOCK, nullptr, &mask);
  sigdelset(&mask, SIGINT);
  sigdelset(&mask, SIGTERM);
  while (!StopIsWanted()) {
    timespec patience{};
    if (end_) {
      const auto left = *end_ - Clock::now();
      if (left <= Clock::duration::zero()) break;
      const auto nanoseconds = std::chrono::nanoseconds(left).count();
      patience.tv_sec = nanoseconds / 1'000'000'000;
      patience.tv_nsec = nanoseconds % 1'000'000'000;
    }
    pollfd wait{socket_, POLLIN, 0};
    const int ready = ::ppoll(&wait, 1, end_ ? &patience : nullptr, &mask);
    if (ready == 0) return std::nullopt;
    if (ready == -1 && errno != EINTR) Fail("cannot wait for lines");
    if (ready < 1) continue;
    std::string bytes(kLongestDatagram, '\0');
    const ssize_t got = ::recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (got >= 0) {
      bytes.resize(static_cast<std::size_t>(got));
      return bytes;
    }
    if (errno != EAGAIN && errno != EINTR) Fail("cannot receive lines");
  }
  return std::nullopt;
}

}  // namespace vlm::logview
