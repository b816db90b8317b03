#pragma once

/// \file
/// What the tags of a report share.
///
///     std::string text = "<HR";
///     vlm::detail::AppendAttributes(text, rule);
///     vlm::detail::WriteText(out, text += ">\n");

#include <velum/files/HtmlAttributes.h>

#include <iosfwd>
#include <string>

namespace vlm::detail {

/// Appends what `operator<<` writes.
void AppendAttributes(std::string& out, const CoreAttrib& attributes);
/// The same for more attributes.
void AppendAttributes(std::string& out, const ImageAttrib& attributes);
/// The same for more attributes.
void AppendAttributes(std::string& out, const RowAttrib& attributes);
/// The same for more attributes.
void AppendAttributes(std::string& out, const ColAttrib& attributes);
/// The same for more attributes.
void AppendAttributes(std::string& out, const CellAttrib& attributes);
/// The same for more attributes.
void AppendAttributes(std::string& out, const TableAttrib& attributes);

/// Writes a text without regard to the width, the fill and the locale of the stream.
std::ostream& WriteText(std::ostream& out, const std::string& text);

}  // namespace vlm::detail
