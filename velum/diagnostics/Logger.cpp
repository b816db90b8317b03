#include <velum/diagnostics/Logger.h>

#include <velum/core/Exception.h>
#include <velum/core/SystemError.h>
#include <velum/diagnostics/detail/CrashLog.h>
#include <velum/diagnostics/detail/Finally.h>
#include <velum/diagnostics/detail/RecentLines.h>
#include <velum/platform/detail/LogFile.h>
#include <velum/platform/detail/NativePath.h>

#include <mutex>
#include <new>
#include <string>
#include <utility>

namespace vlm {
namespace {

using detail::Finally;

constexpr char kSource[] = "Logger";
/// How deep a callback that logs is called for its own lines.
constexpr int kDeepest = 32;

/// How many callbacks run at present, one called by the other's lines; under the lock.
constinit int theDepth = 0;

}  // namespace

namespace detail {

/// Makes `g_Logger` and the lock before every other object of the library. After them, when the
/// library is unloaded, it takes away what the logger holds and leaves the objects themselves, so
/// that threads which still log do no harm.
class GlobalLogger {
 public:
  GlobalLogger() { new (&place_.kept) Kept; }
  GlobalLogger(const GlobalLogger&) = delete;
  GlobalLogger& operator=(const GlobalLogger&) = delete;
  ~GlobalLogger() { place_.kept.logger.GiveUp(); }

  /// Where the logger is, or will be.
  static constexpr CLogger& Place() { return place_.kept.logger; }
  /// Serialises what all loggers do.
  static std::recursive_mutex& Lock() { return place_.kept.lock; }

 private:
  struct Kept {
    std::recursive_mutex lock;
    CLogger logger{GString(), LogAll, false};
  };
  union Room {
    constexpr Room() : none() {}
    ~Room() {}

    char none;
    Kept kept;
  };

  static Room place_;
};

constinit GlobalLogger::Room GlobalLogger::place_;

}  // namespace detail

namespace {

[[gnu::init_priority(101)]] const detail::GlobalLogger theGlobalLogger;

}  // namespace

constinit CLogger& g_Logger = detail::GlobalLogger::Place();

CLogger::CLogger(const GString& path, int type, bool enabled)
    : enabled_(enabled), type_(type), path_(path) {}

CLogger::~CLogger() = default;

void CLogger::EmptyBuffer() noexcept {
  // An assignment would keep the memory.
  std::string().swap(static_cast<std::string&>(buffer_));
}

void CLogger::SetOutputFile(const GString& path, bool append) {
  if (path.empty()) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  path_ = path;
  append_ = append;
  if (this == &g_Logger) detail::CrashLog::TellPath(platform::NativePath(path.c_str()), append);
}

void CLogger::SetOutputCallback(OutputCallback callback, void* user) noexcept {
  callback_ = callback;
  user_ = user;
}

bool CLogger::SetRemoteLogger(const GString& prefix, const GString& host, int port,
                              unsigned long timeoutMs) {
  remotePrefix_ = prefix;
  remote_ = std::make_unique<CRemoteLogger>(host, port, timeoutMs);
  return remote_->IsEnabled();
}

void CLogger::EnableRemoteLogger(bool enable) noexcept {
  if (remote_) remote_->Enable(enable);
}

void CLogger::Send(int type, const GString& text) {
  if (!IsEnabled()) return;
  const std::lock_guard lock(detail::GlobalLogger::Lock());
  if (!IsEnabled()) return;
  // The buffer changes while the line is passed on.
  &text == &buffer_ ? PassOn(type, GString(text)) : PassOn(type, text);
}

void CLogger::SendVA(int type, const char* format, ...) {
  if (!LetsThrough(type)) return;
  va_list arguments;
  va_start(arguments, format);
  const Finally end([&] { va_end(arguments); });
  SendFormatted(type, format, arguments);
}

void CLogger::SendArguments(int type, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const Finally end([&] { va_end(arguments); });
  SendFormatted(type, format, arguments);
}

void CLogger::Separator(int type, const GString& title) {
  if (!IsEnabled()) return;
  const std::lock_guard lock(detail::GlobalLogger::Lock());
  // The buffer changes with each line.
  if (&title == &buffer_) return Separator(type, GString(title));
  if (!lastEmpty_) Send(type, GString());
  if (title.empty()) return;
  Send(type, title);
  Send(type, GString(title.size(), '-'));
}

void CLogger::SendFormatted(int type, const char* format, va_list arguments) {
  if (!format) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  GString text;
  if (!text.FormatStringVA(format, arguments)) text = format;
  Send(type, text);
}

void CLogger::GiveUp() noexcept {
  Enable(false);
  // Whoever has the lock may wait for something that never comes, and the process is to end.
  const std::unique_lock lock(detail::GlobalLogger::Lock(), std::try_to_lock);
  if (!lock) return;
  callback_ = nullptr;
  remote_.reset();
  detail::CrashLog::TellFile(-1);
  detail::CrashLog::TellPath({}, true);
  file_.reset();
  EmptyBuffer();
  path_ = GString();
  remotePrefix_ = GString();
}

void CLogger::OpenFile() {
  auto file = std::make_unique<platform::LogFile>();
  if (!file->Open(path_.c_str(), append_)) {
    const GString reason = FormatSystemErrorMsg();
    Enable(false);
    ThrowErrorImpl(kSource, __LINE__, ERR_OPEN, path_.c_str(), reason.c_str());
  }
  file_ = std::move(file);
  if (this == &g_Logger) detail::CrashLog::TellFile(file_->Descriptor());
}

void CLogger::PassOn(int type, const GString& text) {
  detail::KeepRecentLine(text.String());
  if (!file_ && !path_.empty()) OpenFile();
  if (file_) {
    file_->Append(text.String());
  } else {
    AppendToBuffer(text);
  }
  if ((type & LogRemote) && IsRemoteLoggerEnabled()) {
    remote_->SendBehind(remotePrefix_.String(), text.String());
  }
  const Finally end([this, isEmpty = text.empty()] { lastEmpty_ = isEmpty; });
  if (callback_ && theDepth < kDeepest) CallBack(type, text);
}

void CLogger::AppendToBuffer(const GString& text) {
  const unsigned int before = buffer_.size();
  try {
    buffer_.append(text.c_str(), text.size());
    buffer_.append(1, '\n');
  } catch (...) {
    buffer_.resize(before);
    throw;
  }
}

void CLogger::CallBack(int type, const GString& text) {
  ++theDepth;
  const Finally end([] { --theDepth; });
  callback_(type, text, user_);
}

}  // namespace vlm
