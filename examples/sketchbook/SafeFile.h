#pragma once

/// \file
/// A file replaced as a whole or not at all.
///
///     vlm::sketchbook::ReplaceFile("bench.sketch", bytes);

#include <velum/core/GString.h>

#include <string>

namespace vlm::sketchbook {

/// Writes `bytes` to a new file in the folder of `path`, waits until they are on the disk, and
/// gives it the name `path`. Whatever happens on the way, `path` is the old file or the new one. A
/// device or a pipe is written as it stands.
///
/// *Errors*: `Exception`; the old file is then still there, and the new one gone.
void ReplaceFile(const GString& path, const std::string& bytes);

}  // namespace vlm::sketchbook
