#include <velum/diagnostics/RemoteLogger.h>

#include <velum/core/StringFormat.h>
#include <velum/platform/detail/HostLookup.h>
#include <velum/platform/detail/UdpSocket.h>

#include <algorithm>
#include <chrono>
#include <cstdarg>
#include <limits>
#include <optional>
#include <string>

namespace vlm {
namespace {

constexpr char kPriority[] = "<6> ";

std::optional<platform::Ipv4Address> AddressOf(const GString& host, unsigned long timeoutMs) {
  if (const auto dotted = platform::DottedAddress(host)) return dotted;
  // A clock that far ahead would overflow.
  constexpr unsigned long kLongest = std::numeric_limits<std::uint32_t>::max();
  return platform::LookUpHost(host, std::chrono::milliseconds(std::min(timeoutMs, kLongest)));
}

}  // namespace

CRemoteLogger::CRemoteLogger(const GString& host, int port, unsigned long timeoutMs) {
  if (!host.empty()) SetHost(host, port, timeoutMs);
}

CRemoteLogger::~CRemoteLogger() { Close(); }

bool CRemoteLogger::SetHost(const GString& host, int port, unsigned long timeoutMs) {
  Close();
  if (port < 0 || port > std::numeric_limits<std::uint16_t>::max()) return false;
  const auto address = AddressOf(host, timeoutMs);
  if (!address) return false;
  address_ = *address;
  port_ = static_cast<std::uint16_t>(port);
  socket_ = platform::OpenUdpSocket();
  return socket_ != kNoSocket;
}

bool CRemoteLogger::Send(const GString& text) {
  if (!IsEnabled()) return false;
  std::string datagram = kPriority;
  datagram += text.c_str();
  return platform::SendDatagram(socket_, address_, port_, datagram);
}

bool CRemoteLogger::SendVA(const char* format, ...) {
  if (!IsEnabled()) return false;
  std::string text;
  va_list arguments;
  va_start(arguments, format);
  const bool fits = FormatStringVA(text, format, arguments);
  va_end(arguments);
  return fits && Send(text);
}

void CRemoteLogger::Close() noexcept {
  if (socket_ != kNoSocket) platform::CloseUdpSocket(socket_);
  socket_ = kNoSocket;
}

}  // namespace vlm
