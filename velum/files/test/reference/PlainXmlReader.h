#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::test {

/// An element without its children, which know its place.
struct FlatElement {
  std::size_t parent = 0;  ///< the place of the element around it
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string value;

  bool operator==(const FlatElement&) const = default;
};

/// A tree as a list of its elements, the root first, each before those inside of it; and the text
/// of the fault at which reading has ended, with its line in front.
struct FlatDocument {
  std::vector<FlatElement> elements;
  std::string fault;
};

/// Reads a document that is in memory, one character at a time, by a transcription of the states.
FlatDocument ReadPlainly(std::string_view text);

}  // namespace vlm::test
