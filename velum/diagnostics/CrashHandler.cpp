#include <velum/diagnostics/CrashHandler.h>

#include <velum/core/Exception.h>
#include <velum/diagnostics/detail/CrashDump.h>
#include <velum/diagnostics/detail/CrashLog.h>
#include <velum/diagnostics/detail/ExceptionText.h>
#include <velum/platform/detail/Backtrace.h>
#include <velum/platform/detail/CrashSignals.h>
#include <velum/platform/detail/FileSystem.h>
#include <velum/platform/detail/Modules.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/SafeFile.h>
#include <velum/platform/detail/SafeText.h>
#include <velum/platform/detail/UncaughtException.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace vlm {
namespace {

using detail::CrashLog;
using detail::kStepSeconds;
using detail::RunReportStep;
using platform::Answer;
using platform::CrashEnd;
using platform::CrashFacts;
using platform::SafeText;

constexpr char kQuestion[] =
    "An unrecoverable error has occurred.  Would you like to save a diagnostic file?";
constexpr int kQuestionSeconds = 60;

/// What the handler is told before. Never destroyed: a crash may come at any time.
struct Settings {
  std::string title;
  std::string path;     // The system's own.
  std::string newPath;  // Where the file is until it is whole.
  const Settings* before = nullptr;
};
constinit std::atomic<const Settings*> theSettings{nullptr};
constinit std::mutex theInstaller;
constinit std::atomic<CrashQuestion> theQuestion{nullptr};
constinit std::atomic<CrashAlert> theAlert{nullptr};

/// The texts that a step works on, too large for the stack of a handler.
constinit char theText[8 * 1024] = {};
constinit char theShownLine[12 * 1024] = {};

std::unique_ptr<Settings> MakeSettings(const GString& appName) {
  auto settings = std::make_unique<Settings>();
  const std::string program = platform::ModulePath(nullptr);
  const std::size_t nameAt = program.rfind('\\') + 1;
  settings->title = appName.empty() ? program.substr(nameAt) : appName.String();
  std::string name = program.empty() ? "Crash" : settings->title;
  for (char& c : name) {
    if (platform::IsSeparator(c)) c = '_';
  }
  const std::string folder =
      program.empty() ? platform::TemporaryFolder() : program.substr(0, nameAt);
  settings->path = platform::NativePath((folder + name + ".dmp").c_str());
  settings->newPath = settings->path + ".new";
  return settings;
}

/// The stack of a thread that sets the handler. The main thread's stays until the process ends.
class ThreadStack {
 public:
  ThreadStack() noexcept : block_(platform::GiveCrashStack()) {}
  ThreadStack(const ThreadStack&) = delete;
  ThreadStack& operator=(const ThreadStack&) = delete;
  ~ThreadStack() {
    if (!platform::IsMainThread()) platform::TakeCrashStack(block_);
  }

