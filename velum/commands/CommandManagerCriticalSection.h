#pragma once

/// \file
/// A lock for callers who share commands or stacks between threads.
///
///     auto& section = vlm::CommandManagerPrivate::CommandManagerCriticalSection::criticalSection;
///     const std::lock_guard lock(section);
///     history.Undo();  // the section is held until the command has come back

#include <velum/commands/CriticalSection.h>
#include <velum/core/Api.h>

/// What serves the callers of commands.
namespace vlm::CommandManagerPrivate {

/// Holds the one critical section of commands. Nothing in the library takes it.
struct VELUM_API CommandManagerCriticalSection {
  /// One for the process, from the library's load to its unload.
  static CCriticalSection criticalSection;
};

}  // namespace vlm::CommandManagerPrivate
