#pragma once

/// \file
/// What the small XML files of the examples are read with.
///
///     vlm::examples::TakeAttributes(*node, {{"title", [&](const auto& text) { title = text; }}});

#include <velum/files/XMLNode.h>

#include <functional>
#include <map>
#include <string>

namespace vlm::examples {

/// A text of a file with its entities made plain, which the scanner leaves as they are.
[[nodiscard]] std::string PlainText(const std::string& text);

/// What is done with the value of each attribute, by name.
using AttributeTakers = std::map<std::string, std::function<void(const std::string&)>>;

/// Hands the attributes of an element, made plain, to their takers.
///
/// *Errors*: `std::runtime_error` for an attribute that has none; what a taker throws.
void TakeAttributes(const XMLNode& node, const AttributeTakers& takers);

}  // namespace vlm::examples
