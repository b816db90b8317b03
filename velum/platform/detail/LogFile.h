#pragma once

/// \file
/// A text file that lines are appended to, each by one call of the system.
///
///     vlm::platform::LogFile log;
///     if (log.Open("\\tmp\\wells.log", true)) log.Append("Loaded 12 wells");

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::platform {

/// A file that others may have open too, for reading and for appending lines of their own: lines of
/// several processes stand whole, one after the other.
///
/// What was appended is with the system when the call returns. Lines that don't get in are counted;
/// the next one that does has a line before it that tells their number and the reason, and if there
/// is none, the destructor tries once to write that. A part of a line that a full disk lets into a
/// regular file is cut off again, unless somebody has appended to it or the file can't be cut;
/// otherwise, and in a device or a pipe, the next call finishes the line. What another process
/// appends between the look at the size and the cut goes with the part.
///
/// A pipe without a reader loses lines in the same way, and no signal comes of it; a call waits for
/// one that is full.
///
/// An object with identity; one thread uses it at a time.
class LogFile {
 public:
  /// A file that is not open.
  LogFile() = default;
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;
  /// Tells of what is lost, and closes the file.
  ~LogFile();

  /// Opens the file at one of the library's paths, or makes one that everybody may read whom the
  /// process's mask lets. False for failure, with the reason in errno; a pipe that nobody reads is
  /// one, ENXIO.
  ///
  /// Unless `keeps`, what was there before is gone and the file begins with an empty line. A
  /// regular file is then replaced by a new one; a device, a pipe or a link stays what it is.
  [[nodiscard]] bool Open(const char* path, bool keeps);

  /// Appends a line and a line feed. False if it is not wholly in the file.
  bool Append(std::string_view line);

  /// The system's number of the file, for who must write past this object; -1 if it is not open.
  [[nodiscard]] int Descriptor() const noexcept { return file_; }

 private:
  /// Writes what stands in `out_`; gives how many of its bytes are in the file.
  std::size_t Write() noexcept;
  /// Removes the last bytes of a regular file, written from `start` on, if they are its last.
  [[nodiscard]] bool CutOff(std::int64_t start, std::size_t count) const noexcept;

  int file_ = -1;
  bool isRegular_ = false;
  std::string out_;       // What the call at hand writes; kept for its memory.
  std::string rest_;      // What the last call could not write of what it had begun.
  std::size_t lost_ = 0;  // Lines that are not in the file, nor in `rest_`.
  int error_ = 0;         // Why.
};

}  // namespace vlm::platform
