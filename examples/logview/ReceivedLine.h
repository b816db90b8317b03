#pragma once

/// \file
/// A log line as it comes in a datagram.
///
///     const auto line = vlm::logview::ReadDatagram("<6> gridder: 12 wells", 0.25);
///     // line.severity is "info", line.prefix "gridder", line.text "12 wells"

#include <string>
#include <string_view>

namespace vlm::logview {

/// What a datagram says. A plain value; no text has a byte that a terminal would obey.
struct ReceivedLine {
  double time = 0.0;          ///< of arrival, in seconds
  const char* severity = "";  ///< of its number; empty for none
  std::string prefix;         ///< the program that sent it; empty if it names none
  std::string text;           ///< the rest
};

/// Reads a datagram: "<6> " gives the severity, of which the last three bits of the number tell. A
/// word of up to 32 bytes before ": " is the program. Control characters, and bytes
/// that are no UTF-8, show as "\x1b".
[[nodiscard]] ReceivedLine ReadDatagram(std::string_view bytes, double time);

}  // namespace vlm::logview
