#include <velum/platform/detail/LogFile.h>

#include <velum/platform/detail/FileAccess.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/SystemMessages.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <new>
#include <optional>
#include <utility>

namespace vlm::platform {
namespace {

constexpr unsigned int kPermissions = 0666;

/// Removes a file so that whoever has it open keeps what it held. What can't be removed will be
/// emptied.
void RemoveRegularFile(const char* path) {
  const std::string native = NativePath(path);
  struct stat status {};
  if (::lstat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode)) ::unlink(native.c_str());
}

std::string LossNote(std::size_t lines, int error) {
  const char* const reason = SystemErrorText(static_cast<unsigned long>(error));
  return "(" + std::to_string(lines) + (lines == 1 ? " line" : " lines") +
         " lost: " + (reason ? reason : "unknown reason") + ")\n";
}

/// Empties a text, which keeps its memory for the next one unless that is much.
void Empty(std::string& text) noexcept {
  constexpr std::size_t kMost = 64 * 1024;
  if (text.capacity() > kMost) std::string().swap(text);
  text.clear();
}

/// Keeps the signal of a pipe without a reader from the process, unless it was on its way already.
class NoBrokenPipeSignal {
 public:
  NoBrokenPipeSignal() noexcept {
    sigset_t pending;
    ::sigemptyset(&pending);
    ::sigpending(&pending);
    wasPending_ = ::sigismember(&pending, SIGPIPE) == 1;
    ::sigemptyset(&signal_);
    ::sigaddset(&signal_, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &signal_, &before_);
  }
  NoBrokenPipeSignal(const NoBrokenPipeSignal&) = delete;
  NoBrokenPipeSignal& operator=(const NoBrokenPipeSignal&) = delete;
  ~NoBrokenPipeSignal() {
    const timespec noTime{};
    while (!wasPending_ && ::sigtimedwait(&signal_, nullptr, &noTime) == -1 && errno == EINTR) {
    }
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  sigset_t signal_;
  sigset_t before_;
  bool wasPending_;
};

}  // namespace

LogFile::~LogFile() {
  if (file_ == -1) return;
  try {
    out_ = std::move(rest_);
    if (lost_ > 0) out_ += LossNote(lost_, error_);
    if (!out_.empty()) Write();
  } catch (const std::bad_alloc&) {
    // The note is lost, too.
  }
  CloseFile(file_);
}

bool LogFile::Open(const char* path, bool keeps) {
  OpenWish wish;
  wish.sharing.writes = true;
  wish.creates = true;
  wish.appends = true;
  wish.atOnce = true;
  wish.permissions = kPermissions;
  if (!keeps) {
    RemoveRegularFile(path);
    wish.empties = true;
  }
  file_ = OpenFile(path, wish);
  if (file_ == -1) return false;
  struct stat status {};
  isRegular_ = ::fstat(file_, &status) == 0 && S_ISREG(status.st_mode);
  // Lines wait for a slow reader; only the opening did not.
  ::fcntl(file_, F_SETFL, ::fcntl(file_, F_GETFL) & ~O_NONBLOCK);
  if (!keeps) Append({});
  return true;
}

bool LogFile::Append(std::string_view line) {
  out_ = rest_;
  if (lost_ > 0) out_ += LossNote(lost_, error_);
  const std::size_t begin = out_.size();
  out_.reserve(begin + line.size() + 1);
  out_ += line;
  out_ += '\n';

  // From here on no memory is asked for, so that what the file lacks stays known.
  const std::size_t done = Write();
  const bool whole = done == out_.size();
  if (done > begin) {
    lost_ = 0;
  } else {
    // A note that was begun is a text to finish, and the count starts anew; one that was not is
    // made again with the new number.
    const bool noteBegan = done > rest_.size();
    out_.resize(noteBegan ? begin : rest_.size());
    lost_ = noteBegan ? 1 : lost_ + 1;
  }
  if (whole) {
    Empty(rest_);
  } else {
    out_.erase(0, done);
    rest_.swap(out_);
  }
  Empty(out_);
  return whole;
}

std::size_t LogFile::Write() noexcept {
  std::optional<NoBrokenPipeSignal> noSignal;
  if (!isRegular_) noSignal.emplace();
  std::int64_t start = -1;
  std::size_t done = 0;
  while (done < out_.size()) {
    const ssize_t put = ::write(file_, out_.data() + done, out_.size() - done);
    if (put > 0) {
      // Where the bytes went shows only now, and is asked only if they are not all.
      if (done == 0 && static_cast<std::size_t>(put) < out_.size()) {
        start = ::lseek(file_, 0, SEEK_CUR) - put;
      }
      done += static_cast<std::size_t>(put);
    } else if (put == 0 || errno != EINTR) {
      if (lost_ == 0) error_ = put == 0 ? EIO : errno;
      break;
    }
  }
  return done < out_.size() && CutOff(start, done) ? 0 : done;
}

bool LogFile::CutOff(std::int64_t start, std::size_t count) const noexcept {
  struct stat status {};
  return isRegular_ && count > 0 && ::fstat(file_, &status) == 0 &&
         status.st_size == start + static_cast<std::int64_t>(count) &&
         ::ftruncate(file_, start) == 0;
}

}  // namespace vlm::platform
