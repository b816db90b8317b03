#include <velum/diagnostics/RemoteLogger.h>

#include <velum/core/StringFormat.h>
#include <velum/diagnostics/detail/Finally.h>
#include <velum/platform/detail/HostLookup.h>
#include <velum/platform/detail/UdpSocket.h>

#include <algorithm>
#include <chrono>
#include <cstdarg>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace vlm {
namespace {

constexpr std::string_view kPriority = "<6> ";
/// The most bytes of a datagram over IPv4.
constexpr std::size_t kLongestDatagram = 65'507;

/// The start of a text, as far as its first terminator. What is too long is not searched further.
std::string_view UpToTerminator(std::string_view text) {
  text = text.substr(0, kLongestDatagram + 1);
  return text.substr(0, text.find('\0'));
}

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

bool CRemoteLogger::Send(const GString& text) { return SendBehind({}, text.String()); }

bool CRemoteLogger::SendBehind(std::string_view prefix, std::string_view text) {
  if (!IsEnabled()) return false;
  const std::string_view begin = UpToTerminator(prefix);
  const std::string_view end = begin.size() == prefix.size() ? UpToTerminator(text) : "";
  const std::size_t size = kPriority.size() + begin.size() + end.size();
  if (size > kLongestDatagram) return false;
  std::string datagram;
  datagram.reserve(size);
  datagram.append(kPriority).append(begin).append(end);
  return platform::SendDatagram(socket_, address_, port_, datagram);
}

bool CRemoteLogger::SendVA(const char* format, ...) {
  if (!IsEnabled()) return false;
  std::string text;
  va_list arguments;
  va_start(arguments, format);
  const detail::Finally end([&] { va_end(arguments); });
  return FormatStringVA(text, format, arguments) && Send(text);
}

void CRemoteLogger::Close() noexcept {
  if (socket_ != kNoSocket) platform::CloseUdpSocket(socket_);
  socket_ = kNoSocket;
}

}  // namespace vlm
