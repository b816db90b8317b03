#pragma once

/// \file
/// A UDP port that is listened at until somebody has had enough.
///
///     vlm::logview::Listener listener("127.0.0.1", 5514);
///     while (const auto line = listener.Next()) std::cout << *line << "\n";

#include <chrono>
#include <optional>
#include <string>

namespace vlm::logview {

/// Owns a socket, and from its construction on takes the signals that mean to stop: Ctrl-C, and the
/// system's request to end. One in a program at a time.
class Listener {
 public:
  /// Listens at a port of an address of this machine; 0 is a port that is free.
  ///
  /// *Errors*: `std::runtime_error` with the address and the reason.
  Listener(const std::string& address, int port);
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  /// The port.
  [[nodiscard]] int Port() const { return port_; }

  /// Ends the waiting so many seconds from now.
  void StopAfter(double seconds);

  /// The next datagram; nothing once the time is over or a signal to stop has come, even if
  /// datagrams wait.
  ///
  /// *Errors*: `std::runtime_error` if the system refuses.
  [[nodiscard]] std::optional<std::string> Next();

 private:
  using Clock = std::chrono::steady_clock;

  int socket_;
  int port_ = 0;
  std::optional<Clock::time_point> end_;
};

}  // namespace vlm::logview
