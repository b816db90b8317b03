#pragma once

/// \file
/// Messages that a programmer wants seen at once, and how an application shows them.
///
///     void ShowInStatusLine(const vlm::GString& title, const vlm::GString& text);
///     vlm::SetMessageHook(&ShowInStatusLine);
///     vlm::dprintf("%d wells have no name", 3);

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Shows a message to the user.
using MessageHook = void (*)(const GString& title, const GString& text);

/// Has messages shown by `hook` from now on, and gives the hook that did so before; null stands for
/// the standard error, where a message is a line "Error: text".
///
/// The hook runs in the thread that has the message, in several threads at once if several have
/// one, and without any lock of the library: it may log and may send messages of its own. What it
/// throws reaches the caller of `dprintf`. Any thread may call this at any time; a message on its
/// way may still go to the old hook.
VELUM_API MessageHook SetMessageHook(MessageHook hook) noexcept;

/// Shows a formatted text, see `FormatString`, with the title "Error", and returns when the hook
/// does. Nothing is logged.
///
/// - A text that can't be formatted: the format as it stands.
///
/// *Errors*: `ERR_INTERNAL` for a null format; what the hook throws.
VELUM_API void dprintf(const char* format, ...);

}  // namespace vlm
