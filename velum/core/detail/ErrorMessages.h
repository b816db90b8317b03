#pragma once

/// \file
/// The messages of the library's errors.
///
///     const char* format = vlm::detail::kErrorMessages[vlm::ERR_FIND];  // Unable to find '%s'.

#include <velum/core/ErrorCodes.h>

#include <iterator>

namespace vlm::detail {

/// The format of each `ErrorCode`'s message, in the order of the numbers; the first is the raiser's
/// own.
inline constexpr const char* kErrorMessages[] = {
    "",
    "Unknown error (code number = %d)",
    "Internal Error.  An internal inconsistency has been detected.\n"
    "Please report this fault to the Velum developers.",
    "Out of global memory",
    "Invalid parameter passed to subroutine or function",
    "Unable to initialize %s",
    "Unable to load library: %s\n%s",
    "Unable to find exported symbol %s",
    "Unable to create file: %s\n%s",
    "Unable to find '%s'.",
    "Unable to open '%s'.\n%s",
    "Unable to close '%s'.\n%s",
    "Unable to delete '%s'.\n%s",
    "Unable to read '%s'.\n%s",
    "Unable to write '%s'.\n%s",
    "Unable to seek '%s'.\n%s",
    "Unable to open registry key '%s'.",
    "Unable to read registry key '%s'.",
    "Unable to write registry key '%s'.",
    "Error parsing '%s', line %d:\n%s",
    "Unable to find symbol '%s'.",
    "File '%s' cannot be read because the file is damaged near offset 0x%08x.  "
    "Computed CRC=0x%04x, File CRC=0x%04x\n",
    "Unable to create object of class %s",
    "Unable to create execution thread %s",
    "Unexpected end of file reading '%s'.",
    "Internal Error in General Polygon Clipping library.\n"
    "Please report this fault to the Velum developers.",
};

static_assert(std::size(kErrorMessages) == ERR_POLYGON_CLIPPING + 1);

}  // namespace vlm::detail
