#include <velum/platform/detail/FileSharing.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace vlm::platform {

namespace {

// Each of the four things that an opener may do to others has a stretch of bytes, far behind the
// end of any file; an opener that does it holds a lock somewhere in its stretch. The locks belong
// to the open file description: they end with it, and other openers in the process see them.
enum class Stretch { kReads, kWrites, kDeniesRead, kDeniesWrite };

constexpr off_t kFirstByte = 0x7FFF'FFFF'0000'0000;
constexpr off_t kStretchLength = 0x10000;

struct flock LockOn(Stretch stretch, off_t offset, off_t length, int type) {
  struct flock lock {};
  lock.l_type = static_cast<short>(type);
  lock.l_whence = SEEK_SET;
  lock.l_start = kFirstByte + static_cast<off_t>(stretch) * kStretchLength + offset;
  lock.l_len = length;
  return lock;
}

/// Where locks do not work, nothing happens: nobody else will see one either.
void Take(int descriptor, Stretch stretch, bool readable) {
  if (readable) {
    struct flock lock = LockOn(stretch, 0, 1, F_RDLCK);
    ::fcntl(descriptor, F_OFD_SETLK, &lock);
    return;
  }
  // A descriptor that can't be read gets no shared lock: it takes a byte of its own.
  for (off_t offset = 1; offset < kStretchLength; ++offset) {
    struct flock lock = LockOn(stretch, offset, 1, F_WRLCK);
    const int result = ::fcntl(descriptor, F_OFD_SETLK, &lock);
    if (result == 0 || (errno != EAGAIN && errno != EACCES)) return;
  }
}

/// True if somebody else holds a lock in the stretch.
bool IsTakenByOthers(int descriptor, Stretch stretch) {
  struct flock lock = LockOn(stretch, 0, kStretchLength, F_WRLCK);
  return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

/// Keeps other openers out between taking locks and looking for those of others, so that two who
/// come at once do not refuse each other.
///
/// A file that another program keeps locked in this way does not stop an opener: it goes on after a
/// while, and at worst is refused together with another.
class Turn {
 public:
  explicit Turn(int descriptor) : descriptor_(descriptor) {
    constexpr int kAttempts = 200;
    constexpr useconds_t kPause = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      if (::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
      ::usleep(kPause);
    }
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  ~Turn() { ::flock(descriptor_, LOCK_UN); }

 private:
  int descriptor_;
};

}  // namespace

bool ClaimSharing(int descriptor, const Sharing& wish, bool empties) noexcept {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return true;

  const Turn turn(descriptor);
  if (wish.reads) Take(descriptor, Stretch::kReads, wish.reads);
  if (wish.writes) Take(descriptor, Stretch::kWrites, wish.reads);
  if (wish.deniesRead) Take(descriptor, Stretch::kDeniesRead, wish.reads);
  if (wish.deniesWrite) Take(descriptor, Stretch::kDeniesWrite, wish.reads);

  const bool refused =
      (wish.reads && IsTakenByOthers(descriptor, Stretch::kDeniesRead)) ||
      ((wish.writes || empties) && IsTakenByOthers(descriptor, Stretch::kDeniesWrite)) ||
      (wish.deniesRead && IsTakenByOthers(descriptor, Stretch::kReads)) ||
      (wish.deniesWrite && IsTakenByOthers(descriptor, Stretch::kWrites));
  return !refused;
}

}  // namespace vlm::platform
