#include <velum/platform/detail/Folders.h>

#include <velum/platform/detail/NativePath.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

namespace vlm::platform {

namespace {

FILETIME FileTimeOf(const struct statx_timestamp& time) {
  constexpr std::int64_t kSecondsFrom1601 = 11644473600;
  constexpr std::int64_t kTicks = 10000000;
  constexpr std::int64_t kNanosecondsInTick = 100;
  constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max() / kTicks - 1;
  if (time.tv_sec < -kSecondsFrom1601 || time.tv_sec > kLast - kSecondsFrom1601) return {};
  const auto ticks = static_cast<std::uint64_t>((time.tv_sec + kSecondsFrom1601) * kTicks +
                                                time.tv_nsec / kNanosecondsInTick);
  return {static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32)};
}

std::uint32_t AttributesOf(const struct statx& status, const std::string& name) {
  constexpr unsigned int kWritable = S_IWUSR | S_IWGRP | S_IWOTH;
  std::uint32_t attributes = 0;
  if (S_ISDIR(status.stx_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if (!(status.stx_mode & kWritable)) attributes |= FILE_ATTRIBUTE_READONLY;
  if (name[0] == '.' && name != "." && name != "..") attributes |= FILE_ATTRIBUTE_HIDDEN;
  return attributes ? attributes : FILE_ATTRIBUTE_NORMAL;
}

}  // namespace

bool ListFolder(const std::string& folder, std::vector<std::string>& names) {
  const std::string native = folder.empty() ? "." : NativePath(folder.c_str());
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(native.c_str()), &::closedir);
  if (!open) return false;
  for (;;) {
    // Only errno tells a failure from the end, and keeping a name may set it.
    errno = 0;
    const dirent* const entry = ::readdir(open.get());
    if (!entry) return errno == 0;
    names.emplace_back(entry->d_name);
  }
}

bool DescribeEntry(const std::string& folder, const std::string& name, WIN32_FIND_DATAA& entry) {
  if (HasDrive(folder) || name.empty() || name.size() >= sizeof(entry.cFileName)) {
    errno = ENOENT;
    return false;
  }
  // The name is the system's own: a `\` in it is no separator.
  const std::string native = NativePath(folder.c_str()) + name;
  constexpr unsigned int kWanted = STATX_BASIC_STATS | STATX_BTIME;
  struct statx status {};
  if (::statx(AT_FDCWD, native.c_str(), 0, kWanted, &status) != 0 &&
      ::statx(AT_FDCWD, native.c_str(), AT_SYMLINK_NOFOLLOW, kWanted, &status) != 0) {
    return false;
  }
  const std::uint64_t size = S_ISDIR(status.stx_mode) ? 0 : status.stx_size;
  entry = WIN32_FIND_DATAA();
  entry.dwFileAttributes = AttributesOf(status, name);
  entry.ftCreationTime =
      FileTimeOf(status.stx_mask & STATX_BTIME ? status.stx_btime : status.stx_mtime);
  entry.ftLastAccessTime = FileTimeOf(status.stx_atime);
  entry.ftLastWriteTime = FileTimeOf(status.stx_mtime);
  entry.nFileSizeHigh = static_cast<std::uint32_t>(size >> 32);
  entry.nFileSizeLow = static_cast<std::uint32_t>(size);
  std::memcpy(entry.cFileName, name.c_str(), name.size() + 1);
  return true;
}

}  // namespace vlm::platform
