#pragma once

/// \file
/// What is left when the program crashes: lines in the log, and a file beside the program.
///
///     int main() {
///       vlm::g_Logger.SetOutputFile("gridder.log", true);
///       vlm::g_Logger.Enable(true);
///       vlm::SetCrashHandler("Gridder");
///       std::thread worker([] {
///         const vlm::CrashStack stack;  // so that a stack overflow here is reported, too
///         Grid();
///       });
///       worker.join();
///     }

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Has crashes of this process reported: the signals of memory that is not there (SIGSEGV, SIGBUS),
/// of instructions that the processor refuses (SIGILL, SIGFPE), of a breakpoint (SIGTRAP) and of
/// `abort` (SIGABRT), which is also where `std::terminate` ends, with the exception that nobody
/// caught.
///
/// `appName` is the title of what the user is asked and told, and the name of the file; if it is
/// empty, the name of the program is. A later call sets another name.
///
/// The report goes this way, in the thread that crashed:
///
/// 1. `g_Logger`, if it is enabled, gets what `CLogger::Exception` writes, and a line with the
///    signal. The lines go to its file alone, past its lock, which the thread may hold: buffer,
///    callback and remote logger are left alone. A file that is not open yet is opened.
/// 2. The user is asked "An unrecoverable error has occurred.  Would you like to save a diagnostic
///    file?": by the application, see `SetCrashQuestion`; or at the terminal, if standard input and
///    standard error are one and the process is in its foreground, for up to a minute. On No the
///    process ends by the signal, as it would without the handler. With nobody to ask, or without
///    an answer, the file is saved.
/// 3. The file is the program's path with `appName` for its name and ".dmp" for its extension,
///    readable for its owner alone. It is written as ".dmp.new" and replaces an old one, or a link,
///    once it is whole; what could not be written is removed. It is text: the crash, the registers,
///    the stack, the modules, the last 100 lines of the log. `tools/resolve-dump` turns addresses
///    into functions and lines.
/// 4. An alert tells of the file, or why there is none: a line of type `LogAlert`, and on the
///    standard error or by `SetCrashAlert`. With a file, the process ends with the exit status 128
///    + signal and leaves no core; without one, by the signal.
///
/// A crash in one of these steps ends that step, and so do 10 seconds in it, other than with the
/// application's question; what is left to do is done. Threads that crash meanwhile wait for the
/// end. Nothing is allocated and no lock is taken, but by what an exception that nobody caught does
/// to tell its text: that is a step of its own, and without it the exception is known by its type.
///
/// *Limits*: the stack overflow of a thread is reported if the thread is the one that calls this
/// function, or has a `CrashStack`; in another thread it ends the process by SIGSEGV, without a
/// report. Handlers of these signals that were set before, and the terminate handler, are not
/// called any more; those that the application sets later replace these: a terminate handler loses
/// the exception's type and text, if it aborts. At the terminal, a thread that reads there may get
/// the answer instead; the file is saved then.
///
/// Any thread may call it at any time.
///
/// *Errors*: `std::bad_alloc`, and nothing has changed.
VELUM_API void SetCrashHandler(const GString& appName);

/// Asks the user; true for Yes. The texts are terminated UTF-8.
using CrashQuestion = bool (*)(const char* title, const char* text);

/// Has the question asked by `question` from now on, and gives what did so before; null stands for
/// the terminal.
///
/// It runs in the handler of a signal: the thread that crashed may hold any lock, that of memory
/// among them, and the other threads run on. It has some 200 KiB of stack; most signals are
/// blocked, also in a program that it starts, unless that lets them in. What is safe there: to
/// start a program that asks, to write to a pipe whose other end asks, or to answer from what is
/// known.
VELUM_API CrashQuestion SetCrashQuestion(CrashQuestion question) noexcept;

/// Tells the user something. The texts are terminated UTF-8.
using CrashAlert = void (*)(const char* title, const char* text);

/// Has alerts shown by `alert` from now on, and gives what did so before; null stands for a line
/// "title: text" on the standard error. What is said of `CrashQuestion` holds here.
VELUM_API CrashAlert SetCrashAlert(CrashAlert alert) noexcept;

/// Gives the thread that makes it a stack of its own for the handler, so that a stack overflow of
/// this thread can be reported.
///
/// An object with identity; the thread that made it destroys it, which brings back what was there
/// before. Where the system has no memory for it, it does nothing.
///
/// *Cost*: some microseconds and 256 KiB of address space, of which the handler alone uses memory.
class VELUM_API CrashStack {
 public:
  /// Gives the calling thread a stack for the handler.
  CrashStack() noexcept;
  CrashStack(const CrashStack&) = delete;
  CrashStack& operator=(const CrashStack&) = delete;
  /// Takes it away again.
  ~CrashStack();

 private:
  void* block_;
};

}  // namespace vlm
