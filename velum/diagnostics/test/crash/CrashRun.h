#pragma once

/// \file
/// Lets a child process crash and gives what is left of it.
///
///     const vlm::test::CrashRun run("null-write", {"question=no"});
///     EXPECT_EQ(run.Signal(), SIGSEGV);

#include <testing/TemporaryFolder.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace vlm::test {

/// A copy of the program `velum_crash_child`, run in a folder of its own with "app=Child" and
/// "log=" a file of that folder; what other options say of these holds.
class CrashRun {
 public:
  /// Runs it to its end. It has a terminal, at which `typed` is the answer to a question, or none.
  explicit CrashRun(const std::string& way, const std::vector<std::string>& options = {},
                    const std::optional<std::string>& typed = std::nullopt);

  /// The signal that ended it; 0 for none.
  [[nodiscard]] int Signal() const;
  /// Its exit status; -1 if a signal ended it.
  [[nodiscard]] int ExitStatus() const;
  /// What it wrote on the standard error, or the terminal.
  [[nodiscard]] const std::string& Said() const { return said_; }
  /// The log, without its first, empty line, if it begins with one.
  [[nodiscard]] std::string Log() const;
  /// The dump; empty if there is none.
  [[nodiscard]] std::string Dump() const { return Read("Child.dmp"); }
  /// The path of a file in the folder.
  [[nodiscard]] std::string Path(const std::string& name) const { return folder_.Path(name); }
  /// What a file in the folder holds; empty if it is not there.
  [[nodiscard]] std::string Read(const std::string& name) const;
  /// Its number.
  [[nodiscard]] long Process() const { return process_; }
  /// How long it ran.
  [[nodiscard]] std::chrono::duration<double> Time() const { return time_; }

 private:
  testing::TemporaryFolder folder_;
  long process_ = -1;
  int status_ = -1;
  std::string said_;
  std::chrono::duration<double> time_{};
};

}  // namespace vlm::test
