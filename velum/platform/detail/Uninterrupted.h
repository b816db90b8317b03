#pragma once

/// \file
/// Calls of the system that a signal may end early.
///
///     const auto got = vlm::platform::Uninterrupted([&] { return ::read(file, data, size); });

#include <cerrno>

namespace vlm::platform {

/// Runs a call again as long as signals interrupt it; gives its last result, -1 for failure.
template <class Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

}  // namespace vlm::platform
