#pragma once

/// \file
/// Files of sections and entries: what stands in them, and where which bytes have to change.
///
///     vlm::detail::ProfileFile file(source);  // anything that gives bytes
///     const auto change = file.ChangeForEntry("Axes", "Title", "Depth");
///     // The bytes from change->first up to change->last give way to change->bytes.
///
/// `ConfigFile.h` tells the form of such files.

#include <velum/core/GString.h>
#include <velum/files/detail/ProfileLines.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::detail {

/// What a file has for an entry.
struct ProfileValue {
  std::string text;
  bool isCut = false;  ///< The line was longer than what is held of one.
};

/// The one stretch of a file that a change is about.
struct ProfileChange {
  std::uint64_t first;  ///< Where it begins.
  std::uint64_t last;   ///< Behind its last byte; `first` where something is only added.
  std::string bytes;    ///< What stands there afterwards, in the encoding of the file.
};

/// Thrown for a change that is refused; nothing has happened.
struct ProfileRefusal {
  const char* reason;
};

/// One pass through a file: each object answers one question.
///
/// *Errors*: `ProfileReadError` where the source fails.
class ProfileFile {
 public:
  explicit ProfileFile(ByteSource& source) : source_(source) {}

  /// The value of an entry, without its quotes; nothing if it is missing.
  [[nodiscard]] std::optional<ProfileValue> Value(std::string_view section, std::string_view key);
  /// Appends the lines of a section, but no comments and blank lines.
  void AppendSection(std::string_view section, std::vector<GString>& lines);

  /// What gives an entry this value; nothing if it has it.
  ///
  /// *Errors*: `ProfileRefusal` for what can't be stored.
  [[nodiscard]] std::optional<ProfileChange> ChangeForEntry(std::string_view section,
                                                            std::string_view key,
                                                            std::string_view value);
  /// What removes an entry; nothing if it is missing.
  [[nodiscard]] std::optional<ProfileChange> ChangeToRemoveEntry(std::string_view section,
                                                                 std::string_view key);
  /// What removes a section; nothing if it is missing.
  [[nodiscard]] std::optional<ProfileChange> ChangeToRemoveSection(std::string_view section);

 private:
  ByteSource& source_;
};

}  // namespace vlm::detail
