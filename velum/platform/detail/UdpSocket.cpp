#include <velum/platform/detail/UdpSocket.h>

#include <velum/platform/detail/Uninterrupted.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vlm::platform {

std::optional<Ipv4Address> DottedAddress(const std::string& text) noexcept {
  // Not inet_addr, which can't tell 255.255.255.255 from a failure.
  in_addr address{};
  if (::inet_aton(text.c_str(), &address) == 0) return std::nullopt;
  return address.s_addr;
}

int OpenUdpSocket() noexcept { return ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0); }

bool SendDatagram(int socket, Ipv4Address address, std::uint16_t port,
                  std::string_view bytes) noexcept {
  sockaddr_in to{};
  to.sin_family = AF_INET;
  to.sin_port = htons(port);
  to.sin_addr.s_addr = address;
  const auto send = [&] {
    return ::sendto(socket, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                    reinterpret_cast<const sockaddr*>(&to), sizeof(to));
  };
  return Uninterrupted(send) != -1;
}

void CloseUdpSocket(int socket) noexcept { ::close(socket); }

}  // namespace vlm::platform
