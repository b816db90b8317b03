#pragma once

/// \file
/// Lines of text to another machine, one datagram each.
///
///     vlm::CRemoteLogger remote("127.0.0.1", 514, 500);
///     if (!remote.Send("Loaded 12 wells")) puts("nobody will read it");

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <atomic>
#include <cstdint>
#include <string_view>

namespace vlm {

/// Sends lines over UDP to one port of one IPv4 host, in the form that receivers of syslog read: a
/// line that says "Hello" goes out as "<6> Hello", where 6 is the priority of information.
///
/// An object with identity, which owns its socket. Nothing is ever waited for but the look-up of a
/// host name; a line that can't be sent at once is dropped. Datagrams may be lost on their way, and
/// nobody tells.
///
/// Threads: `Enable` and `IsEnabled` may be called while another thread sends; all else belongs to
/// one thread at a time.
class VELUM_API CRemoteLogger {
 public:
  /// An enabled sender; with a host that is not empty, `SetHost` is called.
  ///
  /// *Errors*: `std::bad_alloc`.
  CRemoteLogger(const GString& host, int port, unsigned long timeoutMs);
  CRemoteLogger(const CRemoteLogger&) = delete;
  CRemoteLogger& operator=(const CRemoteLogger&) = delete;
  /// Closes the socket.
  ~CRemoteLogger();

  /// True if lines go out: the sender is enabled and has a host.
  [[nodiscard]] bool IsEnabled() const noexcept {
    return enabled_.load(std::memory_order_relaxed) &&
           socket_.load(std::memory_order_relaxed) != kNoSocket;
  }
  /// Lets lines go out, or not.
  void Enable(bool enable) noexcept { enabled_.store(enable, std::memory_order_relaxed); }

  /// Sends to this host and port from now on; false leaves the sender without a host.
  ///
  /// - A dotted address, "192.168.0.7": nothing is looked up or waited for.
  /// - A name: it is looked up for at most `timeoutMs` milliseconds, and its first address taken.
  ///   What takes longer has failed; the look-up goes on unseen until it has its answer.
  /// - A port below 0 or above 65535: false.
  ///
  /// *Errors*: `std::bad_alloc`.
  bool SetHost(const GString& host, int port, unsigned long timeoutMs);

  /// Sends a line, up to its first terminator. False if the sender is not enabled, has no host, or
  /// if the system refuses: the line has more than 65,503 bytes, no way leads to the host, or there
  /// is no room for the line at present. Whether anybody listens shows nowhere.
  ///
  /// *Errors*: `std::bad_alloc`.
  bool Send(const GString& text);
  /// Sends a formatted line, see `FormatString`; false also for what that refuses.
  bool SendVA(const char* format, ...);

 private:
  friend class CLogger;

  static constexpr int kNoSocket = -1;

  /// `Send` for a line of two parts.
  [[gnu::visibility("hidden")]] bool SendBehind(std::string_view prefix, std::string_view text);
  [[gnu::visibility("hidden")]] void Close() noexcept;

  std::atomic<bool> enabled_{true};
  std::atomic<int> socket_{kNoSocket};
  std::uint32_t address_ = 0;
  std::uint16_t port_ = 0;
};

}  // namespace vlm
