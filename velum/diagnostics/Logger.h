#pragma once

/// \file
/// The library's log: lines of text to a file or a buffer, to another machine and to the
/// application.
///
///     vlm::g_Logger.SetOutputFile("/tmp/wells.log", true);
///     vlm::g_Logger.Enable(true);
///     vlm::g_Logger.SendVA(vlm::LogInformation, "Loaded %d wells", 12);

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/diagnostics/RemoteLogger.h>

#include <atomic>
#include <cstdarg>
#include <memory>

namespace vlm {

struct EXCEPTION_POINTERS;
namespace platform {
class LogFile;
}
namespace detail {
class CrashLog;
class GlobalLogger;
}  // namespace detail

/// The types of log lines, which are bits: a line may have several, and a logger lets through those
/// of its mask.
enum LogType : int {
  LogAlert = 1,        ///< Alerts and the details of exceptions.
  LogFailure = 2,      ///< Failures that the library survives.
  LogInformation = 4,  ///< Information, all reports of the configuration.
  LogScope = 8,        ///< Scopes entered and left, internal checks.
  LogRemote = 16,      ///< Goes to the remote logger, too.
  LogAll = 31,         ///< Every one of these.
};

/// Takes lines and passes each on: to a log file, or to a buffer in memory if there is no file; to
/// another machine, for lines of type `LogRemote`; to a function of the application. The last 100
/// lines of all loggers are kept for a report of a crash, see `CopyRecentLogLines`.
///
/// An object with identity, which owns its file and its remote logger.
///
/// *The file* opens with the first line, stays open until the logger is destroyed, and may be open
/// elsewhere: loggers of several processes that append to one file tear no line. Each line is with
/// the system when `Send` returns, so that a crash of the process loses none.
///
/// - A full disk loses lines, without a word to the caller. A part of a line that it took is cut
///   off again, so that other loggers go on behind a whole line. A line "(3 lines lost: No space
///   left on device)" stands before the next one that finds room, or where the logger ends, if
///   there is room then.
/// - A part stays where others have appended to it before it could be cut off, where the file may
///   not be cut, and in a device or a pipe: the next line finishes it first. What another process
///   appends between the look at the file's size and the cut goes with the part.
/// - A pipe that nobody reads can't be opened. One whose reader leaves loses lines like a full
///   disk, and sends the process no signal. One whose reader is slow is waited for.
///
/// *Threads*: any number of threads may log through any number of loggers. One lock for all of them
/// is held while a line is passed on, so lines come one after the other; the thread that holds it
/// may log again. `Enable`, `IsEnabled`, `GetType` and `SetType` may be called at any time. The
/// other changes, and `GetBuffer` with what it refers to, are for the thread that owns the logger,
/// while no other thread logs through it; a callback may call them for the logger that called it.
class VELUM_API CLogger {
 public:
  /// A function of the application that gets each line with its type.
  using OutputCallback = void (*)(int type, const GString& text, void* user);

  /// A logger that appends to the file at `path`, or keeps its lines in memory if that is empty.
  explicit CLogger(const GString& path = GString(), int type = LogAll, bool enabled = true);
  CLogger(const CLogger&) = delete;
  CLogger& operator=(const CLogger&) = delete;
  /// Closes the file and destroys the remote logger.
  ~CLogger();

  /// True if lines are passed on.
  [[nodiscard]] bool IsEnabled() const noexcept { return enabled_.load(std::memory_order_relaxed); }
  /// The mask of the types that `SendVA` lets through.
  [[nodiscard]] int GetType() const noexcept { return type_.load(std::memory_order_relaxed); }
  /// The lines kept in memory, each with a line feed after it.
  ///
  /// *Lifetime*: as long as the logger; every line without a file changes the text.
  [[nodiscard]] const GString& GetBuffer() const noexcept { return buffer_; }
  /// True if lines go to another machine.
  [[nodiscard]] bool IsRemoteLoggerEnabled() const noexcept {
    return remote_ && remote_->IsEnabled();
  }

  /// Passes lines on from now on, or drops them.
  void Enable(bool enable) noexcept { enabled_.store(enable, std::memory_order_relaxed); }
  /// Sets the mask of the types that `SendVA` lets through.
  void SetType(int type) noexcept { type_.store(type, std::memory_order_relaxed); }
  /// Empties the buffer and gives its memory back.
  void EmptyBuffer() noexcept;
  /// Has lines go to the file at `path`, unless a file is open already, which stays in use.
  ///
  /// Without `append`, what the file held is gone at the first line, and the file starts with an
  /// empty one.
  ///
  /// *Errors*: `ERR_INTERNAL` for an empty path.
  void SetOutputFile(const GString& path, bool append);
  /// Has `callback` called with each line and `user`; null ends that.
  ///
  /// The callback runs in the thread that logs, after the line has gone everywhere else, and under
  /// the lock: it must not wait for another thread that logs. What it throws reaches the caller of
  /// `Send`, with everything in order. It may log; of lines within lines within lines it is told
  /// down to the 32nd, so that a callback that logs each line it gets comes to an end.
  void SetOutputCallback(OutputCallback callback, void* user) noexcept;
  /// Sends lines of type `LogRemote` to a host as well, each with `prefix` in front of it. Gives
  /// whether that works; see `CRemoteLogger::SetHost`. What was set before is gone in either case.
  bool SetRemoteLogger(const GString& prefix, const GString& host, int port,
                       unsigned long timeoutMs);
  /// Lets lines go to the remote host, or not; nothing happens if there is none.
  void EnableRemoteLogger(bool enable) noexcept;

