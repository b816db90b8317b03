#pragma once

/// \file
/// Datagrams to one IPv4 address.
///
///     vlm::platform::Ipv4Address address = vlm::platform::DottedAddress("127.0.0.1").value();
///     const int socket = vlm::platform::OpenUdpSocket();
///     vlm::platform::SendDatagram(socket, address, 514, "<6> Loaded 12 wells");
///     vlm::platform::CloseUdpSocket(socket);

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vlm::platform {

/// The four bytes of an IPv4 address as they go over the wire.
using Ipv4Address = std::uint32_t;

/// The address that a text in one of the dotted forms names: "127.0.0.1", "127.1", "0x7f000001".
/// Nothing for a name.
[[nodiscard]] std::optional<Ipv4Address> DottedAddress(const std::string& text) noexcept;

/// Opens a socket for datagrams, which is not passed to other programs; -1 for failure.
[[nodiscard]] int OpenUdpSocket() noexcept;

/// Sends one datagram and does not wait: where the system has no room for it, that is a failure.
/// False for failure, with the reason in errno; whether anybody listens shows nowhere.
bool SendDatagram(int socket, Ipv4Address address, std::uint16_t port,
                  std::string_view bytes) noexcept;

/// Closes the socket.
void CloseUdpSocket(int socket) noexcept;

}  // namespace vlm::platform
