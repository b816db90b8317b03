#pragma once

/// \file
/// Declares the classes of commands and elements, for headers that only name them.
///
///     #include <velum/commands/Forward.h>
///     namespace vlm { void Record(const Command& command); }

namespace vlm {

class BaseElement;
class CCriticalSection;
class Command;
class CommandFactory;
struct CommandOptions;
class CommandStack;
class IProgress;
class Memento;
class ModalElement;
class ModalElementFactory;
class ModelessElement;
class ModelessElementFactory;
class ProgressFactory;

namespace CommandManagerPrivate {
struct CommandManagerCriticalSection;
}

}  // namespace vlm
