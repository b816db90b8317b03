#pragma once

/// \file
/// The ways in which a program can crash.
///
///     if (const vlm::crashlab::Way* way = vlm::crashlab::FindWay("null-write")) way->crash();

#include <span>
#include <string_view>

namespace vlm::crashlab {

/// A way to crash. Texts are static.
struct Way {
  const char* name;   ///< as the command line has it
  const char* about;  ///< what is done
  void (*crash)();    ///< does it, and returns only if the machine lets it pass
  int signal;         ///< what comes of it
};

/// All of them.
[[nodiscard]] std::span<const Way> AllWays();

/// The one of a name; null for none.
[[nodiscard]] const Way* FindWay(std::string_view name);

}  // namespace vlm::crashlab
