#pragma once

/// \file
/// What came in while a program listened: who sent how much and when, and the last lines.
///
///     vlm::logview::Sheet sheet;
///     const std::size_t lane = sheet.Add(line);
///     std::cout << sheet.Summary();

#include <examples/logview/ReceivedLine.h>

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace vlm::logview {

/// Counts all lines, knows when the first million arrived, and keeps the last 60. A value.
class Sheet {
 public:
  /// The lines of one program.
  struct Lane {
    std::string prefix;         ///< the program; empty for lines that name none
    std::size_t count = 0;      ///< of its lines
    std::vector<double> times;  ///< of their arrival
  };

  /// A line kept, with its program.
  struct Kept {
    ReceivedLine line;     ///< the line
    std::size_t lane = 0;  ///< the number of its program
  };

  /// Takes a line; gives the number of its program, by the order in which they appeared. From the
  /// twelfth on, programs share a lane named "(others)".
  std::size_t Add(ReceivedLine line);

  /// The number of lines.
  [[nodiscard]] std::size_t Count() const { return count_; }
  /// The programs in the order in which they appeared.
  [[nodiscard]] const std::vector<Lane>& Lanes() const { return lanes_; }
  /// The last lines.
  [[nodiscard]] const std::deque<Kept>& LastLines() const { return last_; }
  /// The times of the first line and the last, in seconds; 0 if there is none.
  [[nodiscard]] double First() const { return first_; }
  [[nodiscard]] double Last() const { return final_; }

  /// All in one line: "40 lines in 2.9 s: gridder 20, loader 20".
  [[nodiscard]] std::string Summary() const;

 private:
  std::size_t count_ = 0;
  double first_ = 0.0;
  double final_ = 0.0;
  std::vector<Lane> lanes_;
  std::deque<Kept> last_;
};

/// The name of a program for people; a line that names none has a dash.
[[nodiscard]] std::string NameOf(const std::string& prefix);

}  // namespace vlm::logview
