#pragma once

/// \file
/// The address of a host, looked up for no longer than the caller has time.
///
///     using namespace std::chrono_literals;
///     const auto address = vlm::platform::LookUpHost("logs.example.org", 500ms);

#include <velum/platform/detail/UdpSocket.h>

#include <chrono>
#include <optional>
#include <string>

namespace vlm::platform {

/// The first IPv4 address of a host; nothing if it has none, is not known, can't be looked up, or
/// if the answer does not come within `limit`.
///
/// The look-up has a thread of its own, which blocks all signals. One that goes on beyond the limit
/// is left alone: it holds what it needs, its answer is dropped, the end of the process does not
/// wait for it, and the library's code stays in memory from the first look-up on.
///
/// *Errors*: `std::bad_alloc`.
[[nodiscard]] std::optional<Ipv4Address> LookUpHost(const std::string& name,
                                                    std::chrono::milliseconds limit);

}  // namespace vlm::platform
