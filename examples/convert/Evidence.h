#pragma once

/// \file
/// Which encoding a file is in, and why.
///
///     const auto evidence = vlm::convert::Examine("wells.txt", {});
///     puts(evidence.reason.c_str());

#include <examples/convert/Encodings.h>

#include <optional>
#include <string>

namespace vlm::convert {

/// What was found, and what it comes to. A plain value.
struct Evidence {
  unsigned int markSize = 0;  ///< 0 for no mark
  Encoding mark;              ///< what the mark stands for
  ConfidenceLevel narrow = ConfidenceNo;
  ConfidenceLevel utf16le = ConfidenceNo;
  ConfidenceLevel utf16be = ConfidenceNo;
  ConfidenceLevel binary = ConfidenceNo;
  Encoding encoding;   ///< in which the file is read
  std::string reason;  ///< for that, in words
  bool isSure = true;  ///< false for an assumption
};

/// Examines a file; `named` is the encoding that the user told, which is taken as it is. Without
/// it a mark tells the encoding, or the statistics of the first 512 bytes UTF-16. All else is
/// assumed: no text if they say so, UTF-16 where zeros rule out narrow text, UTF-8 if all of the
/// file is well formed, windows-1252 otherwise.
///
/// *Errors*: `Exception`.
[[nodiscard]] Evidence Examine(const std::string& path, const std::optional<Encoding>& named);

/// A confidence in a word.
[[nodiscard]] const char* InWords(ConfidenceLevel level);

/// The mark's bytes: "EF BB BF"; "none".
[[nodiscard]] std::string MarkText(const Evidence& evidence);

}  // namespace vlm::convert