  /// Passes on a line of any length, whatever the mask; nothing if the logger is disabled.
  ///
  /// A remote line ends at its first terminator; what can't be sent remotely is dropped.
  ///
  /// *Errors*: `ERR_OPEN` if the log file can't be opened: the logger has disabled itself, and
  /// tries again once it is enabled. `std::bad_alloc`; `LengthError` for a buffer beyond the limit
  /// of `GString`. What the callback throws.
  void Send(int type, const GString& text);
  /// Passes on a formatted line, see `FormatString`, if the logger is enabled and its mask has one
  /// of the bits of `type`. Otherwise nothing is formatted.
  ///
  /// - A text that can't be formatted, or has more than 8191 bytes: the format as it stands.
  ///
  /// *Errors*: those of `Send`; `ERR_INTERNAL` for a null format.
  /// *Cost*: a few nanoseconds for a line that is not let through.
  void SendVA(int type, const char* format, ...);
  /// The same for one of the named types and no arguments, without a call for a line that is not
  /// let through.
  void SendVA(LogType type, const char* format) {
    if (LetsThrough(type)) SendArguments(type, format);
  }
  /// The same for arguments, without a call for a line that is not let through.
  template <class First, class... Others>
  [[gnu::visibility("hidden")]] void SendVA(int type, const char* format, First first,
                                            Others... others);
  /// Begins a section: an empty line, unless the last one was empty, then `title` with a rule
  /// below. An empty title ends a section by the empty line alone. The mask is not consulted,
  /// and no other thread's lines come in between.
  ///
  /// *Errors*: those of `Send`.
  void Separator(int type, const GString& title);

  // Reports on the machine. Each is a section of lines of type `LogInformation`; a line that this
  // machine has no answer for is left out. Nothing happens if the logger is disabled. The lines of
  // other threads may come in between. *Errors*: those of `Send`.

  /// The present local time, one line: "Current time is 14:05:33 on 11/23/26".
  void Time();
  /// The operating system and its folders.
  void OSVersion();
  /// The displays that are connected, and the one that the environment names.
  void VideoInfo();
  /// The processors.
  void Processor();
  /// The control word of the floating point unit, as it is for the calling thread.
  void Coprocessor();
  /// Memory, swap space as the paging file, and the process's address space as virtual memory.
  void Memory();
  /// The modules of the process and the libraries beside its program, as `CModQuery` lists them.
  void EnumModules();
  /// All of these.
  ///
  /// *Cost*: a few milliseconds; every module's file is looked at.
  void LogAllConfigInfo();
  /// What a crash was, in a section "Exception Info" whose lines have the type `LogAlert`.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null pointer, or one to no record.
  void Exception(EXCEPTION_POINTERS* pointers);

 private:
  friend class detail::CrashLog;
  friend class detail::GlobalLogger;

  [[gnu::visibility("hidden")]] void GiveUp() noexcept;
  [[nodiscard]] bool LetsThrough(int type) const noexcept {
    return IsEnabled() && (GetType() & type) != 0;
  }
  /// `SendVA` for a line that is let through.
  void SendArguments(int type, const char* format, ...);
  [[gnu::visibility("hidden")]] void SendFormatted(int type, const char* format, va_list arguments);
  [[gnu::visibility("hidden")]] void OpenFile();
  [[gnu::visibility("hidden")]] void PassOn(int type, const GString& text);
  [[gnu::visibility("hidden")]] void AppendToBuffer(const GString& text);
  [[gnu::visibility("hidden")]] void CallBack(int type, const GString& text);

  std::atomic<bool> lastEmpty_{true};
  std::atomic<bool> enabled_;
  bool append_ = true;
  std::atomic<int> type_;
  GString buffer_;
  GString path_;
  std::unique_ptr<platform::LogFile> file_;
  OutputCallback callback_ = nullptr;
  void* user_ = nullptr;
  GString remotePrefix_;
  std::unique_ptr<CRemoteLogger> remote_;
};

template <class First, class... Others>
inline void CLogger::SendVA(int type, const char* format, First first, Others... others) {
  if (LetsThrough(type)) SendArguments(type, format, first, others...);
}

/// The log of the process, to which the library itself writes: with all types, without a file, and
/// disabled until the application enables it.
///
/// It can be used from before the first static object of a program is made until after the last
/// is gone. When the library is unloaded it is disabled, and closes its file unless a thread is
/// just logging; threads that still log then do so in vain, and in safety.
extern VELUM_API CLogger& g_Logger;

}  // namespace vlm
