#pragma once

/// \file
/// A text file that lines are appended to, each by one call of the system.
///
///     vlm::platform::LogFile log;
///     if (log.Open("\\tmp\\wells.log", true)) log.Append("Loaded 12 wells");

#include <cstddef>
#include <string>
#include <string_view>

namespace vlm::platform {

/// A file that others may have open too, for reading and for appending lines of their own: lines of
/// several processes stand whole, one after the other.
///
/// What was appended is with the system when the call returns. A line that a full disk lets only a
/// part of into the file is finished by the next call; lines that did not get in at all are
/// counted, and the next line that gets in has one before it that tells their number and the
/// reason.
///
/// An object with identity; one thread uses it at a time.
class LogFile {
 public:
  /// A file that is not open.
  LogFile() = default;
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;
  /// Closes the file.
  ~LogFile();

  /// Opens the file at one of the library's paths, or makes one that everybody may read whom the
  /// process's mask lets. False for failure, with the reason in errno.
  ///
  /// Unless `keeps`, what was there before is gone and the file begins with an empty line. A
  /// regular file is then replaced by a new one; a device, a pipe or a link stays what it is.
  [[nodiscard]] bool Open(const char* path, bool keeps);

  /// Appends a line and a line feed. False if it is not wholly in the file.
  bool Append(std::string_view line);

 private:
  /// Writes what stands in `out_`; gives how many bytes the system took.
  std::size_t Write() noexcept;

  int file_ = -1;
  std::string out_;       // What the call at hand writes; kept for its memory.
  std::string rest_;      // What the last call could not write of what it had begun.
  std::size_t lost_ = 0;  // Lines that are not in the file, nor in `rest_`.
  int error_ = 0;         // Why.
};

}  // namespace vlm::platform
