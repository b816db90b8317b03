#pragma once

/// \file
/// How far a long file has been read, on one line of a terminal.
///
///     vlm::describe::ProgressLine progress(std::cerr, fileSize);
///     progress.Update(bytesRead, rows);  // Reading: 37 %, 120000 rows

#include <cstddef>
#include <cstdint>
#include <iosfwd>

namespace vlm::describe {

/// Writes over one line as the work goes on and clears it at the end. Has identity.
class ProgressLine {
 public:
  /// Of a short input nothing is told.
  static constexpr std::uint64_t kShort = 4u << 20;

  /// Writes to `stream`; `total` is the number of bytes to come, 0 if it is not known.
  ProgressLine(std::ostream& stream, std::uint64_t total) : stream_(stream), total_(total) {}
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  /// Clears the line.
  ~ProgressLine();

  /// Tells the percentage, or without a total the megabytes, if it is time to.
  void Update(std::uint64_t bytes, std::size_t rows);

 private:
  std::ostream& stream_;
  const std::uint64_t total_;
  std::uint64_t next_ = kShort;
  std::size_t width_ = 0;  // of what the line shows
};

}  // namespace vlm::describe
