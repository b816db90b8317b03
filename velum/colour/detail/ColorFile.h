#pragma once

/// \file
/// The colours of a file of settings.
///
///     const auto colors = vlm::detail::ReadColorFile("Colors.ini");

#include <velum/colour/ColorTable.h>
#include <velum/core/GString.h>

#include <vector>

namespace vlm::detail {

/// Reads the colours of the section "Colors" of the file that `LocateFile` finds for a name; see
/// `CColorTable`.
///
/// *Errors*: `ERR_FIND` from "ColorTable" if it finds none that can be read; those of `CConfigFile`
/// for its path.
[[nodiscard]] std::vector<CColorTableEntry> ReadColorFile(const GString& name);

}  // namespace vlm::detail
