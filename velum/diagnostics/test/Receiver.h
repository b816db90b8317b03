#pragma once

/// \file
/// A socket of a test that receives datagrams on this machine.
///
///     vlm::test::Receiver receiver;
///     vlm::CRemoteLogger remote("127.0.0.1", receiver.Port(), 0);
///     remote.Send("Hello");
///     receiver.Next();  // <6> Hello

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <optional>
#include <stdexcept>
#include <string>

namespace vlm::test {

/// Owns a UDP socket on a free port of 127.0.0.1.
class Receiver {
 public:
  /// *Errors*: `std::runtime_error` if the system gives no socket.
  Receiver() {
    const timeval patience{2, 0};
    const int room = 4 << 20;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &room, sizeof(room));
    if (::bind(socket_, plain, size) != 0 || ::getsockname(socket_, plain, &size) != 0) {
      ::close(socket_);
      throw std::runtime_error("no socket");
    }
    port_ = ntohs(address.sin_port);
  }
  Receiver(const Receiver&) = delete;
  Receiver& operator=(const Receiver&) = delete;
  ~Receiver() { ::close(socket_); }

  /// The port, to be given as it is.
  [[nodiscard]] int Port() const { return port_; }

  /// The next datagram; nothing if none comes within two seconds, or at once with `waits` false.
  [[nodiscard]] std::optional<std::string> Next(bool waits = true) const {
    std::string bytes(70'000, '\0');
    const ssize_t size = ::recv(socket_, bytes.data(), bytes.size(), waits ? 0 : MSG_DONTWAIT);
    if (size < 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
  }

 private:
  int socket_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  int port_ = 0;
};

}  // namespace vlm::test
