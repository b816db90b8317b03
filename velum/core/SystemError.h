#pragma once

/// \file
/// What the operating system says about its error numbers.
///
///     vlm::ThrowErrorImpl(__FILE_NAME__, __LINE__, vlm::ERR_OPEN, name.c_str(),
///                         vlm::FormatSystemErrorMsg().c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// The system's text for an error number, in English, without white space at its ends.
///
/// A number is one of `errno`'s; 80 stands for "File exists". A number that the system does not
/// know gives "error N".
[[nodiscard]] VELUM_API GString FormatSystemErrorMsg(unsigned long errorNumber);

/// The text for the calling thread's last error, which stays as it is.
[[nodiscard]] VELUM_API GString FormatSystemErrorMsg();

}  // namespace vlm
