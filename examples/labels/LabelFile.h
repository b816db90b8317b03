#pragma once

/// \file
/// Reads a file of labels.
///
/// Blank lines part the file into records. A record is one of these:
///
/// - lines that all begin with "#": a comment, or, if the first begins with "## ", the name of a
///   group;
/// - a line "# name" and below it the text of a label, one line of the file to a line of the label.
///   The name may end in "[left]", "[center]" or "[right]", which is how the lines are justified.
///
///     for (const auto& label : vlm::examples::ReadLabelFile("labels.txt")) Show(label.text);

#include <iosfwd>
#include <string>
#include <vector>

namespace vlm::examples {

/// One label of a file. A plain value.
struct Label {
  std::string group;         ///< the group it stands in; empty before the first one
  std::string name;          ///< without the justification
  std::string text;          ///< math text, lines joined by line feeds
  unsigned int justify = 1;  ///< 1 left, 2 center, 3 right, as text interfaces count it
};

/// Reads the labels of a stream in their order.
///
/// *Errors*: `std::runtime_error` that names the line for a text without a name line above it.
[[nodiscard]] std::vector<Label> ReadLabels(std::istream& stream);

/// Reads the labels of a file.
///
/// *Errors*: `std::runtime_error` with the path if the file can't be read or is malformed.
[[nodiscard]] std::vector<Label> ReadLabelFile(const std::string& path);

}  // namespace vlm::examples