 private:
  void* block_;
};

/// What is told of an exception that nobody caught, ours included.
void TellUncaught(SafeText& out) {
  try {
    throw;
  } catch (const Exception& thrown) {
    out.PutPrintable(thrown.GetDescription().String());
  } catch (const std::exception& thrown) {
    const char* const text = thrown.what();
    out.PutPrintable(text ? text : "");
  } catch (...) {
    out.Put("an object that tells nothing");
  }
}

void LogException(const CrashFacts& facts) noexcept {
  CrashLog log;
  log.Begin(detail::kExceptionTitle);
  const auto alert = [](std::string_view line, void* to) {
    static_cast<const CrashLog*>(to)->Alert(line);
  };
  detail::TellException(facts.record, alert, &log);
  SafeText line(theText);
  detail::TellSignal(facts, line);
  log.Alert(line.View());
  if (facts.uncaught) {
    log.Alert(SafeText(theText).Put("Uncaught exception = ").Put(facts.uncaught).View());
  }
  log.End();
}

/// A text ends in a terminator behind what is shown.
const char* Terminated(const SafeText& text) noexcept {
  theText[text.View().size()] = '\0';
  return theText;
}

/// Shows an alert on the standard error, as one line in one piece.
void ShowLine(const char* title, const char* shown) noexcept {
  SafeText line(theShownLine, sizeof(theShownLine) - 1);
  if (platform::IsTerminal(platform::kStandardError)) line.Put("\a");
  line.PutPrintable(title).Put(": ").PutPrintable(shown);
  const std::size_t size = line.View().size();
  theShownLine[size] = '\n';
  platform::WriteSafely(platform::kStandardError, {theShownLine, size + 1});
}

Answer AskAtTerminal(const char* title) noexcept {
  SafeText text(theText);
  text.Put("\a").PutPrintable(title).Put(": ").Put(kQuestion).Put(" [Y/n] ");
  return platform::AskAtTerminal(text.View(), kQuestionSeconds);
}

/// Whether the file is wanted; it is where nobody can say so.
bool WantsFile(const char* title) noexcept {
  bool isWanted = true;
  if (const CrashQuestion question = theQuestion) {
    RunReportStep(0, [&] { isWanted = question(title, kQuestion); });
  } else {
    RunReportStep(kQuestionSeconds + kStepSeconds,
                  [&] { isWanted = AskAtTerminal(title) != Answer::kNo; });
  }
  return isWanted;
}

void ShowAlert(const char* title, const SafeText& text) noexcept {
  RunReportStep(kStepSeconds, [&] { CrashLog().Line(text.View()); });
  const char* const shown = Terminated(text);
  RunReportStep(kStepSeconds, [&] {
    if (const CrashAlert alert = theAlert) {
      alert(title, shown);
    } else {
      ShowLine(title, shown);
    }
  });
}

CrashEnd Report(const CrashFacts& facts) noexcept {
  const Settings& settings = *theSettings.load();
  const char* const title = settings.title.c_str();
  RunReportStep(kStepSeconds, [&] { LogException(facts); });
  if (!WantsFile(title)) return CrashEnd::kBySignal;

  int file = -1;
  int error = ETIMEDOUT;
  RunReportStep(kStepSeconds, [&] {
    file = platform::OpenPrivateFile(settings.newPath.c_str());
    error = errno;
  });
  SafeText text(theText, sizeof(theText) - 1);
  if (file < 0) {
    text.Put("Failed to create dump file '").Put(settings.path).Put("' (error ").Decimal(error);
    ShowAlert(title, text.Put(")"));
    return CrashEnd::kBySignal;
  }
  error = detail::WriteCrashDump(file, title, facts);
  int lateError = ETIMEDOUT;
  RunReportStep(kStepSeconds, [&] {
    const bool isWhole = platform::CloseSafely(file) && error == 0 &&
                         platform::MoveSafely(settings.newPath.c_str(), settings.path.c_str());
    lateError = isWhole ? 0 : errno;
    if (!isWhole) platform::RemoveSafely(settings.newPath.c_str());
  });
  if (error == 0) error = lateError;
  if (error != 0) {
    text.Put("Failed to save dump file to '").Put(settings.path).Put("' (error ").Decimal(error);
    ShowAlert(title, text.Put(")"));
    return CrashEnd::kBySignal;
  }
  ShowAlert(title, text.Put("Saved dump file to '").Put(settings.path).Put("'"));
  return CrashEnd::kByExit;
}

}  // namespace

void SetCrashHandler(const GString& appName) {
  std::unique_ptr<Settings> settings = MakeSettings(appName);
  const std::lock_guard lock(theInstaller);
  settings->before = theSettings;
  theSettings = settings.release();
  static thread_local const ThreadStack stack;
  platform::Backtrace::Prepare();
  platform::KeepUncaughtExceptions(&TellUncaught);
  platform::InstallCrashSignals(&Report);
}

CrashQuestion SetCrashQuestion(CrashQuestion question) noexcept {
  return theQuestion.exchange(question);
}

CrashAlert SetCrashAlert(CrashAlert alert) noexcept { return theAlert.exchange(alert); }

CrashStack::CrashStack() noexcept : block_(platform::GiveCrashStack()) {}

CrashStack::~CrashStack() { platform::TakeCrashStack(block_); }

}  // namespace vlm
