#include <velum/platform/detail/FileAccess.h>

#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/Uninterrupted.h>

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace vlm::platform {

namespace {

int OpenFlags(const OpenWish& wish) {
  int flags = O_CLOEXEC | O_NOCTTY;
  flags |= !wish.sharing.writes ? O_RDONLY : wish.sharing.reads ? O_RDWR : O_WRONLY;
  if (wish.creates) flags |= O_CREAT;
  if (wish.creates && wish.mustBeNew) flags |= O_EXCL;
  if (wish.appends) flags |= O_APPEND;
  if (wish.atOnce) flags |= O_NONBLOCK;
  return flags;
}

/// The letters for a descriptor that is open already: nothing is created or emptied by them.
const char* StreamMode(const OpenWish& wish) {
  if (!wish.sharing.writes) return "r";
  if (wish.appends) return wish.sharing.reads ? "a+" : "a";
  return wish.sharing.reads ? "r+" : "w";
}

/// Does to an open file what must be done before it is given out.
bool Settle(int file, const std::string& native, const OpenWish& wish) {
  struct stat status {};
  if (::fstat(file, &status) != 0) return false;
  if (S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    return false;
  }
  if (!ClaimSharing(file, wish.sharing, wish.empties)) {
    errno = EAGAIN;
    return false;
  }
  if (!wish.empties || !S_ISREG(status.st_mode) || status.st_size == 0) return true;
  // A descriptor for reading can't cut its file.
  return (wish.sharing.writes ? ::ftruncate(file, 0) : ::truncate(native.c_str(), 0)) == 0;
}

void CloseKeepingError(int file) {
  const int error = errno;
  ::close(file);
  errno = error;
}

}  // namespace

int OpenFile(const char* path, const OpenWish& wish) {
  const std::string native = NativePath(path);
  const int file = Uninterrupted([&] {
    return ::open(native.c_str(), OpenFlags(wish), static_cast<mode_t>(wish.permissions));
  });
  if (file == -1 || Settle(file, native, wish)) return file;
  CloseKeepingError(file);
  return -1;
}

std::FILE* OpenStream(const char* path, const OpenWish& wish) {
  const int file = OpenFile(path, wish);
  if (file == -1) return nullptr;
  std::FILE* const stream = ::fdopen(file, StreamMode(wish));
  if (stream) {
    ::__fsetlocking(stream, FSETLOCKING_BYCALLER);
  } else {
    CloseKeepingError(file);
  }
  return stream;
}

std::int64_t ReadFile(int file, void* data, std::size_t count) noexcept {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got =
        Uninterrupted([&] { return ::read(file, static_cast<char*>(data) + done, count - done); });
    if (got < 0) return -1;
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return static_cast<std::int64_t>(done);
}

std::int64_t ReadSome(int file, void* data, std::size_t count) noexcept {
  return Uninterrupted([&] { return ::read(file, data, count); });
}

bool WriteFile(int file, const void* data, std::size_t count) noexcept {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t put = Uninterrupted(
        [&] { return ::write(file, static_cast<const char*>(data) + done, count - done); });
    if (put == 0) errno = EIO;  // A device that takes nothing and says nothing.
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return true;
}

std::int64_t SeekFile(int file, std::int64_t offset, int origin) noexcept {
  static_assert(SEEK_SET == 0 && SEEK_CUR == 1 && SEEK_END == 2);
  if (origin < SEEK_SET || origin > SEEK_END) {
    errno = EINVAL;
    return -1;
  }
  return ::lseek(file, offset, origin);
}

int IsAtEnd(int file) noexcept {
  struct stat status {};
  if (::fstat(file, &status) != 0) return -1;
  if (!S_ISREG(status.st_mode)) return 0;
  const off_t position = ::lseek(file, 0, SEEK_CUR);
  return position == -1 ? -1 : position >= status.st_size;
}

bool CommitFile(int file) noexcept {
  if (Uninterrupted([file] { return ::fsync(file); }) == 0) return true;
  return errno == EINVAL || errno == EROFS;  // A device or a pipe, which keeps nothing.
}

bool CloseFile(int file) noexcept {
  // An interrupted close has closed: the descriptor may belong to somebody else by now.
  return ::close(file) == 0 || errno == EINTR;
}

bool AppendLine(std::FILE* stream, std::string& line) {
  // The C library's own functions copy a line through a buffer of theirs. This takes it from the
  // stream's buffer, between the two pointers that its macros for single bytes work with.
  for (bool any = false;; any = true) {
    const auto held = static_cast<std::size_t>(stream->_IO_read_end - stream->_IO_read_ptr);
    const char* const start = stream->_IO_read_ptr;
    const void* const feed = held ? std::memchr(start, '\n', held) : nullptr;
    const std::size_t count =
        feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - start) + 1 : held;
    line.append(start, count);
    stream->_IO_read_ptr += count;
    if (feed) return true;
    any = any || held > 0;
    const int next = ::getc_unlocked(stream);  // Fills the buffer.
    if (next == EOF) return any && !std::ferror(stream);
    line += static_cast<char>(next);
    if (next == '\n') return true;
  }
}

}  // namespace vlm::platform
