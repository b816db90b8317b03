#include <velum/platform/detail/FileReplacement.h>

#include <velum/platform/detail/FileAccess.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/Uninterrupted.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <vector>

namespace vlm::platform {

namespace {

constexpr mode_t kPermissions = 07777;
constexpr mode_t kEveryone = 0666;  // Less the process's mask.

/// Where a path leads to in the end, also if nothing is there; empty for links in a circle.
std::string FollowLinks(std::string path) {
  constexpr int kMostLinks = 40;
  for (int i = 0; i < kMostLinks; ++i) {
    char link[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), link, sizeof(link));
    if (length < 0 || length == static_cast<ssize_t>(sizeof(link))) return path;
    const std::string next(link, static_cast<std::size_t>(length));
    const std::size_t name = next.starts_with('/') ? 0 : path.rfind('/') + 1;
    path = path.substr(0, name) + next;
  }
  errno = ELOOP;
  return {};
}

/// Gives a new file what it takes to stand for the old one. Who may not give files away keeps the
/// new one, and then its group gets no more than everybody has: it is another group.
bool AdoptOwner(int file, const struct stat& old) {
  struct stat now {};
  if (::fstat(file, &now) != 0) return false;
  mode_t mode = old.st_mode & kPermissions;
  const bool isGroups = now.st_gid == old.st_gid || ::fchown(file, uid_t(-1), old.st_gid) == 0;
  const bool isOwners = now.st_uid == old.st_uid || ::fchown(file, old.st_uid, gid_t(-1)) == 0;
  if (!isGroups) mode = (mode & ~mode_t{02070}) | (mode & 07) << 3;
  if (!isOwners) mode &= ~mode_t{04000};
  return (now.st_mode & kPermissions) == mode || ::fchmod(file, mode) == 0;
}

/// False if the file at `path` is not the one that is open.
bool StillLeadsTo(const std::string& path, int file) {
  struct stat named {};
  struct stat open {};
  return ::stat(path.c_str(), &named) == 0 && ::fstat(file, &open) == 0 &&
         named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

/// The name beside a file that its new contents have until they take its place.
std::string LockName(const std::string& target) {
  const std::size_t name = target.rfind('/') + 1;
  return target.substr(0, name) + '.' + target.substr(name) + ".velum-lock";
}

/// Opens a file for the lock; refuses with EEXIST what this class can't have made. Gives -1 for
/// failure.
int OpenLock(const std::string& name, int flags, mode_t mode) {
  constexpr int kAlways = O_CLOEXEC | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK;
  const int file = Uninterrupted([&] { return ::open(name.c_str(), flags | kAlways, mode); });
  if (file == -1) {
    if (errno == ELOOP || errno == EISDIR || errno == ENXIO) errno = EEXIST;
    return -1;
  }
  struct stat status {};
  // One whose turn has just ended has no name at all.
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink <= 1) return file;
  ::close(file);
  errno = EEXIST;
  return -1;
}

/// Waits for the lock. Where a file system has none nobody may go on: two would write one file.
bool Lock(int file) {
  return Uninterrupted([file] { return ::flock(file, LOCK_EX); }) == 0;
}

}  // namespace

FileReplacement::~FileReplacement() {
  if (lock_ == -1) return;
  const int error = errno;
  // Removed while the lock holds, so that it is never somebody else's.
  if (!lockName_.empty()) ::unlink(lockName_.c_str());
  ::flock(lock_, LOCK_UN);  // A process made by fork may hold a copy of the descriptor.
  ::close(lock_);
  errno = error;
}

bool FileReplacement::Begin(const char* path) {
  target_ = NativePath(path);
  if (target_.empty()) {
    errno = ENOENT;
    return false;
  }
  target_ = FollowLinks(target_);
  return !target_.empty() && TakeTurn() && Prepare();
}

bool FileReplacement::TakeTurn() {
  constexpr int kMostRefusals = 100;
  const std::string name = LockName(target_);
  for (int refusals = 0;;) {
    // What nobody may read but the owner is to be so in its copy from the first moment.
    struct stat old {};
    const bool isThere = ::stat(target_.c_str(), &old) == 0;
    const mode_t mode = isThere ? (old.st_mode & kEveryone) | S_IRUSR | S_IWUSR : kEveryone;
    lock_ = OpenLock(name, O_RDWR | O_CREAT, mode);
    const bool isOthers = lock_ == -1 && errno == EACCES;
    if (isOthers) {
      lock_ = OpenLock(name, O_RDONLY, 0);
      if (lock_ == -1 && errno == ENOENT) errno = EACCES;
      // Another user's may be gone by now, or get its permissions in a moment.
      if (lock_ == -1 && errno == EACCES && ++refusals < kMostRefusals) continue;
    }
    if (lock_ == -1 || !Lock(lock_)) return false;
    // Whoever had the lock before may have moved or removed the file.
    const bool isStill = StillLeadsTo(name, lock_);
    if (isStill && !isOthers) break;
    // What another user's process has left can't be written, but may be taken away.
    if (isStill && ::unlink(name.c_str()) != 0) return false;
    ::close(lock_);
    lock_ = -1;
  }
  lockName_ = name;
  return true;
}

bool FileReplacement::Prepare() {
  if (::ftruncate(lock_, 0) != 0) return false;
  if (!old_.OpenNative(target_)) return errno == ENOENT;
  struct stat status {};
  if (::fstat(old_.Descriptor(), &status) != 0) return false;
  if (::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) return false;
  oldSize_ = static_cast<std::uint64_t>(status.st_size);
  oldHasOtherNames_ = status.st_nlink > 1;
  return AdoptOwner(lock_, status);
}

bool FileReplacement::Append(std::string_view bytes) {
  return WriteFile(lock_, bytes.data(), bytes.size());
}

bool FileReplacement::AppendOld(std::uint64_t first, std::uint64_t last) {
  constexpr std::uint64_t kBlock = 1 << 16;
  if (first >= last) return true;
  if (SeekFile(old_.Descriptor(), static_cast<std::int64_t>(first), SEEK_SET) < 0) return false;
  std::vector<char> block(std::min(kBlock, last - first));
  for (std::uint64_t left = last - first; left > 0;) {
    const std::size_t count = std::min<std::uint64_t>(left, block.size());
    const std::int64_t got = old_.Read(block.data(), count);
    if (got < 0) return false;
    if (static_cast<std::size_t>(got) != count) {
      errno = EIO;  // Somebody else has cut the file meanwhile.
      return false;
    }
    if (!Append({block.data(), count})) return false;
    left -= count;
  }
  return true;
}

bool FileReplacement::Commit() {
  if (!CommitFile(lock_)) return false;
  if (::rename(lockName_.c_str(), target_.c_str()) != 0) return false;
  lockName_.clear();
  return true;
}

bool IsDiskInDanger() noexcept { return errno == ENOSPC || errno == EDQUOT || errno == EIO; }

}  // namespace vlm::platform
