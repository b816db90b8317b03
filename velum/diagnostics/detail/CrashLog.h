#pragma once

/// \file
/// The file of `g_Logger`, for the handler of a signal.
///
///     vlm::detail::CrashLog log;
///     log.Begin("Exception Info");
///     log.Line("Code = c0000005 (Access Violation)");
///     log.End();

#include <string_view>

namespace vlm::detail {

/// Appends lines to the file of `g_Logger` past its lock, which the crashed thread may hold, and
/// past its buffer, callback and remote logger. Each line is one write to the end of the file, as
/// those of the logger are. Nothing happens if the logger is disabled or has no file.
///
/// An object with identity, in the handler.
class CrashLog {
 public:
  /// Opens the file if the logger has not done so.
  CrashLog() noexcept;
  CrashLog(const CrashLog&) = delete;
  CrashLog& operator=(const CrashLog&) = delete;
  ~CrashLog() = default;

  /// Begins a section as `CLogger::Separator` does.
  void Begin(std::string_view title) const noexcept;
  /// A line of type `LogAlert`, if the mask has that.
  void Alert(std::string_view line) const noexcept;
  /// A line, whatever the mask.
  void Line(std::string_view line) const noexcept;
  /// Ends a section.
  void End() const noexcept { Line({}); }

  /// Tells of the logger's open file; -1 for none.
  static void TellFile(int descriptor) noexcept;
  /// Tells where the logger's file will be, and whether it is kept.
  static void TellPath(std::string_view native, bool append) noexcept;

 private:
  int file_ = -1;
  bool lastWasEmpty_ = true;
  bool takesAlerts_ = false;
};

}  // namespace vlm::detail
